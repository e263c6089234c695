#include "reclaim/OpenTool.h"

#include "platform/Deadline.h"
#include "platform/Process.h"

namespace tessaly {

namespace {

Result<Process> launched(const std::string& path, const OpenTool::Args& args) {
  // The tool's messages are for people who run it by hand.
  return Process::launch({.path = path, .args = args, .isDetached = true});
}

}  // namespace

OpenTool OpenTool::real() {
  constexpr double patience = 10;
  return at("/usr/bin/open", patience);
}

OpenTool OpenTool::at(const std::string& path, double patience) {
  return {
      .start = [path](const Args& args) { (void)launched(path, args); },
      .run =
          [path, patience](const Args& args) {
            Result<Process> tool = launched(path, args);
            if (!tool) return false;
            if (tool.value().waitUntil(Deadline::after(patience))) {
              return tool.value().exit()->isSuccess();
            }
            // So that it does not open something later, beside the application that is tried next.
            tool.value().terminate();
            return false;
          },
  };
}

}  // namespace tessaly
