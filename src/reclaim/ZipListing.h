// The entries of a zip archive, read from the list at its end; the content itself is not read. A
// plain value, safe from any thread.
#pragma once

#include <cstddef>
#include <cstdint>
#include <functional>
#include <optional>
#include <string>
#include <unordered_map>

namespace tessaly {

class ZipListing {
 public:
  // Fills `to` with the `count` bytes at `offset`; false if they cannot be read.
  using ReadAt = std::function<bool(std::int64_t offset, char* to, std::size_t count)>;

  // Reads an archive of `size` bytes. Absent if it is not an archive, is damaged, or has a list of
  // more than one gibibyte.
  static std::optional<ZipListing> of(std::int64_t size, const ReadAt& read);

  // Reads the archive at the absolute `path`.
  static std::optional<ZipListing> at(const std::string& path);

  std::size_t count() const { return sizes_.size(); }

  // Unpacked size in bytes of the entry `name`. Names are bytes; those of folders end in "/".
  // Absent if there is no such entry.
  std::optional<std::int64_t> sizeOf(const std::string& name) const;

 private:
  std::unordered_map<std::string, std::int64_t> sizes_;
};

}  // namespace tessaly
