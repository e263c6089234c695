#include "platform/linux/walk/ClosedMounts.h"

#include <algorithm>
#include <linux/magic.h>
#include <optional>

namespace tessaly::walk {

namespace {

std::vector<std::string> split(std::string_view path) {
  std::vector<std::string> components;
  while (!path.empty()) {
    const std::size_t end = std::min(path.find('/'), path.size());
    if (end > 0) components.emplace_back(path.substr(0, end));
    path.remove_prefix(std::min(end + 1, path.size()));
  }
  return components;
}

}  // namespace

void ClosedMounts::close(const std::vector<std::string>& components, std::uint64_t mount) {
  ClosedMounts* place = this;
  for (const std::string& component : components) {
    std::unique_ptr<ClosedMounts>& child = place->children_[component];
    if (child == nullptr) child = std::make_unique<ClosedMounts>();
    place = child.get();
  }
  place->closed_ = true;
  place->mount_ = mount;
}

const ClosedMounts* ClosedMounts::below(std::string_view name) const {
  const auto found = children_.find(name);
  return found == children_.end() ? nullptr : found->second.get();
}

ClosedMounts closedMountsBelow(const std::string& root, const VisibleMounts& mounts,
                               const Reaches& reaches, bool entersRemote) {
  const std::vector<Mount>& all = mounts.all();
  const auto componentsBelow = [&](const std::string& point) {
    return split(std::string_view(point).substr(root == "/" ? 0 : root.size()));
  };
  const auto isLeftOut = [&](VisibleMounts::Index i) {
    return !entersRemote && all[i].isRemote() && !isAtOrBelow(root, all[i].point);
  };
  // What is mounted on a folder of such a mount is not seen there.
  const Reaches reachesHere = [&](const std::string& path) {
    const std::optional<VisibleMounts::Index> mount = mounts.at(path);
    return (!mount || std::ranges::none_of(mounts.way(*mount), isLeftOut)) && reaches(path);
  };
  ClosedMounts places;
  for (const VisibleMounts::Index i : mounts.below(root)) {
    const bool isClosed = mounts.isPseudo(i) || isLeftOut(i);
    if (isClosed && mounts.isVisible(i)) places.close(componentsBelow(all[i].point));
  }
  for (const VisibleMounts::Index i :
       repeatedMounts(mounts, root, entersRemote ? reaches : reachesHere)) {
    if (!isLeftOut(i)) places.close(componentsBelow(all[i].point), all[i].id);
  }
  return places;
}

bool isPseudoFileSystem(long magic) {
  constexpr long mqueueMagic = 0x19800202;
  constexpr long fusectlMagic = 0x65735543;
  constexpr long configfsMagic = 0x62656570;
  constexpr long rpcPipefsMagic = 0x67596969;
  switch (magic) {
    case AUTOFS_SUPER_MAGIC:
    case BINFMTFS_MAGIC:
    case BPF_FS_MAGIC:
    case CGROUP_SUPER_MAGIC:
    case CGROUP2_SUPER_MAGIC:
    case DEBUGFS_MAGIC:
    case DEVPTS_SUPER_MAGIC:
    case EFIVARFS_MAGIC:
    case HUGETLBFS_MAGIC:
    case NSFS_MAGIC:
    case PROC_SUPER_MAGIC:
    case PSTOREFS_MAGIC:
    case SECURITYFS_MAGIC:
    case SELINUX_MAGIC:
    case SYSFS_MAGIC:
    case TRACEFS_MAGIC:
    case mqueueMagic:
    case fusectlMagic:
    case configfsMagic:
    case rpcPipefsMagic:
      return true;
    default:
      return false;
  }
}

}  // namespace tessaly::walk
