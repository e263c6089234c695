// What the user is told of items that did not go where they should. One sentence for a whole batch:
// which items, and why each. It names nothing that only one system has. Pure, safe from any thread.
#pragma once

#include <string>
#include <vector>

#include "reclaim/Trash.h"

namespace tessaly::FailureText {

enum class Act { moveToTrash, putBack };

// Why, as what follows a colon: "no Trash on this volume". The path of a failure is the item's own,
// also where the item was to be put back there.
std::string reason(const Trash::Failure& failure, Act act);

// "“notes.txt” could not be moved to the Trash: no Trash on this volume". Several items are counted
// and told by their reasons, of each of which the first items are named; long names are cut. So the
// text has a length that can be shown, however many items failed. Names are the bytes that they
// are. Empty where nothing failed.
std::string line(const std::vector<Trash::Failure>& failures, Act act);

}  // namespace tessaly::FailureText
