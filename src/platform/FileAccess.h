// What this user may read of the file system, found out by trying. Paths are absolute, as bytes;
// links are followed. Nothing here waits for the other end of a pipe or for a device. Safe from any
// thread.
#pragma once

#include <string>

namespace tessaly {

class FileAccess {
 public:
  enum class Kind {
    nothing,  // not there, or not to be seen
    directory,
    file,  // whatever else there is
  };

  virtual ~FileAccess() = default;

  virtual Kind kindOf(const std::string& path) const = 0;

  // Whether the directory could be listed, to its last entry.
  virtual bool canList(const std::string& path) const = 0;

  // Whether the file could be opened for reading.
  virtual bool canOpen(const std::string& path) const = 0;

  // Whether the whole content of the file could be had, by mapping it into memory where that is
  // possible. Only a regular file has a whole content.
  virtual bool canReadWhole(const std::string& path) const = 0;

  // The file system of this machine.
  static const FileAccess& ofMachine();
};

}  // namespace tessaly
