// The tool that opens a path in an application, as it is run here: with our environment, apart from
// our streams and our session. A failure to start it is told as a failure of its own.
#pragma once

#include <functional>
#include <string>
#include <vector>

namespace tessaly {

struct OpenTool {
  using Args = std::vector<std::string>;

  // Starts it and does not wait; what becomes of it is not told.
  std::function<void(const Args& args)> start;
  // Blocks until it has exited, and says whether its status was 0.
  std::function<bool(const Args& args)> run;

  // /usr/bin/open. It exits once the application has been started, so that waiting for it is short;
  // one that still runs after ten seconds is asked to end, and has failed.
  static OpenTool real();

  // The same with the tool at `path`, waited for so many seconds.
  static OpenTool at(const std::string& path, double patience);
};

}  // namespace tessaly
