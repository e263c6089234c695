// What a scan leaves behind between runs: small files in the support folder, and a few settings.
//
//   sizes<key>.json    the sizes of a root's upper levels, as PathSizesJson tells
//   history<key>.json  the finished scans of a root, as HistoryJson tells, at most historyLimit
//   last-tree.json     the tree of the last scan of any root, as DiskNodeJson tells
//
// <key> is the path of the root with "_" for every "/", so that paths which differ in nothing else
// share their files. Files are replaced whole, and left to the system to write to disk in its time.
//
// All of it is best-effort. What is missing or damaged reads as empty, what cannot be written is
// dropped and leaves the old file, and nobody is told. Main thread only, one program at a time.
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

// The folder of the files when none is given. Made if it is not there.
std::string supportDir();

// In each of these, `directory` takes the place of supportDir().
using Directory = std::optional<std::string>;

PathSizes loadSizes(const std::string& root, const Directory& directory = {});
void saveSizes(const PathSizes& sizes, const std::string& root, const Directory& directory = {});

// Oldest first.
std::vector<HistoryPoint> loadHistory(const std::string& root, const Directory& directory = {});
// Puts `point` behind the history of `root`, of which the newest historyLimit points stay.
void appendHistory(const HistoryPoint& point, const std::string& root,
                   const Directory& directory = {});

std::optional<DiskNode> loadTree(const Directory& directory = {});
void saveTree(const DiskNode& tree, const Directory& directory = {});

// The filters of the catalogue, switched as they were saved. One that was never saved stays as the
// catalogue has it, and one that the catalogue does not have is gone.
std::vector<BloatFilter> applySavedFilters(const std::vector<BloatFilter>& catalog,
                                           const SettingsStore& defaults);
void saveFilters(const std::vector<BloatFilter>& filters, SettingsStore& defaults);

// The newest of the pins and of the recent roots, at most pinsLimit and recentsLimit of them,
// however many a file of settings holds; and all excludes.
std::vector<std::string> pins(const SettingsStore& defaults);
std::vector<std::string> recents(const SettingsStore& defaults);
std::vector<std::string> excludes(const SettingsStore& defaults);

// Pins `path` in front of all others, of which the newest stay that make up pinsLimit with it, or
// takes its pin away. Gives the pins.
std::vector<std::string> togglePin(const std::string& path, SettingsStore& defaults);

// Puts `root` in front of the recent roots, once, and keeps `limit` of them.
void pushRecent(const std::string& root, SettingsStore& defaults, std::size_t limit);

}  // namespace tessaly::ScanStore
