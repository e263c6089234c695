// Identifies an item in the Trash beyond its name, since names there are reused.
//
// A plain value, safe from any thread.
#pragma once

#include <string>

namespace tessaly {

// Made and compared only by the mover; its bytes have no meaning elsewhere. It is empty for an item
// that could not be examined, and an empty one identifies no item.
struct TrashIdentity {
  std::string item;    // identity of the item in the file system
  std::string record;  // the content of the item's record in the Trash; empty if there is none

  friend bool operator==(const TrashIdentity&, const TrashIdentity&) = default;
};

}  // namespace tessaly
