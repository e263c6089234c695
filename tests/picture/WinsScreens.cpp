#include "picture/WinsScreens.h"

#include <cerrno>
#include <cstdint>
#include <string>

#include "picture/FixtureTree.h"

namespace tessaly {

namespace {

constexpr std::int64_t mega = 1024 * 1024;

ReclaimItem cache(const char* id, const char* label, const char* note, std::int64_t megabytes,
                  bool caution = false) {
  return {.id = id,
          .label = label,
          .note = note,
          .caution = caution,
          .path = std::string(fixtureHome) + "/.cache/" + id,
          .bytes = megabytes * mega};
}

TreeWin win(const std::string& below, const char* category, const char* note,
            std::int64_t megabytes) {
  return {.path = std::string(fixtureHome) + "/" + below,
          .name = below.substr(below.rfind('/') + 1),
          .bytes = megabytes * mega,
          .category = category,
          .note = note};
}

LargeOldFile idle(const std::string& below, std::int64_t megabytes) {
  return {.name = below.substr(below.rfind('/') + 1),
          .path = std::string(fixtureHome) + "/" + below,
          .bytes = megabytes * mega};
}

ReclaimAnalysis::Finds findsOf(WinsOnDisk wins) {
  if (wins == WinsOnDisk::none) return {};
  if (wins == WinsOnDisk::one)
    return {.probes = {cache("pip", "pip cache", "Wheels re-download as needed", 1240)},
            .treeWins = {},
            .largeOld = {}};
  return {
      .probes = {cache("hf", "Hugging Face models", "Large, but re-downloadable", 14200, true),
                 cache("trash", "Trash", "Empty the Trash to reclaim this space", 5300),
                 cache("cargo", "Cargo registry", "Restored on the next cargo build", 3100),
                 cache("npm", "npm cache", "Packages re-download as needed", 860),
                 cache("pip", "pip cache", "Wheels re-download as needed", 410)},
      .treeWins =
          {win("Code/atlas/node_modules", "node_modules", "Restored by npm/yarn/pnpm install", 510),
           win("Code/map/.venv", "Python virtualenvs", "Recreated with pip/uv/poetry install", 320),
           win("Code/gone/node_modules", "node_modules", "Restored by npm/yarn/pnpm install", 90)},
      .largeOld = {idle("Movies/wedding.mkv", 4300),
                   idle("Downloads/backup of the old laptop, before it was repaired.zip", 2600),
                   idle("Movies/Iceland 2024/road.mp4", 1400)},
      .snapshots = 3};
}

}  // namespace

WinsPass::Engines enginesThatFind(WinsOnDisk wins) {
  return {.analyse = [wins](const std::string&, const std::optional<DiskNode>&,
                            const WinsPass::IsCancelled&) { return findsOf(wins); },
          // The tree is not on this disk. Without an identity an item moves as it is.
          .identify = [](const std::string& path) -> Result<FileIdentity> {
            const bool isOfTree = path.find("/Code/") != std::string::npos;
            if (isOfTree && path.find("/gone/") == std::string::npos) return FileIdentity();
            return SystemError::fromErrno(ENOENT, path);
          },
          .isTrashAction = [](std::string_view id) { return id == "trash"; }};
}

}  // namespace tessaly
