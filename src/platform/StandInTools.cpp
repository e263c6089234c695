#include "platform/StandInTools.h"

#include <algorithm>
#include <array>
#include <climits>
#include <unistd.h>

namespace tessaly::StandInTools {

namespace {

struct Entry {
  std::string_view tool;
  std::string_view subcommand;
};

constexpr std::array<Entry, 2> entries = {{
    {"/usr/bin/open", "open"},
    {"/usr/bin/osascript", "osascript"},
}};

// The folder that the running program was started from, even if the file has been replaced since.
std::string programFolder() {
  char path[PATH_MAX];
  const ssize_t length = readlink("/proc/self/exe", path, sizeof path);
  const std::string_view text(path, length > 0 ? static_cast<std::size_t>(length) : 0);
  return std::string(text.substr(0, text.rfind('/')));
}

}  // namespace

std::optional<StandIn> standInFor(std::string_view tool) {
  const auto* const entry =
      std::find_if(entries.begin(), entries.end(), [&](const Entry& e) { return e.tool == tool; });
  if (entry == entries.end()) return std::nullopt;
  return StandIn{executableFrom(programFolder()), std::string(entry->subcommand)};
}

std::string executableFrom(const std::string& programFolder) {
  std::string beside = programFolder + "/tessaly-tools";
  if (access(beside.c_str(), X_OK) == 0) return beside;
  return programFolder + "/../libexec/tessaly/tessaly-tools";
}

}  // namespace tessaly::StandInTools
