// A tool that opens paths in applications, with one application installed.
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

  std::string application;  // the installed one; empty: none
  std::vector<OpenTool::Args> started;
  std::vector<OpenTool::Args> waitedFor;
};

}  // namespace tessaly
