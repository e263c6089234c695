// Removes what a killed run of the program left behind: the private files and folders in which it
// was writing something that was to appear in one step.
//
// Only certain leftovers are removed. The name must have exactly the private form, and the item
// must belong to the user. It must be a regular file, or a folder that only the user may enter and
// that contains only files of the program's own. Its maker must have ended: a maker holds a lock
// that ends with it (an instance on another display may be writing just now). No link is followed,
// and no other mount is entered. In doubt an item stays.
//
// Safe from any thread. Calls may never return for a folder on a volume that does not answer.
#pragma once

#include <cstdint>
#include <string>
#include <vector>

#include "platform/Dispatch.h"

namespace tessaly::Leftovers {

enum class Found : std::uint8_t {
  nothingInUse,  // leftovers are removed, or the folder is not one of the program
  inUse,         // the program, or a tool that outlives it, is writing there
};

// Clears the folder at `path` itself; its absolute path must not contain links.
Found removeFrom(const std::string& path);

// Names of the notes by WriteNote in the folder `notes`, including those whose maker still runs.
std::vector<std::string> notesIn(const std::string& notes);

// Clears the folder that the note names, and removes the note: also if that folder is missing, but
// not while something in it is in use. Leaves the note alone while its maker runs.
void settle(const std::string& notes, const std::string& note);

// The complete cleaning at the program's start: clears `notes` and each of `others` (following
// links in their paths), and settles each note separately, since one may name a volume that does
// not answer. Runs on the utility queue; returns at once.
void removeAll(Dispatch& dispatch, const std::string& notes,
               const std::vector<std::string>& others);

}  // namespace tessaly::Leftovers
