#include "session/TrashBatch.h"

#include <cerrno>
#include <filesystem>
#include <functional>
#include <gmock/gmock.h>
#include <gtest/gtest.h>
#include <string>
#include <vector>

#include "support/MemoryTrash.h"
#include "support/PlainFiles.h"
#include "support/TempTree.h"

namespace tessaly {
namespace {

using testing::ElementsAre;
using testing::IsEmpty;

class TrashBatchTest : public testing::Test {
 protected:
  // An item of the Trash's own disk.
  TrashBatch::Item item(const std::string& path) {
    trash_.put(path);
    return {.location = {.original = path, .place = path}};
  }
  // An item of the real disk, as it is now.
  TrashBatch::Item listed(const std::string& path) {
    trash_.put(path);
    return {.location = {.original = path, .place = path},
            .listed = FileIdentity::of(path).value()};
  }

  TrashBatch::Moved move(std::vector<TrashBatch::Item> items) {
    return TrashBatch::move(
        std::move(items), trash_, [this] { return done_.size() >= stopAfter_; },
        [this](std::size_t done) { done_.push_back(done); });
  }
  static std::vector<std::string> movedPaths(const TrashBatch::Moved& moved) {
    std::vector<std::string> paths;
    for (const TrashedItem& each : moved.items) paths.push_back(each.original);
    return paths;
  }
  static std::vector<std::string> failedPaths(const TrashBatch::Moved& moved) {
    std::vector<std::string> paths;
    for (const Trash::Failure& each : moved.errors) paths.push_back(each.path);
    return paths;
  }

  MemoryTrash trash_;
  TempTree disk_;
  std::size_t stopAfter_ = 1000;
  std::vector<std::size_t> done_;
};

TEST_F(TrashBatchTest, a_folder_that_was_listed_as_empty_stays_if_it_has_entries) {
  disk_.plant(
      "empty/\n"
      "filled/\n");
  TrashBatch::Item empty = listed(disk_.at("empty"));
  TrashBatch::Item filled = listed(disk_.at("filled"));
  empty.mustBeEmpty = filled.mustBeEmpty = true;
  putFile(disk_.at("filled/photo"), "new");
  const TrashBatch::Moved moved = move({empty, filled});
  EXPECT_THAT(movedPaths(moved), ElementsAre(disk_.at("empty")));
  ASSERT_THAT(failedPaths(moved), ElementsAre(disk_.at("filled")));
  EXPECT_EQ(moved.errors[0].cause.code, ENOTEMPTY);
}

TEST_F(TrashBatchTest, an_empty_batch_moves_nothing) {
  const TrashBatch::Moved moved = move({});
  EXPECT_THAT(moved.items, IsEmpty());
  EXPECT_THAT(moved.errors, IsEmpty());
  EXPECT_THAT(moved.untried, IsEmpty());
  EXPECT_THAT(done_, IsEmpty());
}

TEST_F(TrashBatchTest, an_item_moves_before_the_folder_that_contains_it) {
  const TrashBatch::Moved moved =
      move({item("/h/.gradle"), item("/h/b"), item("/h/.gradle/caches"), item("/h/c/")});
  EXPECT_THAT(movedPaths(moved), ElementsAre("/h/.gradle/caches", "/h/.gradle", "/h/b", "/h/c/"));
  EXPECT_THAT(moved.errors, IsEmpty());
  EXPECT_THAT(done_, ElementsAre(1, 2, 3, 4));
}

TEST_F(TrashBatchTest, the_order_follows_the_place_and_not_the_link_that_leads_there) {
  trash_.put("/mnt/data/of/ada/pip");
  trash_.put("/h/.cache/deep/er");
  const TrashBatch::Moved moved =
      move({{.location = {.original = "/h/.cache/deep/er", .place = "/h/.cache/deep/er"}},
            {.location = {.original = "/h/.cache/pip", .place = "/mnt/data/of/ada/pip"}}});
  EXPECT_THAT(movedPaths(moved), ElementsAre("/h/.cache/pip", "/h/.cache/deep/er"));
  EXPECT_EQ(moved.items[0].place, "/mnt/data/of/ada/pip");
}

TEST(TrashBatchIdentity, a_folder_is_known_by_its_kind_device_and_inode_alone) {
  const FileIdentity folder = {.kind = FileIdentity::Kind::folder,
                               .device = 1,
                               .inode = 2,
                               .size = 3,
                               .modifiedSeconds = 4,
                               .modifiedNanoseconds = 5};
  EXPECT_TRUE(TrashBatch::isListed(folder, folder));
  FileIdentity changed = folder;
  changed.size = changed.modifiedSeconds = changed.modifiedNanoseconds = 9;
  EXPECT_TRUE(TrashBatch::isListed(folder, changed));
  for (const auto& change : std::vector<std::function<void(FileIdentity&)>>{
           [](FileIdentity& now) { now.kind = FileIdentity::Kind::link; },
           [](FileIdentity& now) { now.device = 9; }, [](FileIdentity& now) { now.inode = 9; }}) {
    FileIdentity now = folder;
    change(now);
    EXPECT_FALSE(TrashBatch::isListed(folder, now));
  }
}

// Many file systems give the inode number of a removed folder to the next one.
TEST(TrashBatchIdentity, an_item_that_was_created_at_another_time_is_another_one) {
  for (const auto kind : {FileIdentity::Kind::folder, FileIdentity::Kind::file}) {
    const FileIdentity listed = {.kind = kind, .device = 1, .inode = 2, .created = 3};
    FileIdentity now = listed;
    EXPECT_TRUE(TrashBatch::isListed(listed, now));
    now.created = 4;
    EXPECT_FALSE(TrashBatch::isListed(listed, now));
    now.created = 0;  // unknown
    EXPECT_TRUE(TrashBatch::isListed(listed, now));
    EXPECT_TRUE(TrashBatch::isListed(now, listed));
  }
}

TEST(TrashBatchIdentity, a_file_is_known_by_everything) {
  for (const auto kind : {FileIdentity::Kind::file, FileIdentity::Kind::link}) {
    const FileIdentity file = {.kind = kind, .device = 1, .inode = 2, .size = 3};
    EXPECT_TRUE(TrashBatch::isListed(file, file));
    for (const auto& change : std::vector<std::function<void(FileIdentity&)>>{
             [](FileIdentity& now) { now.kind = FileIdentity::Kind::folder; },
             [](FileIdentity& now) { now.device = 9; }, [](FileIdentity& now) { now.inode = 9; },
             [](FileIdentity& now) { now.size = 9; },
             [](FileIdentity& now) { now.modifiedSeconds = 9; },
             [](FileIdentity& now) { now.modifiedNanoseconds = 9; }}) {
      FileIdentity now = file;
      change(now);
      EXPECT_FALSE(TrashBatch::isListed(file, now));
    }
  }
}

TEST_F(TrashBatchTest, a_failure_is_counted_and_the_others_move) {
  std::vector<TrashBatch::Item> items = {item("/h/a"), item("/h/b"), item("/h/c")};
  trash_.refuse("/h/a");
  trash_.remove("/h/c");
  const TrashBatch::Moved moved = move(std::move(items));
  EXPECT_THAT(movedPaths(moved), ElementsAre("/h/b"));
  EXPECT_THAT(failedPaths(moved), ElementsAre("/h/a", "/h/c"));
  EXPECT_EQ(moved.errors[1].cause.kind, SystemError::Kind::notFound);
  EXPECT_THAT(done_, ElementsAre(1, 2, 3));
}

TEST_F(TrashBatchTest, a_stopped_batch_returns_the_items_that_it_has_not_tried) {
  stopAfter_ = 2;
  std::vector<TrashBatch::Item> items = {item("/h/a"), item("/h/b"), item("/h/c"), item("/h/d")};
  trash_.refuse("/h/b");
  const TrashBatch::Moved moved = move(std::move(items));
  EXPECT_THAT(movedPaths(moved), ElementsAre("/h/a"));
  EXPECT_THAT(failedPaths(moved), ElementsAre("/h/b"));
  EXPECT_THAT(moved.untried, ElementsAre("/h/c", "/h/d"));
  EXPECT_TRUE(trash_.has("/h/c"));
}

TEST_F(TrashBatchTest, a_folder_that_has_grown_since_it_was_listed_moves) {
  disk_.plant("cache/\n  a 4K\n");
  const TrashBatch::Item cache = listed(disk_.at("cache"));
  disk_.plant("cache", "b 8K\n");
  EXPECT_THAT(movedPaths(move({cache})), ElementsAre(disk_.at("cache")));
}

TEST_F(TrashBatchTest, a_folder_that_was_replaced_since_it_was_listed_stays) {
  disk_.plant("cache/\n  a 4K\n");
  const TrashBatch::Item cache = listed(disk_.at("cache"));
  std::filesystem::rename(disk_.at("cache"), disk_.at("old"));
  disk_.plant("cache/\n  important 4K\n");
  const TrashBatch::Moved moved = move({cache});
  EXPECT_THAT(moved.items, IsEmpty());
  ASSERT_THAT(failedPaths(moved), ElementsAre(disk_.at("cache")));
  EXPECT_EQ(moved.errors[0].cause.kind, SystemError::Kind::stale);
  EXPECT_TRUE(trash_.has(disk_.at("cache")));
}

TEST_F(TrashBatchTest, a_folder_that_is_now_a_link_stays) {
  disk_.plant("cache/\n  a 4K\nelsewhere/\n");
  const TrashBatch::Item cache = listed(disk_.at("cache"));
  std::filesystem::remove_all(disk_.at("cache"));
  disk_.plant("cache -> elsewhere\n");
  EXPECT_THAT(failedPaths(move({cache})), ElementsAre(disk_.at("cache")));
}

TEST_F(TrashBatchTest, a_file_that_was_written_to_since_it_was_listed_stays) {
  disk_.plant("film 64K\n");
  const TrashBatch::Item film = listed(disk_.at("film"));
  putFile(disk_.at("film"), "in use again");
  const TrashBatch::Moved moved = move({film});
  EXPECT_THAT(failedPaths(moved), ElementsAre(disk_.at("film")));
}

TEST_F(TrashBatchTest, an_item_that_has_vanished_since_it_was_listed_fails_as_missing) {
  disk_.plant("film 64K\nsong 4K\n");
  const std::vector<TrashBatch::Item> items = {listed(disk_.at("film")), listed(disk_.at("song"))};
  std::filesystem::remove(disk_.at("film"));
  const TrashBatch::Moved moved = move(items);
  EXPECT_THAT(movedPaths(moved), ElementsAre(disk_.at("song")));
  ASSERT_THAT(failedPaths(moved), ElementsAre(disk_.at("film")));
  EXPECT_EQ(moved.errors[0].cause.kind, SystemError::Kind::notFound);
}

}  // namespace
}  // namespace tessaly
