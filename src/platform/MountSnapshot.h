// What is mounted where, as the system told it at one moment. Walks need it before they begin. To
// ask for it costs more than to walk a small folder, so whoever makes many walks at a time asks
// once and hands the answer to all of them.
#pragma once

#include <memory>

namespace tessaly {

// Opaque and immutable; safe from any thread.
class MountSnapshot;

// As of now; without any mount where the system does not tell. Never null.
std::shared_ptr<const MountSnapshot> mountsOfNow();

}  // namespace tessaly
