// Where what the user throws away goes: to the Trash, with a record of it, and back. Refuses
// nothing; who should be warned first is for the caller to ask. And where the user looks at it
// before: in a terminal or an editor. A failure of a move comes with its cause; one of opening
// something is silence.
//
// Every call blocks and keeps nothing. Moves are safe from any thread as far as the mover is.
#pragma once

#include <functional>
#include <span>
#include <string>
#include <vector>

#include "platform/SystemError.h"
#include "platform/TrashIdentity.h"
#include "platform/TrashMover.h"
#include "platform/Workspace.h"
#include "reclaim/OpenTool.h"

namespace tessaly {

struct TrashedItem {
  std::string original;   // the path that was handed to the move, as it was given; bytes
  std::string trashPath;  // where the item is in the Trash; empty where nobody told
  // `original` without links above the item: where it comes back to.
  std::string place = {};
  // Of the item, since its name in the Trash may be used again.
  TrashIdentity identity = {};

  friend bool operator==(const TrashedItem&, const TrashedItem&) = default;
};

namespace Trash {

// What did not move, and why.
struct Failure {
  std::string path;  // as it was given; bytes
  SystemError cause;

  friend bool operator==(const Failure&, const Failure&) = default;
};

struct Moved {
  std::vector<TrashedItem> items;
  std::vector<Failure> errors;

  friend bool operator==(const Moved&, const Moved&) = default;
};

// Where an item stands. A path may lead to it through links ("~/.cache" often is one), and who may
// change a folder on the way can turn it elsewhere later on: so whoever lists such paths looks
// where they lead when the row is listed, and what is moved is what was listed.
struct Location {
  std::string original;  // the path, as it was given; bytes
  std::string place;     // the same without links above the item, which may be one itself

  friend bool operator==(const Location&, const Location&) = default;
};

// Asks the disk; from any thread.
Location locate(const std::string& path);

// An error when the item did not move. No link on the way to it is followed: for paths of a tree,
// which have none.
Result<TrashedItem> moveRecording(const std::string& path, TrashMover& mover);
// The same through the place that was found; what is told of the item has the path as it was given.
Result<TrashedItem> moveRecording(const Location& location, TrashMover& mover);

// All of them one after the other, whatever fails; both lists in the order of those given.
Moved moveManyRecording(const std::vector<std::string>& paths, TrashMover& mover);
Moved moveManyRecording(std::span<const Location> locations, TrashMover& mover);

// Succeeds when the item stands at its place again by this call. Fails for one without `trashPath`,
// and where the item is not in the Trash any more (both notFound); where another item has its name
// there (stale); and where something stands at its place (alreadyExists), which is never replaced.
// Folders above the place that are missing are made.
Outcome putBack(const TrashedItem& item, TrashMover& mover);

// Shows the folder at the absolute `path`, or the one that holds what else it is or was, in the
// file viewer, and opens a terminal in it. Waits for neither. Main thread only.
void openTerminal(const std::string& path, Workspace& workspace,
                  const OpenTool& tool = OpenTool::real());

// Opens the absolute `path` in the first of the known editors that `tool` succeeds with, or, where
// there is none of them, in its default application. Blocks until the tool has exited for each that
// is tried: a moment, or, as it is in the worst case, four times as long as the tool is waited for.
// Main thread only.
void openInEditor(const std::string& path, Workspace& workspace,
                  const OpenTool& tool = OpenTool::real());

}  // namespace Trash
}  // namespace tessaly

template <>
struct std::hash<tessaly::TrashedItem> {
  std::size_t operator()(const tessaly::TrashedItem& item) const noexcept;
};
