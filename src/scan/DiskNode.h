// One node of a finished scan, with its whole subtree.
//
// A DiskNode is an immutable value. All nodes of a tree are stored in one block in pre-order, and a
// DiskNode is a shared reference to one entry of it: a copy costs a reference count, and dropping
// the last copy frees the whole block at once. A node keeps its block alive. Safe to read and to
// copy from any thread.
//
// Names and paths are bytes, in whatever encoding the disk holds them. The views that name()
// returns stay valid while any node of the tree exists.
#pragma once

#include <cstddef>
#include <cstdint>
#include <functional>
#include <iterator>
#include <memory>
#include <optional>
#include <string>
#include <string_view>
#include <vector>

#include "scan/FileKind.h"

namespace tessaly {

class DiskTree;

class DiskNode {
 public:
  struct Fields {
    std::string name;
    std::string path;
    std::int64_t size = 0;
    bool isDir = false;
    FileKind kind = FileKind::other;
    std::optional<double> mtime = std::nullopt;
  };

  class Children;

  // A file with an empty name, an empty path and size 0; a node that was moved from is equal to it.
  DiskNode();

  // A node with copies of these children, in this order. Takes time in proportion to the subtree.
  // For small trees; use DiskTreeBuilder for large ones.
  explicit DiskNode(const Fields& fields, const std::vector<DiskNode>& children = {});

  // The last path component, or the name shown instead: "Macintosh HD" for "/", "+ 20 more" for a
  // remainder.
  std::string_view name() const;

  // Absolute path with symbolic links resolved; identifies the node. Built on each call from the
  // names of the nodes above it.
  std::string path() const;

  // Bytes on disk of this item and everything in it. Not the sum of the sizes of children().
  std::int64_t size() const;

  // True for directories, and for everything that the scanner treats as a package.
  bool isDir() const;

  FileKind kind() const;

  // Newest modification time at or below this item, in seconds since 1970; absent when unknown.
  std::optional<double> mtime() const;

  // Largest first; a remainder node, if any, is last. Empty for files and at the depth where the
  // tree is cut off.
  Children children() const;

  // Number of nodes in the subtree, this one included.
  std::size_t subtreeCount() const;

  // Compares all seven fields, children recursively.
  friend bool operator==(const DiskNode& a, const DiskNode& b);

 private:
  friend class DiskTree;
  friend class DiskTreeBuilder;
  friend struct std::hash<DiskNode>;

  DiskNode(std::shared_ptr<const DiskTree> tree, std::uint32_t index);

  std::shared_ptr<const DiskTree> tree_;
  std::uint32_t index_ = 0;
};

// The children of one node, in order: a forward range of DiskNode values.
class DiskNode::Children {
 public:
  class Iterator {
   public:
    using iterator_category = std::forward_iterator_tag;
    using iterator_concept = std::forward_iterator_tag;
    using value_type = DiskNode;
    using difference_type = std::ptrdiff_t;
    using pointer = void;
    using reference = DiskNode;

    Iterator() = default;
    DiskNode operator*() const;
    Iterator& operator++();
    Iterator operator++(int);
    friend bool operator==(const Iterator& a, const Iterator& b) { return a.index_ == b.index_; }

   private:
    friend class Children;
    Iterator(const std::shared_ptr<const DiskTree>* tree, std::uint32_t index)
        : tree_(tree), index_(index) {}

    const std::shared_ptr<const DiskTree>* tree_ = nullptr;
    std::uint32_t index_ = 0;
  };

  // The range keeps the tree alive, so it may be taken from a temporary node.
  Iterator begin() const { return {&tree_, begin_}; }
  Iterator end() const { return {&tree_, end_}; }
  std::size_t size() const { return count_; }
  bool empty() const { return count_ == 0; }
  DiskNode front() const;
  // The child at `position`, which must be below size(). Steps over the ones before it.
  DiskNode operator[](std::size_t position) const;

 private:
  friend class DiskNode;
  Children(std::shared_ptr<const DiskTree> tree, std::uint32_t begin, std::uint32_t end,
           std::uint32_t count)
      : tree_(std::move(tree)), begin_(begin), end_(end), count_(count) {}

  std::shared_ptr<const DiskTree> tree_;
  std::uint32_t begin_ = 0;
  std::uint32_t end_ = 0;
  std::uint32_t count_ = 0;
};

// The fields of a node without its path and its children.
struct DiskTreeItem {
  std::string_view name;
  std::int64_t size = 0;
  bool isDir = false;
  FileKind kind = FileKind::other;
  std::optional<double> mtime;
};

// Builds a tree in pre-order, in one block: open a node, build its children, close it. Ends the
// program when a tree would need more than 4 Gi nodes or 4 GiB of names.
class DiskTreeBuilder {
 public:
  DiskTreeBuilder();
  ~DiskTreeBuilder();
  DiskTreeBuilder(const DiskTreeBuilder&) = delete;
  DiskTreeBuilder& operator=(const DiskTreeBuilder&) = delete;

  // Reserves memory for this many nodes and bytes of names, which saves copying while the tree
  // grows.
  void reserve(std::size_t nodes, std::size_t nameBytes);

  // Opens a node inside the open one. `path` is its whole path.
  void open(const DiskTreeItem& item, std::string_view path);

  // The same for a node whose path is the path of the open node with `component` appended.
  void openBelow(const DiskTreeItem& item, std::string_view component);
  void openBelow(const DiskTreeItem& item) { openBelow(item, item.name); }

  // Adds a copy of another tree's node with its whole subtree, already closed. Paths do not change.
  void append(const DiskNode& node);

  void close();

  // Returns the finished tree and leaves the builder empty. Every node must have been closed, and
  // there must be exactly one top node.
  DiskNode finish();

 private:
  struct OpenNode {
    std::uint32_t index;
    std::size_t pathLength;
  };

  void checkRoom(std::size_t nodes, std::size_t textBytes) const;
  void push(const DiskTreeItem& item, std::string_view part, bool isAbsolute,
            std::size_t pathLength);

  std::unique_ptr<DiskTree> tree_;
  std::vector<OpenNode> openNodes_;
};

}  // namespace tessaly

template <>
struct std::hash<tessaly::DiskNode> {
  std::size_t operator()(const tessaly::DiskNode& node) const;
};
