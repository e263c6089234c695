// Moves one item without replacing anything.
#pragma once

#include <string>

#include "platform/linux/FileDescriptor.h"
#include "platform/linux/trash/ItemLocation.h"

namespace tessaly {

struct ItemEnd {
  const FileDescriptor& folder;
  const std::string& name;
  // Other programs do not use the name: in a Trash its record reserves it.
  bool isReserved = false;
};

// Moves the item with that identity. Returns 0, or an errno; the item is then where it was. EEXIST
// if an item exists at `to`; on nearly all file systems the system itself guarantees that nothing
// is replaced. Where it has no such operation, the closest one is used:
//
// - A folder, and an item with a reserved target, is renamed after a check. An item that appears at
//   the target in between is replaced, if it is an empty folder or, at a reserved name, a file.
// - Any other item gets a second name, which replaces nothing, and then loses its first one if that
//   is still its own. An item that gets the first name between that check and the removal is lost.
// - Without hard links, an empty file is created at `to`, and the item is renamed over it if it is
//   still the same and empty. While that file exists, a program that tries to create an item there
//   gets an error; data that a program writes into it, or an item that it moves over it, between
//   the check and the rename is lost. If the program ends in between, the empty file remains.
int moveItem(const ItemEnd& from, const ItemEnd& to, const ItemIdentity& item);

// Whether the item is at `to` and no longer at `from`: if a remote file system loses an answer, a
// successful move looks like a failure.
bool hasMoved(const ItemEnd& from, const ItemEnd& to, const ItemIdentity& item);

}  // namespace tessaly
