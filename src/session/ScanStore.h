// The data of scans that is kept between runs: small files in the support folder, and some
// settings.
//
//   sizes<key>.json    the sizes of a root's upper levels, in the format of PathSizesJson
//   history<key>.json  the finished scans of a root, in that of HistoryJson, at most historyLimit
//   last-tree.json     the tree of the last scan of any root, in that of DiskNodeJson
//
// <key> is the path of the root with "_" for every "/", so paths that differ only in these share
// their files. Files are replaced atomically, and not synced to disk.
//
// Everything is best-effort: missing or damaged data reads as empty, and if a file cannot be
// written, the old one stays; no error is reported. Main thread only, one program at a time.
#pragma once

#include <cstddef>
#include <optional>
#include <string>
#include <string_view>
#include <vector>

#include "platform/SettingsStore.h"
#include "scan/DiskNode.h"
#include "scan/HistoryPoint.h"
#include "scan/PathSizes.h"
#include "treemap/BloatFilter.h"
#include "treemap/SavedFilter.h"

namespace tessaly::ScanStore {

using SavedFilter = tessaly::SavedFilter;

inline constexpr std::string_view lastScanRootKey = "marrow.lastScanRoot";  // text
inline constexpr std::string_view recentsKey = "marrow.recents";            // texts, newest first
inline constexpr std::string_view pinsKey = "marrow.pins";                  // texts, newest first
inline constexpr std::string_view excludesKey = "marrow.excludes";          // texts, oldest first
inline constexpr std::string_view filtersKey = "marrow.filters";            // binary: SavedFilters

inline constexpr std::size_t historyLimit = 60;
inline constexpr std::size_t pinsLimit = 8;
inline constexpr std::size_t recentsLimit = 5;

// The default folder of the files. Creates it if it is missing.
std::string supportDir();

// The folder to use instead of supportDir().
using Directory = std::optional<std::string>;

PathSizes loadSizes(const std::string& root, const Directory& directory = {});
void saveSizes(const PathSizes& sizes, const std::string& root, const Directory& directory = {});

// Oldest first.
std::vector<HistoryPoint> loadHistory(const std::string& root, const Directory& directory = {});
// Appends `point` to the history of `root`, and keeps the newest historyLimit points.
void appendHistory(const HistoryPoint& point, const std::string& root,
                   const Directory& directory = {});

std::optional<DiskNode> loadTree(const Directory& directory = {});
void saveTree(const DiskNode& tree, const Directory& directory = {});

// The filters of the catalogue with their saved switches. A filter without a saved state keeps the
// switches of the catalogue; a saved one that the catalogue lacks is dropped.
std::vector<BloatFilter> applySavedFilters(const std::vector<BloatFilter>& catalog,
                                           const SettingsStore& defaults);
void saveFilters(const std::vector<BloatFilter>& filters, SettingsStore& defaults);

// The newest pins and recent roots, at most pinsLimit and recentsLimit of them, however many the
// settings contain; and all excludes.
std::vector<std::string> pins(const SettingsStore& defaults);
std::vector<std::string> recents(const SettingsStore& defaults);
std::vector<std::string> excludes(const SettingsStore& defaults);

// Pins `path` in front of the others, keeping the newest pinsLimit pins, or unpins it. Returns the
// pins.
std::vector<std::string> togglePin(const std::string& path, SettingsStore& defaults);

// Puts `root` in front of the recent roots, without a duplicate, and keeps `limit` of them.
void pushRecent(const std::string& root, SettingsStore& defaults, std::size_t limit);

}  // namespace tessaly::ScanStore
