// The paths of an operating system that the program treats specially. Plain values: the lists of
// both systems are compiled, and can be tested, on both. current() returns those of this system.
#pragma once

#include <string>
#include <unordered_map>
#include <unordered_set>
#include <vector>

namespace tessaly {

// Decides by mount points which mounts are volumes that users know. Bytes.
struct VolumeRules {
  // Never listed; below a skipped prefix only the paths in keptMounts are.
  std::unordered_set<std::string> skipMounts;
  std::vector<std::string> skipPrefixes;

  // Listed with this display name; an empty one means the last path component.
  std::unordered_map<std::string, std::string> keptMounts;
  // Mount points that begin with one of these are listed under their last path component.
  std::vector<std::string> keptPrefixes;
};

// The paths that need a warning before they go to the Trash. Bytes, compared as text. Paths in the
// home are relative to it and begin with "/".
struct CriticalPathRules {
  std::vector<std::string> exact;     // the folders themselves, not their contents
  std::vector<std::string> prefixes;  // with everything in them
  std::vector<std::string> exempt;    // not critical with everything in them, although below a
                                      // prefix

  std::vector<std::string> exactInHome;      // the folders themselves
  std::vector<std::string> allowedInHome;    // not critical, with everything in them
  std::vector<std::string> protectedInHome;  // critical, except what allowedInHome allows
  // Whether a protected path is compared as a text prefix and not by components.
  bool protectsByText = false;
  // Whether a home below one of the prefixes is exempt from them, except the home itself.
  bool freesHome = false;
};

// An item that only a program with access to the whole disk can read.
struct AccessProbe {
  std::string path;       // begins with "/"
  bool isInHome = false;  // `path` is relative to the home
};

// A location in the home that programs fill and that can often be won back.
struct ReclaimPlace {
  std::string id = {};
  std::string label = {};
  std::string relativePath = {};  // below the home
  std::string note = {};          // what becomes of its contents, for the user
  bool caution = false;           // whether removing it loses something
  bool trashAction = false;       // whether it is the Trash, which can only be emptied
  // The absolute path of a location that this user has elsewhere than at `relativePath`.
  std::string elsewhere = {};

  friend bool operator==(const ReclaimPlace&, const ReclaimPlace&) = default;
};

// Words by which a path tells how easily its file is missed. In lower case; each is searched for
// anywhere in the path in lower case.
struct ScoreWords {
  std::vector<std::string> caches;     // files that programs make again
  std::vector<std::string> cacheEnds;  // the same, at the end of the path alone
  std::vector<std::string> downloads;
  std::vector<std::string> personal;  // files of the user's own, besides Places::importantFolders
};

struct Places {
  std::unordered_set<std::string> skipNames;         // names that no walk enters, at any depth
  std::unordered_set<std::string> skipRootNames;     // names left out directly under "/"
  std::vector<std::string> skipPaths;                // absolute paths that no walk enters
  std::unordered_set<std::string> importantFolders;  // folders whose small files keep a node
  VolumeRules volumes;
  CriticalPathRules critical;
  std::vector<AccessProbe> accessProbes;    // if one of them can be read, all items can
  std::vector<ReclaimPlace> reclaimPlaces;  // in the order in which they are measured
  ScoreWords score;

  static const Places& forMacos();
  static const Places& forLinux();
  static const Places& current();
};

// The Trash folder that Linux programs keep in the user's data folder, with links resolved like the
// paths of a scanned tree. `environment` is the value of $XDG_DATA_HOME, or null; it counts only if
// it is an absolute path. `home` must be resolved.
std::string trashInDataHome(const char* environment, const std::string& home);

}  // namespace tessaly
