// One move of one item that replaces nothing.
#pragma once

#include <string>

#include "platform/linux/FileDescriptor.h"
#include "platform/linux/trash/ItemPlace.h"

namespace tessaly {

struct ItemEnd {
  const FileDescriptor& folder;
  const std::string& name;
};

// Moves the item of that identity. Gives 0, or an errno; the item then is where it was. Where
// something stands at `to` that is EEXIST. A file system without such a move gets the nearest that
// it has: a second name and the removal of the first, or for a folder, which can have no second
// name, a look before a plain move, in which an empty folder that appears in between is replaced.
int moveItem(const ItemEnd& from, const ItemEnd& to, const ItemIdentity& item);

// Whether the item stands at `to` and at `from` no more: an answer that was lost on its way from
// another machine looks like a failure.
bool hasMoved(const ItemEnd& from, const ItemEnd& to, const ItemIdentity& item);

}  // namespace tessaly
