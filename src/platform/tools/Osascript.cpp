#include "platform/tools/Osascript.h"

#include <ostream>
#include <string_view>

#include "platform/tools/WholeLines.h"

namespace tessaly::tools {

namespace {

constexpr std::string_view countScript = "tell application \"Finder\" to count items of trash";
constexpr std::string_view emptyScript = "tell application \"Finder\" to empty trash";

int countTrash(Streams streams, TrashCan& trash) {
  const Result<std::int64_t> count = trash.count();
  if (!count) {
    streams.err << "osascript: the Trash cannot be counted: " << count.error().description()
                << "\n";
    return failed;
  }
  WholeLines(streams.out).print(std::to_string(count.value()));
  return done;
}

int emptyTrash(Streams streams, TrashCan& trash) {
  const Outcome outcome = trash.empty();
  if (outcome) return done;
  if (outcome.error().kind == SystemError::Kind::notSupported) {
    streams.err << "osascript: emptying the Trash is not available; nothing was deleted\n";
  } else {
    streams.err << "osascript: the Trash cannot be emptied: " << outcome.error().description()
                << "\n";
  }
  return failed;
}

}  // namespace

int osascript(const std::vector<std::string>& args, Streams streams, Seams seams) {
  if (args.size() == 1 && (args[0] == "--help" || args[0] == "-h")) {
    streams.out << "Usage: tessaly-tools osascript -e SCRIPT\n"
                   "\n"
                   "Scripts:\n"
                << "  " << countScript
                << "\n      prints how many items were thrown away, on all volumes\n"
                << "  " << emptyScript << "\n      deletes them for good; not available so far\n";
    return done;
  }
  if (args.size() != 2 || args[0] != "-e") {
    streams.err << "usage: osascript -e SCRIPT\n";
    return misused;
  }
  if (args[1] == countScript) return countTrash(streams, seams.trash);
  if (args[1] == emptyScript) return emptyTrash(streams, seams.trash);
  streams.err << "0:" << args[1].size()
              << ": execution error: this script is not understood (-1708)\n";
  return failed;
}

}  // namespace tessaly::tools
