// The growing tree of a scan, before it is pruned: one node for each directory, and for each file
// that may get one. All nodes are in one arena and are addressed by their index.
//
// For one thread only.
#pragma once

#include <cstddef>
#include <cstdint>
#include <memory>
#include <string_view>
#include <vector>

namespace tessaly {

class ScanAccumulator {
 public:
  using Index = std::uint32_t;
  static constexpr Index none = ~Index{0};
  static constexpr Index root = 0;

  struct Node {
    std::int64_t size = 0;
    double mtime = 0;  // newest time seen, seconds since 1970; 0 means none
    const char* name = nullptr;
    Index firstChild = none;
    Index nextSibling = none;
    std::uint32_t childCount = 0;
    std::uint16_t nameLength = 0;
    bool isDir = false;

    std::string_view nameView() const { return {name, nameLength}; }
  };
  static_assert(sizeof(Node) == 40);

  explicit ScanAccumulator(std::string_view rootName);

  Node& operator[](Index index) { return blocks_[index / blockNodes][index % blockNodes]; }
  const Node& operator[](Index index) const {
    return blocks_[index / blockNodes][index % blockNodes];
  }
  std::size_t count() const { return count_; }
  std::size_t nameBytes() const { return nameBytes_; }

  // Adds a child of size 0 to `parent`.
  Index append(Index parent, std::string_view name, bool isDir);

 private:
  static constexpr std::size_t blockNodes = 4096;
  static constexpr std::size_t blockNameBytes = 64 * 1024;

  Index newNode(std::string_view name, bool isDir);

  std::vector<std::unique_ptr<Node[]>> blocks_;
  std::size_t count_ = 0;
  std::vector<std::unique_ptr<char[]>> nameBlocks_;
  std::size_t nameRoom_ = 0;  // bytes free in the last block of names
  std::size_t nameBytes_ = 0;
};

}  // namespace tessaly
