// The gate's actions on a fake machine.
#pragma once

#include <string>
#include <vector>

#include "app/overlays/AccessGateActions.h"
#include "support/FakeWorkspace.h"
#include "support/HandSteppedDispatch.h"
#include "support/MemorySettings.h"

namespace tessaly {

struct AccessGateFixture {
  // The recorded actions in order: "give up", "start PATH", "quit".
  std::vector<std::string> done;
  bool isGranted = false;
  int probes = 0;
  HandSteppedDispatch dispatch;
  FakeWorkspace workspace;
  MemorySettings settings;
  AccessController access{settings, [this] {
                            ++probes;
                            return isGranted;
                          }};
  AccessGateActions actions{
      {.access = access,
       .workspace = workspace,
       .relaunch = {.dispatch = dispatch,
                    .giveUpInstance = [this] { done.emplace_back("give up"); },
                    .quit = [this] { done.emplace_back("quit"); },
                    .application = "/opt/tessaly",
                    .launch = [this](const Process::Launch& launch) -> Outcome {
                      done.push_back("start " + launch.args.back());
                      return succeeded();
                    }}}};
};

}  // namespace tessaly
