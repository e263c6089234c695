// The limit that a user or an administrator may set for the size of files (ulimit -f).
#pragma once

namespace tessaly::SizeLimit {

// From now on a write beyond the limit fails (EFBIG) instead of ending the program. Programs
// started by Process do not inherit this. Call it before there are other threads.
void failWritesBeyond();

}  // namespace tessaly::SizeLimit
