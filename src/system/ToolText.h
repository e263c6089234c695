// The output of a tool, for engines that treat a tool's failure as empty output.
#pragma once

#include <string>
#include <vector>

#include "system/Shell.h"

namespace tessaly {

// Starts the tool with `run`, or with Shell::run and `timeout` in seconds when `run` is empty.
// Returns the empty text when that throws. Blocks until then; safe from any thread.
std::string toolText(const Shell::Run& run, const std::string& path,
                     const std::vector<std::string>& args, double timeout);

}  // namespace tessaly
