// Moves items to the Trash and back. Nothing is ever copied, replaced or deleted: an item is in one
// place or in the other, whole, whenever the program or the machine stops.
//
// Paths are absolute, as bytes. A symbolic link at the end of a path is the item, never what it
// leads to, also where slashes stand behind it. No link on the way is followed: an error of the
// kind linkOnTheWay, so that a folder that was exchanged for a link since the path was found leads
// nowhere. Whoever has a path with links on the way resolves it first (ResolvedPath.h).
//
// Calls block until the disk has it. Implementations are safe from any thread.
#pragma once

#include <string>

#include "platform/SystemError.h"
#include "platform/TrashIdentity.h"

namespace tessaly {

struct ItemInTrash {
  std::string path;             // bytes; empty where nobody told
  TrashIdentity identity = {};  // of the item that was moved there

  friend bool operator==(const ItemInTrash&, const ItemInTrash&) = default;
};

class TrashMover {
 public:
  virtual ~TrashMover() = default;

  // After an error the item is where it was. Among the errors: notFound; EINVAL for a path that is
  // not absolute, names no item of its own (such as "/x/.."), or lies in a Trash already; EBUSY for
  // the root, for what a file system is mounted on, and for a folder with such a place in it;
  // crossesDevices where there can be no Trash on the item's own file system.
  virtual Result<ItemInTrash> moveToTrash(const std::string& path) = 0;

  // Moves the item, as moveToTrash gave it, to `original`, after it has made the folders above it
  // that are missing; those stay also when the item then cannot be moved. Errors of these kinds
  // leave all else as it is:
  // - notFound: the item is not in the Trash any more;
  // - stale: another item has its name there, or stands in another Trash at the same place;
  // - alreadyExists: anything at all stands at `original`.
  virtual Outcome putBack(const ItemInTrash& item, const std::string& original) = 0;
};

}  // namespace tessaly
