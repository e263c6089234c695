#include "reclaim/DeadLinks.h"

#include <algorithm>
#include <optional>
#include <utility>

#include "platform/DirectoryWalk.h"
#include "platform/LinkTargets.h"
#include "platform/ResolvedPath.h"
#include "platform/WalkedPath.h"
#include "reclaim/LockLink.h"
#include "scan/Package.h"
#include "scan/SkipRules.h"

namespace tessaly::ProInsights {

namespace {

using Item = DirectoryWalk::Item;
using Type = DirectoryWalk::Type;

// Called from any thread.
bool mayLead(const DirectoryWalk::Entry& entry) {
  return entry.type == Type::link ||
         (entry.type == Type::file && LinkTargets::mayBeAlias(entry.name));
}

std::optional<DeadLink> deadLinkAt(const Item& item, const WalkedPath& path, LinkTargets& targets) {
  const bool isAlias = item.type == Type::file;
  if (!isAlias && item.type != Type::link) return std::nullopt;
  const std::string name(item.name);
  std::optional<LinkTargets::Link> link =
      isAlias ? targets.ofAlias(path.folder(), name) : targets.ofLink(path.folder(), name);
  if (!link || link->target != LinkTargets::Target::missing) return std::nullopt;
  DeadLink dead{.name = name, .path = path.text(), .kind = isAlias ? "alias" : "symlink"};
  dead.isLock = !isAlias && isLockLink(name, link->destination);
  dead.destination = std::move(link->destination);
  return dead;
}

}  // namespace

std::vector<DeadLink> deadLinks(const std::string& root, int limit,
                                const std::function<bool()>& isCancelled, const Places& places,
                                std::shared_ptr<const MountSnapshot> mounts) {
  if (mounts == nullptr) mounts = mountsOfNow();
  const std::string top = resolvedPath(root);
  const SkipRules rules(top, {}, places);
  const auto decide = [&rules](const DirectoryWalk::Candidate& folder) {
    const bool isSkipped = rules.skips(folder.name, [&folder] { return folder.path(); });
    return DirectoryWalk::Descent{.enter = !isSkipped && !isPackageName(folder.name)};
  };
  DirectoryWalk walk(
      top, decide, 0, mounts, {},
      {.attributes = false, .keep = mayLead, .entersRemote = false, .isCancelled = isCancelled});
  LinkTargets targets(mounts, isCancelled);
  WalkedPath path(top);
  std::vector<DeadLink> found;
  const auto isFound = [&found](const std::string& link) {
    return std::ranges::find(found, link, &DeadLink::path) != found.end();
  };
  while (std::cmp_less(found.size(), limit)) {
    const Item* const item = walk.next();
    if (item == nullptr || (isCancelled && isCancelled())) break;
    path.moveTo(*item);
    if (item->type == Type::directory || rules.skips(item->name, [&path] { return path.text(); })) {
      continue;
    }
    std::optional<DeadLink> dead = deadLinkAt(*item, path, targets);
    if (dead && !(item->mayComeTwice && isFound(dead->path))) found.push_back(*std::move(dead));
  }
  walk.stop();
  return found;
}

}  // namespace tessaly::ProInsights
