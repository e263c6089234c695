// The lock by which what is being written is told from what a killed run has left behind. A writer
// holds it from the moment at which the file or folder is there until it is no longer private, and
// the system takes it back when the writer ends in whatever way: also in another space of process
// numbers, or on another machine that shares the folder, where no process number would tell.
//
// Who makes something takes the lock after the system has made it; in between, somebody who clears
// up may come first. So both look again under the lock, and only who holds it deletes.
#pragma once

#include <cerrno>
#include <cstdint>
#include <sys/file.h>

#include "platform/linux/FileDescriptor.h"
#include "platform/linux/Uninterrupted.h"

namespace tessaly::UseLock {

enum class Taken : std::uint8_t {
  yes,
  heldByOther,
  impossible,  // the file system has no such locks: nobody can take it, so nothing is deleted there
};

// Of an open file or folder; it goes with the last descriptor of this opening.
inline Taken take(const FileDescriptor& opened) {
  if (uninterrupted([&] { return ::flock(opened.get(), LOCK_EX | LOCK_NB); }) == 0) {
    return Taken::yes;
  }
  return errno == EWOULDBLOCK ? Taken::heldByOther : Taken::impossible;
}

}  // namespace tessaly::UseLock
