#include "platform/linux/trash/UserTrashMover.h"

#include <algorithm>
#include <cerrno>
#include <ctime>
#include <fcntl.h>
#include <random>
#include <unistd.h>

#include "platform/linux/trash/InfoReserve.h"
#include "platform/linux/trash/ItemLocation.h"
#include "platform/linux/trash/ItemRecord.h"
#include "platform/linux/trash/KnownItems.h"
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

// Small numbers are easy to read; if many items have the same name, trying all of them would take
// too long.
unsigned numberOf(unsigned attempt) {
  constexpr unsigned inOrder = 32;
  return attempt <= inOrder ? attempt : std::random_device()() | 1U << 16U;
}

std::size_t longestName(const FileDescriptor& folder) {
  constexpr long most = 255;
  const long told = ::fpathconf(folder.get(), _PC_NAME_MAX);
  return static_cast<std::size_t>(told > 0 ? std::min(told, most) : most);
}

// Whether another item was moved to the place, because it got the name in the Trash between the
// check and the move. False if the item was moved and has been replaced there since.
bool isAnother(const KnownItems& known, const FileDescriptor& held, const ItemLocation& place) {
  const Result<bool> stands = known.standsAt(place.folder, place.name, held);
  if (!stands || stands.value()) return false;
  const Result<std::string> folder = pathOf(place.folder, "");
  const Result<std::string> last = pathOf(held, "");
  if (!folder || !last) return true;
  const std::string path = (folder.value() == "/" ? "" : folder.value()) + "/" + place.name;
  return last.value() != path && last.value() != path + " (deleted)";
}

// Moves an item back whose record could not be written, since no program would find it in the
// Trash. Not possible if another item has taken its name in the Trash, or its old place; then only
// the caller knows where the item is.
bool goesBack(const KnownItems& known, const FileDescriptor& held, const ItemEnd& inTrash,
              const ItemEnd& outside, const ItemIdentity& identity) {
  const Result<bool> stands = known.standsAt(inTrash.folder, inTrash.name, held);
  return stands && stands.value() && moveItem(inTrash, outside, identity) == 0;
}

}  // namespace

Result<ItemInTrash> UserTrashMover::moveToTrash(const std::string& path) {
  const Result<ItemLocation> place = locationOfItem(path);
  if (!place) return place.error();
  const ItemLocation& item = place.value();
  const Result<ItemIdentity> identity = identityOf(item.folder, item.name, path);
  if (!identity) return identity.error();
  const Result<TrashFolder> found = trashFolderFor(item, path, config_);
  if (!found) return found.error();
  const TrashFolder& trash = found.value();
  const Result<KnownItems> known = KnownItems::in(trash.files, path);
  if (!known) return known.error();
  const std::string content = TrashInfo::text(trash.itemPath, localTime());
  const std::size_t longest = longestName(trash.info);
  constexpr unsigned attempts = 1000;
  int code = EEXIST;
  for (unsigned attempt = 1; attempt <= attempts && code == EEXIST; ++attempt) {
    const std::string name = TrashInfo::nameFor(item.name, numberOf(attempt), longest);
    NewInfo info(trash.info, name + std::string(TrashInfo::ending), content);
    code = info.isThere() ? 0 : errno;
    if (code != 0) continue;
    const FileDescriptor held = holdItem(item.folder, item.name);
    const ItemEnd from{item.folder, item.name};
    const ItemEnd to{.folder = trash.files, .name = name, .isReserved = true};
    code = held ? moveItem(from, to, identity.value()) : errno;
    if (code != 0) continue;
    info.keep();
    code = ItemRecord(trash.info, name).keep(content);
    if (code != 0 && goesBack(known.value(), held, to, from, identity.value())) continue;
    Result<TrashIdentity> moved = known.value().identityOf(held, content, path);
    syncFolder(trash.files);
    syncFolder(item.folder);
    if (trash.isHome) {
      InfoReserve::fill(openFolder(trash.info, "..", O_PATH), InfoReserve::Where::everywhere);
    }
    return ItemInTrash{.path = trash.path + "/files/" + name,
                       .identity = moved ? std::move(moved).value() : TrashIdentity()};
  }
  return SystemError::fromErrno(code, path);
}

Outcome UserTrashMover::putBack(const ItemInTrash& item, const std::string& original) {
  const Result<ItemLocation> inTrash = locationOfItem(item.path);
  if (!inTrash) return inTrash.error();
  const ItemLocation& from = inTrash.value();
  const Result<ItemLocation> place = locationForItem(original);
  if (!place) return place.error();
  const ItemLocation& to = place.value();
  const Result<KnownItems> known = KnownItems::in(from.folder, item.path);
  if (!known) return known.error();
  const FileDescriptor info = openFolder(from.folder, "../info", O_PATH);
  const ItemRecord record(info, from.name);
  const FileDescriptor held = holdItem(from.folder, from.name);
  if (!held) return SystemError::fromErrno(errno, item.path);
  const Result<std::string> told = record.content();
  const Result<TrashIdentity> now =
      known.value().identityOf(held, told ? told.value() : std::string(), item.path);
  if (!now) return now.error();
  const SystemError another = SystemError::fromErrno(ESTALE, item.path);
  if (!known.value().areSame(now.value(), item.identity)) return another;
  const Result<ItemIdentity> identity = identityOf(held, "", item.path);
  if (!identity) return identity.error();
  const ItemEnd source{from.folder, from.name};
  const ItemEnd target{to.folder, to.name};
  const int code = moveItem(source, target, identity.value());
  if (code != 0) return SystemError::fromErrno(code, original);
  if (isAnother(known.value(), held, to)) {
    moveItem(target, source, identity.value());
    return another;
  }
  syncFolder(to.folder);
  syncFolder(from.folder);
  // A leftover .trashinfo without its file is harmless, but the record of another item, which may
  // not have been moved yet, must stay.
  if (!item.identity.record.empty()) record.removeIf(item.identity.record);
  return succeeded();
}

}  // namespace tessaly
