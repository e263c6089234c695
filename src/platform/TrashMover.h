// Moves items to the Trash and back. Nothing is copied, replaced or deleted: whenever the program
// or the machine stops, a complete item is in one place or in the other.
//
// Paths are absolute, as bytes. A symbolic link at the end of a path is itself the item, also with
// trailing slashes. Links higher in the path are not followed but are an error (linkOnTheWay), so a
// folder that was replaced by a link since the path was found cannot redirect the move. Callers
// with links in their paths resolve them first (ResolvedPath.h).
//
// Calls block until the change is on disk. Implementations are safe from any thread.
#pragma once

#include <string>

#include "platform/SystemError.h"
#include "platform/TrashIdentity.h"

namespace tessaly {

struct ItemInTrash {
  std::string path;             // bytes; empty if unknown
  TrashIdentity identity = {};  // of the item that was moved

  friend bool operator==(const ItemInTrash&, const ItemInTrash&) = default;
};

class TrashMover {
 public:
  virtual ~TrashMover() = default;

  // After an error the item is where it was. Errors include: notFound; EINVAL for a path that is
  // not absolute, ends in no name (such as "/x/.."), or is inside a Trash; EBUSY for the root, for
  // a mount point, and for a folder that contains one; crossesDevices if there can be no Trash on
  // the item's own file system.
  virtual Result<ItemInTrash> moveToTrash(const std::string& path) = 0;

  // Moves the item that moveToTrash() returned to `original`, after creating missing folders above
  // it; these stay even if the move then fails. These errors change nothing else:
  // - notFound: the item is no longer in the Trash;
  // - stale: another item now has its name there, or is in another Trash at the same path;
  // - alreadyExists: any item exists at `original`.
  virtual Outcome putBack(const ItemInTrash& item, const std::string& original) = 0;
};

}  // namespace tessaly
