#include "session/TrashBatch.h"

#include <algorithm>
#include <cerrno>
#include <utility>

#include "platform/FileAccess.h"

namespace tessaly::TrashBatch {

namespace {

std::ptrdiff_t depthOf(const Item& item) {
  const std::string& place = item.location.place;
  const std::size_t end =
      place.find_last_not_of('/') + 1;  // of the path without slashes at its end
  return std::count(place.begin(), place.begin() + static_cast<std::ptrdiff_t>(end), '/');
}

Result<TrashedItem> moveIfListed(const Item& item, TrashMover& mover) {
  if (item.listed) {
    const Result<FileIdentity> now = FileIdentity::of(item.location.place);
    if (!now) return now.error();
    if (!isListed(*item.listed, now.value()))
      return SystemError::fromErrno(ESTALE, item.location.place);
  }
  if (item.mustBeEmpty && FileAccess::ofMachine().hasEntries(item.location.place))
    return SystemError::fromErrno(ENOTEMPTY, item.location.place);
  return Trash::moveRecording(item.location, mover);
}

}  // namespace

bool isListed(const FileIdentity& listed, const FileIdentity& now) {
  if (!listed.mayBeAsOldAs(now)) return false;
  if (listed.kind != FileIdentity::Kind::folder) return listed == now;
  return listed.kind == now.kind && listed.device == now.device && listed.inode == now.inode;
}

Moved move(std::vector<Item> items, TrashMover& mover, const std::function<bool()>& isStopped,
           const std::function<void(std::size_t done)>& done) {
  std::stable_sort(items.begin(), items.end(),
                   [](const Item& a, const Item& b) { return depthOf(a) > depthOf(b); });
  Moved moved;
  std::size_t tried = 0;
  for (; tried < items.size() && !isStopped(); done(++tried)) {
    const Item& item = items[tried];
    if (Result<TrashedItem> inTrash = moveIfListed(item, mover)) {
      moved.items.push_back(std::move(inTrash).value());
    } else {
      moved.errors.push_back({.path = item.location.original, .cause = inTrash.error()});
    }
  }
  for (; tried < items.size(); ++tried) moved.untried.push_back(items[tried].location.original);
  return moved;
}

}  // namespace tessaly::TrashBatch
