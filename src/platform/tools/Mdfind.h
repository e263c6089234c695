// Finds files by size or name.
#pragma once

#include <string>
#include <vector>

#include "platform/tools/LiveSearch.h"
#include "platform/tools/Tools.h"

namespace tessaly::tools {

// `args` without the tool's own name: "-onlyin", a folder and a query; "-onlyin", a folder, "-name"
// and a text; or "--help". "--within" and a number of seconds before them changes how long a search
// may take. Prints one path on each line, in the order of LiveSearch.
//
// Searches in a process of its own, so that the answer arrives and the tool ends in time even if a
// file system does not answer.
//
// Returns `done` if everything that was asked for is printed, `incomplete` if there may be more:
// the time was up, or the answer is longer than an answer may be. A line on the error stream says
// which of the two it is, or that something could not be read, which changes no status.
int mdfind(const std::vector<std::string>& args, Streams streams, const Services& services);

// The same under other settings.
int mdfindWith(const std::vector<std::string>& args, Streams streams,
               const LiveSearch::Settings& settings);

}  // namespace tessaly::tools
