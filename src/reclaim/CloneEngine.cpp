#include "reclaim/CloneEngine.h"

#include <algorithm>
#include <cstddef>
#include <limits>
#include <optional>
#include <string>
#include <string_view>
#include <unordered_map>
#include <unordered_set>
#include <utility>

#include "platform/CheckedArithmetic.h"

namespace tessaly {

std::int64_t ShareGroup::saving() const {
  std::int64_t difference = 0;
  if (__builtin_sub_overflow(logical, unique, &difference)) overflowed("-", logical, unique);
  return std::max<std::int64_t>(difference, 0);
}

}  // namespace tessaly

namespace tessaly::CloneEngine {

namespace {

void gather(const DiskNode& node, std::size_t limit, std::vector<DiskNode>& files) {
  if (files.size() >= limit) return;
  if (!node.isDir()) files.push_back(node);
  for (const DiskNode child : node.children()) {
    if (files.size() >= limit) return;
    gather(child, limit, files);
  }
}

// Gives each inode a number, equal for equal inodes of equal devices alone.
class InodeNumbers {
 public:
  std::uint64_t of(std::uint64_t device, std::uint64_t inode) {
    if (!plainDevice_) plainDevice_ = device;
    std::uint64_t number = device == *plainDevice_ ? inode : mixed(device, inode);
    while (true) {
      const auto [owner, isNew] = owners_.try_emplace(number, device, inode);
      if (isNew || owner->second == std::pair(device, inode)) return number;
      ++number;
    }
  }

 private:
  static std::uint64_t mixed(std::uint64_t device, std::uint64_t inode) {
    std::uint64_t bits = inode + device * 0x9e3779b97f4a7c15U;
    bits ^= bits >> 32U;
    bits *= 0xd6e8feb86659fd93U;
    bits ^= bits >> 32U;
    return bits * 0xd6e8feb86659fd93U;
  }

  std::optional<std::uint64_t> plainDevice_;  // whose numbers stay
  std::unordered_map<std::uint64_t, std::pair<std::uint64_t, std::uint64_t>> owners_;
};

ShareRecord recordOf(const DiskNode& node, std::string path, const FileBlocks& blocks,
                     InodeNumbers& numbers) {
  constexpr std::uint64_t mostLinks = std::numeric_limits<std::uint16_t>::max();
  return {.name = std::string(node.name()),
          .path = std::move(path),
          .logical = node.size(),
          .allocated = blocks.allocated > 0 ? blocks.allocated : blocks.blockBytes,
          .inode = numbers.of(blocks.device, blocks.inode),
          .nlink = static_cast<std::uint16_t>(std::min(blocks.links, mostLinks)),
          .cloneId = blocks.cloneId};
}

// Records with something in common, each list in the order of its records, the lists in the order
// of their first ones.
class Lists {
 public:
  void add(std::uint64_t key, const ShareRecord& record) {
    const auto [place, isNew] = places_.try_emplace(key, lists_.size());
    if (isNew) lists_.push_back({key, {}});
    lists_[place->second].second.push_back(&record);
  }

  const auto& all() const { return lists_; }

 private:
  std::unordered_map<std::uint64_t, std::size_t> places_;
  std::vector<std::pair<std::uint64_t, std::vector<const ShareRecord*>>> lists_;
};

ShareGroup groupOf(std::string_view kind, std::string id,
                   const std::vector<const ShareRecord*>& records) {
  ShareGroup group{.id = std::move(id), .kind = std::string(kind)};
  group.unique = records.front()->allocated;
  for (const ShareRecord* const record : records) {
    group.logical = checkedAdd(group.logical, record->logical);
    group.unique = std::max(group.unique, record->allocated);
    group.files.push_back(*record);
  }
  return group;
}

}  // namespace

std::vector<ShareRecord> collect(const DiskNode& from, std::int64_t limit,
                                 const IsCancelled& isCancelled, const FileBlocksOf& look) {
  std::vector<DiskNode> files;
  gather(from, static_cast<std::size_t>(std::max<std::int64_t>(limit, 0)), files);
  std::vector<std::string> paths;
  paths.reserve(files.size());
  for (const DiskNode& file : files) paths.push_back(file.path());

  const std::vector<std::optional<FileBlocks>> blocks = look(paths, isCancelled);
  if (isCancelled()) return {};
  std::vector<ShareRecord> records;
  InodeNumbers numbers;
  for (std::size_t i = 0; i < files.size(); ++i) {
    if (blocks[i]) records.push_back(recordOf(files[i], std::move(paths[i]), *blocks[i], numbers));
  }
  return records;
}

std::vector<ShareGroup> groups(const std::vector<ShareRecord>& from, std::int64_t minSavings) {
  Lists clones;
  Lists names;
  for (const ShareRecord& record : from) {
    if (record.cloneId != 0) clones.add(record.cloneId, record);
    if (record.nlink >= 2) names.add(record.inode, record);
  }

  std::vector<ShareGroup> found;
  std::unordered_set<std::string_view> claimed;
  for (const auto& [cloneId, records] : clones.all()) {
    if (records.size() < 2) continue;
    ShareGroup group = groupOf("clone", "clone-" + std::to_string(cloneId), records);
    if (group.saving() < minSavings) continue;
    for (const ShareRecord* const record : records) claimed.insert(record->path);
    found.push_back(std::move(group));
  }
  for (auto [inode, records] : names.all()) {
    if (records.size() < 2) continue;
    std::erase_if(records,
                  [&](const ShareRecord* record) { return claimed.contains(record->path); });
    if (records.size() < 2) continue;
    ShareGroup group = groupOf("hardlink", "inode-" + std::to_string(inode), records);
    if (group.saving() < minSavings) continue;
    found.push_back(std::move(group));
  }
  std::stable_sort(found.begin(), found.end(), [](const ShareGroup& a, const ShareGroup& b) {
    return a.saving() > b.saving();
  });
  return found;
}

}  // namespace tessaly::CloneEngine
