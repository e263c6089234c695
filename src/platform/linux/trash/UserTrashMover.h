// The Trash of one user by the freedesktop.org Trash specification, version 1.0. Needs a system
// that identifies mounts (Linux 5.8); on an older one all calls fail with notSupported.
#pragma once

#include <string>
#include <utility>

#include "platform/TrashMover.h"
#include "platform/linux/trash/TrashConfig.h"

namespace tessaly {

class UserTrashMover final : public TrashMover {
 public:
  explicit UserTrashMover(TrashConfig config = TrashConfig::current())
      : config_(std::move(config)) {}

  // First writes the record with the item's original path, then moves the item in one step. If the
  // program ends in between, the item stays where it was, and the record has no item. Another
  // program may delete such a record as a leftover, so it is written again if it is gone after the
  // move; if that fails, the item is moved back.
  Result<ItemInTrash> moveToTrash(const std::string& path) override;

  // In reverse: first moves the item, then removes the record. The item is checked immediately
  // before and after the move; another item that got its name in between is moved back.
  Outcome putBack(const ItemInTrash& item, const std::string& original) override;

 private:
  TrashConfig config_;
};

}  // namespace tessaly
