// The mounts of the system at one moment. A walk needs them before it begins. Reading them costs
// more than walking a small folder, so code that makes many walks reads them once and passes them
// to all walks.
#pragma once

#include <memory>

namespace tessaly {

// Opaque and immutable; safe from any thread.
class MountSnapshot;

// The current mounts; empty if the system does not list them. Never null.
std::shared_ptr<const MountSnapshot> mountsOfNow();

}  // namespace tessaly
