// Makes a compressed copy of items before they are removed, with the system's zip.
//
// Paths are absolute, as bytes. Pure except for archive(), which blocks until the tool is done and
// is for worker threads. Safe from any thread.
#pragma once

#include <chrono>
#include <functional>
#include <optional>
#include <string>
#include <vector>

#include "platform/FileIdentity.h"
#include "system/Shell.h"

namespace tessaly::ZipEngine {

// What archive() needs from the machine. An empty function stands for the one named beside it.
struct Services {
  // Shell::runToEnd: the tool's path, its arguments, its time limit in seconds, its working
  // directory, and the cancel test. May throw.
  std::function<Shell::Ending(const std::string& path, const std::vector<std::string>& args,
                              double timeout, const std::string& cwd,
                              const std::function<bool()>& isCancelled)>
      run = {};
  std::function<std::chrono::steady_clock::time_point()> now = {};  // the steady clock
};

struct Request {
  std::vector<std::string> paths;
  std::string to;
  // The file at `to` that the user has seen and agreed to replace; absent if there was none.
  std::optional<FileIdentity> replaced = {};
  // The cancel test: called for each item while items are examined, and every 25 ms while the tool
  // runs.
  std::function<bool()> isGivenUp = {};
};

// An item in the state in which it was archived completely.
struct Original {
  std::string path;  // as it was given
  FileIdentity identity;
};

struct Archived {
  enum class End {
    made,        // a complete archive of this call exists at `path`
    notMade,     // no archive was made
    incomplete,  // something would be missing from the archive, which was removed
    givenUp,     // cancelled by `isGivenUp`
  };

  End end = End::notMade;
  // The error for the user, at most a few hundred bytes: names of items may be any bytes. Empty if
  // the archive was made, and if no paths were given.
  std::string cause = {};

  // Only for an archive that was made.
  std::string path = {};
  FileIdentity identity = {};
  std::vector<Original> originals = {};  // all requested items, in that order
};

// File name for an archive made at `now`: "Tessaly-2026-03-09-0705.zip", in local time.
std::string suggestedName(
    std::chrono::system_clock::time_point now = std::chrono::system_clock::now());

// The deepest folder that contains all of `paths`, judged by their text; "/" for none.
std::string commonParent(const std::vector<std::string>& paths);

// Packs all paths, folders with their contents, into a new archive, each under its path below their
// common parent. The archive is complete or removed: if an item or something in it is missing,
// unreadable, neither a file nor a folder, or changes meanwhile, the result is `incomplete`. A link
// is packed as its target, which must exist; the target stays when the link is removed, so it is
// not compared with the archive.
//
// zip alone does not ensure completeness, since it silently skips a folder that it cannot read. So
// all items are examined before and after, must be the same both times, and must all be in the
// archive's own list, files with their sizes. A change of content that keeps a file's size, times
// and inode number is not noticed; nor is a change after the second examination, except that
// `originals` has the identities of the items.
//
// The archive is written in a private folder beside `to` and moved to `to` when it is complete, so
// an existing file stays untouched until then. It replaces only `replaced`; if anything else is at
// `to` by then, the archive gets a numbered name beside it.
//
// No archive is made at or inside one of the paths. zip may take 180 seconds.
Archived archive(const Request& request, const Services& services = {});

}  // namespace tessaly::ZipEngine
