// Random lists of mounts, compared with a simple model: it compares each mount with each other one,
// without an index.
#include <algorithm>
#include <gmock/gmock.h>
#include <gtest/gtest.h>
#include <optional>
#include <random>
#include <string>
#include <utility>
#include <vector>

#include "platform/linux/VisibleMounts.h"
#include "platform/linux/walk/RepeatedMounts.h"

namespace tessaly::walk {
namespace {

using Index = VisibleMounts::Index;
using Indices = std::vector<Index>;

class PlainMounts {
 public:
  explicit PlainMounts(const std::vector<Mount>& mounts) : all_(mounts) {}

  std::optional<Index> parent(Index mount) const {
    for (Index i = 0; i < all_.size(); ++i) {
      if (all_[i].id == all_[mount].parent) return i == mount ? std::nullopt : std::optional(i);
    }
    return std::nullopt;
  }

  Indices way(Index mount) const {
    Indices found;
    for (std::optional<Index> at = mount; at && found.size() < all_.size(); at = parent(*at)) {
      found.push_back(*at);
    }
    return found;
  }

  // Number of mounts on the way; 0 if another mount hides it.
  std::size_t depth(Index mount) const {
    const Indices all = way(mount);
    if (parent(all.back())) return 0;  // a cycle
    const bool isHidden =
        std::any_of(all.begin(), all.end(), [this](Index i) { return isShadowed(i); });
    return isHidden ? 0 : all.size();
  }

  std::optional<Index> at(const std::string& path) const {
    std::optional<Index> deepest;
    for (Index i = 0; i < all_.size(); ++i) {
      if (!isAtOrBelow(path, all_[i].point) || depth(i) == 0) continue;
      if (!deepest || depth(i) >= depth(*deepest)) deepest = i;
    }
    return deepest;
  }

 private:
  bool isShadowed(Index mount) const {
    for (Index i = 0; i < all_.size(); ++i) {
      const Mount& other = all_[i];
      if (i == mount || other.parent != all_[mount].parent || parent(i) != parent(mount)) continue;
      if (other.point == all_[mount].point && i > mount) return true;
      const bool isAbove =
          other.point != all_[mount].point && isAtOrBelow(all_[mount].point, other.point);
      if (isAbove && parent(mount)) return true;
    }
    return false;
  }

  const std::vector<Mount>& all_;
};

// The mounts that a walk of `root` leaves out. They are decided one by one, the last mount first: a
// mount is left out if it, the mounts reached through it and those left out before are all visible
// elsewhere.
class PlainChoice {
 public:
  PlainChoice(const std::vector<Mount>& mounts, std::string root, const Reaches& reaches)
      : all_(mounts), mounts_(mounts), root_(std::move(root)), reaches_(reaches) {
    for (const Mount& mount : all_) closed_.push_back(mount.isPseudo());
  }

  Indices run() {
    Indices gone;
    for (Index i = all_.size(); i-- > 0;) {
      if (closed_[i] || !isBelowRoot(i) || !isReached(all_[i].point, i)) continue;
      const std::vector<bool> before = closed_;
      Indices more = gone;
      for (Index j = 0; j < all_.size(); ++j) {
        const Indices way = mounts_.way(j);
        if (std::find(way.begin(), way.end(), i) == way.end()) continue;
        if (isReached(all_[j].point, j)) more.push_back(j);
      }
      for (const Index j : more) closed_[j] = true;
      if (std::all_of(more.begin(), more.end(), [this](Index j) { return isSeenElsewhere(j); })) {
        gone = more;
      } else {
        closed_ = before;
      }
    }
    std::sort(gone.begin(), gone.end());
    return gone;
  }

 private:
  bool isBelowRoot(Index mount) const {
    return all_[mount].point != root_ && isAtOrBelow(all_[mount].point, root_);
  }

  // Whether the walk reaches `path`, and finds `mount` there.
  bool isReached(const std::string& path, Index mount) const {
    if (mounts_.at(path) != mount || !isAtOrBelow(path, root_) || !reaches_(path)) return false;
    const Indices way = mounts_.way(mount);
    return std::none_of(way.begin(), way.end(),
                        [this](Index i) { return closed_[i] && isBelowRoot(i); });
  }

  bool isSeenElsewhere(Index mount) const {
    const Mount& self = all_[mount];
    for (Index i = 0; i < all_.size(); ++i) {
      const Mount& other = all_[i];
      if (i == mount || closed_[i] || other.device != self.device) continue;
      if (!isAtOrBelow(self.root, other.root)) continue;
      if (self.root.ends_with("//deleted") || other.root.ends_with("//deleted")) continue;
      std::string rest = self.root.substr(other.root == "/" ? 0 : other.root.size());
      if (rest == "/") rest.clear();
      std::string place = (other.point == "/" ? "" : other.point) + rest;
      if (place.empty()) place = "/";
      if (isReached(place, i)) return true;
    }
    return false;
  }

  const std::vector<Mount>& all_;
  const PlainMounts mounts_;
  const std::string root_;
  const Reaches& reaches_;
  std::vector<bool> closed_;
};

class RandomMounts {
 public:
  explicit RandomMounts(unsigned seed) : random_(seed) {}

  std::string path(int most) {
    std::string text;
    const std::size_t count = upTo(static_cast<std::size_t>(most));
    for (std::size_t i = 0; i < count; ++i) text += "/" + std::string(1, "ab"[upTo(1)]);
    return text.empty() ? "/" : text;
  }

  std::size_t upTo(std::size_t most) {
    return std::uniform_int_distribution<std::size_t>(0, most)(random_);
  }

  // In the order of mounting: each is mounted on a mount that is visible at its point at that time.
  std::vector<Mount> mounts(std::size_t count) {
    std::vector<Mount> all = {{1, 0, "8:1", "/", "/", "ext4"}};
    while (all.size() < count) {
      const std::string point = path(3);
      const std::optional<Index> below = PlainMounts(all).at(point);
      Mount mount{.id = all.size() + 1,
                  .parent = below ? all[*below].id : 0,
                  .device = "8:" + std::to_string(upTo(1)),
                  .root = path(2),
                  .point = point,
                  .type = upTo(9) == 0 ? "proc" : "ext4"};
      if (upTo(15) == 0) mount.root += "//deleted";
      all.push_back(std::move(mount));
    }
    return all;
  }

 private:
  std::mt19937 random_;
};

constexpr unsigned seeds = 400;

const std::vector<std::string> asked = {"/",      "/a",       "/b",       "/a/a",  "/a/b",  "/b/a",
                                        "/a/a/a", "/a/b/a",   "/b/b/b",   "/ab/a", "/c/a",  "/a/ab",
                                        "/a/c/a", "/a/a/a/a", "/b/a/b/c", "x",     "x/a/b", ""};

TEST(RandomMounts, the_visible_mounts_are_those_of_a_simple_model) {
  for (unsigned seed = 0; seed < seeds; ++seed) {
    SCOPED_TRACE(seed);
    RandomMounts random(seed);
    std::vector<Mount> all = random.mounts(1 + random.upTo(13));
    for (const bool isDamaged : {false, true}) {
      if (isDamaged) {
        for (Mount& mount : all) {
          if (random.upTo(2) == 0) mount.parent = random.upTo(all.size() + 1);
        }
      }
      const VisibleMounts indexed(all);
      const PlainMounts plain(all);
      for (const std::string& path : asked) EXPECT_EQ(indexed.at(path), plain.at(path)) << path;
      for (Index i = 0; i < all.size(); ++i) {
        EXPECT_EQ(indexed.way(i), plain.way(i));
        EXPECT_EQ(indexed.isVisible(i), plain.at(all[i].point) == i);
      }
    }
  }
}

TEST(RandomMounts, the_mounts_left_out_are_those_of_a_simple_model) {
  std::size_t leftOut = 0;
  for (unsigned seed = 0; seed < seeds; ++seed) {
    SCOPED_TRACE(seed);
    RandomMounts random(seed);
    const std::vector<Mount> all = random.mounts(1 + random.upTo(13));
    const std::string kept = random.path(2);
    const Reaches everywhere = [](const std::string&) { return true; };
    const Reaches notThere = [&](const std::string& way) { return !isAtOrBelow(way, kept); };
    for (const Reaches& reaches : {everywhere, notThere}) {
      for (const char* root : {"/", "/a", "/a/b", "/b/a"}) {
        const Indices found = repeatedMounts(VisibleMounts(all), root, reaches);
        EXPECT_EQ(found, PlainChoice(all, root, reaches).run()) << root;
        leftOut += found.size();
      }
    }
  }
  EXPECT_GT(leftOut, seeds / 2);
}

}  // namespace
}  // namespace tessaly::walk
