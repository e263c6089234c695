#include "scan/SkipRules.h"

#include <algorithm>

#include "platform/UnicodeText.h"

namespace tessaly {

namespace {

std::string lastComponent(std::string_view path) {
  if (path.ends_with('/')) path.remove_suffix(1);
  return std::string(path.substr(path.rfind('/') + 1));
}

}  // namespace

SkipRules::SkipRules(const std::string& root, const DiskScanner::Options& options,
                     const Places& places)
    : rootIsSlash_(root == "/"),
      everything_(ProInsights::isExcluded(root, options.extraPrefixes)),
      names_(places.skipNames),
      rootNames_(places.skipRootNames),
      suffixes_(options.extraSuffixes.begin(), options.extraSuffixes.end()),
      prefixes_(options.extraPrefixes),
      paths_(places.skipPaths) {
  names_.add(options.extraNames);
  std::vector<std::string> ends;
  for (const std::string& prefix : prefixes_) ends.push_back(lastComponent(prefix));
  for (const std::string& path : paths_) ends.push_back(lastComponent(path));
  pathEnds_.add(ends);
}

bool SkipRules::hasSkippedSuffix(std::string_view name) const {
  const std::string lower = UnicodeText::lowercased(name);
  return std::any_of(suffixes_.begin(), suffixes_.end(),
                     [&](const std::string& suffix) { return lower.ends_with(suffix); });
}

bool SkipRules::skipsPath(const std::string& path) const {
  return ProInsights::isExcluded(path, prefixes_) ||
         std::find(paths_.begin(), paths_.end(), path) != paths_.end();
}

}  // namespace tessaly
