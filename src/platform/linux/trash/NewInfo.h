// The record of one item in the Trash, while it is being created.
#pragma once

#include <optional>
#include <string>
#include <string_view>

#include "platform/linux/FileDescriptor.h"
#include "platform/linux/trash/InfoReserve.h"

namespace tessaly {

// A new file in a folder of records, on disk before the item is moved. The destructor removes it,
// unless it was kept or another file has its name by now. If the disk has no space for it, a file
// of the reserve is used if there is one. The folder must outlive the object.
class NewInfo {
 public:
  // After a failure isThere() is false and errno is set.
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
  // Held open, so that the inode number is not reused while this object exists.
  FileDescriptor held_;
  std::optional<ReservedInfo> reserved_;
};

}  // namespace tessaly
