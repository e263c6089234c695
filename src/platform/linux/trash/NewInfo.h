// The file that tells of one item in the Trash, as it is made.
#pragma once

#include <string>
#include <string_view>

#include "platform/linux/FileDescriptor.h"

namespace tessaly {

// A file in a folder of infos that was not there before, on disk before anything is moved. It is
// taken away again unless it is kept. The folder outlives it.
class NewInfo {
 public:
  // Not there after a failure, with errno set.
  NewInfo(const FileDescriptor& folder, std::string name, std::string_view content);
  NewInfo(const NewInfo&) = delete;
  NewInfo& operator=(const NewInfo&) = delete;
  ~NewInfo();

  bool isThere() const { return isThere_; }
  void keep() { isThere_ = false; }

 private:
  void remove();

  const FileDescriptor& folder_;
  const std::string name_;
  bool isThere_ = false;
};

}  // namespace tessaly
