#include <algorithm>
#include <limits>
#include <sstream>
#include <string>
#include <vector>

#include "Target.h"
#include "reclaim/BigWinsEngine.h"
#include "scan/FileKind.h"

namespace tessaly::fuzz {

namespace {

constexpr double now = 1'800'000'000;

// The length of a path decides what is known of the file.
class MadeUpFiles final : public FileAccess {
 public:
  Kind kindOf(const std::string&) const override { return Kind::file; }
  bool canList(const std::string&) const override { return false; }
  bool hasEntries(const std::string&) const override { return false; }
  Values valuesOf(const std::string& path) const override {
    const auto length = static_cast<std::int64_t>(path.size());
    Values values;
    if (length % 3 != 0)
      values.modified = length % 5 == 0 ? now : -1e300 * static_cast<double>(length);
    if (length % 4 != 0) values.allocated = length * 512;
    if (length % 7 != 0) values.size = length;
    return values;
  }
  bool canOpen(const std::string&) const override { return false; }
  bool canReadWhole(const std::string&) const override { return false; }
};

std::vector<std::string> linesOf(const std::string& text) {
  std::vector<std::string> lines;
  std::istringstream stream(text);
  for (std::string line; std::getline(stream, line);) {
    if (!line.empty()) lines.push_back(line);
  }
  return lines;
}

}  // namespace

void tryInput(std::string_view input) {
  const std::string text(input);
  const auto run = [&](const std::string&, const std::vector<std::string>&, double) -> std::string {
    return std::string(text);
  };
  const std::vector<std::string> lines = linesOf(text);

  const std::int64_t snapshots = BigWinsEngine::localSnapshotCount(run);
  require(snapshots == std::count_if(lines.begin(), lines.end(),
                                     [](const std::string& line) {
                                       return line.find("com.apple.TimeMachine") !=
                                              std::string::npos;
                                     }),
          "each line with the mark is a snapshot");

  const MadeUpFiles files;
  const auto clock = [] { return now; };
  std::vector<std::string> expected;
  for (std::size_t i = 0; i < std::min<std::size_t>(lines.size(), 80); ++i) {
    if (files.valuesOf(lines[i]).modified.value_or(0) < now) expected.push_back(lines[i]);
  }
  std::vector<std::string> found;
  std::int64_t last = std::numeric_limits<std::int64_t>::max();
  for (const LargeOldFile& file :
       BigWinsEngine::largeOld("/", run, {.files = files, .now = clock})) {
    found.push_back(file.path);
    require(file.bytes >= 0 && file.bytes <= last, "the largest comes first");
    last = file.bytes;
    require(!file.name.empty() && file.path.find(file.name) != std::string::npos,
            "a name is a part of the path");
    const auto kind = fileKindFromRawText(file.kind);
    require(kind && *kind != FileKind::folder, "a file has the kind of a file");
  }
  std::sort(expected.begin(), expected.end());
  std::sort(found.begin(), found.end());
  require(found == expected, "the idle files among the first 80 lines are found");
}

}  // namespace tessaly::fuzz
