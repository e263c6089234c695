#include "platform/linux/walk/RepeatedMounts.h"

#include <algorithm>
#include <optional>

namespace tessaly::walk {

namespace {

using Index = VisibleMounts::Index;

// How the system calls the root of a mount that was deleted. Nothing else shows it.
constexpr std::string_view deletedMark = "//deleted";

// Where in `other` the top of `mount` is to be seen; absent where it is not.
std::optional<std::string> placeIn(const Mount& other, const Mount& mount) {
  if (other.device != mount.device || !isAtOrBelow(mount.root, other.root)) return std::nullopt;
  if (mount.root.ends_with(deletedMark) || other.root.ends_with(deletedMark)) return std::nullopt;
  std::string_view rest = mount.root;
  rest.remove_prefix(other.root == "/" ? 1 : std::min(rest.size(), other.root.size() + 1));
  std::string place = other.point;
  if (rest.empty()) return place;
  if (!place.ends_with('/')) place += '/';
  return place.append(rest);
}

class Choice {
 public:
  Choice(const VisibleMounts& mounts, const std::string& root, const Reaches& reaches)
      : mounts_(mounts),
        root_(root),
        reaches_(reaches),
        closed_(mounts.all().size()),
        standIns_(mounts.all().size()) {}

  std::vector<Index> run() {
    const std::vector<Mount>& all = mounts_.all();
    for (Index i = 0; i < all.size(); ++i) closed_[i] = all[i].isPseudo();
    // From the last on, so that the first of equals stays.
    for (Index i = all.size(); i-- > 0;) {
      if (closed_[i] || !isBelowRoot(i) || !mounts_.isVisible(i)) continue;
      if (!standInFor(i) || !isReached(all[i].point)) continue;
      closeIfAllIsSeen(i);
    }
    std::vector<Index> repeated;
    for (Index i = 0; i < all.size(); ++i) {
      if (standIns_[i]) repeated.push_back(i);
    }
    return repeated;
  }

 private:
  bool isBelowRoot(Index mount) const {
    const std::string& point = mounts_.all()[mount].point;
    return point != root_ && isAtOrBelow(point, root_);
  }

  // Whether the walk sees what stands at `path`, with what is closed by now left out.
  bool isReached(const std::string& path) const {
    const std::optional<Index> mount = mounts_.at(path);
    return mount && isAtOrBelow(path, root_) && isOpen(*mount) && reaches_(path);
  }

  // Whether no mount on the way from the root to the top of `mount` is closed.
  bool isOpen(Index mount) const {
    const std::vector<Index> way = mounts_.way(mount);
    return std::none_of(way.begin(), way.end(),
                        [this](Index i) { return closed_[i] && isBelowRoot(i); });
  }

  // A mount that the walk enters and where it sees all of `mount`.
  std::optional<Index> standInFor(Index mount) const {
    const std::vector<Mount>& all = mounts_.all();
    for (Index i = 0; i < all.size(); ++i) {
      if (i == mount || closed_[i]) continue;
      const std::optional<std::string> place = placeIn(all[i], all[mount]);
      if (place && mounts_.at(*place) == i && isReached(*place)) return i;
    }
    return std::nullopt;
  }

  // Closing a mount takes away all that is mounted in it: that has to be seen elsewhere too, and
  // may have stood in for others.
  void closeIfAllIsSeen(Index mount) {
    const std::vector<bool> closedBefore = closed_;
    const std::vector<std::optional<Index>> standInsBefore = standIns_;
    std::vector<Index> gone = whatGoesWith(mount);
    for (const Index i : gone) closed_[i] = true;
    for (Index i = 0; i < standIns_.size(); ++i) {
      if (standIns_[i] && !isOpen(*standIns_[i])) gone.push_back(i);
    }
    const auto isSeen = [this](Index i) { return (standIns_[i] = standInFor(i)).has_value(); };
    if (std::all_of(gone.begin(), gone.end(), isSeen)) return;
    closed_ = closedBefore;
    standIns_ = standInsBefore;
  }

  // The mount and those in it that the walk would see.
  std::vector<Index> whatGoesWith(Index mount) const {
    std::vector<Index> all;
    for (Index i = 0; i < closed_.size(); ++i) {
      const std::vector<Index> way = mounts_.way(i);
      if (std::find(way.begin(), way.end(), mount) == way.end()) continue;
      if (mounts_.isVisible(i) && isReached(mounts_.all()[i].point)) all.push_back(i);
    }
    return all;
  }

  const VisibleMounts& mounts_;
  const std::string& root_;
  const Reaches& reaches_;
  std::vector<bool> closed_;
  std::vector<std::optional<Index>> standIns_;  // of what is closed for being repeated
};

}  // namespace

std::vector<Index> repeatedMounts(const VisibleMounts& mounts, const std::string& root,
                                  const Reaches& reaches) {
  return Choice(mounts, root, reaches).run();
}

}  // namespace tessaly::walk
