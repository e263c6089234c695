#include "platform/Places.h"

#include <cstdlib>
#include <unistd.h>

#include "platform/HomeDirectory.h"

namespace tessaly {

namespace {

// Names that hold what was already given up, or what the system keeps for itself.
std::unordered_set<std::string> commonSkipNames() {
  return {".Trash",          ".Trashes", ".Spotlight-V100", ".fseventsd", ".DocumentRevisions-V100",
          ".TemporaryItems", ".vol",     "Backups.backupdb"};
}

std::unordered_set<std::string> commonImportantFolders() {
  return {"Desktop", "Downloads", "Documents", "Pictures", "Movies", "Music"};
}

std::string dataHome() {
  const char* const set = std::getenv("XDG_DATA_HOME");
  if (set != nullptr && set[0] == '/') return set;
  return homeDirectory() + "/.local/share";
}

}  // namespace

const Places& Places::forMacos() {
  static const Places places = {
      .skipNames = commonSkipNames(),
      .skipRootNames = {"dev", "proc", "cores", "Network", "Volumes", "private", "tmp", "sbin",
                        "bin", "etc", "var", "home"},
      .skipPaths = {},
      .importantFolders = commonImportantFolders(),
  };
  return places;
}

const Places& Places::forLinux() {
  static const Places places = [] {
    Places made = {
        .skipNames = commonSkipNames(),
        .skipRootNames = {"dev", "proc", "sys", "run", "tmp", "mnt", "media", "snap", "lost+found"},
        .skipPaths = {dataHome() + "/Trash"},
        .importantFolders = commonImportantFolders(),
    };
    made.skipNames.insert(".Trash-" + std::to_string(getuid()));
    made.importantFolders.insert("Videos");
    return made;
  }();
  return places;
}

const Places& Places::current() {
#ifdef __APPLE__
  return forMacos();
#else
  return forLinux();
#endif
}

}  // namespace tessaly
