// Starting and steering the program that tests start: tests/support/TestToolMain.cpp tells its
// steps.
#pragma once

#include <string>

#include "support/Descriptor.h"

namespace tessaly {

// Its absolute path. The test must depend on the target tessaly_test_tool.
std::string testTool();

// A file that holds up every tool with the step "hold" until it is released.
class Hold {
 public:
  // `path` is made.
  explicit Hold(std::string path);

  const std::string& path() const { return path_; }
  void release() { lock_ = Descriptor(); }

 private:
  std::string path_;
  Descriptor lock_;
};

// A FIFO on which a tool with the step "tell" reports.
class ToolMessages {
 public:
  // `path` is made.
  explicit ToolMessages(std::string path);

  const std::string& path() const { return path_; }

  // Blocks until a tool has come to that step. Throws where none does so for minutes.
  void wait() const;

 private:
  std::string path_;
};

}  // namespace tessaly
