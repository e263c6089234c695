// The engine of the analysis that finds large unused files and scores how safe it is to remove
// each.
#pragma once

#include "reclaim/SafeItem.h"
#include "session/PostScanAnalysis.h"
#include "system/Shell.h"

namespace tessaly::UnusedFiles {

// Searches the idle scope of the scan. `run` replaces the start of the search tool unless it is
// empty; without it, quitting ends the tool.
PostScanAnalysis::Engine<SafeItem> engine(Shell::Run run = {});

}  // namespace tessaly::UnusedFiles
