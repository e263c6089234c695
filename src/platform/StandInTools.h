// On Linux, the tools of macOS that the program asks are answered by one executable of our own with
// a subcommand for each. What is real on Linux (du, df, zip) is not among them.
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

// What to start in place of the tool at the absolute path `tool`; absent for a tool that is not
// stood in for.
std::optional<StandIn> standInFor(std::string_view tool);

// The executable as found from the folder of the running program: there, as in a build, or else in
// ../libexec/tessaly, as installed. Where it is in neither place, the path of the latter.
std::string executableFrom(const std::string& programFolder);

}  // namespace tessaly::StandInTools
