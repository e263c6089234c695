// Moves the items of a list to the Trash, one after the other, until it is stopped.
//
// The list was shown before, so an item moves only if it is still the one that was listed: another
// program may have replaced it since.
//
// Pure but for the disk. Calls block; they are as thread-safe as the mover.
#pragma once

#include <cstddef>
#include <functional>
#include <optional>
#include <string>
#include <vector>

#include "platform/FileIdentity.h"
#include "platform/TrashMover.h"
#include "reclaim/Trash.h"

namespace tessaly::TrashBatch {

struct Item {
  Trash::Location location;
  // The item as it was listed; without it, whatever is at the location moves.
  std::optional<FileIdentity> listed = {};
  // A folder that was listed as empty moves only if it has no entries.
  bool mustBeEmpty = false;

  friend bool operator==(const Item&, const Item&) = default;
};

struct Moved {
  std::vector<TrashedItem> items;  // in the order of the moves
  std::vector<Trash::Failure> errors;
  std::vector<std::string> untried;  // the original paths of the items after the stop
};

// Whether the item at a path is still the listed one. The content of a folder may have changed,
// that of a file may not. A folder that was removed and made again is another one, even if it got
// the same inode number, as far as the file system records when items are created.
bool isListed(const FileIdentity& listed, const FileIdentity& now);

// Moves the deepest items first, so that an item moves before the folder that contains it, and each
// has a record of its own. `isStopped` is asked before each item; `done` is called after each with
// the number of items so far, moved or not.
Moved move(std::vector<Item> items, TrashMover& mover, const std::function<bool()>& isStopped,
           const std::function<void(std::size_t done)>& done);

}  // namespace tessaly::TrashBatch
