#include "platform/tools/Osascript.h"

#include <algorithm>
#include <csignal>
#include <cstddef>
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

// On one line, and short enough for a pipe that nobody reads: paths may have any length and contain
// line feeds.
std::string printable(SystemError error) {
  constexpr std::size_t most = 4096;
  if (error.path.size() > most) error.path = error.path.substr(0, most) + "...";
  std::string text = error.description();
  const auto isControl = [](char byte) { return static_cast<unsigned char>(byte) < ' '; };
  std::replace_if(text.begin(), text.end(), isControl, '?');
  return text;
}

// Ignores SIGTERM. The caller may send it when it stops waiting; Tessaly then tells the user that
// the emptying goes on. The emptying is completed all the same: half of it would leave remains that
// no list shows, without freeing the space. It never deletes more than was in the Trash at the time
// of the request.
class Undisturbed {
 public:
  Undisturbed() : before_(std::signal(SIGTERM, SIG_IGN)) {}
  ~Undisturbed() { std::signal(SIGTERM, before_); }
  Undisturbed(const Undisturbed&) = delete;
  Undisturbed& operator=(const Undisturbed&) = delete;

 private:
  void (*before_)(int);
};

int emptyTrash(Streams streams, TrashCan& trash) {
  const Undisturbed whileItLasts;
  const EmptiedTrash emptied = trash.empty();
  if (emptied.isComplete()) return done;
  streams.err << "0:" << emptyScript.size() << ": execution error: " << emptied.failures
              << (emptied.failures == 1 ? " item" : " items")
              << " in the Trash cannot be deleted: " << printable(emptied.errors.front())
              << " (-10000)\n";
  return failed;
}

}  // namespace

int osascript(const std::vector<std::string>& args, Streams streams, const Services& services) {
  if (args.size() == 1 && (args[0] == "--help" || args[0] == "-h")) {
    streams.out << "Usage: tessaly-tools osascript -e SCRIPT\n"
                   "\n"
                   "Scripts:\n"
                << "  " << countScript
                << "\n      prints how many items were thrown away, on all volumes\n"
                << "  " << emptyScript << "\n      deletes them for good\n";
    return done;
  }
  if (args.size() != 2 || args[0] != "-e") {
    streams.err << "usage: osascript -e SCRIPT\n";
    return misused;
  }
  if (args[1] == countScript) return countTrash(streams, services.trash);
  if (args[1] == emptyScript) return emptyTrash(streams, services.trash);
  streams.err << "0:" << args[1].size()
              << ": execution error: this script is not understood (-1708)\n";
  return failed;
}

}  // namespace tessaly::tools
