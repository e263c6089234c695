#include "session/ScanStore.h"

#include <algorithm>
#include <unordered_map>
#include <utility>

#include "platform/ApplicationSupport.h"
#include "platform/AtomicFile.h"
#include "scan/DiskNodeJson.h"
#include "scan/HistoryJson.h"
#include "scan/PathSizesJson.h"

namespace tessaly::ScanStore {

namespace {

constexpr std::string_view treeFile = "last-tree.json";

// The name of a file that each root has of its own.
std::string fileOf(std::string_view kind, const std::string& root) {
  std::string key = root;
  std::replace(key.begin(), key.end(), '/', '_');
  return std::string(kind) + key + ".json";
}

std::string pathOf(std::string_view file, const Directory& directory) {
  return (directory ? *directory : supportDir()) + "/" + std::string(file);
}

// The decoded file; absent if it cannot be read.
template <class Decode>
auto load(std::string_view file, const Directory& directory, const Decode& decode) {
  constexpr std::size_t largestFile = std::size_t{1} << 30U;
  const Result<std::string> content = AtomicFile::read(pathOf(file, directory), largestFile);
  return content ? decode(content.value()) : std::nullopt;
}

void save(std::string_view file, const Directory& directory, const std::string& content) {
  // A failure is ignored: the next scan writes again.
  static_cast<void>(AtomicFile::replace(pathOf(file, directory), content,
                                        AtomicFile::Durability::cached, AtomicFile::Access::usual));
}

template <class Value>
void keepFirst(std::vector<Value>& values, std::size_t limit) {
  if (values.size() > limit) values.resize(limit);
}

std::vector<std::string> textsUnder(std::string_view key, const SettingsStore& defaults) {
  return defaults.texts(key).value_or(std::vector<std::string>());
}

std::vector<std::string> firstUnder(std::string_view key, const SettingsStore& defaults,
                                    std::size_t limit) {
  std::vector<std::string> texts = textsUnder(key, defaults);
  keepFirst(texts, limit);
  return texts;
}

}  // namespace

std::string supportDir() {
  std::string folder = applicationSupportDirectory() + "/Marrow";
  // If it cannot be made, its files cannot be written, which is ignored too.
  static_cast<void>(makeFolders(folder));
  return folder;
}

PathSizes loadSizes(const std::string& root, const Directory& directory) {
  return load(fileOf("sizes", root), directory, PathSizesJson::decode).value_or(PathSizes());
}

void saveSizes(const PathSizes& sizes, const std::string& root, const Directory& directory) {
  save(fileOf("sizes", root), directory, PathSizesJson::encode(sizes));
}

std::vector<HistoryPoint> loadHistory(const std::string& root, const Directory& directory) {
  return load(fileOf("history", root), directory, HistoryJson::decode)
      .value_or(std::vector<HistoryPoint>());
}

void appendHistory(const HistoryPoint& point, const std::string& root, const Directory& directory) {
  std::vector<HistoryPoint> points = loadHistory(root, directory);
  points.push_back(point);
  if (points.size() > historyLimit) {
    points.erase(points.begin(), points.end() - static_cast<std::ptrdiff_t>(historyLimit));
  }
  save(fileOf("history", root), directory, HistoryJson::encode(points));
}

std::optional<DiskNode> loadTree(const Directory& directory) {
  return load(treeFile, directory, DiskNodeJson::decode);
}

void saveTree(const DiskNode& tree, const Directory& directory) {
  save(treeFile, directory, DiskNodeJson::encode(tree));
}

std::vector<BloatFilter> applySavedFilters(const std::vector<BloatFilter>& catalog,
                                           const SettingsStore& defaults) {
  std::vector<BloatFilter> filters = catalog;
  const std::optional<std::string> json = defaults.binary(filtersKey);
  const auto saved = json ? SavedFilter::decode(*json) : std::nullopt;
  if (!saved) return filters;
  std::unordered_map<std::string, SavedFilter> byId;
  for (const SavedFilter& filter : *saved) byId.insert_or_assign(filter.id, filter);
  for (BloatFilter& filter : filters) {
    const auto found = byId.find(filter.id);
    if (found == byId.end()) continue;
    filter.enabled = found->second.enabled;
    filter.skipScan = found->second.skipScan;
  }
  return filters;
}

void saveFilters(const std::vector<BloatFilter>& filters, SettingsStore& defaults) {
  std::vector<SavedFilter> saved;
  saved.reserve(filters.size());
  for (const BloatFilter& filter : filters) {
    saved.push_back({filter.id, filter.enabled, filter.skipScan});
  }
  defaults.setBinary(filtersKey, SavedFilter::encode(saved));
}

std::vector<std::string> pins(const SettingsStore& defaults) {
  return firstUnder(pinsKey, defaults, pinsLimit);
}

std::vector<std::string> recents(const SettingsStore& defaults) {
  return firstUnder(recentsKey, defaults, recentsLimit);
}

std::vector<std::string> excludes(const SettingsStore& defaults) {
  return textsUnder(excludesKey, defaults);
}

std::vector<std::string> togglePin(const std::string& path, SettingsStore& defaults) {
  std::vector<std::string> paths = pins(defaults);
  if (const auto found = std::find(paths.begin(), paths.end(), path); found != paths.end()) {
    paths.erase(found);
  } else {
    paths.insert(paths.begin(), path);
    keepFirst(paths, pinsLimit);
  }
  defaults.setTexts(pinsKey, paths);
  return paths;
}

void pushRecent(const std::string& root, SettingsStore& defaults, std::size_t limit) {
  std::vector<std::string> roots = firstUnder(recentsKey, defaults, limit);
  std::erase(roots, root);
  roots.insert(roots.begin(), root);
  keepFirst(roots, limit);
  defaults.setTexts(recentsKey, std::move(roots));
}

}  // namespace tessaly::ScanStore
