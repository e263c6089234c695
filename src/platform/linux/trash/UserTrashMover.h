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
  // item.
  Result<std::string> moveToTrash(const std::string& path) override;

  // The other way round: first the item, then that file is removed.
  Outcome putBack(const std::string& trashPath, const std::string& original) override;

 private:
  TrashPlace place_;
};

}  // namespace tessaly
