#include "platform/linux/UserTrashCan.h"

#include <utility>
#include <vector>

#include "platform/linux/trash/CountItems.h"
#include "platform/linux/trash/EmptyTrashFolder.h"
#include "platform/linux/trash/InfoReserve.h"
#include "platform/linux/trash/UserTrashFolders.h"

namespace tessaly {

Result<std::int64_t> UserTrashCan::count() {
  const UserTrashFolders folders = userTrashFolders(config_);
  if (!folders.errors.empty()) return folders.errors.front();
  std::int64_t count = 0;
  for (const UserTrashFolder& trash : folders.all) {
    const Result<std::int64_t> items = countItems(trash);
    if (!items) return items.error();
    count += items.value();
  }
  return count;
}

EmptiedTrash UserTrashCan::empty() {
  UserTrashFolders folders = userTrashFolders(config_);
  EmptiedTrash result;
  for (const SystemError& error : folders.errors) result.addFailure(error);
  std::vector<TrashListing> listings;
  for (UserTrashFolder& trash : folders.all) {
    auto listing = listTrashFolder(std::move(trash), config_.user, clock_, result);
    if (listing) listings.push_back(std::move(*listing));
  }
  for (const TrashListing& listing : listings) {
    emptyTrashFolder(listing, config_.user, result);
    // A full disk may have used up the reserve; now there may be space to refill it.
    if (listing.folder.path == config_.homeTrash) {
      InfoReserve::fill(listing.folder.folder, InfoReserve::Where::whereItIsKept);
    }
  }
  return result;
}

}  // namespace tessaly
