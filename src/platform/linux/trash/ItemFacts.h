// What an item is known by, whatever its name: what stays the same as long as it is that item, and
// is another for every other item that may take its name.
//
// On most file systems that is the device, the number of the inode, the type and the time of birth,
// since a number is given again to a later file. Where no birth is recorded, type, size and time of
// the last change to the content stand for it. The time of the last change to the inode never
// counts: a move changes it.
//
// Some file systems make numbers up as they go, and another may be told of the same item later.
// There type, size and time alone are known, and whoever needs to be sure adds what else is known
// of the item.
#pragma once

#include <string>
#include <sys/stat.h>

#include "platform/SystemError.h"
#include "platform/linux/FileDescriptor.h"

namespace tessaly {

namespace ItemFacts {

// Whether inodes keep their numbers on a file system of that type, a number of <linux/magic.h>.
// Not on:
// - vfat and exFAT, which store none;
// - FUSE, where the program behind it may give any;
// - CIFS and SMB, whose client makes them up for servers that tell none, and may turn to that at
//   any time, and the folders shared with a virtual machine of VirtualBox;
// - layered file systems (overlay), which over layers of several disks number anew what was
//   forgotten meanwhile.
// 9p is taken at its word: its protocol promises a number for good, and where a server breaks it,
// an item is not recognised and stays where it is.
bool inodesLast(unsigned long fileSystem);

// Of a status with the fields wanted() as far as they are told.
std::string text(const struct statx& status, bool inodesLast);

// Of a folder that is known by itself and not by what is in it; empty where numbers do not last.
std::string folderText(const struct statx& status, bool inodesLast);

// For statx().
unsigned wanted();

}  // namespace ItemFacts

// Of the file system that an open item lies on. `path` is for errors.
Result<bool> inodesLastAt(const FileDescriptor& item, const std::string& path);

// Of `name` in the folder, itself also where it is a link, or of the open item where the name is
// empty.
Result<std::string> factsOf(const FileDescriptor& folder, const std::string& name, bool inodesLast,
                            const std::string& path);
Result<std::string> folderFactsOf(const FileDescriptor& folder, bool inodesLast,
                                  const std::string& path);

}  // namespace tessaly
