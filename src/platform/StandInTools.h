// On Linux, an executable of the program's own replaces the tools of macOS that it uses, with a
// subcommand for each. Tools that exist on Linux (du, df, zip) are not replaced.
//
// Safe from any thread.
#pragma once

#include <optional>
#include <string>
#include <string_view>

namespace tessaly::StandInTools {

struct StandIn {
  std::string executable;
  std::string subcommand;  // its first argument

  friend bool operator==(const StandIn&, const StandIn&) = default;
};

// The program to start instead of the tool at the absolute path `tool`; absent if the tool is not
// replaced.
std::optional<StandIn> standInFor(std::string_view tool);

// The executable, searched from the folder of the running program: in that folder, as in a build,
// or else in ../libexec/tessaly, as installed. If it is in neither, the latter path.
std::string executableFrom(const std::string& programFolder);

}  // namespace tessaly::StandInTools
