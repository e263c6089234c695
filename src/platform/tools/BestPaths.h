// Collects any number of paths and keeps the best ones, as many as an answer can hold. So a search
// that finds a million of them needs little memory.
//
// Not safe from several threads at once.
#pragma once

#include <cstddef>
#include <cstdint>
#include <optional>
#include <string>
#include <vector>

namespace tessaly::tools {

class BestPaths {
 public:
  struct Inode {
    std::uint64_t device = 0;
    std::uint64_t number = 0;

    friend bool operator==(const Inode&, const Inode&) = default;
  };

  struct Path {
    std::int64_t rank = 0;  // the lowest is the best; equal ones are in the order of their paths
    std::string path;
    // Of a file that may have several paths; only the best of them is kept.
    std::optional<Inode> inode = {};
  };

  // Keeps paths that together, with a line feed each, have at least `bytes`.
  explicit BestPaths(std::size_t bytes) : bytes_(bytes) {}

  // Whether a path of this rank could be kept.
  bool mayKeep(std::int64_t rank, const std::string& path) const;

  // A path that is added twice is kept once.
  void add(Path path);

  // The paths that were kept, the best first.
  std::vector<std::string> sorted();

  // Whether paths were dropped because there were too many.
  bool isCut() const { return worst_.has_value(); }

 private:
  void drop();

  std::size_t bytes_;
  std::size_t held_ = 0;
  std::vector<Path> paths_;
  std::optional<Path> worst_;  // the worst one kept, once some were dropped
};

}  // namespace tessaly::tools
