// A new file under a name of the program's own, for what is to appear in one step under another
// one. Held by a UseLock for as long as the object is there, whatever its name is.
#pragma once

#include <string>
#include <string_view>
#include <sys/types.h>

#include "platform/linux/FileDescriptor.h"

namespace tessaly {

class PrivateFile {
 public:
  // In the open folder, which outlives the object.
  PrivateFile(int folder, mode_t mode);
  PrivateFile(const PrivateFile&) = delete;
  PrivateFile& operator=(const PrivateFile&) = delete;
  // Takes the file away, unless it was moved.
  ~PrivateFile();

  // All of these give false with errno set.
  bool isThere() const { return isThere_; }
  bool write(std::string_view content);
  bool sync();
  // Nothing is written from here on. The file stays locked.
  bool close();
  // Gives it its name, in the place of what has that.
  bool moveTo(const std::string& name);

 private:
  bool makeFile(mode_t mode);

  int folder_;
  std::string name_;
  FileDescriptor file_;
  FileDescriptor lock_;  // the same opening, from close() on
  bool isThere_ = false;
};

}  // namespace tessaly
