// Mounting for a test alone: in a child process with a list of mounts of its own, so that nobody
// else sees what it mounts and all is gone with it.
#pragma once

#include <functional>
#include <string>

#include "support/Needs.h"

namespace tessaly {

// What `body` returned, "" by habit for "as expected", as inForkedChild() has it. Begins with
// "refused" where nothing can be mounted here; bodies use refusal() to say so too. For GTEST_SKIP.
std::string inPrivateMounts(const std::function<std::string()>& body);

// "refused", what is needed, and the system's words for errno.
std::string refusal(Need need = Need::mounts);

}  // namespace tessaly
