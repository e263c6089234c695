// How a subcommand finds and starts programs of the desktop.
#pragma once

#include <functional>
#include <optional>
#include <string>

#include "platform/Process.h"
#include "platform/SystemError.h"

namespace tessaly::tools {

struct Programs {
  // The value of an environment variable; empty if it is not set.
  std::function<std::string(const std::string& name)> variable;
  // Starts a program and does not wait for it. It outlives this process.
  std::function<Outcome(const Process::Launch& launch)> start;
  // Starts a program and waits until it has ended.
  std::function<Result<Process::Exit>(const Process::Launch& launch)> run;

  static Programs real();

  // The absolute path of a program on the PATH; absent if there is none.
  std::optional<std::string> find(const std::string& name) const;

  // Whether a program could open a window.
  bool haveDisplay() const;
};

}  // namespace tessaly::tools
