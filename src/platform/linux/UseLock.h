// The lock that distinguishes a file being written from a leftover of a killed run. A writer holds
// it from the creation of the file or folder until it is no longer private, and the system releases
// it when the writer ends in any way: also in another process namespace, or on another machine that
// shares the folder, where a process number would be meaningless.
//
// A writer takes the lock after the creation; in between, another process may clear the file away.
// So both check again under the lock, and only its holder deletes.
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
  impossible,  // the file system does not support such locks: no process can take one, so nothing
               // is deleted there
};

// Locks an open file or folder, until the last descriptor of this open file is closed.
inline Taken take(const FileDescriptor& opened) {
  if (uninterrupted([&] { return ::flock(opened.get(), LOCK_EX | LOCK_NB); }) == 0) {
    return Taken::yes;
  }
  return errno == EWOULDBLOCK ? Taken::heldByOther : Taken::impossible;
}

}  // namespace tessaly::UseLock
