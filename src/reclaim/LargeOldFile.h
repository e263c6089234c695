// A large file that has not been modified for some time. Identified by its path. Names and paths
// are bytes.
#pragma once

#include <cstddef>
#include <cstdint>
#include <functional>
#include <string>

namespace tessaly {

struct LargeOldFile {
  std::string name = {};  // the last component of the path
  std::string path = {};
  std::int64_t bytes = 0;  // on disk; the length if that is unknown, 0 if both are
  std::string kind = {};   // the raw text of its FileKind
  // Time of the last change of its content in milliseconds since 1970; if that is unknown, a time
  // in the year 1.
  std::int64_t mtimeMs = 0;

  friend bool operator==(const LargeOldFile&, const LargeOldFile&) = default;
};

}  // namespace tessaly

template <>
struct std::hash<tessaly::LargeOldFile> {
  std::size_t operator()(const tessaly::LargeOldFile& file) const {
    return (std::hash<std::string>{}(file.path) * 31 + std::hash<std::int64_t>{}(file.bytes)) * 31 +
           std::hash<std::int64_t>{}(file.mtimeMs);
  }
};
