// A mover that lets the program end between two moves but never within one: a move of an item and
// its record are two steps on disk, and ending in between would leave a record without an item.
//
// Safe from any thread.
#pragma once

#include <cstddef>
#include <memory>
#include <mutex>
#include <string>

#include "platform/TrashMover.h"

namespace tessaly {

class GuardedTrashMover final : public TrashMover {
 public:
  explicit GuardedTrashMover(std::unique_ptr<TrashMover> mover);

  // From now on each call returns ECANCELED and moves nothing. Does not wait for a move under way.
  void close();

  // Whether a move is under way. After close(), once false, it stays false.
  bool isMoving() const;

  Result<ItemInTrash> moveToTrash(const std::string& path) override;
  Outcome putBack(const ItemInTrash& item, const std::string& original) override;

 private:
  class Passage;

  const std::unique_ptr<TrashMover> mover_;
  mutable std::mutex mutex_;
  std::size_t moving_ = 0;
  bool isClosed_ = false;
};

}  // namespace tessaly
