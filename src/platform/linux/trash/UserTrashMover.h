// The Trash of one user by the freedesktop.org Trash specification, version 1.0. Needs a system
// that tells mounts apart (Linux 5.8); on an older one everything is an error of the kind
// notSupported.
#pragma once

#include <string>
#include <utility>

#include "platform/TrashMover.h"
#include "platform/linux/trash/TrashPlace.h"

namespace tessaly {

class UserTrashMover final : public TrashMover {
 public:
  explicit UserTrashMover(TrashPlace place = TrashPlace::current()) : place_(std::move(place)) {}

  // First the file that tells where the item came from is written, then the item is moved in one
  // step. Ended in between, the program leaves the item where it was, beside such a file without an
  // item. Another program may take such a file for one left over, so it is written again where it
  // is gone after the move; where it cannot be, the item goes back.
  Result<ItemInTrash> moveToTrash(const std::string& path) override;

  // The other way round: first the item, then that file is removed. The item is looked at
  // immediately before the move and again at its end; what got its name between the two goes back
  // to where it was.
  Outcome putBack(const ItemInTrash& item, const std::string& original) override;

 private:
  TrashPlace place_;
};

}  // namespace tessaly
