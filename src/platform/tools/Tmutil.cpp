#include "platform/tools/Tmutil.h"

#include <algorithm>
#include <cstdint>
#include <ostream>
#include <string_view>

#include "platform/tools/Printable.h"
#include "platform/tools/SnapshotList.h"
#include "platform/tools/WholeLines.h"

namespace tessaly::tools {

namespace {

void printHelp(std::ostream& out) {
  out << "Usage: tessaly-tools tmutil [--machine DIR] listlocalsnapshots /\n"
         "       tessaly-tools tmutil [--machine DIR] thinlocalsnapshots / BYTES URGENCY\n"
         "\n"
         "  listlocalsnapshots  lists the snapshots of / that snapper and timeshift keep, as far\n"
         "                      as you may read their records\n"
         "  thinlocalsnapshots  deletes nothing, and says what an administrator can run\n"
         "  --machine DIR       the machine whose root folder is DIR\n";
}

std::string lineOf(const Snapshot& snapshot) {
  constexpr std::size_t longestPurpose = 60;
  const bool isSnapper = snapshot.keeper == Snapshot::Keeper::snapper;
  std::string line = isSnapper ? "snapper " : "timeshift ";
  line += printable(snapshot.name);
  if (!snapshot.made.empty()) line += ", " + snapshot.made;
  if (!snapshot.purpose.empty()) line += ", " + printable(snapshot.purpose, longestPurpose);
  return line + " (in place of com.apple.TimeMachine)";
}

int list(const std::string& machine, Streams streams) {
  WholeLines lines(streams.out);
  lines.print("Snapshots for disk /:");
  const std::vector<Snapshot> snapshots = snapshotsOf(machine);
  const bool isWhole = std::ranges::all_of(
      snapshots, [&lines](const Snapshot& one) { return lines.print(lineOf(one)); });
  if (isWhole) return done;
  streams.err << "tmutil: there are more than fit into the answer\n";
  return incomplete;
}

// At most 180 characters, as many as the caller shows.
std::string adviceFor(const std::string& machine, const Programs& programs) {
  const bool hasSnapper = programs.find("snapper").has_value();
  const bool hasTimeshift = programs.find("timeshift").has_value();
  const std::string config = snapperConfigOf(machine);
  const std::string snapper = config == "root" ? "sudo snapper" : "sudo snapper -c " + config;
  if (hasSnapper && hasTimeshift) {
    return "No snapshot was deleted. An administrator can: " + snapper + " delete NUMBER (see " +
           snapper + " list), or sudo timeshift --delete";
  }
  if (hasSnapper) {
    return "No snapshot was deleted. An administrator can delete some: " + snapper +
           " list, then " + snapper + " delete NUMBER";
  }
  if (hasTimeshift) {
    return "No snapshot was deleted. An administrator can choose which to delete: "
           "sudo timeshift --delete";
  }
  return "No snapshot was deleted: neither snapper nor timeshift is installed.";
}

bool isNumber(std::string_view text) {
  return !text.empty() && text.find_first_not_of("0123456789") == std::string_view::npos;
}

int misuse(std::ostream& err) {
  err << "usage: tmutil listlocalsnapshots /, or tmutil thinlocalsnapshots / BYTES URGENCY\n";
  return misused;
}

int otherDisk(const std::string& path, std::ostream& err) {
  err << "tmutil: only the snapshots of / are known, not those of " << printable(path) << "\n";
  return failed;
}

}  // namespace

int tmutil(const std::vector<std::string>& args, Streams streams, const Services& services) {
  if (args.size() == 1 && (args[0] == "--help" || args[0] == "-h")) {
    printHelp(streams.out);
    return done;
  }
  const bool isOther = args.size() >= 2 && args[0] == "--machine" && !args[1].empty();
  const std::string machine = isOther ? args[1] : "/";
  const std::vector<std::string> rest(args.begin() + (isOther ? 2 : 0), args.end());
  if (rest.size() == 2 && rest[0] == "listlocalsnapshots") {
    return rest[1] == "/" ? list(machine, streams) : otherDisk(rest[1], streams.err);
  }
  if (rest.size() == 4 && rest[0] == "thinlocalsnapshots" && isNumber(rest[2]) &&
      isNumber(rest[3])) {
    if (rest[1] != "/") return otherDisk(rest[1], streams.err);
    WholeLines(streams.out).print(adviceFor(machine, services.programs));
    return failed;
  }
  return misuse(streams.err);
}

}  // namespace tessaly::tools
