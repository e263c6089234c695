#include "system/VolumeEngine.h"

#include <algorithm>
#include <optional>
#include <unordered_set>
#include <utility>

#include "scan/PathName.h"
#include "system/DfTable.h"
#include "system/ToolOutput.h"
#include "system/ToolText.h"

namespace tessaly::VolumeEngine {

namespace {

bool startsWithAny(std::string_view path, const std::vector<std::string>& prefixes) {
  return std::any_of(prefixes.begin(), prefixes.end(),
                     [path](const std::string& prefix) { return path.starts_with(prefix); });
}

// The name to show a mount point by; absent where it is no volume to list.
std::optional<std::string> listedName(const std::string& path, const VolumePlaces& places) {
  if (places.skipMounts.contains(path)) return std::nullopt;
  const auto kept = places.keptMounts.find(path);
  const bool isKept = kept != places.keptMounts.end();
  if (!isKept &&
      (startsWithAny(path, places.skipPrefixes) || !startsWithAny(path, places.keptPrefixes))) {
    return std::nullopt;
  }
  return isKept && !kept->second.empty() ? kept->second : std::string(lastPathComponent(path));
}

std::optional<VolumeMount> volumeOf(std::string_view line, const VolumePlaces& places) {
  if (DfTable::isHeader(line)) return std::nullopt;
  const std::vector<std::string_view> words = ToolOutput::words(line);
  if (words.size() < 6) return std::nullopt;
  const std::optional<std::int64_t> total = DfTable::bytes(words[1]);
  if (!total || !words.back().starts_with('/')) return std::nullopt;
  std::string path(words.back());
  std::optional<std::string> name = listedName(path, places);
  if (!name) return std::nullopt;
  return VolumeMount{.name = std::move(*name),
                     .path = std::move(path),
                     .total = *total,
                     .usedPercent = DfTable::percent(words[4])};
}

}  // namespace

std::vector<VolumeMount> list(const Shell::Run& run) {
  return parse(toolText(run, "/bin/df", {"-k"}, 6));
}

std::vector<VolumeMount> parse(std::string_view text, const Places& places) {
  std::vector<VolumeMount> volumes;
  std::unordered_set<std::string> paths;
  for (const std::string_view line : ToolOutput::lines(text)) {
    std::optional<VolumeMount> volume = volumeOf(line, places.volumes);
    if (volume && paths.insert(volume->path).second) volumes.push_back(std::move(*volume));
  }
  return volumes;
}

}  // namespace tessaly::VolumeEngine
