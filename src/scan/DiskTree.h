// Storage of a tree of nodes: one array of fixed-size entries in pre-order and one string with all
// their texts. Private to this room; all other code uses DiskNode.
//
// Pre-order has these consequences: the first child of a node is the next entry, the next sibling
// of a node is the entry where its subtree ends, and a subtree is one contiguous range of entries
// and of texts. So comparing, hashing and copying are loops over a range, however deep the tree is.
//
// Most paths are never stored. A node whose path begins with the path of its parent stores only the
// rest, and nothing when that rest is its own name. The form is canonical: whenever a path begins
// with the parent's path, it is stored relative to it.
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
    name,       // the parent's path and the name
    component,  // the parent's path and another component
    absolute    // a whole path
  };

  struct Entry {
    std::int64_t size = 0;
    double mtime = 0;
    std::uint32_t textOffset = 0;  // the name; two of the forms add length and bytes of the path
                                   // part
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

  // Tree and index of a node. A default node has index 0 of an empty tree with one entry.
  static const DiskTree& of(const DiskNode& node);
  static Index indexOf(const DiskNode& node) { return node.tree_ ? node.index_ : 0; }

  // The node at `index` of the tree that `node` belongs to.
  static DiskNode nodeAt(const DiskNode& node, Index index) { return {node.tree_, index}; }

  const Entry& entry(Index index) const { return entries_[index]; }
  Index count() const { return static_cast<Index>(entries_.size()); }

  std::string_view name(Index index) const {
    const Entry& entry = entries_[index];
    return {texts_.data() + entry.textOffset, entry.nameLength};
  }

  // The part that this node's path adds to its parent's; the whole path in the absolute form.
  std::string_view pathPart(Index index) const;

  std::string path(Index index) const;
  std::size_t pathLength(Index index) const;

  // Whether path() would return `path`, without building it.
  bool pathIs(Index index, std::string_view path) const;

  // Memory allocated for entries and texts.
  std::size_t bytesHeld() const { return entries_.capacity() * sizeof(Entry) + texts_.capacity(); }

  // True only where a child's path is joined without a "/" in between: for "/".
  bool endsInSlash(Index index) const;

 private:
  friend class DiskTreeBuilder;

  // Offset of the texts of the node at `index`; for the index past the last one, the end of all
  // texts.
  std::size_t textBegin(Index index) const {
    return index < count() ? entries_[index].textOffset : texts_.size();
  }

  std::vector<Entry> entries_;
  std::string texts_;
};

}  // namespace tessaly
