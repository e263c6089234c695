// A few files that reserve space on the disk of the home Trash, so that an item can be recorded
// there, and thus moved to the Trash, when the disk is full: just then users want to free space.
// They are in a folder of their own beside "files" and "info", where no program looks for items.
//
// This is best effort. Some file systems never write in place, or need space for the new name.
#pragma once

#include <cstddef>
#include <string>
#include <string_view>

#include "platform/linux/FileDescriptor.h"
#include "platform/linux/trash/ItemLocation.h"

namespace tessaly {

namespace InfoReserve {

inline constexpr const char* folderName = "tessaly-reserve";
inline constexpr int count = 8;
// Longer than any record, in which each byte of a path may take three.
inline constexpr std::size_t length = std::size_t{16} * 1024;

enum class Where { everywhere, whereItIsKept };

// Creates the missing files if there is plenty of free space; where there is no reserve yet, only
// with `everywhere`. `trash` is the folder of the Trash. Usually takes less than a millisecond,
// since nothing is synced to disk before a file is used.
void fill(const FileDescriptor& trash, Where where);

}  // namespace InfoReserve

// A file of the reserve that was turned into a record.
class ReservedInfo {
 public:
  // Moves a file of the reserve to `name` in `info`, where nothing may exist, and writes `content`
  // to disk in it. After a failure nothing is there, and errno is set: EEXIST, ENOENT if the
  // reserve is empty, or why it cannot be written. Writes only to a regular file of this user with
  // no other name, and follows no link. `info` must outlive the object.
  ReservedInfo(const FileDescriptor& info, const std::string& name, std::string_view content);

  explicit operator bool() const { return static_cast<bool>(file_); }

  // The content is followed by line feeds, which readers ignore, until keep(): so giveBack() can
  // return the file to the reserve.
  void keep();
  void giveBack();

 private:
  bool take(int number, std::string_view content);

  const FileDescriptor& info_;
  const std::string name_;
  const std::size_t length_;
  FileDescriptor reserve_;
  FileDescriptor file_;
  std::string origin_;  // its name in the reserve
  ItemIdentity identity_;
};

}  // namespace tessaly
