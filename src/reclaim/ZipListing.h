// What a zip archive says that it holds, read from the list at its end; of the content itself
// nothing is read. A plain value, safe from any thread.
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
  // Fills `to` with the `count` bytes at `offset`; false when they cannot be had.
  using ReadAt = std::function<bool(std::int64_t offset, char* to, std::size_t count)>;

  // Of an archive of so many bytes. Absent where it is none, or damaged, or lists more than a
  // gibibyte of names.
  static std::optional<ZipListing> of(std::int64_t size, const ReadAt& read);

  // Of the archive at the absolute `path`.
  static std::optional<ZipListing> at(const std::string& path);

  std::size_t count() const { return sizes_.size(); }

  // The bytes that the entry `name` has when it is unpacked. Names are bytes, those of folders end
  // in "/". Absent where there is no such entry.
  std::optional<std::int64_t> sizeOf(const std::string& name) const;

 private:
  std::unordered_map<std::string, std::int64_t> sizes_;
};

}  // namespace tessaly
