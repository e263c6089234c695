// The folder that takes an item thrown away, after the freedesktop.org Trash specification 1.0:
// that of the home for what lies on the same file system, else one at the top of the item's own.
// What counts is the mount that the item is reached by, not the device: nothing can be renamed from
// one mount to another, also where they show the same disk, and a part of a disk may call itself a
// device of its own without being mounted.
#pragma once

#include <string>

#include "platform/SystemError.h"
#include "platform/linux/FileDescriptor.h"
#include "platform/linux/trash/ItemPlace.h"
#include "platform/linux/trash/TrashPlace.h"

namespace tessaly {

struct TrashFolder {
  FileDescriptor files;
  FileDescriptor info;
  std::string path;      // absolute, without links
  std::string itemPath;  // how the item is to be recorded: absolute for the Trash of the home, else
                         // relative to the top of the file system
  bool isHome = false;   // the Trash of the home
};

// Makes what is missing of it, for the user alone (0700). `path` is the item's, for errors.
//
// Refuses, beside what cannot be moved at all, a Trash and all that is in it, and a folder with
// another file system in it. At the top of a file system, where others may write too, only true
// folders serve, never links: the user's in the shared ".Trash", provided that this one is sticky,
// or ".Trash-" and the number of the user, which must belong to the user.
Result<TrashFolder> trashFolderFor(const ItemPlace& item, const std::string& path,
                                   const TrashPlace& place);

}  // namespace tessaly
