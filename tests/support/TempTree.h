// A tree of files in a directory of its own, built from a text and removed with the object.
//
// A line is an item, two blanks of indent put it into the folder above it:
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
//   4K         bytes the file takes on disk, in bytes or with K, M or G behind; a file without it
//   is
//              empty. Multiples of 4096 are kept exactly; other counts are the file's length
//   sparse=1G  length of a file that takes no room
//   -> target  a symbolic link
//   = path     a hard link to the file at `path` below the top, which must stand above this line
//   fifo, socket
//   mode=0640  permission bits, octal; 0755 for folders and 0644 for files otherwise
//   mtime=S    modification time, seconds since 1970, to the nanosecond; 1600000000 otherwise
//   x100       the line a hundred times, each "#" of the name a digit of the number, from 0 on
//
// Trees stand in memory where there is plenty of it; TMPDIR chooses another place. Whatever cannot
// be built as asked throws, with the line.
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

  // The top: absolute, with no link in it.
  const std::string& path() const { return path_; }

  // The path of what stands at `below` under the top.
  std::string at(std::string_view below) const { return path_ + "/" + std::string(below); }

  // Adds further items directly under the top, or under the folder `below`.
  void plant(std::string_view text) { plant("", text); }
  void plant(std::string_view below, std::string_view text);

  // Adds `depth` folders of one name, each inside the one before, the first in the folder `below`.
  // `furnish` is called in each with its descriptor and its level, 1 for the first. Paths may grow
  // as long as they like.
  void chain(std::string_view below, const std::string& name, int depth,
             const std::function<void(int folder, int level)>& furnish = {});

  // Bytes on disk of one item, and the length it reports; links are not followed.
  std::int64_t allocated(std::string_view below) const;
  std::int64_t length(std::string_view below) const;

 private:
  std::string path_;
};

// Builds the items of `text` in the open directory `folder`, with hard links relative to `top`.
void plantTree(int top, int folder, std::string_view text);

// Removes everything in the directory `path`, and it, whatever its depth, names and permissions.
// Gives false when something remains.
bool removeTree(const std::string& path);

}  // namespace tessaly
