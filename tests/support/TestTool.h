// Starts and controls the program in tests/support/TestToolMain.cpp, which describes its steps.
#pragma once

#include <string>

#include "support/Descriptor.h"

namespace tessaly {

// Its absolute path. The test must depend on the target tessaly_test_tool.
std::string testTool();

// A file that blocks every tool at the step "hold" until it is released.
class Hold {
 public:
  // Creates `path`.
  explicit Hold(std::string path);

  const std::string& path() const { return path_; }
  void release() { lock_ = Descriptor(); }

 private:
  std::string path_;
  Descriptor lock_;
};

// A FIFO on which a tool reports with the step "tell".
class ToolMessages {
 public:
  // Creates `path`.
  explicit ToolMessages(std::string path);

  const std::string& path() const { return path_; }

  // Blocks until a tool reaches that step. Throws after some minutes.
  void wait() const;

 private:
  std::string path_;
};

}  // namespace tessaly
