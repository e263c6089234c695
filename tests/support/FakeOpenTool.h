// A tool that opens paths in applications, of which only one is there.
#pragma once

#include <string>
#include <vector>

#include "reclaim/OpenTool.h"

namespace tessaly {

class FakeOpenTool {
 public:
  OpenTool tool() {
    return {.start = [this](const OpenTool::Args& args) { started.push_back(args); },
            .run =
                [this](const OpenTool::Args& args) {
                  waitedFor.push_back(args);
                  return args.size() > 1 && args[1] == application;
                }};
  }

  std::string application;  // the one that is there; none while it is empty
  std::vector<OpenTool::Args> started;
  std::vector<OpenTool::Args> waitedFor;
};

}  // namespace tessaly
