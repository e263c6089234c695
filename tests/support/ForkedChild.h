// Runs a piece of a test in a forked child: changes to the whole process (limits, users, roots)
// affect only the child.
#pragma once

#include <functional>
#include <string>

namespace tessaly {

// Returns what `body` returned, by convention "" for "as expected"; if the child ended in another
// way, a text that says how. `body` must not use assertions of the test framework: they would be
// lost.
std::string inForkedChild(const std::function<std::string()>& body);

// The same as a user without files and privileges if the tests run as root; as the present user
// otherwise.
std::string asOtherUser(const std::function<std::string()>& body);

}  // namespace tessaly
