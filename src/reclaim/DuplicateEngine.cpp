#include "reclaim/DuplicateEngine.h"

#include <algorithm>
#include <utility>

#include "platform/CheckedArithmetic.h"

namespace tessaly::DuplicateEngine {

namespace {

void walk(const DiskNode& node, std::int64_t minBytes, std::vector<PathSize>& into) {
  if (node.isDir() && node.kind() != FileKind::app) {
    for (const DiskNode& child : node.children()) walk(child, minBytes, into);
  } else if (node.size() >= minBytes) {
    into.push_back({.name = std::string(node.name()), .path = node.path(), .size = node.size()});
  }
}

// Lists of values with equal keys, in the order of the first value of each.
template <class Key, class Value>
class Grouping {
 public:
  void add(const Key& key, Value value) {
    const auto [entry, isNew] = places_.try_emplace(key, lists_.size());
    if (isNew) lists_.emplace_back(key, std::vector<Value>());
    lists_[entry->second].second.push_back(std::move(value));
  }

  // Those of at least two values.
  std::vector<std::pair<Key, std::vector<Value>>> takeRepeated() {
    std::erase_if(lists_, [](const auto& list) { return list.second.size() < 2; });
    return std::move(lists_);
  }

 private:
  std::vector<std::pair<Key, std::vector<Value>>> lists_;
  std::unordered_map<Key, std::size_t> places_;
};

// Lists of files of which `sizeOf` is equal; it is called for each file in their order.
template <class SizeOf>
std::vector<std::vector<PathSize>> candidates(std::vector<PathSize> files, const SizeOf& sizeOf) {
  Grouping<std::int64_t, PathSize> bySize;
  for (PathSize& file : files) {
    const std::int64_t size = sizeOf(file);
    bySize.add(size, std::move(file));
  }
  std::vector<std::vector<PathSize>> lists;
  for (auto& list : bySize.takeRepeated()) lists.push_back(std::move(list.second));
  return lists;
}

// `digestOf` is called for each file in the order of the lists.
template <class DigestOf>
std::vector<DuplicateGroup> grouped(std::vector<std::vector<PathSize>> lists,
                                    const DigestOf& digestOf) {
  std::vector<DuplicateGroup> groups;
  for (std::vector<PathSize>& list : lists) {
    Grouping<std::string, PathSize> byDigest;
    for (PathSize& file : list) {
      if (const std::optional<std::string> digest = digestOf(file))
        byDigest.add(*digest, std::move(file));
    }
    for (auto& [digest, copies] : byDigest.takeRepeated()) {
      const std::int64_t bytes = copies.front().size;
      groups.push_back({.digest = digest, .bytes = bytes, .files = std::move(copies)});
    }
  }
  std::stable_sort(
      groups.begin(), groups.end(), [](const DuplicateGroup& a, const DuplicateGroup& b) {
        const auto footprint = [](const DuplicateGroup& group) {
          return checkedMul(group.bytes, static_cast<std::int64_t>(group.files.size()));
        };
        return footprint(a) > footprint(b);
      });
  return groups;
}

FileDigests::Options optionsFor(const Search& search) {
  return {.isCancelled = search.isCancelled,
          .mountPoints = search.mountPoints,
          .atOnce = search.atOnce,
          .patience = search.patience,
          .read = search.read,
          .start = search.start};
}

// The lengths of the files as they are now; absent for files that cannot be looked at. Empty once
// the search is cancelled.
std::vector<std::optional<std::int64_t>> lengthsOf(const std::vector<PathSize>& files,
                                                   const Search& search) {
  std::vector<FileDigests::File> toLookAt;
  for (const PathSize& file : files)
    toLookAt.push_back({.path = file.path, .allocated = file.size});
  FileDigests::Options options = optionsFor(search);
  options.read = [](const std::string& path, const FileDigest::Reading&) -> Result<FileDigest> {
    const Result<FileIdentity> identity = FileIdentity::of(path);
    if (!identity) return identity.error();
    return FileDigest{.sha256 = {}, .identity = identity.value()};
  };
  std::vector<std::optional<std::int64_t>> lengths;
  for (const std::optional<FileDigest>& look : FileDigests::of(toLookAt, options))
    lengths.push_back(look ? std::optional(look->identity.size) : std::nullopt);
  return lengths;
}

}  // namespace

std::vector<PathSize> files(const DiskNode& in, std::int64_t minBytes) {
  std::vector<PathSize> found;
  walk(in, minBytes, found);
  return found;
}

std::optional<std::string> hashFile(const std::string& path) {
  Result<FileDigest> read = FileDigest::of(path);
  if (!read) return std::nullopt;
  return std::move(read).value().sha256;
}

std::vector<DuplicateGroup> groups(const DiskNode& in, std::int64_t minBytes, const Hash& hash) {
  const auto sizeOf = [](const PathSize& file) { return file.size; };
  return grouped(candidates(files(in, minBytes), sizeOf),
                 [&](const PathSize& file) { return hash(file.path); });
}

std::vector<DuplicateGroup> find(const DiskNode& in, std::int64_t minBytes, const Search& search) {
  std::vector<PathSize> all = files(in, minBytes);
  if (all.size() < 2) return {};
  const std::vector<std::optional<std::int64_t>> lengths = lengthsOf(all, search);
  if (lengths.empty()) return {};
  auto length = lengths.begin();
  std::vector<std::vector<PathSize>> lists = candidates(
      std::move(all), [&](const PathSize& file) { return (length++)->value_or(file.size); });
  if (lists.empty()) return {};
  std::vector<FileDigests::File> toRead;
  std::int64_t bytes = 0;
  for (const auto& list : lists) {
    for (const PathSize& file : list) {
      toRead.push_back({.path = file.path, .allocated = file.size});
      bytes = checkedAdd(bytes, file.size);
    }
  }
  const auto progress = [&](const FileDigests::Progress& now) {
    if (search.progress)
      search.progress(
          {.files = now.files, .fileCount = toRead.size(), .bytes = now.bytes, .byteCount = bytes});
  };
  FileDigests::Options options = optionsFor(search);
  options.progress = progress;
  const std::vector<std::optional<FileDigest>> digests = FileDigests::of(toRead, options);
  if (digests.empty()) return {};

  std::unordered_map<std::string, FileIdentity> identities;
  auto next = digests.begin();
  std::vector<DuplicateGroup> groups =
      grouped(std::move(lists), [&](const PathSize& file) -> std::optional<std::string> {
        const std::optional<FileDigest>& digest = *next++;
        if (!digest) return std::nullopt;
        identities.emplace(file.path, digest->identity);
        return digest->sha256;
      });
  if (search.compared) {
    for (const DuplicateGroup& group : groups)
      for (const PathSize& file : group.files) search.compared(file.path, identities.at(file.path));
  }
  return groups;
}

}  // namespace tessaly::DuplicateEngine
