// A mover that lets the program end between two moves and never within one: a move of an item and
// the record of it are two steps on the disk, and ending in between would leave a record of
// nothing.
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

  // From now on nothing is moved any more: each call gives ECANCELED. Does not wait for a move that
  // is under way.
  void close();

  // Whether a move is under way. After close() this is false for good once it is.
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
