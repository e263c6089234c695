#include "platform/GuardedTrashMover.h"

#include <cerrno>
#include <utility>

namespace tessaly {

// One move from beginning to end; not open if the guard is closed.
class GuardedTrashMover::Passage {
 public:
  explicit Passage(GuardedTrashMover& guard) : guard_(guard) {
    const std::lock_guard lock(guard_.mutex_);
    isOpen_ = !guard_.isClosed_;
    if (isOpen_) ++guard_.moving_;
  }
  ~Passage() {
    if (!isOpen_) return;
    const std::lock_guard lock(guard_.mutex_);
    --guard_.moving_;
  }
  Passage(const Passage&) = delete;
  Passage& operator=(const Passage&) = delete;

  bool isOpen() const { return isOpen_; }

 private:
  GuardedTrashMover& guard_;
  bool isOpen_ = false;
};

GuardedTrashMover::GuardedTrashMover(std::unique_ptr<TrashMover> mover)
    : mover_(std::move(mover)) {}

void GuardedTrashMover::close() {
  const std::lock_guard lock(mutex_);
  isClosed_ = true;
}

bool GuardedTrashMover::isMoving() const {
  const std::lock_guard lock(mutex_);
  return moving_ > 0;
}

Result<ItemInTrash> GuardedTrashMover::moveToTrash(const std::string& path) {
  const Passage passage(*this);
  if (!passage.isOpen()) return SystemError::fromErrno(ECANCELED, path);
  return mover_->moveToTrash(path);
}

Outcome GuardedTrashMover::putBack(const ItemInTrash& item, const std::string& original) {
  const Passage passage(*this);
  if (!passage.isOpen()) return SystemError::fromErrno(ECANCELED, original);
  return mover_->putBack(item, original);
}

}  // namespace tessaly
