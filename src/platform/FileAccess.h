// Tests what this user may read in the file system, by trying. Paths are absolute, as bytes; links
// are followed. No call waits for the other end of a pipe or for a device. Safe from any thread.
#pragma once

#include <string>

namespace tessaly {

class FileAccess {
 public:
  enum class Kind {
    nothing,  // missing or not visible
    directory,
    file,  // anything else
  };

  virtual ~FileAccess() = default;

  virtual Kind kindOf(const std::string& path) const = 0;

  // Whether the directory could be listed to its last entry.
  virtual bool canList(const std::string& path) const = 0;

  // Whether the file could be opened for reading.
  virtual bool canOpen(const std::string& path) const = 0;

  // Whether the whole content of the file could be read, by mapping it into memory if possible.
  // False for anything but a regular file.
  virtual bool canReadWhole(const std::string& path) const = 0;

  // The file system of this machine.
  static const FileAccess& ofMachine();
};

}  // namespace tessaly
