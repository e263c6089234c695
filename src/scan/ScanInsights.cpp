#include "scan/ScanInsights.h"

#include <algorithm>
#include <cstddef>
#include <string>
#include <utility>

#include "scan/DiskTree.h"

namespace tessaly::ScanInsights {

namespace {

// Tests the name alone, so a file on disk with such a name is left out too.
bool looksLikeRemainder(std::string_view name) {
  return name.starts_with("+ ");
}

// A node on the path to the wanted one.
struct Step {
  DiskTree::Index index;
  std::size_t pathLength;  // length of the node's path, a prefix of the wanted one
};

}  // namespace

std::vector<DiskNode> largestFiles(const DiskNode& root, std::int64_t limit) {
  if (limit <= 0) return {};
  const DiskTree& tree = DiskTree::of(root);
  const DiskTree::Index top = DiskTree::indexOf(root);
  const DiskTree::Index end = tree.entry(top).end;

  struct File {
    std::int64_t size;
    DiskTree::Index index;
  };
  std::vector<File> files;
  files.reserve(end - top);
  for (DiskTree::Index index = top; index < end; ++index) {
    const DiskTree::Entry& entry = tree.entry(index);
    if (entry.isDir() || looksLikeRemainder(tree.name(index))) continue;
    files.push_back({entry.size, index});
  }

  const auto comesBefore = [](const File& a, const File& b) {
    return a.size != b.size ? a.size > b.size : a.index < b.index;
  };
  if (static_cast<std::uint64_t>(limit) < files.size()) {
    const auto cut = files.begin() + static_cast<std::ptrdiff_t>(limit);
    std::nth_element(files.begin(), cut, files.end(), comesBefore);
    files.erase(cut, files.end());
  }
  std::sort(files.begin(), files.end(), comesBefore);

  std::vector<DiskNode> nodes;
  nodes.reserve(files.size());
  for (const File& file : files) nodes.push_back(DiskTree::nodeAt(root, file.index));
  return nodes;
}

std::vector<DiskNode> emptyFolders(const DiskNode& root, std::int64_t limit) {
  const DiskTree& tree = DiskTree::of(root);
  const DiskTree::Index top = DiskTree::indexOf(root);
  const DiskTree::Index end = tree.entry(top).end;
  const std::string topPath = tree.path(top);

  std::vector<std::pair<std::string, DiskTree::Index>> folders;
  for (DiskTree::Index index = top + 1; index < end; ++index) {
    if (static_cast<std::int64_t>(folders.size()) >= limit) break;
    const DiskTree::Entry& entry = tree.entry(index);
    if (!entry.isDir() || entry.kind == FileKind::app || entry.childCount != 0) continue;
    if (looksLikeRemainder(tree.name(index)) || tree.pathIs(index, topPath)) continue;
    folders.emplace_back(tree.path(index), index);
  }
  std::sort(folders.begin(), folders.end());

  std::vector<DiskNode> nodes;
  nodes.reserve(folders.size());
  for (const auto& [path, index] : folders) nodes.push_back(DiskTree::nodeAt(root, index));
  return nodes;
}

std::optional<std::vector<DiskNode>> chain(const DiskNode& from, std::string_view to) {
  const DiskTree& tree = DiskTree::of(from);
  const DiskTree::Index top = DiskTree::indexOf(from);
  const DiskTree::Index end = tree.entry(top).end;

  const auto found = [&](const std::vector<Step>& steps) {
    std::vector<DiskNode> nodes;
    nodes.reserve(steps.size());
    for (const Step& step : steps) nodes.push_back(DiskTree::nodeAt(from, step.index));
    return nodes;
  };

  const std::string topPath = tree.path(top);
  std::vector<Step> steps{{top, topPath.size()}};
  if (to == topPath) return found(steps);
  // The top is searched whatever its path is; below it, only nodes whose path is a prefix of the
  // wanted one.
  const bool topIsAbove = to.starts_with(topPath);

  for (DiskTree::Index index = top + 1; index < end;) {
    while (index >= tree.entry(steps.back().index).end) steps.pop_back();
    const Step& parent = steps.back();
    const DiskTree::Entry& entry = tree.entry(index);
    const std::string_view part = tree.pathPart(index);

    std::string_view rest = to;
    bool matches = true;
    if (entry.pathForm() != DiskTree::PathForm::absolute) {
      matches = parent.index != top || topIsAbove;
      if (matches) rest.remove_prefix(parent.pathLength);
      if (matches && !tree.endsInSlash(parent.index)) {
        matches = rest.starts_with('/');
        if (matches) rest.remove_prefix(1);
      }
    }
    matches = matches && rest.starts_with(part);
    if (matches) rest.remove_prefix(part.size());

    if (!matches || (!rest.empty() && rest.front() != '/')) {
      index = entry.end;
      continue;
    }
    steps.push_back({index, to.size() - rest.size()});
    if (rest.empty()) return found(steps);
    ++index;
  }
  return std::nullopt;
}

ScanStats stats(const DiskNode& root, double duration) {
  const DiskTree& tree = DiskTree::of(root);
  const DiskTree::Index top = DiskTree::indexOf(root);
  const DiskTree::Index end = tree.entry(top).end;

  ScanStats stats;
  stats.nodes = static_cast<std::int64_t>(root.subtreeCount());
  for (DiskTree::Index index = top; index < end; ++index) {
    ++(tree.entry(index).isDir() ? stats.folders : stats.files);
  }
  stats.duration = duration;
  stats.bytes = root.size();
  return stats;
}

}  // namespace tessaly::ScanInsights
