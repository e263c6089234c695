#include "platform/linux/trash/ItemRecord.h"

#include <cerrno>
#include <climits>
#include <fcntl.h>
#include <unistd.h>

#include "platform/linux/Uninterrupted.h"
#include "platform/linux/trash/ItemLocation.h"
#include "platform/linux/trash/NewInfo.h"
#include "platform/linux/trash/TrashInfo.h"

namespace tessaly {

namespace {

// Each byte of a path may be written as three.
constexpr std::size_t longest = 3 * PATH_MAX + 4096;

}  // namespace

ItemRecord::ItemRecord(const FileDescriptor& folder, const std::string& itemName)
    : folder_(folder), name_(itemName + std::string(TrashInfo::ending)) {}

Result<std::string> ItemRecord::content() const {
  const FileDescriptor file(uninterrupted([&] {
    const int flags = O_RDONLY | O_NOFOLLOW | O_NONBLOCK | O_NOCTTY | O_CLOEXEC;
    return ::openat(folder_.get(), name_.c_str(), flags);
  }));
  if (!file) return SystemError::fromErrno(errno, name_);
  std::string content(longest + 1, '\0');
  std::size_t length = 0;
  while (length < content.size()) {
    const ssize_t count = uninterrupted(
        [&] { return ::read(file.get(), content.data() + length, content.size() - length); });
    if (count < 0) return SystemError::fromErrno(errno, name_);
    if (count == 0) break;
    length += static_cast<std::size_t>(count);
  }
  if (length > longest) return SystemError::fromErrno(EFBIG, name_);
  content.resize(length);
  // A record from the reserve that could not be cut has more line feeds, which have no meaning.
  const std::size_t last = content.find_last_not_of('\n');
  if (last != std::string::npos && last + 2 < content.size()) content.resize(last + 2);
  return content;
}

int ItemRecord::keep(const std::string& content) const {
  constexpr int attempts = 3;
  for (int attempt = 0; attempt < attempts; ++attempt) {
    const Result<std::string> there = this->content();
    if (there) return there.value() == content ? 0 : EEXIST;
    if (there.error().code != ENOENT) return 0;
    NewInfo again(folder_, name_, content);
    const int code = again.isThere() ? 0 : errno;
    again.keep();
    if (code != EEXIST) return code;
  }
  return EEXIST;
}

void ItemRecord::removeIf(const std::string& content) const {
  const Result<std::string> there = this->content();
  if (!there || there.value() != content) return;
  if (::unlinkat(folder_.get(), name_.c_str(), 0) == 0) syncFolder(folder_);
}

}  // namespace tessaly
