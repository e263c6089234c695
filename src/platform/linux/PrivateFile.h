// A new file under a private name, which will appear under another name in one step. Has a UseLock
// as long as the object exists, whatever its name is.
#pragma once

#include <string>
#include <string_view>
#include <sys/types.h>

#include "platform/linux/FileDescriptor.h"

namespace tessaly {

class PrivateFile {
 public:
  // Creates it in the open folder, which must outlive the object.
  PrivateFile(int folder, mode_t mode);
  PrivateFile(const PrivateFile&) = delete;
  PrivateFile& operator=(const PrivateFile&) = delete;
  // Removes the file, unless it was moved.
  ~PrivateFile();

  // All of these return false with errno set.
  bool isThere() const { return isThere_; }
  bool write(std::string_view content);
  bool sync();
  // Ends writing. The file stays locked.
  bool close();
  // Renames it to `name`, replacing any file there.
  bool moveTo(const std::string& name);

 private:
  bool makeFile(mode_t mode);

  int folder_;
  std::string name_;
  FileDescriptor file_;
  FileDescriptor lock_;  // the same open file, from close() on
  bool isThere_ = false;
};

}  // namespace tessaly
