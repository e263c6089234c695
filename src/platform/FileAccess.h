// Tests what this user may read in the file system, by trying. Paths are absolute, as bytes; links
// are followed unless a function says otherwise. No call waits for the other end of a pipe or for a
// device. Safe from any thread.
#pragma once

#include <cstdint>
#include <optional>
#include <string>

namespace tessaly {

class FileAccess {
 public:
  enum class Kind {
    nothing,  // missing or not visible
    directory,
    file,  // anything else
  };

  // The figures of one item, each absent if it is unknown.
  struct Values {
    std::optional<double> modified = {};         // of its content, in seconds since 1970
    std::optional<std::int64_t> allocated = {};  // bytes on its disk; of a directory, its own
    std::optional<std::int64_t> size = {};       // bytes of content

    friend bool operator==(const Values&, const Values&) = default;
  };

  virtual ~FileAccess() = default;

  virtual Kind kindOf(const std::string& path) const = 0;

  // Whether the directory could be listed to its last entry.
  virtual bool canList(const std::string& path) const = 0;

  // Whether the directory could be listed and has an entry.
  virtual bool hasEntries(const std::string& path) const = 0;

  // Of the item itself if it is a link. All are absent if the item cannot be examined.
  virtual Values valuesOf(const std::string& path) const = 0;

  // Whether the file could be opened for reading.
  virtual bool canOpen(const std::string& path) const = 0;

  // Whether the whole content of the file could be read, by mapping it into memory if possible.
  // False for anything but a regular file.
  virtual bool canReadWhole(const std::string& path) const = 0;

  // The file system of this machine.
  static const FileAccess& ofMachine();
};

}  // namespace tessaly
