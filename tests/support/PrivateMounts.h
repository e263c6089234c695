// Mounts for one test: in a child process with a mount namespace of its own, so that the mounts are
// invisible to others and disappear with it.
#pragma once

#include <functional>
#include <string>

#include "support/Needs.h"

namespace tessaly {

// Returns what `body` returned, by convention "" for "as expected", like inForkedChild(). Begins
// with "refused" if nothing can be mounted here; bodies use refusal() to say so too. For
// GTEST_SKIP.
std::string inPrivateMounts(const std::function<std::string()>& body);

// "refused", the need, and the system's text for errno.
std::string refusal(Need need = Need::mounts);

}  // namespace tessaly
