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
  // Time of its creation in nanoseconds since 1970; 0 if it is unknown. Distinguishes a folder from
  // an earlier one whose inode number it got. Not compared by ==, since only of() finds it out.
  // Unsigned, since a damaged file system may report any number.
  std::uint64_t created = 0;

  // Time of the last change of its content or its attributes, in nanoseconds since 1970; 0 if it is
  // unknown. Programs can set any time of modification, but not this one. Not compared by ==, since
  // a new name or another hard link changes it too.
  std::uint64_t changed = 0;

  // Identity of the item at `path`; a link is not followed.
  static Result<FileIdentity> of(const std::string& path);

  // Whether both may have been created at the same time, as far as that is known.
  bool mayBeAsOldAs(const FileIdentity& other) const {
    return created == 0 || other.created == 0 || created == other.created;
  }

  // Whether both are the same item, and nothing of it has changed in between, as far as that is
  // known.
  bool isUntouchedSince(const FileIdentity& earlier) const {
    return *this == earlier && mayBeAsOldAs(earlier) &&
           (changed == 0 || earlier.changed == 0 || changed == earlier.changed);
  }

  friend bool operator==(const FileIdentity& a, const FileIdentity& b) {
    return a.kind == b.kind && a.device == b.device && a.inode == b.inode && a.size == b.size &&
           a.modifiedSeconds == b.modifiedSeconds && a.modifiedNanoseconds == b.modifiedNanoseconds;
  }
};

}  // namespace tessaly
