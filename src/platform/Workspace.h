// What the desktop does with a file on request: show it in its file viewer, or open it in its own
// application. Paths are absolute, as bytes. Neither call waits for the other program, and neither
// reports a failure. Main thread only.
#pragma once

#include <string>
#include <vector>

namespace tessaly {

class Workspace {
 public:
  virtual ~Workspace() = default;

  // Opens the file viewer on the folders that hold `paths`, with those items selected.
  virtual void reveal(const std::vector<std::string>& paths) = 0;

  // Opens `path` in the application that is the default for it.
  virtual void open(const std::string& path) = 0;
};

}  // namespace tessaly
