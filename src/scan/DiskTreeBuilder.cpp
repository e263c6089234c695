#include <cstdio>
#include <cstdlib>
#include <utility>

#include "scan/DiskNode.h"
#include "scan/DiskTree.h"

namespace tessaly {

namespace {

[[noreturn]] void endProgram(const char* message) {
  std::fprintf(stderr, "tessaly: tree builder: %s\n", message);
  std::abort();
}

constexpr std::size_t maximumNodes = DiskTree::noParent;
constexpr std::size_t maximumTextBytes = UINT32_MAX;

}  // namespace

DiskTreeBuilder::DiskTreeBuilder() : tree_(std::make_unique<DiskTree>()) {}
DiskTreeBuilder::~DiskTreeBuilder() = default;

void DiskTreeBuilder::reserve(std::size_t nodes, std::size_t nameBytes) {
  tree_->entries_.reserve(nodes);
  tree_->texts_.reserve(nameBytes);
}

void DiskTreeBuilder::checkRoom(std::size_t nodes, std::size_t textBytes) const {
  if (nodes > maximumNodes - tree_->entries_.size()) endProgram("too many nodes");
  if (textBytes > maximumTextBytes - tree_->texts_.size()) endProgram("too many bytes of names");
}

void DiskTreeBuilder::open(const DiskTreeItem& item, std::string_view path) {
  if (openNodes_.empty()) {
    if (!tree_->entries_.empty()) endProgram("a second node at the top");
    push(item, path, true, path.size());
    return;
  }
  const OpenNode parent = openNodes_.back();
  const std::size_t prefix = parent.pathLength + (tree_->endsInSlash(parent.index) ? 0 : 1);
  const bool isBelow = path.size() >= prefix &&
                       (prefix == parent.pathLength || path[prefix - 1] == '/') &&
                       tree_->pathIs(parent.index, path.substr(0, parent.pathLength));
  push(item, isBelow ? path.substr(prefix) : path, !isBelow, path.size());
}

void DiskTreeBuilder::openBelow(const DiskTreeItem& item, std::string_view component) {
  if (openNodes_.empty()) endProgram("no open node to stand below");
  const OpenNode parent = openNodes_.back();
  const std::size_t separator = tree_->endsInSlash(parent.index) ? 0 : 1;
  push(item, component, false, parent.pathLength + separator + component.size());
}

void DiskTreeBuilder::push(const DiskTreeItem& item, std::string_view part, bool isAbsolute,
                           std::size_t pathLength) {
  using Entry = DiskTree::Entry;
  using PathForm = DiskTree::PathForm;

  const PathForm form = isAbsolute          ? PathForm::absolute
                        : part == item.name ? PathForm::name
                                            : PathForm::component;
  const std::size_t rest = form == PathForm::name ? 0 : sizeof(std::uint32_t) + part.size();
  checkRoom(1, item.name.size() + rest);

  Entry entry;
  entry.size = item.size;
  entry.mtime = item.mtime.value_or(0);
  entry.textOffset = static_cast<std::uint32_t>(tree_->texts_.size());
  entry.nameLength = static_cast<std::uint32_t>(item.name.size());
  entry.kind = item.kind;
  entry.flags = static_cast<std::uint8_t>((item.isDir ? Entry::directoryFlag : 0) |
                                          (item.mtime ? Entry::mtimeFlag : 0));
  entry.setPathForm(form);
  if (!openNodes_.empty()) {
    entry.parent = openNodes_.back().index;
    ++tree_->entries_[entry.parent].childCount;
  }
  openNodes_.push_back({tree_->count(), pathLength});
  tree_->entries_.push_back(entry);
  tree_->texts_ += item.name;
  if (form != PathForm::name) {
    const auto length = static_cast<std::uint32_t>(part.size());
    tree_->texts_.append(reinterpret_cast<const char*>(&length), sizeof length);
    tree_->texts_ += part;
  }
}

void DiskTreeBuilder::append(const DiskNode& node) {
  using Entry = DiskTree::Entry;
  using Index = DiskTree::Index;

  const DiskTree& source = DiskTree::of(node);
  const Index from = DiskTree::indexOf(node);
  const Entry& top = source.entry(from);
  open({node.name(), node.size(), node.isDir(), node.kind(), node.mtime()}, node.path());
  const Index to = openNodes_.back().index;

  // The subtree is copied as it is: one range of entries, one range of texts.
  const std::size_t textFrom = source.textBegin(from + 1);
  const std::size_t textSize = source.textBegin(top.end) - textFrom;
  checkRoom(top.end - from - 1, textSize);
  const std::size_t textTo = tree_->texts_.size();
  for (Index index = from + 1; index < top.end; ++index) {
    Entry entry = source.entry(index);
    entry.textOffset = static_cast<std::uint32_t>(entry.textOffset - textFrom + textTo);
    entry.parent = entry.parent - from + to;
    entry.end = entry.end - from + to;
    tree_->entries_.push_back(entry);
  }
  tree_->texts_.append(source.texts_, textFrom, textSize);
  tree_->entries_[to].childCount = top.childCount;
  close();
}

void DiskTreeBuilder::close() {
  if (openNodes_.empty()) endProgram("a node closed that was never opened");
  tree_->entries_[openNodes_.back().index].end = tree_->count();
  openNodes_.pop_back();
}

DiskNode DiskTreeBuilder::finish() {
  if (!openNodes_.empty()) endProgram("finished with a node still open");
  if (tree_->entries_.empty()) endProgram("finished without a node");
  tree_->entries_.shrink_to_fit();
  tree_->texts_.shrink_to_fit();
  return {std::shared_ptr<const DiskTree>(std::exchange(tree_, std::make_unique<DiskTree>())), 0};
}

}  // namespace tessaly
