// Lists the snapshots of the system's disk, and says how an administrator deletes some.
#pragma once

#include <string>
#include <vector>

#include "platform/tools/Tools.h"

namespace tessaly::tools {

// `args` without the tool's own name:
//
//   listlocalsnapshots /   a heading, and a line with "com.apple.TimeMachine" for each snapshot
//   that
//                          snapper or timeshift keep and this user can see
//   thinlocalsnapshots / BYTES URGENCY
//                          deletes nothing: prints a line of at most 180 characters that says what
//                          an administrator can run, and returns `failed`
//   --help
//
// "--machine DIR" before them: DIR is the root folder of the machine, such as that of a disk that
// is mounted for rescue.
int tmutil(const std::vector<std::string>& args, Streams streams, const Services& services);

}  // namespace tessaly::tools
