// One move of one item that replaces nothing.
#pragma once

#include <string>

#include "platform/linux/FileDescriptor.h"
#include "platform/linux/trash/ItemPlace.h"

namespace tessaly {

struct ItemEnd {
  const FileDescriptor& folder;
  const std::string& name;
  // Other programs leave the name alone: in a Trash a record stands for it.
  bool isReserved = false;
};

// Moves the item of that identity. Gives 0, or an errno; the item then is where it was. Where
// something stands at `to` that is EEXIST, and on nearly all file systems the system itself sees to
// it that nothing is replaced. One without such a move gets the nearest that it has:
//
// - A folder, and what goes to a reserved name, is moved after a look. What appears there in
//   between is replaced, if it is an empty folder or, at a reserved name, a file.
// - All else gets a second name, which replaces nothing, and loses its first one if that still is
//   its own. What gets the first name between that look and the removal is lost.
// - Where there are no second names either, an empty file takes the name at `to`, and the item is
//   moved over it if that still is the same and empty. From the moment it is there, a program that
//   would make an item at the name is refused; what one writes into that file, or moves over it,
//   between the look and the move is lost. Ended in between, the program leaves the empty file.
int moveItem(const ItemEnd& from, const ItemEnd& to, const ItemIdentity& item);

// Whether the item stands at `to` and at `from` no more: an answer that was lost on its way from
// another machine looks like a failure.
bool hasMoved(const ItemEnd& from, const ItemEnd& to, const ItemIdentity& item);

}  // namespace tessaly
