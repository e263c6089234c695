#include "platform/linux/walk/RepeatedMounts.h"

#include <algorithm>
#include <optional>
#include <span>
#include <utility>

#include "platform/linux/FoldersUpwards.h"

namespace tessaly::walk {

namespace {

using Index = VisibleMounts::Index;

// The kernel's ending for the root of a mount whose folder was deleted. No other mount shows it.
constexpr std::string_view deletedMark = "//deleted";

// The path at which `other`, whose root is that of `mount` or above it, shows the top of `mount`.
std::string placeIn(const Mount& other, const Mount& mount) {
  std::string_view rest = mount.root;
  rest.remove_prefix(other.root == "/" ? 1 : std::min(rest.size(), other.root.size() + 1));
  std::string place = other.point;
  if (rest.empty()) return place;
  if (!place.ends_with('/')) place += '/';
  return place.append(rest);
}

class Choice {
 public:
  Choice(const VisibleMounts& mounts, std::vector<Index> below, const std::string& root,
         const Reaches& reaches)
      : mounts_(mounts),
        below_(std::move(below)),
        root_(root),
        rootMount_(mounts.at(root)),
        reaches_(reaches),
        isBelowRoot_(mounts.all().size()),
        closed_(mounts.all().size()),
        rulesReach_(mounts.all().size()),
        standIns_(mounts.all().size()),
        standsFor_(mounts.all().size()) {
    for (const Index i : below_) isBelowRoot_[i] = true;
  }

  std::vector<Index> run() {
    // From the last to the first, so that the first of equal mounts stays.
    std::for_each(below_.rbegin(), below_.rend(), [this](Index i) {
      if (isClosed(i) || !mounts_.isVisible(i)) return;
      if (standInFor(i) && isReached(i)) closeIfAllIsSeen(i);
    });
    std::vector<Index> repeated;
    for (const Index i : below_) {
      if (standIns_[i]) repeated.push_back(i);
    }
    return repeated;
  }

 private:
  // The changes of one step, for undo().
  struct Step {
    std::vector<Index> closed;
    std::vector<std::pair<Index, std::optional<Index>>> standInsBefore;
  };

  bool isClosed(Index mount) const { return closed_[mount] || mounts_.isPseudo(mount); }

  // Whether no mount on the way from the root to the top of `mount` is closed.
  bool isOpen(Index mount) const {
    for (std::optional<Index> at = mount; at && isBelowRoot_[*at]; at = mounts_.parent(*at)) {
      if (isClosed(*at)) return false;
    }
    return true;
  }

  // Whether the walk reaches the top of `mount`, or starts inside it, without the mounts closed so
  // far. The rules are asked last, since they may be expensive.
  bool isReached(Index mount) {
    if (!isBelowRoot_[mount]) return rootMount_ == mount;
    return mounts_.isVisible(mount) && isOpen(mount) && rulesReach(mount);
  }

  bool rulesReach(Index mount) {
    std::optional<bool>& known = rulesReach_[mount];
    if (!known) known = reaches_(mounts_.all()[mount].point);
    return *known;
  }

  // Whether the walk sees all of `mount` in `other`.
  bool standsIn(Index other, Index mount) {
    if (other == mount || isClosed(other) || !isReached(other)) return false;
    const Mount& it = mounts_.all()[other];
    if (it.root.ends_with(deletedMark)) return false;
    const std::string place = placeIn(it, mounts_.all()[mount]);
    if (isBelowRoot_[other] && place == it.point) return true;
    return mounts_.at(place) == other && isAtOrBelow(place, root_) && reaches_(place);
  }

  // A mount that the walk enters and that shows all of `mount`.
  std::optional<Index> standInFor(Index mount) {
    const Mount& self = mounts_.all()[mount];
    if (self.root.ends_with(deletedMark)) return std::nullopt;
    std::optional<Index> found;
    forEachUpwards(self.root, [&](std::string_view folder) {
      const std::span<const Index> all = mounts_.showing(self.device, folder);
      const auto one =
          std::ranges::find_if(all, [&](Index other) { return standsIn(other, mount); });
      if (one != all.end()) found = *one;
      return !found;
    });
    return found;
  }

  // Closing a mount also removes the mounts in it: their contents must be visible elsewhere too,
  // and they may have stood in for other mounts.
  void closeIfAllIsSeen(Index mount) {
    Step step;
    std::vector<Index> gone = whatGoesWith(mount);
    step.closed = gone;
    for (const Index closed : step.closed) {
      closed_[closed] = true;
      const std::vector<Index>& others = standsFor_[closed];
      gone.insert(gone.end(), others.begin(), others.end());
    }
    for (const Index i : gone) {
      if (!replaceStandIn(i, step)) {
        undo(step);
        return;
      }
    }
  }

  bool replaceStandIn(Index mount, Step& step) {
    const std::optional<Index> standIn = standInFor(mount);
    if (!standIn) return false;
    step.standInsBefore.emplace_back(mount, standIns_[mount]);
    setStandIn(mount, standIn);
    return true;
  }

  void setStandIn(Index mount, std::optional<Index> standIn) {
    if (standIns_[mount]) std::erase(standsFor_[*standIns_[mount]], mount);
    standIns_[mount] = standIn;
    if (standIn) standsFor_[*standIn].push_back(mount);
  }

  void undo(const Step& step) {
    for (const auto& [mount, standIn] : step.standInsBefore) setStandIn(mount, standIn);
    for (const Index i : step.closed) closed_[i] = false;
  }

  // The mount and the mounts in it that the walk would reach.
  std::vector<Index> whatGoesWith(Index mount) {
    std::vector<Index> all = {mount};
    for (std::size_t i = 0; i < all.size(); ++i) {
      const std::span<const Index> inside = mounts_.on(all[i]);
      all.insert(all.end(), inside.begin(), inside.end());
    }
    std::erase_if(all, [this](Index i) { return !isReached(i); });
    return all;
  }

  const VisibleMounts& mounts_;
  const std::vector<Index> below_;  // the mounts below the root of the walk
  const std::string& root_;
  const std::optional<Index> rootMount_;
  const Reaches& reaches_;
  std::vector<bool> isBelowRoot_;
  std::vector<bool> closed_;
  std::vector<std::optional<bool>> rulesReach_;  // cached answers of `reaches_` for the tops
  std::vector<std::optional<Index>> standIns_;   // for each mount left out, the mount that shows
                                                 // its contents
  std::vector<std::vector<Index>> standsFor_;    // the inverse of standIns_
};

}  // namespace

std::vector<Index> repeatedMounts(const VisibleMounts& mounts, const std::string& root,
                                  const Reaches& reaches) {
  std::vector<Index> below = mounts.below(root);
  if (below.empty()) return {};
  return Choice(mounts, std::move(below), root, reaches).run();
}

}  // namespace tessaly::walk
