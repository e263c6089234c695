// The limit that a user or an administrator may set on the size of files (ulimit -f).
#pragma once

namespace tessaly::SizeLimit {

// A write beyond the limit fails from now on (EFBIG), in place of ending the program. Programs that
// a Process starts do not inherit this. To be called before there are other threads.
void failWritesBeyond();

}  // namespace tessaly::SizeLimit
