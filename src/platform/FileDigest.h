// SHA-256 of the content of one file, and what the file was when it was read.
//
// Only a regular file is opened: a pipe, a device or a link at the path is not, so its other end
// notices nothing. A file that changes while it is read has no digest. Parts without blocks are not
// read but counted as zeros. What reading brings into the system's page cache is dropped from it
// again, and nothing else, as far as the system allows that (see CacheFootprint). Takes about 1 MiB
// of memory, whatever the size of the file.
//
// A file system that does not answer may block a call for ever. Safe from any thread.
#pragma once

#include <cstdint>
#include <functional>
#include <optional>
#include <string>

#include "platform/FileIdentity.h"
#include "platform/SystemError.h"

namespace tessaly {

struct FileDigest {
  std::string sha256;     // 64 hexadecimal digits in lower case
  FileIdentity identity;  // of the file before and after it was read

  struct Reading {
    // Bytes on disk that the file must take; whatever it takes if absent.
    std::optional<std::int64_t> allocated = {};
    // Called at least before each part of at most 1 MiB, with the bytes done so far of `length`.
    // Reading ends with an error when it returns false.
    std::function<bool(std::int64_t done, std::int64_t length)> goOn = {};
  };

  // `path` must be absolute and may have any length; a link at its end is an error (linkOnTheWay),
  // and so is anything else that is not a regular file (EINVAL). The kind of the error is `changed`
  // if the file is not, or does not stay, as expected; its code is ECANCELED if `goOn` has ended
  // the reading.
  static Result<FileDigest> of(const std::string& path, const Reading& reading);
  static Result<FileDigest> of(const std::string& path) { return of(path, Reading()); }

  friend bool operator==(const FileDigest&, const FileDigest&) = default;
};

}  // namespace tessaly
