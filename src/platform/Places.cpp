#include "platform/Places.h"

#include <cstdlib>
#include <unistd.h>

#include "platform/HomeDirectory.h"
#include "platform/ReclaimPlaces.h"
#include "platform/ResolvedPath.h"

namespace tessaly {

namespace {

// Folders of deleted items, or private ones of the system.
std::unordered_set<std::string> commonSkipNames() {
  return {".Trash",          ".Trashes", ".Spotlight-V100", ".fseventsd", ".DocumentRevisions-V100",
          ".TemporaryItems", ".vol",     "Backups.backupdb"};
}

std::unordered_set<std::string> commonImportantFolders() {
  return {"Desktop", "Downloads", "Documents", "Pictures", "Movies", "Music"};
}

std::vector<std::string> commonCriticalFolders() {
  return {"/",    "/Applications", "/Library", "/System", "/Users",
          "/usr", "/bin",          "/sbin",    "/private"};
}

std::vector<std::string> commonCriticalPrefixes() {
  return {"/System", "/usr", "/bin", "/sbin", "/private", "/Library"};
}

ScoreWords commonScoreWords() {
  return {.caches = {"/library/caches", "/deriveddata", "node_modules", "/logs/", "/.cache"},
          .cacheEnds = {"/logs"},
          .downloads = {"/downloads"},
          .personal = {"/pictures/", "/movies/", "/desktop/", "/documents/", "/mobile documents/"}};
}

void append(std::vector<std::string>& list, const std::vector<std::string>& more) {
  list.insert(list.end(), more.begin(), more.end());
}

}  // namespace

std::string trashInDataHome(const char* environment, const std::string& home) {
  const std::string data = environment != nullptr ? environment : "";
  return resolvedPath((data.starts_with('/') ? data : home + "/.local/share") + "/Trash");
}

const Places& Places::forMacos() {
  static const Places places = {
      .skipNames = commonSkipNames(),
      .skipRootNames = {"dev", "proc", "cores", "Network", "Volumes", "private", "tmp", "sbin",
                        "bin", "etc", "var", "home"},
      .skipPaths = {},
      .importantFolders = commonImportantFolders(),
      .volumes = {.skipMounts = {"/dev", "/private/var/vm", "/System/Volumes/Preboot",
                                 "/System/Volumes/VM", "/System/Volumes/Update",
                                 "/System/Volumes/xarts", "/System/Volumes/iSCPreboot",
                                 "/System/Volumes/Hardware", "/System/Volumes/Update/mnt1"},
                  .skipPrefixes = {"/System/Volumes/"},
                  .keptMounts = {{"/", "Macintosh HD"},
                                 {"/System/Volumes/Data", "Macintosh HD — Data"}},
                  .keptPrefixes = {"/Volumes/"}},
      .critical = {.exact = commonCriticalFolders(),
                   .prefixes = commonCriticalPrefixes(),
                   .exempt = {"/usr/local"},
                   .exactInHome = {"/Library"},
                   .allowedInHome = {"/Library/Caches", "/Library/Logs",
                                     "/Library/Saved Application State",
                                     "/Library/Developer/Xcode/DerivedData",
                                     "/Library/Developer/Xcode/iOS DeviceSupport",
                                     "/Library/Developer/CoreSimulator/Caches",
                                     "/Library/Caches/Homebrew", "/Library/Caches/pip",
                                     "/Library/Caches/Yarn", "/Library/Caches/CocoaPods",
                                     "/Library/pnpm"},
                   .protectedInHome = {"/Library/Developer/Xcode/Archives",
                                       "/Library/Application Support", "/Library/Preferences"},
                   .protectsByText = true},
      .accessProbes = {{.path = "/Library/Application Support/com.apple.TCC/TCC.db",
                        .isInHome = true},
                       {.path = "/Library/Application Support/com.apple.TCC/TCC.db"},
                       {.path = "/Library/Mail", .isInHome = true},
                       {.path = "/Library/Messages", .isInHome = true},
                       {.path = "/Library/Safari/CloudTabs.db", .isInHome = true}},
      .reclaimPlaces = macosReclaimPlaces(),
      .score = commonScoreWords(),
  };
  return places;
}

const Places& Places::forLinux() {
  static const Places places = [] {
    const char* const dataHome = std::getenv("XDG_DATA_HOME");
    const std::string trash = trashInDataHome(dataHome, homeDirectory());
    const bool isTrashInHome = dataHome == nullptr || *dataHome != '/';
    Places made = {
        .skipNames = commonSkipNames(),
        .skipRootNames = {"dev", "proc", "sys", "run", "tmp", "mnt", "media", "snap", "lost+found"},
        .skipPaths = {trash},
        .importantFolders = commonImportantFolders(),
        // Volumes mounted by the desktop or by hand; all others belong to the system.
        .volumes = {.skipMounts = {},
                    .skipPrefixes = {},
                    .keptMounts = {{"/", "System Disk"}, {"/home", ""}},
                    .keptPrefixes = {"/media/", "/run/media/", "/mnt/"}},
        // The home of a service may be in /var/lib.
        .critical = {.exact = commonCriticalFolders(),
                     .prefixes = commonCriticalPrefixes(),
                     .exempt = {"/usr/local"},
                     .exactInHome = {},
                     .allowedInHome = {"/.cache", "/.local/share/Trash", "/.local/share/pnpm"},
                     .protectedInHome = {"/.config", "/.local/share", "/.ssh", "/.gnupg"},
                     .freesHome = true},
        // Linux hides nothing from a program, unless it runs in a sandbox.
        .accessProbes = {{.path = "/"}},
        .reclaimPlaces = linuxReclaimPlaces(isTrashInHome ? "" : trash),
        .score = commonScoreWords(),
    };
    append(made.critical.exact, {"/boot", "/dev", "/etc", "/home", "/lib", "/lib64", "/media",
                                 "/mnt", "/opt", "/proc", "/root", "/run", "/srv", "/sys", "/var"});
    append(made.critical.prefixes,
           {"/boot", "/dev", "/etc", "/lib", "/lib64", "/proc", "/sys", "/var/lib"});
    append(made.score.caches, {"/log/", "/var/tmp/"});
    // Among them the disks of virtual machines.
    append(made.score.personal, {"/.local/share/"});
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
