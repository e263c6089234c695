// A link whose target is gone, an entry of the list of dead links. Identified by its path. Names
// and paths are bytes.
#pragma once

#include <string>

namespace tessaly {

struct DeadLink {
  std::string name = {};
  std::string path = {};         // of the link
  std::string destination = {};  // as the link has it, maybe relative; empty if it is not readable
  std::string kind = {};         // "symlink" or "alias"

  friend bool operator==(const DeadLink&, const DeadLink&) = default;
};

}  // namespace tessaly
