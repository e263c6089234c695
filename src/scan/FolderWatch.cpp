#include "scan/FolderWatch.h"

#include <set>
#include <string_view>
#include <utility>

#include "platform/CheckedArithmetic.h"
#include "platform/DirectoryWalk.h"
#include "platform/HeldItem.h"
#include "platform/ResolvedPath.h"
#include "scan/Package.h"

namespace tessaly::FolderWatch {

namespace {

using Item = DirectoryWalk::Item;
using Type = DirectoryWalk::Type;

// The caller's thread alone. Snapshots are taken often and in the background, and should leave the
// processors to other work.
constexpr int threads = 1;

std::int64_t allocatedBytes(const Item& item) {
  return item.hasAttributes ? item.allocatedSize : 0;
}

// The size of a directory entry is its length. A link that has replaced the package is not
// followed.
std::int64_t ownBytes(const std::string& package) {
  const Result<HeldItem> item = HeldItem::at(package);
  const bool isThere = item.ok() && item.value().facts().linkTarget.empty();
  return isThere ? item.value().facts().size : 0;
}

}  // namespace

FolderSnapshot snapshot(const std::string& path, const IsCancelled& isCancelled) {
  FolderSnapshot snapshot{.path = resolvedPath(path), .sizes = {}};
  const std::string prefix = snapshot.path == "/" ? "/" : snapshot.path + "/";
  const auto pathOf = [&](std::string_view name) { return prefix + std::string(name); };

  // The walk calls this for every folder that it could enter; with one thread it calls it on the
  // caller's.
  std::set<std::string> folders;
  const auto onlyTell = [&](const DirectoryWalk::Candidate& candidate) {
    if (!isPackageName(candidate.name)) folders.insert(pathOf(candidate.name));
    return DirectoryWalk::Descent{.enter = false};
  };
  // Read once and shared by all the walks, of which there may be thousands.
  const std::shared_ptr<const MountSnapshot> mounts = mountsOfNow();
  DirectoryWalk children(snapshot.path, onlyTell, threads, mounts);
  while (const Item* item = children.next()) {
    if (isCancelled && isCancelled()) return snapshot;
    if (item->type == Type::link) continue;
    std::string child = pathOf(item->name);
    std::int64_t size = allocatedBytes(*item);
    if (item->type == Type::directory && isPackageName(item->name)) size = ownBytes(child);
    snapshot.sizes.insert_or_assign(std::move(child), size);
  }
  for (const std::string& folder : folders) {
    if (isCancelled && isCancelled()) break;
    snapshot.sizes.insert_or_assign(folder,
                                    allocatedTree(folder, itemsPerChild, isCancelled, mounts));
  }
  return snapshot;
}

std::int64_t allocatedTree(const std::string& path, std::int64_t cap,
                           const IsCancelled& isCancelled,
                           const std::shared_ptr<const MountSnapshot>& mounts) {
  DirectoryWalk walk(path, {}, threads, mounts);
  std::int64_t bytes = 0;
  std::int64_t items = 0;
  while (const Item* item = walk.next()) {
    if (++items > cap || (isCancelled && isCancelled())) break;
    if (item->type == Type::link || item->type == Type::directory) continue;
    bytes = checkedAdd(bytes, allocatedBytes(*item));
  }
  return bytes;
}

}  // namespace tessaly::FolderWatch
