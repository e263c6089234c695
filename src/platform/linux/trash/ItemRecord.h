// The file that tells of one item in the Trash, once it stands there: other programs may take it
// away, or put one of theirs in its place.
#pragma once

#include <string>

#include "platform/SystemError.h"
#include "platform/linux/FileDescriptor.h"

namespace tessaly {

// In the folder "info" of a Trash. Outlived by the folder.
class ItemRecord {
 public:
  // Of the item called `itemName`.
  ItemRecord(const FileDescriptor& folder, const std::string& itemName);

  // The whole of it, with one line feed at its end at most. EFBIG for more than a path can fill;
  // that is none of ours.
  Result<std::string> content() const;

  // Writes the record again where it is gone. 0, or an errno: EEXIST where that of another item
  // stands there by now. What cannot be looked at is taken to be there.
  int keep(const std::string& content) const;

  // Where it still is the one of that content.
  void removeIf(const std::string& content) const;

 private:
  const FileDescriptor& folder_;
  const std::string name_;
};

}  // namespace tessaly
