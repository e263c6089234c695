// Moves items to the Trash and back. Nothing is ever copied, replaced or deleted: an item is in one
// place or in the other, whole, whenever the program or the machine stops.
//
// Paths are absolute, as bytes. A symbolic link at the end of a path is the item, never what it
// leads to, also where slashes stand behind it; links on the way are followed.
//
// Calls block until the disk has it. Implementations are safe from any thread.
#pragma once

#include <string>

#include "platform/SystemError.h"

namespace tessaly {

class TrashMover {
 public:
  virtual ~TrashMover() = default;

  // Gives the item's new path. After an error it is where it was. Among the errors: notFound;
  // EINVAL for a path that is not absolute, names no item of its own (such as "/x/.."), or lies in
  // a Trash already; EBUSY for the root, for what a file system is mounted on, and for a folder
  // with such a place in it; crossesDevices where there can be no Trash on the item's own file
  // system.
  virtual Result<std::string> moveToTrash(const std::string& path) = 0;

  // Moves the item at `trashPath`, as moveToTrash gave it, to `original`, after it has made the
  // folders above it that are missing; those stay also when the item then cannot be moved. An error
  // of the kind alreadyExists where anything at all stands at `original`: it is left alone, and the
  // item in the Trash too.
  virtual Outcome putBack(const std::string& trashPath, const std::string& original) = 0;
};

}  // namespace tessaly
