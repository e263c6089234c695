#include "reclaim/Offloaded.h"

#include <algorithm>
#include <utility>

#include "platform/DirectoryWalk.h"
#include "platform/ResolvedPath.h"
#include "platform/WalkedPath.h"

namespace tessaly::ProInsights {

namespace {

using Item = DirectoryWalk::Item;
using Type = DirectoryWalk::Type;

// Called from any thread.
bool mayBePlaceholder(const DirectoryWalk::Entry& entry) {
  return entry.type == Type::file && CloudPlaceholders::mayBe(entry.name);
}

}  // namespace

std::vector<CloudItem> offloaded(const std::string& root, int limit,
                                 const std::function<bool()>& isCancelled,
                                 const std::shared_ptr<const MountSnapshot>& mounts,
                                 const SizeInCloud& sizeOf) {
  const std::string top = resolvedPath(root);
  DirectoryWalk walk(top, {}, 0, mounts, {},
                     {.attributes = false,
                      .keep = mayBePlaceholder,
                      .entersRemote = false,
                      .isCancelled = isCancelled});
  WalkedPath path(top);
  std::vector<CloudItem> found;
  const auto isFound = [&found](const std::string& item) {
    return std::ranges::find(found, item, &CloudItem::path) != found.end();
  };
  while (std::cmp_less(found.size(), limit)) {
    const Item* const item = walk.next();
    if (item == nullptr || (isCancelled && isCancelled())) break;
    path.moveTo(*item);
    if (item->type != Type::file || (item->mayComeTwice && isFound(path.text()))) continue;
    std::string name(item->name);
    const std::optional<std::int64_t> size = sizeOf(path.folder(), name);
    if (size) found.push_back({.name = std::move(name), .path = path.text(), .size = *size});
  }
  walk.stop();
  std::ranges::stable_sort(found, std::ranges::greater(), &CloudItem::size);
  return found;
}

}  // namespace tessaly::ProInsights
