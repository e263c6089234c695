// A tree as a report for people and other programs: JSON in lines. Pure, safe from any thread.
#pragma once

#include <string>

#include "scan/DiskNode.h"

namespace tessaly::ExportReport {

// `from` and all below it: one object a node, its keys in alphabetical order, "mtime" only where
// the time is known and "children" always. Ends in a line feed. Names and paths are written as
// JsonText tells, so the report is valid UTF-8 whatever they are.
std::string json(const DiskNode& from);

}  // namespace tessaly::ExportReport
