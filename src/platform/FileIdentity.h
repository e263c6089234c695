// Identifies the file or folder at a path together with its state, to distinguish it from another
// one that has the same name later. A plain value, safe from any thread.
//
// A change of a file's content changes its identity; a change deep inside a folder does not. On a
// file system that changes its inode numbers from time to time, an unchanged file may get another
// identity, but another file never gets the same one.
#pragma once

#include <cstdint>
#include <string>

#include "platform/SystemError.h"

namespace tessaly {

struct FileIdentity {
  enum class Kind : std::uint8_t { file, folder, link, other };

  Kind kind = Kind::other;
  std::uint64_t device = 0;
  std::uint64_t inode = 0;
  std::int64_t size = 0;             // bytes
  std::int64_t modifiedSeconds = 0;  // since 1970
  std::int64_t modifiedNanoseconds = 0;

  // Identity of the item at `path`; a link is not followed.
  static Result<FileIdentity> of(const std::string& path);

  friend bool operator==(const FileIdentity&, const FileIdentity&) = default;
};

}  // namespace tessaly
