// What a run of the program that was killed has left behind: the private files and folders in which
// it was writing something that was to appear in one step.
//
// Nothing is removed that is not certainly such a leftover. It has a name of exactly the private
// form and belongs to the user; it is a regular file, or a folder that nobody else may enter and
// that holds nothing but the files that are written there; and whoever made it has ended, which a
// lock tells that goes with its maker (an instance on another display may be writing just now).
// No link is followed, and no other mount is entered. What cannot be told for certain stays.
//
// Safe from any thread. Calls may never return where a folder lies on a volume that does not
// answer.
#pragma once

#include <cstdint>
#include <string>
#include <vector>

#include "platform/Dispatch.h"

namespace tessaly::Leftovers {

enum class Found : std::uint8_t {
  nothingInUse,  // what was left is gone, or no business of ours
  inUse,         // something is being written there, by the program or by a tool that outlives it
};

// Clears the folder at `path` itself, on whose absolute path no link may stand.
Found removeFrom(const std::string& path);

// The notes that PlaceInWork has left in the folder `notes`, by their names; also those of places
// in work.
std::vector<std::string> notesIn(const std::string& notes);

// Clears the folder that the note tells of, and removes the note: also where that folder is gone,
// but not while something in it is in use. Leaves the note alone while its maker runs.
void settle(const std::string& notes, const std::string& note);

// All of it for the start of the program: clears `notes` and each of `others` (by whatever links
// one comes there), and settles the notes, each by itself, since one may lead to a volume that
// does not answer. On the utility queue; returns at once.
void removeAll(Dispatch& dispatch, const std::string& notes,
               const std::vector<std::string>& others);

}  // namespace tessaly::Leftovers
