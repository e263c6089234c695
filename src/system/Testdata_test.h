// Recorded output of tools.
#pragma once

#include <string>

namespace tessaly {

// The bytes of a file in testdata/.
std::string testdata(const std::string& name);

}  // namespace tessaly
