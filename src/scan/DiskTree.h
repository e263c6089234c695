// How a tree of nodes lies in memory: one array of fixed-size entries in pre-order and one string
// that holds their texts. Private to this room; everybody else sees DiskNode.
//
// Pre-order makes the rest follow: the first child of a node is the entry after it, the next
// sibling of a node is the entry where its subtree ends, and a subtree is one unbroken range of
// entries and of texts. So comparing, hashing and copying are loops over a range, however deep the
// tree is.
//
// Most paths are never stored. A node whose path is that of its parent with something appended
// keeps only what is appended, and nothing at all when that is its own name. The form is canonical:
// whenever a path begins with the parent's path, it is kept relative to it.
#pragma once

#include <cstddef>
#include <cstdint>
#include <string>
#include <string_view>
#include <vector>

#include "scan/DiskNode.h"

namespace tessaly {

class DiskTree {
 public:
  using Index = std::uint32_t;

  static constexpr Index noParent = UINT32_MAX;

  enum class PathForm : std::uint8_t {
    name,       // the parent's path with the name appended
    component,  // the parent's path with a component of its own appended
    absolute    // a whole path of its own
  };

  struct Entry {
    std::int64_t size = 0;
    double mtime = 0;
    std::uint32_t textOffset = 0;  // the name; for two of the forms, length and bytes of the rest
    std::uint32_t nameLength = 0;
    Index parent = noParent;
    Index end = 0;  // just past the last node of the subtree
    std::uint32_t childCount = 0;
    FileKind kind = FileKind::other;
    std::uint8_t flags = 0;

    static constexpr std::uint8_t directoryFlag = 1;
    static constexpr std::uint8_t mtimeFlag = 2;
    static constexpr unsigned pathFormShift = 2;

    bool isDir() const { return (flags & directoryFlag) != 0; }
    bool hasMtime() const { return (flags & mtimeFlag) != 0; }
    PathForm pathForm() const { return static_cast<PathForm>(flags >> pathFormShift); }
    void setPathForm(PathForm form) {
      flags = static_cast<std::uint8_t>((flags & (directoryFlag | mtimeFlag)) |
                                        (static_cast<unsigned>(form) << pathFormShift));
    }
  };
  static_assert(sizeof(Entry) == 40);

  // Where a node stands. A node without a tree stands at the one entry of an empty tree.
  static const DiskTree& of(const DiskNode& node);
  static Index indexOf(const DiskNode& node) { return node.tree_ ? node.index_ : 0; }

  // The node at `index` of the tree that `node` stands in.
  static DiskNode nodeAt(const DiskNode& node, Index index) { return {node.tree_, index}; }

  const Entry& entry(Index index) const { return entries_[index]; }
  Index count() const { return static_cast<Index>(entries_.size()); }

  std::string_view name(Index index) const {
    const Entry& entry = entries_[index];
    return {texts_.data() + entry.textOffset, entry.nameLength};
  }

  // What the path of this node adds to that of its parent; the whole path in the absolute form.
  std::string_view pathPart(Index index) const;

  std::string path(Index index) const;
  std::size_t pathLength(Index index) const;

  // Whether path() would give `path`, without building it.
  bool pathIs(Index index, std::string_view path) const;

  // Memory set aside for entries and texts.
  std::size_t bytesHeld() const { return entries_.capacity() * sizeof(Entry) + texts_.capacity(); }

  // Whether a path below this one is joined without a "/" in between: for "/" itself.
  bool endsInSlash(Index index) const;

 private:
  friend class DiskTreeBuilder;

  // Where the texts of the node at `index` begin, and where all texts end for the index past the
  // last one.
  std::size_t textBegin(Index index) const {
    return index < count() ? entries_[index].textOffset : texts_.size();
  }

  std::vector<Entry> entries_;
  std::string texts_;
};

}  // namespace tessaly
