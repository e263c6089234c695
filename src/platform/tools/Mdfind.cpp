#include "platform/tools/Mdfind.h"

#include <algorithm>
#include <cerrno>
#include <charconv>
#include <ostream>
#include <string_view>
#include <system_error>

#include "platform/tools/Printable.h"
#include "platform/tools/SearchQuery.h"
#include "platform/tools/SeparateProcess.h"
#include "platform/tools/WholeLines.h"

namespace tessaly::tools {

namespace {

void printHelp(std::ostream& out) {
  out << "Usage: tessaly-tools mdfind -onlyin FOLDER \"kMDItemFSSize >= BYTES\"\n"
         "       tessaly-tools mdfind -onlyin FOLDER -name TEXT\n"
         "\n"
         "Walks the folder and prints the paths that it finds, one on each line:\n"
         "\n"
         "  kMDItemFSSize >= BYTES\n"
         "             your own files of that length and more, those that take the most of the\n"
         "             disk first; a file with several names once; nothing in folders that belong\n"
         "             to the system, such as /usr\n"
         "  -name TEXT\n"
         "             items whose name contains the text, whatever its case and accents: names\n"
         "             that begin with it first, then short paths, hidden folders last\n"
         "\n"
         "Trash folders are left out, and paths that are not UTF-8 or have a line feed. Links are\n"
         "not followed.\n"
         "\n"
         "The status is 0 if everything is printed, 3 if there may be more: a search ends after\n"
         "12 seconds (--within SECONDS before the other arguments changes that), and an answer\n"
         "at 60 KiB. It is 1 or 2 if there is no answer.\n";
}

// Callers wait for 15 seconds and more.
constexpr double usualPatience = 12;

bool readSeconds(std::string_view text, double& seconds) {
  int number = 0;
  const char* const end = text.data() + text.size();
  const auto [stop, error] = std::from_chars(text.data(), end, number);
  seconds = number;
  return error == std::errc() && stop == end && number >= 1 && number <= 3600;
}

std::string explanation(const SystemError& error) {
  if (error.code == EILSEQ) {
    return printable(error.path) + ": a path that is not UTF-8 or has a line feed";
  }
  return printable(error.description());
}

int print(const LiveSearch::Answer& answer, Streams streams) {
  WholeLines lines(streams.out);
  const bool isWhole = std::ranges::all_of(
      answer.paths, [&lines](const std::string& path) { return lines.print(path); });
  if (answer.isLate) {
    streams.err << "mdfind: the time was up: there may be more\n";
    return incomplete;
  }
  if (answer.isCut || !isWhole) {
    streams.err << "mdfind: there are more than fit into the answer\n";
    return incomplete;
  }
  if (answer.unreadable > 0) {
    streams.err << "mdfind: " << answer.unreadable << (answer.unreadable == 1 ? " item" : " items")
                << " could not be read: " << printable(answer.firstUnreadable) << "\n";
  }
  return done;
}

}  // namespace

int mdfind(const std::vector<std::string>& args, Streams streams, const Services& /*services*/) {
  if (args.size() == 1 && (args[0] == "--help" || args[0] == "-h")) {
    printHelp(streams.out);
    return done;
  }
  double patience = usualPatience;
  const bool isOther = !args.empty() && args[0] == "--within";
  if (isOther && !readSeconds(args.size() > 1 ? args[1] : "", patience)) {
    streams.err << "mdfind: --within needs a number of seconds from 1 to 3600\n";
    return misused;
  }
  const std::vector<std::string> rest(args.begin() + (isOther ? 2 : 0), args.end());
  const LiveSearch::Settings settings = LiveSearch::Settings::within(Deadline::after(patience));
  // The search itself may take a moment more to end.
  constexpr double grace = 1.5;
  return inSeparateProcess([&](Streams own) { return mdfindWith(rest, own, settings); }, streams,
                           Deadline::after(patience + grace));
}

int mdfindWith(const std::vector<std::string>& args, Streams streams,
               const LiveSearch::Settings& settings) {
  const ReadQuery read = queryFrom(args);
  if (!read.query) {
    streams.err << read.problem << "\n";
    return read.isMisuse ? misused : failed;
  }
  const Result<LiveSearch::Answer> answer = LiveSearch::run(*read.query, settings);
  if (!answer) {
    streams.err << "mdfind: " << explanation(answer.error()) << "\n";
    return failed;
  }
  return print(answer.value(), streams);
}

}  // namespace tessaly::tools
