// The facts that identify an item, whatever its name: they do not change while it is that item, and
// differ from those of any other item that may get its name.
//
// On most file systems these are the device, the inode number, the type and the creation time,
// since the number of a deleted file is reused. Without a creation time, type, size and the time of
// the last content change are used instead. The time of the last inode change is never used, since
// a move changes it.
//
// Some file systems make up inode numbers and may report another one for the same item later. There
// only type, size and time are used, and callers that need certainty add other knowledge of the
// item.
#pragma once

#include <string>
#include <sys/stat.h>

#include "platform/SystemError.h"
#include "platform/linux/FileDescriptor.h"

namespace tessaly {

namespace ItemFacts {

// Whether inodes keep their numbers on file systems of this type, a number of <linux/magic.h>. Not
// on:
// - vfat and exFAT, which store none;
// - FUSE, where the serving program may report any number;
// - CIFS and SMB, whose client makes them up for servers that report none, and may start to do so
//   at any time, and the shared folders of VirtualBox;
// - layered file systems (overlay), which over layers of several disks assign new numbers to inodes
//   that were dropped from the cache. 9p is trusted: its protocol promises permanent numbers, and
//   if a server breaks the promise, an item is not recognised and stays where it is.
bool inodesLast(unsigned long fileSystem);

// Facts from a status with the fields wanted(), as far as they are reported.
std::string text(const struct statx& status, bool inodesLast);

// Facts of a folder, independent of its contents; empty if inode numbers do not last.
std::string folderText(const struct statx& status, bool inodesLast);

// The field mask for statx().
unsigned wanted();

}  // namespace ItemFacts

// For the file system of an open item. `path` is for errors.
Result<bool> inodesLastAt(const FileDescriptor& item, const std::string& path);

// Facts of `name` in the folder, not following a link, or of the open item if the name is empty.
Result<std::string> factsOf(const FileDescriptor& folder, const std::string& name, bool inodesLast,
                            const std::string& path);
Result<std::string> folderFactsOf(const FileDescriptor& folder, bool inodesLast,
                                  const std::string& path);

}  // namespace tessaly
