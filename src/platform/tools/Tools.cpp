#include "platform/tools/Tools.h"

#include <algorithm>
#include <array>
#include <ostream>
#include <string_view>

#include "platform/tools/Mdfind.h"
#include "platform/tools/Open.h"
#include "platform/tools/Osascript.h"
#include "platform/tools/Tmutil.h"

namespace tessaly::tools {

namespace {

struct Subcommand {
  std::string_view name;
  std::string_view purpose;
  int (*run)(const std::vector<std::string>& args, Streams streams, const Services& services);
};

constexpr std::array<Subcommand, 4> subcommands = {{
    {"mdfind", "finds files by size or name", mdfind},
    {"open", "opens a file or folder in an application", open},
    {"osascript", "counts what is in the Trash, and empties it", osascript},
    {"tmutil", "lists the snapshots of the system's disk", tmutil},
}};

void printHelp(std::ostream& out) {
  out << "Usage: tessaly-tools TOOL ARGUMENTS...\n"
         "       tessaly-tools TOOL --help\n"
         "\n"
         "Answers as a tool of another system would, as far as Tessaly asks it.\n"
         "\n"
         "Tools:\n";
  for (const Subcommand& subcommand : subcommands) {
    out << "  " << subcommand.name << "  " << subcommand.purpose << "\n";
  }
}

}  // namespace

int run(const std::vector<std::string>& args, Streams streams, const Services& services) {
  if (args.empty()) {
    streams.err << "tessaly-tools: which tool? See tessaly-tools --help\n";
    return misused;
  }
  if (args[0] == "--help" || args[0] == "-h") {
    printHelp(streams.out);
    return done;
  }
  const auto* const found =
      std::find_if(subcommands.begin(), subcommands.end(),
                   [&](const Subcommand& subcommand) { return subcommand.name == args[0]; });
  if (found == subcommands.end()) {
    streams.err << "tessaly-tools: no tool is called \"" << args[0]
                << "\". See tessaly-tools --help\n";
    return misused;
  }
  return found->run({args.begin() + 1, args.end()}, streams, services);
}

}  // namespace tessaly::tools
