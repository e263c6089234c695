// Moves items to the Trash, with a record of each, and back. Refuses nothing; callers decide when
// to warn first. Also opens items in a terminal or an editor. A failed move returns its cause; a
// failure to open something is not reported.
//
// Every call blocks and keeps no state. Moves are as thread-safe as the mover.
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
  std::string original;   // the path as it was passed to the move; bytes
  std::string trashPath;  // where the item is in the Trash; empty if the mover does not know
  // `original` without links above the item: where the item is put back.
  std::string place = {};
  // Of the item, since another item may later get its name in the Trash.
  TrashIdentity identity = {};

  friend bool operator==(const TrashedItem&, const TrashedItem&) = default;
};

namespace Trash {

// An item that did not move, and the reason.
struct Failure {
  std::string path;  // as it was passed in; bytes
  SystemError cause;

  friend bool operator==(const Failure&, const Failure&) = default;
};

struct Moved {
  std::vector<TrashedItem> items;
  std::vector<Failure> errors;

  friend bool operator==(const Moved&, const Moved&) = default;
};

// The location of an item. A path may contain links ("~/.cache" often is one), and anyone who may
// change a folder on it can redirect it later. So code that lists such paths resolves them when it
// lists the row, and the item that is moved is the one that was listed.
struct Location {
  std::string original;  // the path as it was passed in; bytes
  std::string place;     // the same without links above the item, which may be one itself

  friend bool operator==(const Location&, const Location&) = default;
};

// Reads the disk; safe from any thread.
Location locate(const std::string& path);

// An error if the item did not move. Does not follow links above the item: for paths of a tree,
// which have none.
Result<TrashedItem> moveRecording(const std::string& path, TrashMover& mover);
// The same for a location found before; the record has the original path.
Result<TrashedItem> moveRecording(const Location& location, TrashMover& mover);

// Moves all of them one after the other, even after failures; both lists are in the order of the
// arguments.
Moved moveManyRecording(const std::vector<std::string>& paths, TrashMover& mover);
Moved moveManyRecording(std::span<const Location> locations, TrashMover& mover);

// Succeeds when this call has put the item back at its place. Fails for an item without
// `trashPath`, and for one that is no longer in the Trash (both notFound); if another item now has
// its name there (stale); and if something exists at its place (alreadyExists), which is never
// replaced. Missing folders above the place are created.
Outcome putBack(const TrashedItem& item, TrashMover& mover);

// Shows the folder at the absolute `path` in the file viewer and opens a terminal in it; for
// anything else, or a path that no longer exists, the folder that contains it. Waits for neither.
// Main thread only.
void openTerminal(const std::string& path, Workspace& workspace,
                  const OpenTool& tool = OpenTool::real());

// Opens the absolute `path` in the first of the known editors for which `tool` succeeds, or, if
// there is none, in its default application. Blocks until the tool has exited for each editor
// tried: a moment, or in the worst case four times the tool's patience. Main thread only.
void openInEditor(const std::string& path, Workspace& workspace,
                  const OpenTool& tool = OpenTool::real());

}  // namespace Trash
}  // namespace tessaly

template <>
struct std::hash<tessaly::TrashedItem> {
  std::size_t operator()(const tessaly::TrashedItem& item) const noexcept;
};
