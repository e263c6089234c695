// Which file or folder stands at a path, and in which state: what was looked at once can be told
// from another that has its name later. A plain value, safe from any thread.
//
// What changes the content of a file changes it; what changes deep inside a folder does not. Where
// a file system gives its files new numbers from time to time, the same file may pass for another,
// never another for the same.
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

  // Of what stands at `path`, be it a link or not.
  static Result<FileIdentity> of(const std::string& path);

  friend bool operator==(const FileIdentity&, const FileIdentity&) = default;
};

}  // namespace tessaly
