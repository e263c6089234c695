// A file without a name, in memory, that other processes of this user can write to while it is
// held. One object is used by one thread at a time.
#pragma once

#include <cstddef>
#include <cstdint>
#include <string>

#include "platform/SystemError.h"

namespace tessaly {

class MemoryFile {
 public:
  static Result<MemoryFile> made();

  MemoryFile(MemoryFile&& other) noexcept;
  MemoryFile& operator=(MemoryFile&& other) noexcept;
  ~MemoryFile();

  // Where others open it.
  std::string path() const;

  // Bytes in it by now.
  std::int64_t size() const;

  // Fills `to` with what stands at `offset`; false when there is less than that.
  bool read(std::int64_t offset, void* to, std::size_t count) const;

 private:
  explicit MemoryFile(int descriptor) : descriptor_(descriptor) {}

  int descriptor_;
};

}  // namespace tessaly
