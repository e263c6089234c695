#include "reclaim/CriticalPaths.h"

#include <algorithm>
#include <vector>

namespace tessaly::CriticalPaths {

namespace {

std::string normalised(std::string_view path) {
  std::string result;
  result.reserve(path.size());
  for (const char byte : path) {
    if (byte != '/' || !result.ends_with('/')) result += byte;
  }
  if (result.size() >= 2 && result.ends_with('/')) result.pop_back();
  return result;
}

// Whether `path` is `folder` or is inside it.
bool isWithin(std::string_view path, std::string_view folder) {
  if (!path.starts_with(folder)) return false;
  return path.size() == folder.size() || path[folder.size()] == '/';
}

bool isWithinAny(std::string_view path, const std::vector<std::string>& folders) {
  return std::ranges::any_of(folders,
                             [path](const auto& folder) { return isWithin(path, folder); });
}

bool isCriticalInHome(std::string_view below, const CriticalPathRules& critical) {
  if (std::ranges::find(critical.exactInHome, below) != critical.exactInHome.end()) return true;
  if (isWithinAny(below, critical.allowedInHome)) return false;
  if (!critical.protectsByText) return isWithinAny(below, critical.protectedInHome);
  return std::ranges::any_of(critical.protectedInHome,
                             [below](const auto& place) { return below.starts_with(place); });
}

}  // namespace

bool isCritical(std::string_view path, std::string_view home, const Places& places) {
  const CriticalPathRules& critical = places.critical;
  const std::string item = normalised(path);
  if (std::ranges::find(critical.exact, item) != critical.exact.end()) return true;
  const std::string homeFolder = normalised(home);
  if (item == homeFolder) return true;

  const bool isInHome = isWithin(item, homeFolder);
  if (!(critical.freesHome && isInHome) && isWithinAny(item, critical.prefixes)) {
    return !isWithinAny(item, critical.exempt);
  }
  if (!isInHome) return false;
  return isCriticalInHome(std::string_view(item).substr(homeFolder.size()), critical);
}

std::string reason(std::string_view path, std::string_view home, const Wording& words) {
  const std::string item = normalised(path);
  if (item == "/") return "Startup disk root";
  if (item.starts_with("/System")) return words.systemFiles;
  const std::string homeFolder = normalised(home);
  if (item == homeFolder) return "Your home folder";
  if (item == homeFolder + "/Library") return "User Library";
  return "Protected location";
}

}  // namespace tessaly::CriticalPaths
