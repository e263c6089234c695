// Reads and replaces whole files in one step: whenever the program or the machine stops, a reader
// of the path finds the old content or the new one, never a mixture.
//
// Symbolic links at the path itself are followed, and their target is replaced, so settings that a
// user keeps elsewhere and links into place stay linked after a save. For a dangling link the file
// is created at its target. Anything that is not a regular file, such as a link to a device that
// discards the content, is neither read nor replaced.
//
// Other users must not be able to redirect a file: a link, at the path itself or higher in it, is
// followed only if its owner is the user or the owner of the folder that contains it. Any other
// link is an error (EACCES).
//
// Safe from any thread. Two writers of one path do not mix: the last rename wins.
#pragma once

#include <cstddef>
#include <string>
#include <string_view>

#include "platform/SystemError.h"

namespace tessaly::AtomicFile {

enum class Durability {
  cached,  // the system writes it to disk at some time: a power cut may lose the content
  synced,  // on disk before the call returns, which may take tens of milliseconds
};

enum class Access {
  owner,  // only the user may read and write the file (0600)
  usual,  // what the user's umask grants for a new file
};

// Replaces the file at `path`, or creates it; its folder must exist. The new content goes to a
// temporary file in the same folder, with a short name that starts with ".tessaly-", which is then
// renamed. After a failure the temporary file is removed and the old file is untouched, with one
// exception: if only syncing the folder fails, the new file is already in place, and the error
// means that it may not survive a power cut.
Outcome replace(const std::string& path, std::string_view content, Durability durability,
                Access access);

// Reads the whole file at `path`. Never waits for the writer of a pipe. Refuses a file of more than
// `limit` bytes (EFBIG), a folder (EISDIR) and any other item that is not a file (EOPNOTSUPP).
Result<std::string> read(const std::string& path, std::size_t limit);

// Renames the file at `path` to its own name plus `ending`, or, if that exists, plus `ending` and a
// number from 2 on. Replaces nothing. Returns the new path.
Result<std::string> setAside(const std::string& path, std::string_view ending);

}  // namespace tessaly::AtomicFile
