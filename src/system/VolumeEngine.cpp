#include "system/VolumeEngine.h"

#include <algorithm>
#include <cstdint>
#include <limits>
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

// The name shown for a mount point; absent if it is not listed.
std::optional<std::string> listedName(const std::string& path, const VolumeRules& places) {
  if (places.skipMounts.contains(path)) return std::nullopt;
  const auto kept = places.keptMounts.find(path);
  const bool isKept = kept != places.keptMounts.end();
  if (!isKept &&
      (startsWithAny(path, places.skipPrefixes) || !startsWithAny(path, places.keptPrefixes))) {
    return std::nullopt;
  }
  return isKept && !kept->second.empty() ? kept->second : std::string(lastPathComponent(path));
}

std::optional<VolumeMount> volumeOf(std::string_view line, const VolumeRules& places) {
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

// The used share of the space that this user may fill, in whole percent, rounded up.
double percent(const VolumeFigures& figures) {
  auto used = static_cast<std::uint64_t>(figures.used);
  std::uint64_t fillable = used + static_cast<std::uint64_t>(figures.free);
  if (used > std::numeric_limits<std::uint64_t>::max() / 100) {
    used /= 100;
    fillable /= 100;
  }
  if (fillable == 0) return 0;
  const std::uint64_t whole = used * 100 / fillable;
  return static_cast<double>(used * 100 % fillable == 0 ? whole : whole + 1);
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

std::vector<Listed> listed(const std::vector<MountedVolume>& mounts, const Places& places) {
  std::vector<Listed> all;
  for (const MountedVolume& mount : mounts) {
    std::optional<std::string> name = listedName(mount.path, places.volumes);
    const bool isRepeated = std::any_of(
        all.begin(), all.end(), [&](const Listed& other) { return other.mount.shows(mount); });
    if (name && !isRepeated) all.push_back({.name = *std::move(name), .mount = mount});
  }
  return all;
}

std::optional<VolumeMount> withFigures(const Listed& volume, const VolumeFigures& figures) {
  if (figures.total < 1) return std::nullopt;
  return VolumeMount{.name = volume.name,
                     .path = volume.mount.path,
                     .total = figures.total,
                     .usedPercent = percent(figures)};
}

VolumeMount withoutFigures(const Listed& volume) {
  return {.name = volume.name, .path = volume.mount.path, .total = 0, .usedPercent = 0};
}

DiskUsage usageOf(const VolumeFigures& figures) {
  if (figures.total < 1) return {};
  return {.total = figures.total,
          .used = figures.used,
          .free = figures.free,
          .usedPercent = percent(figures),
          .purgeable = 0};
}

}  // namespace tessaly::VolumeEngine
