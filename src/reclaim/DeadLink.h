// An entry of the list of dead links, whose targets do not exist. Identified by its path. Names and
// paths are bytes.
#pragma once

#include <string>

namespace tessaly {

struct DeadLink {
  std::string name = {};
  std::string path = {};         // of the link
  std::string destination = {};  // as stored in the link, maybe relative; empty if unreadable
  std::string kind = {};         // "symlink" or "alias"
  // Whether a program made it to show that it is running: such a link never has a target.
  bool isLock = false;

  friend bool operator==(const DeadLink&, const DeadLink&) = default;
};

}  // namespace tessaly
