// Whole files, read in one go and replaced in one go: whoever opens the path, and whenever the
// program or the machine stops, finds the old content or the new one and nothing in between.
//
// Symbolic links at the path itself are followed, and what they lead to is what gets replaced: who
// keeps his settings elsewhere and links them into place goes on doing so after a save. A link that
// leads nowhere is filled in where it points. Anything that is no regular file, such as a device
// that somebody linked there to be rid of the content, is neither read nor replaced.
//
// Where others may write, they must not lead a file elsewhere: a link at the path itself is
// followed only where the user owns it, or where who owns the folder that it stands in does, and so
// is a link on the way that stands in a folder in which others may write. Any other is an error
// (EACCES).
//
// Safe from any thread. Two writers of one path do not mix: the last rename wins.
#pragma once

#include <cstddef>
#include <string>
#include <string_view>

#include "platform/SystemError.h"

namespace tessaly::AtomicFile {

enum class Durability {
  cached,  // left to the system to write when it likes: after a power cut the content may be lost
  synced,  // on disk before the call returns, which may take tens of milliseconds
};

enum class Access {
  owner,  // only the user reads and writes the file (0600)
  usual,  // what the user's umask grants for a new file
};

// Replaces the file at `path`, or makes it; its folder must be there. The new content goes to a
// temporary file in the same folder, of a short name that starts with ".tessaly-", which is then
// renamed. After a failure the temporary is gone and the old file is untouched, but for one case:
// when only syncing the folder fails, the new file already stands in its place, and the error says
// that it may not survive a power cut.
Outcome replace(const std::string& path, std::string_view content, Durability durability,
                Access access);

// All of the file at `path`. Never waits for a writer of a pipe. A file of more than `limit` bytes
// is refused (EFBIG), as is a folder (EISDIR) or another thing that is no file (EOPNOTSUPP).
Result<std::string> read(const std::string& path, std::size_t limit);

// Moves the file at `path` out of the way, to its own name with `ending` behind it, or where that
// is taken, with `ending` and a number from 2 on. Replaces nothing. Gives the new path.
Result<std::string> setAside(const std::string& path, std::string_view ending);

}  // namespace tessaly::AtomicFile
