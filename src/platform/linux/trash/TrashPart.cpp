#include "platform/linux/trash/TrashPart.h"

#include <cerrno>
#include <fcntl.h>
#include <utility>

#include "platform/linux/trash/ItemLocation.h"
#include "platform/linux/trash/RemoveTree.h"

namespace tessaly {

namespace {

TrashPart without(int code) {
  // A link is treated like any other item that is not a folder.
  return {.folder = FileDescriptor(), .code = code == ELOOP ? ENOTDIR : code};
}

}  // namespace

TrashPart openTrashPart(const UserTrashFolder& trash, const std::string& name, uid_t user) {
  const Result<ItemIdentity> above = identityOf(trash.folder, "", trash.path);
  if (!above) return without(above.error().code);
  const FileDescriptor held = openFolder(trash.folder, name, O_PATH);
  if (!held) return without(errno);
  const Result<ItemIdentity> identity = identityOf(held, "", trash.path);
  if (!identity) return without(identity.error().code);
  if (identity.value().mount != above.value().mount) return without(EBUSY);
  openPermissions(held, user);
  FileDescriptor folder = openFolder(held, ".", O_RDONLY);
  if (!folder) return without(errno);
  return {.folder = std::move(folder), .code = 0};
}

}  // namespace tessaly
