// The Trash of one user by the freedesktop.org Trash specification, version 1.0: a folder in the
// user's data directory for the home, and one at the top of each other file system.
#pragma once

#include <utility>

#include "platform/TrashCan.h"
#include "platform/linux/trash/TrashConfig.h"
#include "platform/linux/trash/TrashListing.h"

namespace tessaly {

class UserTrashCan final : public TrashCan {
 public:
  explicit UserTrashCan(TrashConfig config = TrashConfig::current(),
                        FolderClock clock = clockOfFolder)
      : config_(std::move(config)), clock_(std::move(clock)) {}

  // Fails if a Trash of the user exists and cannot be read. A file system whose top the user may
  // not read has none.
  Result<std::int64_t> count() override;

  // Lists all folders before it deletes anything in any of them, and deletes only listed items.
  // Needs a system that identifies mounts (Linux 5.8); on an older one nothing is deleted, and the
  // errors are of the kind notSupported.
  EmptiedTrash empty() override;

 private:
  TrashConfig config_;
  FolderClock clock_;
};

}  // namespace tessaly
