#include "platform/linux/trash/UserTrashMover.h"

#include <algorithm>
#include <cerrno>
#include <ctime>
#include <fcntl.h>
#include <random>
#include <unistd.h>

#include "platform/linux/trash/ItemPlace.h"
#include "platform/linux/trash/MoveItem.h"
#include "platform/linux/trash/NewInfo.h"
#include "platform/linux/trash/TrashFolder.h"
#include "platform/linux/trash/TrashInfo.h"

namespace tessaly {

namespace {

std::tm localTime() {
  const std::time_t now = std::time(nullptr);
  std::tm local{};
  ::localtime_r(&now, &local);
  return local;
}

// Small numbers read well; where many items of one name lie, each would have to be tried.
unsigned numberOf(unsigned attempt) {
  constexpr unsigned inOrder = 32;
  return attempt <= inOrder ? attempt : std::random_device()() | 1U << 16U;
}

std::size_t longestName(const FileDescriptor& folder) {
  constexpr long most = 255;
  const long told = ::fpathconf(folder.get(), _PC_NAME_MAX);
  return static_cast<std::size_t>(told > 0 ? std::min(told, most) : most);
}

}  // namespace

Result<std::string> UserTrashMover::moveToTrash(const std::string& path) {
  const Result<ItemPlace> place = placeOfItem(path);
  if (!place) return place.error();
  const ItemPlace& item = place.value();
  const Result<ItemIdentity> identity = identityOf(item.folder, item.name, path);
  if (!identity) return identity.error();
  const Result<TrashFolder> found = trashFolderFor(item, path, place_);
  if (!found) return found.error();
  const TrashFolder& trash = found.value();
  const std::string content = TrashInfo::text(trash.itemPath, localTime());
  const std::size_t longest = longestName(trash.info);
  constexpr unsigned attempts = 1000;
  int code = EEXIST;
  for (unsigned attempt = 1; attempt <= attempts && code == EEXIST; ++attempt) {
    const std::string name = TrashInfo::nameFor(item.name, numberOf(attempt), longest);
    NewInfo info(trash.info, name + std::string(TrashInfo::ending), content);
    code = info.isThere() ? 0 : errno;
    if (code != 0) continue;
    code = moveItem({item.folder, item.name}, {trash.files, name}, identity.value());
    if (code != 0) continue;
    info.keep();
    syncFolder(trash.files);
    syncFolder(item.folder);
    return trash.path + "/files/" + name;
  }
  return SystemError::fromErrno(code, path);
}

Outcome UserTrashMover::putBack(const std::string& trashPath, const std::string& original) {
  const Result<ItemPlace> inTrash = placeOfItem(trashPath);
  if (!inTrash) return inTrash.error();
  const ItemPlace& from = inTrash.value();
  makeFoldersAbove(original);
  const Result<ItemPlace> place = placeOfItem(original);
  if (!place) return place.error();
  const ItemPlace& to = place.value();
  const Result<ItemIdentity> identity = identityOf(from.folder, from.name, trashPath);
  if (!identity) return identity.error();
  const int code = moveItem({from.folder, from.name}, {to.folder, to.name}, identity.value());
  if (code != 0) return SystemError::fromErrno(code, original);
  syncFolder(to.folder);
  syncFolder(from.folder);
  // An info that stays tells of an item that is not there, which nobody minds.
  if (const FileDescriptor info = openFolder(from.folder, "../info", O_PATH)) {
    const std::string name = from.name + std::string(TrashInfo::ending);
    if (::unlinkat(info.get(), name.c_str(), 0) == 0) syncFolder(info);
  }
  return succeeded();
}

}  // namespace tessaly
