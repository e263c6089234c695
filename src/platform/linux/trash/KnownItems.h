// How the items of one Trash are told from others that get their names.
#pragma once

#include <string>
#include <utility>

#include "platform/SystemError.h"
#include "platform/TrashIdentity.h"
#include "platform/linux/FileDescriptor.h"

namespace tessaly {

class KnownItems {
 public:
  // Those in the folder "files" of a Trash, which is known too: another Trash at its place has
  // other items. `path` is for errors, here and below.
  static Result<KnownItems> in(const FileDescriptor& files, const std::string& path);

  // Of an item that is held there (ItemPlace.h), with the content of the file that tells of it.
  Result<TrashIdentity> identityOf(const FileDescriptor& item, std::string record,
                                   const std::string& path) const;

  // Whether both are of one item. Where inodes do not keep their numbers, the records must be one
  // as well.
  bool areSame(const TrashIdentity& one, const TrashIdentity& other) const;

  // Whether the item that is held stands at `name` in the folder; an error where that cannot be
  // found out.
  Result<bool> standsAt(const FileDescriptor& folder, const std::string& name,
                        const FileDescriptor& item) const;

 private:
  KnownItems(bool inodesLast, std::string folder)
      : inodesLast_(inodesLast), folder_(std::move(folder)) {}

  bool inodesLast_;
  std::string folder_;
};

}  // namespace tessaly
