// The snapshots of a machine's root file system that snapper and timeshift keep, read from the
// files of these programs. Nothing is changed, and neither program is started.
#pragma once

#include <string>
#include <vector>

namespace tessaly::tools {

struct Snapshot {
  enum class Keeper { snapper, timeshift };

  Keeper keeper = Keeper::snapper;
  std::string name;     // snapper's number, or timeshift's date, as these programs print it
  std::string made;     // "2024-02-01 13:30:00 UTC"; empty if it is not recorded
  std::string purpose;  // such as "timeline" or a description; any bytes, may be empty

  friend bool operator==(const Snapshot&, const Snapshot&) = default;
};

// The snapshots of the machine whose root folder is `machine`, snapper's before timeshift's, each
// in the order of their names. What cannot be read, or is not a snapshot's record, is left out: for
// a user who is not an administrator that is often everything.
//
// Reads only regular files, at most 64 KiB of each, follows no link in the folders of snapshots,
// and looks at no more than 20,000 entries of each of these folders.
std::vector<Snapshot> snapshotsOf(const std::string& machine);

// The name of snapper's configuration for the root file system; "root", which snapper uses unless
// told otherwise, if that cannot be read.
std::string snapperConfigOf(const std::string& machine);

}  // namespace tessaly::tools
