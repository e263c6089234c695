// What an item in the Trash is known by beside its name, since names there are used again.
//
// A plain value, safe from any thread.
#pragma once

#include <string>

namespace tessaly {

// Made and compared by the mover that gave it; its bytes mean nothing to anybody else. That of an
// item which could not be looked at is empty, and no item is known by it.
struct TrashIdentity {
  std::string item;    // what the system knows the item by
  std::string record;  // the whole file in the Trash that tells of the item; empty where none does

  friend bool operator==(const TrashIdentity&, const TrashIdentity&) = default;
};

}  // namespace tessaly
