#include "platform/linux/trash/CountItems.h"

#include <cerrno>
#include <fcntl.h>
#include <string_view>

#include "platform/linux/trash/FolderEntries.h"
#include "platform/linux/trash/ItemLocation.h"

namespace tessaly {

Result<std::int64_t> countItems(const UserTrashFolder& trash) {
  std::int64_t count = 0;
  const FileDescriptor files = openFolder(trash.folder, "files", O_RDONLY);
  if (!files && (errno == ENOENT || errno == ENOTDIR || errno == ELOOP)) return count;
  const int code =
      files ? forEachEntry(files, [&](std::string_view, unsigned char) { ++count; }) : errno;
  if (code != 0) return SystemError::fromErrno(code, trash.path);
  return count;
}

}  // namespace tessaly
