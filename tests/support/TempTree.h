// A tree of files in a temporary directory, built from a text and removed by the destructor.
//
// Each line is an item; an indent of two blanks puts it into the folder above:
//
//   Downloads/ mtime=1600000000.25
//     film.mkv 300K
//     disk.img sparse=1G
//     pipe fifo
//     part## 4K x100
//   alias -> Downloads/film.mkv
//   twin = Downloads/film.mkv
//   locked/ mode=0
//
// A name that ends in "/" is a folder. In names \s is a blank, \n a line feed, \\ a backslash and
// \xNN any byte. After the name, in any order:
//   4K         size on disk, in bytes or with K, M or G; empty by default. Multiples of 4096 are
//              kept exactly; other sizes are the file's length
//   sparse=1G  length of a file without blocks
//   -> target  a symbolic link
//   = path     a hard link to the file at `path` below the top, which must be above this line
//   fifo, socket
//   mode=0640  permission bits, octal; 0755 for folders and 0644 for files otherwise
//   mtime=S    modification time, seconds since 1970, to the nanosecond; 1600000000 otherwise
//   x100       the line a hundred times; each "#" of the name is a digit of the number, from 0
//
// Trees are in memory if there is plenty of it; TMPDIR sets another folder. A text that cannot be
// built throws an exception with the line.
#pragma once

#include <cstdint>
#include <functional>
#include <string>
#include <string_view>

namespace tessaly {

class TempTree {
 public:
  explicit TempTree(std::string_view text = {});
  ~TempTree();
  TempTree(const TempTree&) = delete;
  TempTree& operator=(const TempTree&) = delete;

  // The top: an absolute path without links.
  const std::string& path() const { return path_; }

  // The path of the item `below` the top.
  std::string at(std::string_view below) const { return path_ + "/" + std::string(below); }

  // Adds items directly under the top, or under the folder `below`.
  void plant(std::string_view text) { plant("", text); }
  void plant(std::string_view below, std::string_view text);

  // Adds `depth` nested folders of one name, the first in the folder `below`. `furnish` is called
  // for each with its descriptor and its level, from 1. Paths may have any length.
  void chain(std::string_view below, const std::string& name, int depth,
             const std::function<void(int folder, int level)>& furnish = {});

  // Bytes on disk of one item, and its length; links are not followed.
  std::int64_t allocated(std::string_view below) const;
  std::int64_t length(std::string_view below) const;

 private:
  std::string path_;
};

// Creates the items of `text` in the open directory `folder`, with hard links relative to `top`.
void plantTree(int top, int folder, std::string_view text);

// Removes the directory `path` with everything in it, whatever its depth, names and permissions.
// False if something remains.
bool removeTree(const std::string& path);

}  // namespace tessaly
