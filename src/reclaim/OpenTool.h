// Runs the tool that opens a path in an application: with the program's environment, but without
// its standard streams and in a session of its own. A failure to start counts as a failure of the
// tool.
#pragma once

#include <functional>
#include <string>
#include <vector>

namespace tessaly {

struct OpenTool {
  using Args = std::vector<std::string>;

  // Starts the tool and does not wait; its result is not reported.
  std::function<void(const Args& args)> start;
  // Blocks until the tool has exited, and returns whether its status was 0.
  std::function<bool(const Args& args)> run;

  // /usr/bin/open. It exits once the application has been started, so the wait is short; if it
  // still runs after ten seconds, it is terminated and counts as failed.
  static OpenTool real();

  // The same with the tool at `path` and a wait of `patience` seconds.
  static OpenTool at(const std::string& path, double patience);
};

}  // namespace tessaly
