// Runs a piece of a test in a forked child: what changes the whole process (limits, users, roots)
// stays there.
#pragma once

#include <functional>
#include <string>

namespace tessaly {

// What `body` returned, "" by habit for "as expected". When the child ends in any other way, a text
// that tells how. No assertions of the test framework in `body`: they would be lost.
std::string inForkedChild(const std::function<std::string()>& body);

// The same as a user who owns nothing and has no privileges, when the tests run as root; as the
// present user otherwise.
std::string asOtherUser(const std::function<std::string()>& body);

}  // namespace tessaly
