#include "platform/tools/Programs.h"

#include <cstdlib>

#include "platform/ProgramSearch.h"

namespace tessaly::tools {

Programs Programs::real() {
  return {
      .variable = [](const std::string& name) -> std::string {
        const char* const value = std::getenv(name.c_str());
        return value != nullptr ? value : "";
      },
      .start = [](const Process::Launch& launch) -> Outcome {
        const Result<Process> started = Process::launch(launch);
        if (!started) return started.error();
        return succeeded();
      },
      .run = [](const Process::Launch& launch) -> Result<Process::Exit> {
        Result<Process> started = Process::launch(launch);
        if (!started) return started.error();
        started.value().waitUntil(Deadline::never());
        return *started.value().exit();
      },
  };
}

std::optional<std::string> Programs::find(const std::string& name) const {
  return ProgramSearch::find(name, variable("PATH"));
}

bool Programs::haveDisplay() const {
  return !variable("WAYLAND_DISPLAY").empty() || !variable("DISPLAY").empty();
}

}  // namespace tessaly::tools
