// The Trash of the user of this process, by the rules of the system.
#pragma once

#include <memory>

#include "platform/TrashMover.h"

namespace tessaly {

std::unique_ptr<TrashMover> userTrash();

}  // namespace tessaly
