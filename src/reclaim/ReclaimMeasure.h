// How the known locations are measured on this machine: with du. It counts the blocks of a folder
// itself too, so a folder without entries, which has nothing to win, counts 0; so does one that
// cannot be listed, and one whose own path is not UTF-8, since du prints the path.
//
// The Trash is one Trash to the user, so its location counts all of the user's Trash folders, on
// all volumes, as emptying takes them. A Trash without items counts 0.
#pragma once

#include <string>
#include <vector>

#include "platform/FileAccess.h"
#include "platform/MountedVolumes.h"
#include "platform/Places.h"
#include "reclaim/ReclaimEngine.h"
#include "system/Shell.h"

namespace tessaly::ReclaimMeasure {

struct Services {
  const FileAccess& files;
  MountedVolumes& volumes;
  Shell::Run run = {};  // empty: Shell::run
};

// Measures paths below `home`; the path of the Trash is the one of `places`. The services must
// outlive the function. It blocks for as long as the tools take, and never waits for a volume that
// does not answer beyond the time limit of one tool. As thread-safe as the services.
ReclaimEngine::Measure onMachine(
    const std::string& home, Services services,
    const std::vector<ReclaimPlace>& places = ReclaimEngine::catalog());

}  // namespace tessaly::ReclaimMeasure
