#include "platform/UserTrash.h"

#include "platform/linux/trash/UserTrashMover.h"

namespace tessaly {

std::unique_ptr<TrashMover> userTrash() {
  return std::make_unique<UserTrashMover>();
}

}  // namespace tessaly
