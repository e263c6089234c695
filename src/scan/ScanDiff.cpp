#include "scan/ScanDiff.h"

#include <algorithm>
#include <cstddef>
#include <limits>
#include <utility>

#include "scan/DiskTree.h"
#include "scan/PathName.h"

namespace tessaly::ScanDiff {

namespace {

using Index = DiskTree::Index;

// The part of a tree down to `levels` levels below its top.
class TopLevels {
 public:
  TopLevels(const DiskNode& top, std::int64_t levels)
      : tree_(DiskTree::of(top)),
        top_(DiskTree::indexOf(top)),
        end_(tree_.entry(top_).end),
        levels_(levels) {}

  // Calls visit(path, size) for each node, in walk order. The path is valid only during the call.
  template <class Visit>
  void each(const Visit& visit) const {
    std::string path = tree_.path(top_);
    visit(path, tree_.entry(top_).size);
    if (levels_ <= 0) return;

    std::vector<Folder> open{{end_, path, tree_.endsInSlash(top_)}};
    for (Index index = top_ + 1; index < end_;) {
      while (index >= open.back().end) open.pop_back();
      const DiskTree::Entry& entry = tree_.entry(index);
      path.clear();
      if (entry.pathForm() != DiskTree::PathForm::absolute) {
        path += open.back().path;
        if (!open.back().endsInSlash) path += '/';
      }
      path += tree_.pathPart(index);
      visit(path, entry.size);

      const bool descends = static_cast<std::int64_t>(open.size()) < levels_;
      if (descends && entry.childCount > 0) {
        open.push_back({entry.end, path, tree_.endsInSlash(index)});
      }
      index = descends ? index + 1 : entry.end;
    }
  }

  // Number of nodes that each() visits.
  std::size_t count() const {
    if (levels_ <= 0) return 1;
    std::size_t count = 1;
    std::vector<Index> open{end_};
    for (Index index = top_ + 1; index < end_; ++count) {
      while (index >= open.back()) open.pop_back();
      const DiskTree::Entry& entry = tree_.entry(index);
      const bool descends = static_cast<std::int64_t>(open.size()) < levels_;
      if (descends && entry.childCount > 0) open.push_back(entry.end);
      index = descends ? index + 1 : entry.end;
    }
    return count;
  }

 private:
  struct Folder {
    Index end;
    std::string path;
    bool endsInSlash;
  };

  const DiskTree& tree_;
  const Index top_;
  const Index end_;
  const std::int64_t levels_;
};

template <class Key>
PathSizes sizesByKey(const DiskNode& node, int depth, int maxDepth, const Key& key) {
  const TopLevels levels(node, std::int64_t{maxDepth} - depth);
  PathSizes sizes;
  sizes.reserve(levels.count());
  levels.each([&](std::string_view path, std::int64_t size) {
    sizes.insert_or_assign(std::string(key(path)), size);
  });
  return sizes;
}

std::string_view keyBelow(std::string_view path, std::string_view root) {
  std::string_view trimmed = root;
  if (trimmed.ends_with('/')) trimmed.remove_suffix(1);
  if (path == root || path == trimmed) return ".";

  if (!path.starts_with(trimmed)) return path;
  std::string_view rest = path.substr(trimmed.size());
  if (trimmed == "/") return rest;
  if (!rest.starts_with('/')) return path;
  rest.remove_prefix(1);
  return rest;
}

std::int64_t saturatingDifference(std::int64_t from, std::int64_t to) {
  std::int64_t difference = 0;
  if (!__builtin_sub_overflow(to, from, &difference)) return difference;
  using Limits = std::numeric_limits<std::int64_t>;
  return to > from ? Limits::max() : Limits::min();
}

// A future row, kept small for sorting.
struct Found {
  std::int64_t difference;
  const std::string* path;
  std::int64_t from;
  std::int64_t to;
};

void sortByDifference(std::vector<Found>& found) {
  std::sort(found.begin(), found.end(), [](const Found& a, const Found& b) {
    if (a.difference != b.difference) return a.difference > b.difference;
    return *a.path < *b.path;
  });
}

std::int64_t sizeOf(const PathSizes& sizes, const std::string& path) {
  const auto found = sizes.find(path);
  return found != sizes.end() ? found->second : 0;
}

}  // namespace

PathSizes flatten(const DiskNode& node, int depth, int maxDepth) {
  return sizesByKey(node, depth, maxDepth, [](std::string_view path) { return path; });
}

PathSizes flattenRelative(const DiskNode& node, std::string_view root, int depth, int maxDepth) {
  return sizesByKey(node, depth, maxDepth,
                    [root](std::string_view path) { return keyBelow(path, root); });
}

std::string relativeKey(std::string_view path, std::string_view root) {
  return std::string(keyBelow(path, root));
}

std::vector<ScanDelta> compare(const PathSizes& older, const PathSizes& newer,
                               std::int64_t minDelta) {
  std::vector<Found> found;
  for (const auto& [path, after] : newer) {
    const std::int64_t before = sizeOf(older, path);
    const std::int64_t growth = saturatingDifference(before, after);
    if (growth >= minDelta) found.push_back({growth, &path, before, after});
  }
  sortByDifference(found);

  std::vector<ScanDelta> deltas;
  deltas.reserve(found.size());
  for (const Found& row : found) {
    deltas.push_back({std::string(lastPathComponent(*row.path)), *row.path, row.from, row.to});
  }
  return deltas;
}

std::vector<FolderCompareRow> compareFolders(const PathSizes& left, const PathSizes& right,
                                             std::int64_t minDelta) {
  std::vector<Found> found;
  const auto consider = [&](const std::string& path, std::int64_t l, std::int64_t r) {
    const std::int64_t difference = saturatingDifference(std::min(l, r), std::max(l, r));
    if (l == 0 && r == 0) return;
    if (l > 0 && r > 0 && difference < minDelta) return;
    found.push_back({difference, &path, l, r});
  };
  for (const auto& [path, size] : left) consider(path, size, sizeOf(right, path));
  for (const auto& [path, size] : right) {
    if (!left.contains(path)) consider(path, 0, size);
  }
  sortByDifference(found);

  std::vector<FolderCompareRow> rows;
  rows.reserve(found.size());
  for (const Found& row : found) rows.push_back({*row.path, row.from, row.to});
  return rows;
}

}  // namespace tessaly::ScanDiff
