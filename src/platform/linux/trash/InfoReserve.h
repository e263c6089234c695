// A few files that hold their room on the disk of the home Trash, so that an item can be recorded
// there, and so be thrown away, when the disk is full: that is when people come to make room. They
// lie in a folder of their own beside "files" and "info", where no program looks for items.
//
// It is best effort. Some file systems write nothing in place, or need room for the new name.
#pragma once

#include <cstddef>
#include <string>
#include <string_view>

#include "platform/linux/FileDescriptor.h"
#include "platform/linux/trash/ItemPlace.h"

namespace tessaly {

namespace InfoReserve {

inline constexpr const char* folderName = "tessaly-reserve";
inline constexpr int count = 8;
// Longer than any record, whose path may take three bytes for one.
inline constexpr std::size_t length = std::size_t{16} * 1024;

enum class Where { everywhere, whereItIsKept };

// Makes the files that are missing as long as there is plenty of room; where there is no reserve
// yet, only `everywhere`. `trash` is the folder of the Trash. Takes less than a millisecond most
// often, since nothing has to be on disk before something is recorded with it.
void fill(const FileDescriptor& trash, Where where);

}  // namespace InfoReserve

// A file of the reserve that has become a record.
class ReservedInfo {
 public:
  // Moves one to `name` in `info`, where nothing may be, and puts `content` on disk in it. Nothing
  // is there after a failure, with errno set: EEXIST, ENOENT when there is none, or why it cannot
  // be written. Only a plain file of this user with no other name is ever written to, and no link
  // is followed. `info` outlives it.
  ReservedInfo(const FileDescriptor& info, const std::string& name, std::string_view content);

  explicit operator bool() const { return static_cast<bool>(file_); }

  // Behind the content stand line feeds, which no reader minds, until it is kept: so the file can
  // go back to the reserve as it was.
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
