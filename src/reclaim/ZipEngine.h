// Keeps a compressed copy of items that are about to go, made by the system's zip.
//
// Paths are absolute, as bytes. Pure but for archive(), which blocks until the tool is done and is
// for worker threads. Safe from any thread.
#pragma once

#include <chrono>
#include <functional>
#include <optional>
#include <string>
#include <vector>

#include "platform/FileIdentity.h"
#include "system/Shell.h"

namespace tessaly::ZipEngine {

// What archive() asks of the machine. Where a function is not given, the named one is taken.
struct Machine {
  // Shell::runToEnd: the tool's path, its arguments, the seconds that it may take, its working
  // directory, and what says that it is to be ended. May throw.
  std::function<Shell::Ending(const std::string& path, const std::vector<std::string>& args,
                              double timeout, const std::string& cwd,
                              const std::function<bool()>& isCancelled)>
      run = {};
  std::function<std::chrono::steady_clock::time_point()> now = {};  // the steady clock
};

struct Request {
  std::vector<std::string> paths;
  std::string to;
  // What the user has seen at `to` and wants to be replaced; absent where nothing stood there.
  std::optional<FileIdentity> replaced = {};
  // Asked for each item while items are looked at, and every 25 ms while the tool runs.
  std::function<bool()> isGivenUp = {};
};

// An item as it was when its copy in the archive was complete.
struct Original {
  std::string path;  // as it was given
  FileIdentity identity;
};

struct Archived {
  enum class End {
    made,        // a complete archive of this call stands at `path`
    notMade,     // no archive came of it
    incomplete,  // something would be missing from the archive, which was not kept
    givenUp,     // as it was asked for
  };

  End end = End::notMade;
  // What went wrong, in a few hundred bytes at most, for the user: names of items are bytes of any
  // kind. Empty for an archive that was made, and where nothing was asked for.
  std::string cause = {};

  // Of an archive that was made.
  std::string path = {};
  FileIdentity identity = {};
  std::vector<Original> originals = {};  // all that was asked for, in that order
};

// What to call an archive that is made at `now`: "Tessaly-2026-03-09-0705.zip", in local time.
std::string suggestedName(
    std::chrono::system_clock::time_point now = std::chrono::system_clock::now());

// The deepest folder that all of `paths` lie in, as their texts tell; "/" for none.
std::string commonParent(const std::vector<std::string>& paths);

// Packs all of the paths, folders with all that is in them, into a new archive, each under its path
// below their common parent. Nothing is left out: where an item or something in it is not there, or
// cannot be read, or is neither a file nor a folder, or changes meanwhile, the archive is
// incomplete, and is removed. A link is packed as what it leads to and must lead to something; what
// lies behind it stays where it is when the link goes, and so is not compared with the archive.
//
// That an archive is complete is not left to zip, which passes over a folder that it cannot read in
// silence: all items are looked at before and after, must be the same both times, and must all be
// in the archive's own list, files with their sizes. A change of content that leaves the file's
// size, times and number as they are is not seen; nor is one after the second look, but for the
// items themselves, whose identities are told.
//
// The archive is written in a private folder beside `to` and moved in when it is complete, so that
// until then what stands there is left alone. It replaces only `replaced`; where anything else has
// come to stand there, it gets a name of its own beside it, with a number.
//
// An archive that would lie at or inside one of the paths is not made. Zip may take 180 seconds.
Archived archive(const Request& request, const Machine& machine = {});

}  // namespace tessaly::ZipEngine
