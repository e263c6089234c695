// The places of an operating system that the program treats specially. Plain values: both systems'
// lists are compiled, and can be tested, on both. current() is the one in force.
#pragma once

#include <string>
#include <unordered_map>
#include <unordered_set>
#include <vector>

namespace tessaly {

// Which mounts are volumes that a person knows, told by their mount points. Bytes.
struct VolumePlaces {
  // Never listed, and below a skipped prefix only what keptMounts has.
  std::unordered_set<std::string> skipMounts;
  std::vector<std::string> skipPrefixes;

  // Listed, each with the name it is shown by; an empty one stands for the last component.
  std::unordered_map<std::string, std::string> keptMounts;
  // What begins with one of these is listed by its last component.
  std::vector<std::string> keptPrefixes;
};

// What a person is warned about before it goes to the Trash. Bytes, compared as text. Places in the
// home are relative to it and begin with "/".
struct CriticalPlaces {
  std::vector<std::string> exact;     // the folders themselves, and not what is in them
  std::vector<std::string> prefixes;  // with all that lies in them
  std::vector<std::string> exempt;    // with all that lies in them, free although in a prefix

  std::vector<std::string> exactInHome;      // the folders themselves
  std::vector<std::string> allowedInHome;    // with all that lies in them, free
  std::vector<std::string> protectedInHome;  // all else of theirs is critical
  // Whether what only begins with the name of a protected place counts as in it.
  bool protectsByText = false;
  // Whether a home that lies in one of the prefixes is free of it, but for itself.
  bool freesHome = false;
};

// What is kept from every program but those with access to the whole disk.
struct AccessProbe {
  std::string path;       // begins with "/"
  bool isInHome = false;  // `path` is relative to the home
};

struct Places {
  std::unordered_set<std::string> skipNames;         // names no walk enters, at any depth
  std::unordered_set<std::string> skipRootNames;     // names left out directly under "/"
  std::vector<std::string> skipPaths;                // absolute paths no walk enters
  std::unordered_set<std::string> importantFolders;  // folders whose small files keep a node
  VolumePlaces volumes;
  CriticalPlaces critical;
  std::vector<AccessProbe> accessProbes;  // one of them that can be read tells that all can

  static const Places& forMacos();
  static const Places& forLinux();
  static const Places& current();
};

// The Trash that programs on Linux keep in the user's folder for data, with its links resolved, as
// the paths of a scanned tree are. `environment` is what $XDG_DATA_HOME holds, null where it is not
// set; it counts only when it is an absolute path. `home` is resolved.
std::string trashInDataHome(const char* environment, const std::string& home);

}  // namespace tessaly
