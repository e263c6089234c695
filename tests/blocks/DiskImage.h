// A file system in an image file, mounted for one test, and what the engine finds on it.
#pragma once

#include <cstdint>
#include <functional>
#include <optional>
#include <string>
#include <vector>

#include "reclaim/CloneEngine.h"
#include "support/Needs.h"
#include "support/TempTree.h"

namespace tessaly {

struct FileSystem {
  std::string name;
  std::string make;  // the command that makes it in a file whose name follows
  Need need;         // of a test that mounts it

  static FileSystem btrfs() { return {"btrfs", "mkfs.btrfs -q", Need::btrfs}; }
  static FileSystem xfs() { return {"xfs", "mkfs.xfs -q", Need::xfs}; }
  static FileSystem ext4() { return {"ext4", "mkfs.ext4 -q -b 4096", Need::image}; }
};

constexpr std::int64_t MiB = 1048576;
constexpr std::int64_t KiB = 1024;

class DiskImage {
 public:
  explicit DiskImage(const FileSystem& system);

  // Runs `body`, which returns "" for "as expected", in a child with the file system mounted, and
  // returns the same. Begins with "refused" if it cannot be mounted, for GTEST_SKIP.
  std::string run(const std::function<std::string()>& body) const;

  // Runs a shell's command. Throws an exception with it if it fails; its output goes to the error
  // output.
  static void shell(const std::string& command);
  static std::string outputOf(const std::string& command);

  std::string image() const { return tree_.at("disk"); }
  std::string top() const { return tree_.at("top"); }
  std::string at(const std::string& below) const { return top() + "/" + below; }

  // These throw an exception if they fail. `below` is a path below the top.

  // Writes `size` random bytes at `offset`, and makes the file system store them.
  void write(const std::string& below, std::int64_t size, std::int64_t offset = 0) const;
  // Writes a block of 4 KiB wherever there is room for two.
  void writeEverySecondBlock(const std::string& below, int blocks) const;
  // Makes `to` share all blocks of `from`.
  void clone(const std::string& from, const std::string& to) const;
  // Makes `to` share a part of `from`, at the offset `toOffset`, or at the same one.
  void clonePart(const std::string& from, const std::string& to, std::int64_t offset,
                 std::int64_t size, std::optional<std::int64_t> toOffset = {}) const;
  void link(const std::string& from, const std::string& to) const;

  // The record of each of these files, with its size on disk as its size in the tree.
  std::vector<ShareRecord> records(const std::vector<std::string>& below) const;

  // A line for each group of a scan of everything, such as "clone a b, 8 MiB on 4 MiB": names below
  // the top, `logical` and `unique`. `least` is the least saving.
  std::string found(std::int64_t least = MiB) const;

 private:
  const FileSystem system_;
  TempTree tree_;
};

// The same for any groups. Files are named relative to `top`, sorted by their bytes.
std::string linesOf(const std::vector<ShareGroup>& groups, const std::string& top);

// "" if both are equal, else both.
std::string difference(const std::string& found, const std::string& expected);

}  // namespace tessaly
