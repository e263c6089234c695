#include <algorithm>
#include <cmath>
#include <string>
#include <unordered_set>
#include <vector>

#include "Target.h"
#include "system/ToolOutput.h"
#include "system/VolumeEngine.h"

namespace tessaly::fuzz {

namespace {

void requireListable(const VolumeMount& volume, const VolumeRules& places) {
  require(volume.path.starts_with('/'), "a mount point is absolute");
  require(ToolOutput::words(volume.path) == std::vector<std::string_view>{volume.path},
          "a mount point is one word");
  require(!places.skipMounts.contains(volume.path), "a skipped mount is not listed");
  const auto begins = [&volume](const std::string& prefix) {
    return volume.path.starts_with(prefix);
  };
  require(places.keptMounts.contains(volume.path) ||
              (std::ranges::any_of(places.keptPrefixes, begins) &&
               std::ranges::none_of(places.skipPrefixes, begins)),
          "a volume is at a place of volumes");
  require(!volume.name.empty(), "a volume has a name");
  require(volume.total % 1024 == 0, "a size is whole kibibytes");
  require(std::isfinite(volume.usedPercent), "the percentage is finite");
}

void tryPlaces(std::string_view input, const Places& places) {
  const std::vector<VolumeMount> volumes = VolumeEngine::parse(input, places);
  std::unordered_set<std::string> paths;
  for (const VolumeMount& volume : volumes) {
    requireListable(volume, places.volumes);
    require(paths.insert(volume.path).second, "a mount point is listed once");
  }

  std::vector<VolumeMount> lineByLine;
  for (const std::string_view line : ToolOutput::lines(input)) {
    for (const VolumeMount& volume : VolumeEngine::parse(line, places)) {
      const bool isNew = std::ranges::none_of(
          lineByLine, [&volume](const VolumeMount& other) { return other.path == volume.path; });
      if (isNew) lineByLine.push_back(volume);
    }
  }
  require(volumes == lineByLine, "lines are read apart from each other, in their order");
}

}  // namespace

void tryInput(std::string_view input) {
  tryPlaces(input, Places::forMacos());
  tryPlaces(input, Places::forLinux());
}

}  // namespace tessaly::fuzz
