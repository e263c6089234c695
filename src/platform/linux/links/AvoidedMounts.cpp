#include "platform/linux/links/AvoidedMounts.h"

#include <algorithm>

#include "platform/linux/FoldersUpwards.h"

namespace tessaly {

AvoidedMounts::AvoidedMounts(const VisibleMounts& mounts) {
  for (VisibleMounts::Index i = 0; i < mounts.all().size(); ++i) {
    const Mount& mount = mounts.all()[i];
    const bool isAvoided = mount.type == "autofs" || mount.isRemote();
    if (isAvoided && mount.point != "/" && mounts.isVisible(i)) points_.push_back(mount.point);
  }
  std::ranges::sort(points_);
}

bool AvoidedMounts::isPoint(std::string_view path) const {
  return std::ranges::binary_search(points_, path, std::less<>());
}

bool AvoidedMounts::contains(std::string_view path) const {
  bool isFound = false;
  forEachUpwards(path, [&](std::string_view folder) {
    isFound = isPoint(folder);
    return !isFound;
  });
  return isFound;
}

}  // namespace tessaly
