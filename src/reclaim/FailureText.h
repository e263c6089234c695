// Words the message about items that could not be moved: one sentence for a whole batch, with the
// items and their reasons. It names nothing that only one system has. Pure, safe from any thread.
#pragma once

#include <string>
#include <vector>

#include "reclaim/Trash.h"

namespace tessaly::FailureText {

enum class Act { moveToTrash, putBack };

// The reason, as text for after a colon: "no Trash on this volume". `failure.path` is the item's
// original path, also where putting it back failed.
std::string reason(const Trash::Failure& failure, Act act);

// "“notes.txt” could not be moved to the Trash: no Trash on this volume". Several items are counted
// and grouped by reason, each reason with its first items; long names are cut. So the length is
// limited, however many items failed. Names are raw bytes. Empty if nothing failed.
std::string line(const std::vector<Trash::Failure>& failures, Act act);

}  // namespace tessaly::FailureText
