// Links in the path of an item: those that another user puts there are not followed; the user's own
// are followed once, when the item is listed.
#include <cerrno>
#include <filesystem>
#include <gmock/gmock.h>
#include <gtest/gtest.h>
#include <memory>
#include <sys/syscall.h>

#include "reclaim/Trash.h"
#include "scan/DiskScanner.h"
#include "support/PlainFiles.h"
#include "support/SystemCallTrace.h"
#include "trash/TrashOnDisk.h"

namespace tessaly {
namespace {

namespace fs = std::filesystem;
using testing::ElementsAre;
using testing::IsEmpty;
using End = TracedRun::End;
using Kind = SystemError::Kind;
using SystemCallTrace::Refusals;

// A folder of another user with an item in it, and one of the user's own with an item of the same
// name.
class LinkOnTheWay : public testing::Test {
 protected:
  static std::unique_ptr<TrashOnDisk> freshDisk() {
    auto disk = std::make_unique<TrashOnDisk>();
    disk->put(disk->at("shared/project/authorized_keys"), "theirs");
    disk->put(disk->at("ssh/authorized_keys"), "mine");
    return disk;
  }

  std::string item() const { return disk_->at("shared/project/authorized_keys"); }
  std::string ownItem() const { return disk_->at("ssh/authorized_keys"); }

  void exchangeFolderForLink() {
    fs::rename(disk_->at("shared/project"), disk_->at("shared/before"));
    fs::create_directory_symlink("../ssh", disk_->at("shared/project"));
  }
  Result<ItemInTrash> trash() { return disk_->mover().moveToTrash(item()); }
  std::string placeInTrash() const { return disk_->homeTrash() + "/files/authorized_keys"; }

  std::unique_ptr<TrashOnDisk> disk_ = freshDisk();
};

TEST_F(LinkOnTheWay, a_link_of_another_user_is_not_followed) {
  exchangeFolderForLink();
  const Result<ItemInTrash> moved = trash();
  ASSERT_FALSE(moved);
  EXPECT_EQ(moved.error().kind, Kind::linkOnTheWay);
  EXPECT_EQ(contentOf(ownItem()), "mine");
  EXPECT_THAT(disk_->infos(), IsEmpty());
}

TEST_F(LinkOnTheWay, a_link_of_another_user_is_not_followed_anywhere_in_the_path) {
  disk_->put(disk_->at("ssh/project/deeper/film"), "mine");
  fs::rename(disk_->at("shared"), disk_->at("before"));
  fs::create_directory_symlink("ssh", disk_->at("shared"));
  for (const char* below : {"shared/project", "shared/project/deeper", "shared/project/deeper/film",
                            "shared/authorized_keys"}) {
    const Result<ItemInTrash> moved = disk_->mover().moveToTrash(disk_->at(below));
    ASSERT_FALSE(moved) << below;
    EXPECT_EQ(moved.error().kind, Kind::linkOnTheWay) << below;
  }
  EXPECT_EQ(contentOf(disk_->at("ssh/project/deeper/film")), "mine");
}

// Like systems before Linux 5.6 and some sandboxes.
TEST_F(LinkOnTheWay, a_link_of_another_user_is_not_followed_without_openat2) {
  if (const std::string obstacle = SystemCallTrace::obstacle(); !obstacle.empty()) {
    GTEST_SKIP() << obstacle;
  }
  for (const int code : {ENOSYS, EPERM, EINVAL}) {
    disk_ = freshDisk();
    const Refusals refusals = {{SYS_openat2, code}};
    TracedRun run = SystemCallTrace::refusing(refusals, [&] { return told(trash()); });
    EXPECT_EQ(run.failedCall, SYS_openat2);
    EXPECT_EQ(run.told, "");
    const ItemInTrash inTrash = knownInTrash(placeInTrash());
    run = SystemCallTrace::refusing(refusals,
                                    [&] { return told(disk_->mover().putBack(inTrash, item())); });
    EXPECT_EQ(run.failedCall, SYS_openat2);
    EXPECT_EQ(run.told, "");
    EXPECT_EQ(contentOf(item()), "theirs");
    exchangeFolderForLink();
    run = SystemCallTrace::refusing(refusals, [&]() -> std::string {
      const Result<ItemInTrash> moved = trash();
      return !moved && moved.error().kind == Kind::linkOnTheWay ? "refused" : told(moved);
    });
    EXPECT_EQ(run.told, "refused");
    EXPECT_EQ(contentOf(ownItem()), "mine");
  }
}

TEST_F(LinkOnTheWay, a_link_of_another_user_is_not_followed_whenever_it_appears) {
  if (const std::string obstacle = SystemCallTrace::obstacle(); !obstacle.empty()) {
    GTEST_SKIP() << obstacle;
  }
  std::size_t refused = 0;
  std::size_t stop = 1;
  for (;; ++stop) {
    disk_ = freshDisk();
    const TracedRun run = SystemCallTrace::interruptedAt(
        stop, [&] { exchangeFolderForLink(); }, [&] { return told(trash()); });
    ASSERT_EQ(run.end, End::finished) << run.told;
    EXPECT_EQ(contentOf(ownItem()), "mine") << stop;
    if (run.told.empty()) {
      EXPECT_EQ(contentOf(placeInTrash()), "theirs") << stop;
    } else {
      ++refused;
      EXPECT_EQ(contentOf(disk_->at("shared/before/authorized_keys")), "theirs") << stop;
      EXPECT_THAT(disk_->infos(), IsEmpty()) << stop;
    }
    if (!run.wasInterrupted) break;
  }
  EXPECT_GT(refused, 0U);
  EXPECT_LT(refused, stop);
}

TEST_F(LinkOnTheWay, nothing_is_put_back_through_a_link_of_another_user) {
  const Result<ItemInTrash> moved = trash();
  ASSERT_TRUE(moved);
  fs::remove(ownItem());
  exchangeFolderForLink();
  const Outcome back = disk_->mover().putBack(moved.value(), item());
  ASSERT_FALSE(back);
  EXPECT_EQ(back.error().kind, Kind::linkOnTheWay);
  EXPECT_FALSE(isThere(ownItem()));
  EXPECT_EQ(contentOf(placeInTrash()), "theirs");
  EXPECT_EQ(recordedPath(placeInTrash()), item());
}

TEST_F(LinkOnTheWay, no_folders_are_created_through_a_link_of_another_user) {
  disk_->put(disk_->at("shared/a/b/film"), "theirs");
  const Result<ItemInTrash> moved = disk_->mover().moveToTrash(disk_->at("shared/a/b/film"));
  ASSERT_TRUE(moved);
  fs::remove_all(disk_->at("shared/a"));
  fs::create_directory_symlink("../ssh", disk_->at("shared/a"));
  const Outcome back = disk_->mover().putBack(moved.value(), disk_->at("shared/a/b/film"));
  ASSERT_FALSE(back);
  EXPECT_EQ(back.error().kind, Kind::linkOnTheWay);
  EXPECT_THAT(entriesOf(disk_->at("ssh")), ElementsAre("authorized_keys"));
}

TEST_F(LinkOnTheWay, nothing_is_put_back_whenever_a_link_replaces_a_missing_folder) {
  if (const std::string obstacle = SystemCallTrace::obstacle(); !obstacle.empty()) {
    GTEST_SKIP() << obstacle;
  }
  for (std::size_t stop = 1;; ++stop) {
    disk_ = freshDisk();
    const std::string film = disk_->at("shared/a/b/film");
    disk_->put(film, "theirs");
    const Result<ItemInTrash> moved = disk_->mover().moveToTrash(film);
    ASSERT_TRUE(moved);
    fs::remove_all(disk_->at("shared/a"));
    const auto exchange = [&] {
      if (isThere(disk_->at("shared/a"))) {
        fs::rename(disk_->at("shared/a"), disk_->at("shared/before"));
      }
      fs::create_directory_symlink("../ssh", disk_->at("shared/a"));
    };
    const TracedRun run = SystemCallTrace::interruptedAt(
        stop, exchange, [&] { return told(disk_->mover().putBack(moved.value(), film)); });
    ASSERT_EQ(run.end, End::finished) << run.told;
    EXPECT_THAT(entriesOf(disk_->at("ssh")), ElementsAre("authorized_keys")) << stop;
    // In the folder that was there when putting back began, or still in the Trash.
    const std::string& inTrash = moved.value().path;
    const bool isBack =
        contentOf(film) == "theirs" || contentOf(disk_->at("shared/before/b/film")) == "theirs";
    EXPECT_NE(isBack, contentOf(inTrash) == "theirs") << stop << ": " << run.told;
    EXPECT_EQ(isBack, run.told.empty()) << stop << ": " << run.told;
    if (!run.wasInterrupted) break;
  }
}

// "~/.cache" of a user who has it on another disk.
class LinkOfTheUser : public testing::Test {
 protected:
  LinkOfTheUser() {
    disk_.put(disk_.at("elsewhere/pip/wheel"), "wheel");
    disk_.put(disk_.at("other/pip/wheel"), "another");
    fs::create_directory_symlink("elsewhere", disk_.at("cache"));
  }
  void turnTo(const char* target) {
    fs::remove(disk_.at("cache"));
    fs::create_directory_symlink(target, disk_.at("cache"));
  }

  TrashOnDisk disk_;
};

TEST_F(LinkOfTheUser, a_link_of_the_user_is_followed_when_the_item_is_listed) {
  const Trash::Location pip = Trash::locate(disk_.at("cache/pip"));
  EXPECT_EQ(pip.original, disk_.at("cache/pip"));
  EXPECT_EQ(pip.place, disk_.at("elsewhere/pip"));
  const Result<TrashedItem> item = Trash::moveRecording(pip, disk_.mover());
  ASSERT_TRUE(item);
  EXPECT_EQ(item.value().original, disk_.at("cache/pip"));
  EXPECT_EQ(item.value().place, disk_.at("elsewhere/pip"));
  EXPECT_EQ(recordedPath(item.value().trashPath), disk_.at("elsewhere/pip"));
  EXPECT_FALSE(isThere(disk_.at("elsewhere/pip")));
  EXPECT_EQ(told(Trash::putBack(item.value(), disk_.mover())), "");
  EXPECT_EQ(contentOf(disk_.at("elsewhere/pip/wheel")), "wheel");
  EXPECT_EQ(contentOf(disk_.at("cache/pip/wheel")), "wheel");
}

TEST_F(LinkOfTheUser, a_link_of_the_user_that_changes_affects_neither_the_item_nor_its_return) {
  const Trash::Location pip = Trash::locate(disk_.at("cache/pip"));
  turnTo("other");
  const Result<TrashedItem> item = Trash::moveRecording(pip, disk_.mover());
  ASSERT_TRUE(item);
  EXPECT_FALSE(isThere(disk_.at("elsewhere/pip")));
  fs::remove_all(disk_.at("elsewhere"));
  EXPECT_EQ(told(Trash::putBack(item.value(), disk_.mover())), "");
  EXPECT_EQ(contentOf(disk_.at("elsewhere/pip/wheel")), "wheel");
  EXPECT_EQ(contentOf(disk_.at("other/pip/wheel")), "another");
}

TEST_F(LinkOfTheUser, a_link_of_the_user_that_replaces_a_folder_after_the_listing_is_not_followed) {
  const Trash::Location wheel = Trash::locate(disk_.at("cache/pip/wheel"));
  fs::rename(disk_.at("elsewhere"), disk_.at("before"));
  fs::create_directory_symlink("other", disk_.at("elsewhere"));
  const Result<TrashedItem> item = Trash::moveRecording(wheel, disk_.mover());
  ASSERT_FALSE(item);
  EXPECT_EQ(item.error().kind, Kind::linkOnTheWay);
  EXPECT_EQ(contentOf(disk_.at("other/pip/wheel")), "another");
}

TEST_F(LinkOfTheUser, a_link_of_the_user_moves_itself_if_it_is_the_item) {
  const Trash::Location cache = Trash::locate(disk_.at("cache//"));
  EXPECT_EQ(cache.place, disk_.at("cache"));
  const Result<TrashedItem> item = Trash::moveRecording(cache, disk_.mover());
  ASSERT_TRUE(item);
  EXPECT_EQ(fs::read_symlink(item.value().trashPath), "elsewhere");
  EXPECT_EQ(contentOf(disk_.at("elsewhere/pip/wheel")), "wheel");
  EXPECT_EQ(told(Trash::putBack(item.value(), disk_.mover())), "");
  EXPECT_EQ(fs::read_symlink(disk_.at("cache")), "elsewhere");
}

TEST_F(LinkOfTheUser, many_items_move_in_order_whatever_fails) {
  const std::vector<Trash::Location> locations = {Trash::locate(disk_.at("cache/none")),
                                                  Trash::locate(disk_.at("cache/pip/wheel")),
                                                  Trash::locate(disk_.at("cache/pip"))};
  const Trash::Moved moved = Trash::moveManyRecording(locations, disk_.mover());
  ASSERT_EQ(moved.items.size(), 2U);
  EXPECT_EQ(moved.items[0].original, disk_.at("cache/pip/wheel"));
  EXPECT_EQ(moved.items[1].original, disk_.at("cache/pip"));
  ASSERT_EQ(moved.errors.size(), 1U);
  EXPECT_EQ(moved.errors[0].path, disk_.at("cache/none"));
  EXPECT_EQ(moved.errors[0].cause.kind, Kind::notFound);
}

TEST_F(LinkOfTheUser, an_invalid_path_stays_invalid) {
  for (const std::string& path :
       {std::string(), std::string("cache/pip"), std::string("/"), disk_.at("cache/.."),
        disk_.at("cache/."), disk_.at("cache/pip") + std::string("\0x", 2)}) {
    EXPECT_EQ(Trash::locate(path), (Trash::Location{.original = path, .place = path}));
    EXPECT_FALSE(Trash::moveRecording(Trash::locate(path), disk_.mover()));
  }
  EXPECT_EQ(Trash::locate("/tmp-that-is-not-there").place, "/tmp-that-is-not-there");
}

// Paths of a tree can be moved without resolving, even if a link led to its root.
TEST_F(LinkOfTheUser, paths_of_a_tree_contain_no_links) {
  disk_.put(disk_.at("elsewhere/pip/large"), std::string(1 << 20, 'x'));
  const DiskNode tree = DiskScanner::scan(disk_.at("cache/pip"));
  EXPECT_EQ(tree.path(), disk_.at("elsewhere/pip"));
  ASSERT_FALSE(tree.children().empty());
  EXPECT_EQ(tree.children()[0].path(), disk_.at("elsewhere/pip/large"));
  EXPECT_TRUE(Trash::moveRecording(tree.children()[0].path(), disk_.mover()));
  EXPECT_TRUE(Trash::moveRecording(tree.path(), disk_.mover()));
}

}  // namespace
}  // namespace tessaly
