// Distinguishes the items of one Trash from others that get their names.
#pragma once

#include <string>
#include <utility>

#include "platform/SystemError.h"
#include "platform/TrashIdentity.h"
#include "platform/linux/FileDescriptor.h"

namespace tessaly {

class KnownItems {
 public:
  // For the items in the folder "files" of a Trash. The folder is identified too: another Trash at
  // the same path has other items. `path` is for errors, here and below.
  static Result<KnownItems> in(const FileDescriptor& files, const std::string& path);

  // Identity of an item that is held there (ItemLocation.h), with the content of its record.
  Result<TrashIdentity> identityOf(const FileDescriptor& item, std::string record,
                                   const std::string& path) const;

  // Whether both identify the same item. If inode numbers do not last, the records must be equal as
  // well.
  bool areSame(const TrashIdentity& one, const TrashIdentity& other) const;

  // Whether the held item is at `name` in the folder; an error if that cannot be determined.
  Result<bool> standsAt(const FileDescriptor& folder, const std::string& name,
                        const FileDescriptor& item) const;

 private:
  KnownItems(bool inodesLast, std::string folder)
      : inodesLast_(inodesLast), folder_(std::move(folder)) {}

  bool inodesLast_;
  std::string folder_;
};

}  // namespace tessaly
