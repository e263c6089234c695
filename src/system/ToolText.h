// What a tool printed, for engines to which a tool that failed is one that printed nothing.
#pragma once

#include <string>
#include <vector>

#include "system/Shell.h"

namespace tessaly {

// Starts the tool with `run`, or with Shell::run and `timeout` in seconds when `run` is empty. The
// empty text when that throws. Blocks meanwhile; safe from any thread.
std::string toolText(const Shell::Run& run, const std::string& path,
                     const std::vector<std::string>& args, double timeout);

}  // namespace tessaly
