// The file that tells of one item in the Trash, as it is made.
#pragma once

#include <optional>
#include <string>
#include <string_view>

#include "platform/linux/FileDescriptor.h"
#include "platform/linux/trash/InfoReserve.h"

namespace tessaly {

// A file in a folder of infos that was not there before, on disk before anything is moved. It is
// taken away again unless it is kept or another file has its name by now. Where the disk has no
// room for it, one of the reserve serves as long as there is one. The folder outlives it.
class NewInfo {
 public:
  // Not there after a failure, with errno set.
  NewInfo(const FileDescriptor& folder, std::string name, std::string_view content);
  NewInfo(const NewInfo&) = delete;
  NewInfo& operator=(const NewInfo&) = delete;
  ~NewInfo();

  bool isThere() const { return isThere_; }
  void keep();

 private:
  bool create(std::string_view content);
  void remove();
  bool hasItsName() const;

  const FileDescriptor& folder_;
  const std::string name_;
  bool isThere_ = false;
  // Of the file, so that no other one gets its number while this object lives.
  FileDescriptor held_;
  std::optional<ReservedInfo> reserved_;
};

}  // namespace tessaly
