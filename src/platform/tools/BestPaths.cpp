#include "platform/tools/BestPaths.h"

#include <algorithm>
#include <set>
#include <tuple>
#include <utility>

namespace tessaly::tools {

namespace {

bool isBetter(const BestPaths::Path& a, const BestPaths::Path& b) {
  return std::tie(a.rank, a.path) < std::tie(b.rank, b.path);
}

// Drops the later of two entries for one path or one file.
void dropRepeated(std::vector<BestPaths::Path>& paths) {
  std::set<std::string> seen;
  std::set<std::pair<std::uint64_t, std::uint64_t>> files;
  std::erase_if(paths, [&](const BestPaths::Path& one) {
    if (one.inode && !files.emplace(one.inode->device, one.inode->number).second) return true;
    return !seen.insert(one.path).second;
  });
}

}  // namespace

bool BestPaths::mayKeep(std::int64_t rank, const std::string& path) const {
  return !worst_ || std::tie(rank, path) < std::tie(worst_->rank, worst_->path);
}

void BestPaths::add(Path path) {
  if (!mayKeep(path.rank, path.path)) return;
  held_ += path.path.size() + 1;
  paths_.push_back(std::move(path));
  if (held_ >= 2 * bytes_) drop();
}

void BestPaths::drop() {
  std::sort(paths_.begin(), paths_.end(), isBetter);
  dropRepeated(paths_);
  held_ = 0;
  std::size_t kept = 0;
  while (kept < paths_.size() && held_ < bytes_) held_ += paths_[kept++].path.size() + 1;
  if (kept == paths_.size()) return;
  paths_.resize(kept);
  worst_ = paths_.back();
}

std::vector<std::string> BestPaths::sorted() {
  drop();
  std::vector<std::string> sorted;
  sorted.reserve(paths_.size());
  for (const Path& one : paths_) sorted.push_back(one.path);
  return sorted;
}

}  // namespace tessaly::tools
