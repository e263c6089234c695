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

}  // namespace tessaly::StandInTools
