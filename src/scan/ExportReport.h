// A tree as a report for people and other programs, in indented JSON. Pure, safe from any thread.
#pragma once

#include <string>

#include "scan/DiskNode.h"

namespace tessaly::ExportReport {

// `from` and its subtree: one object per node with its keys in alphabetical order, "mtime" only if
// the time is known, "children" always. Ends in a line feed. Names and paths are written as
// JsonText.h describes, so the report is always valid UTF-8.
std::string json(const DiskNode& from);

}  // namespace tessaly::ExportReport
