// The record of one item in the Trash after it was written: other programs may remove it, or
// replace it by a record of their own.
#pragma once

#include <string>

#include "platform/SystemError.h"
#include "platform/linux/FileDescriptor.h"

namespace tessaly {

// A record in the folder "info" of a Trash, which must outlive the object.
class ItemRecord {
 public:
  // For the item called `itemName`.
  ItemRecord(const FileDescriptor& folder, const std::string& itemName);

  // The whole content, with at most one line feed at its end. EFBIG if it is longer than any record
  // by this program.
  Result<std::string> content() const;

  // Writes the record again if it is gone. Returns 0 or an errno: EEXIST if another item's record
  // is there by now. A record that cannot be read counts as present.
  int keep(const std::string& content) const;

  // Removes it if it still has this content.
  void removeIf(const std::string& content) const;

 private:
  const FileDescriptor& folder_;
  const std::string name_;
};

}  // namespace tessaly
