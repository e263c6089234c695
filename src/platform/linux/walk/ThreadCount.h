// Number of threads for a walk, including the caller's.
#pragma once

namespace tessaly::walk {

// `wanted`, unless that is 0: then by the number of cores, at most four, since a disk does not get
// faster with more, and at least two, so that one reads while the other consumes. `cores` is 0 if
// unknown.
int threadCount(int wanted, unsigned cores);

}  // namespace tessaly::walk
