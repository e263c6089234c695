#include "reclaim/Trash.h"

#include <gtest/gtest.h>

#include "support/MemoryTrash.h"

namespace tessaly {
namespace {

std::vector<std::string> pathsOf(const std::vector<Trash::Failure>& failures) {
  std::vector<std::string> paths;
  for (const Trash::Failure& failure : failures) paths.push_back(failure.path);
  return paths;
}

TEST(Trash, the_path_is_recorded_as_it_was_given) {
  MemoryTrash disk;
  disk.put("/data/folder/film", "content");
  const Result<TrashedItem> item = Trash::moveRecording("/data/folder//", disk);
  ASSERT_TRUE(item.ok());
  EXPECT_EQ(item.value().original, "/data/folder//");
  EXPECT_EQ(disk.contentOf(item.value().trashPath + "/film"), "content");
  EXPECT_TRUE(Trash::putBack(item.value(), disk));
  EXPECT_EQ(disk.contentOf("/data/folder/film"), "content");
}

TEST(Trash, items_that_did_not_move_are_not_recorded) {
  MemoryTrash disk;
  disk.put("/kept");
  disk.refuse("/kept");
  EXPECT_EQ(Trash::moveRecording("/kept", disk).error().kind, SystemError::Kind::notPermitted);
  EXPECT_EQ(Trash::moveRecording("/missing", disk).error().kind, SystemError::Kind::notFound);
  EXPECT_TRUE(disk.has("/kept"));
}

TEST(Trash, an_item_whose_path_in_the_trash_is_unknown_is_recorded) {
  MemoryTrash disk;
  disk.put("/a");
  disk.tellNoPlaces();
  const Result<TrashedItem> item = Trash::moveRecording("/a", disk);
  ASSERT_TRUE(item.ok());
  EXPECT_EQ(item.value().original, "/a");
  EXPECT_EQ(item.value().trashPath, "");
  EXPECT_EQ(Trash::putBack(item.value(), disk).error().kind, SystemError::Kind::notFound);
  EXPECT_FALSE(disk.has("/a"));
}

TEST(Trash, many_items_are_moved_in_order_even_after_failures) {
  MemoryTrash disk;
  for (const char* path : {"/a", "/b", "/c", "/d"}) disk.put(path, path);
  disk.refuse("/b");
  const Trash::Moved moved =
      Trash::moveManyRecording({"/d", "/missing", "/a", "/b", "/c", "/a"}, disk);
  ASSERT_EQ(moved.items.size(), 3U);
  EXPECT_EQ(moved.items[0].original, "/d");
  EXPECT_EQ(moved.items[1].original, "/a");
  EXPECT_EQ(moved.items[2].original, "/c");
  EXPECT_EQ(pathsOf(moved.errors), (std::vector<std::string>{"/missing", "/b", "/a"}));
  EXPECT_EQ(moved.errors[0].cause.kind, SystemError::Kind::notFound);
  EXPECT_EQ(moved.errors[1].cause.kind, SystemError::Kind::notPermitted);
  EXPECT_TRUE(disk.has("/b"));
  for (const TrashedItem& item : moved.items) {
    EXPECT_EQ(disk.contentOf(item.trashPath), item.original);
    EXPECT_FALSE(disk.has(item.original));
  }
}

TEST(Trash, an_empty_list_moves_nothing) {
  MemoryTrash disk;
  EXPECT_EQ(Trash::moveManyRecording(std::vector<std::string>(), disk), Trash::Moved());
}

TEST(Trash, one_good_and_one_missing_path_give_one_item_and_one_error) {
  MemoryTrash disk;
  disk.put("/good", "content");
  const Trash::Moved moved = Trash::moveManyRecording({"/good", "/missing"}, disk);
  ASSERT_EQ(moved.items.size(), 1U);
  EXPECT_EQ(disk.contentOf(moved.items[0].trashPath), "content");
  EXPECT_EQ(pathsOf(moved.errors), std::vector<std::string>{"/missing"});
}

TEST(Trash, putting_back_recreates_missing_folders) {
  MemoryTrash disk;
  disk.put("/a/b/film", "content");
  const Result<TrashedItem> item = Trash::moveRecording("/a/b/film", disk);
  ASSERT_TRUE(item.ok());
  disk.remove("/a");
  EXPECT_TRUE(Trash::putBack(item.value(), disk));
  EXPECT_EQ(disk.contentOf("/a/b/film"), "content");
}

TEST(Trash, putting_back_never_replaces_an_existing_item) {
  MemoryTrash disk;
  disk.put("/film", "old");
  const Result<TrashedItem> item = Trash::moveRecording("/film", disk);
  ASSERT_TRUE(item.ok());
  disk.put("/film", "new");
  EXPECT_EQ(Trash::putBack(item.value(), disk).error().kind, SystemError::Kind::alreadyExists);
  EXPECT_EQ(disk.contentOf("/film"), "new");
  EXPECT_EQ(disk.contentOf(item.value().trashPath), "old");
}

TEST(Trash, an_item_cannot_be_put_back_after_the_trash_was_emptied) {
  MemoryTrash disk;
  disk.put("/film");
  const Result<TrashedItem> item = Trash::moveRecording("/film", disk);
  ASSERT_TRUE(item.ok());
  disk.remove(item.value().trashPath);
  for (int round = 0; round < 2; ++round) {
    EXPECT_EQ(Trash::putBack(item.value(), disk).error().kind, SystemError::Kind::notFound);
  }
}

TEST(Trash, another_item_with_the_same_name_is_not_put_back) {
  MemoryTrash disk;
  disk.put("/notes.txt", "first");
  const Result<TrashedItem> first = Trash::moveRecording("/notes.txt", disk);
  ASSERT_TRUE(first.ok());
  disk.remove(first.value().trashPath);
  disk.put("/notes.txt", "second");
  const Result<TrashedItem> second = Trash::moveRecording("/notes.txt", disk);
  ASSERT_TRUE(second.ok());
  ASSERT_EQ(second.value().trashPath, first.value().trashPath);
  EXPECT_NE(second.value(), first.value());
  EXPECT_EQ(Trash::putBack(first.value(), disk).error().kind, SystemError::Kind::stale);
  EXPECT_FALSE(disk.has("/notes.txt"));
  EXPECT_EQ(disk.contentOf(second.value().trashPath), "second");
}

TEST(Trash, an_item_is_moved_from_its_resolved_place_and_put_back_there) {
  MemoryTrash disk;
  disk.put("/elsewhere/pip", "wheels");
  const Trash::Location pip{.original = "/home/user/.cache/pip", .place = "/elsewhere/pip"};
  const Trash::Moved moved = Trash::moveManyRecording(std::vector{pip, pip}, disk);
  ASSERT_EQ(moved.items.size(), 1U);
  EXPECT_EQ(moved.items[0].original, "/home/user/.cache/pip");
  EXPECT_EQ(moved.items[0].place, "/elsewhere/pip");
  EXPECT_EQ(pathsOf(moved.errors), std::vector<std::string>{"/home/user/.cache/pip"});
  EXPECT_FALSE(disk.has("/elsewhere/pip"));
  EXPECT_TRUE(Trash::putBack(moved.items[0], disk));
  EXPECT_EQ(disk.contentOf("/elsewhere/pip"), "wheels");
  EXPECT_FALSE(disk.has("/home/user/.cache"));
}

TEST(TrashedItem, the_hash_covers_both_paths) {
  const std::hash<TrashedItem> hash;
  const TrashedItem item{.original = "/a", .trashPath = "/b"};
  EXPECT_EQ(hash(item), hash({.original = "/a", .trashPath = "/b"}));
  EXPECT_NE(hash(item), hash({.original = "/b", .trashPath = "/a"}));
}

}  // namespace
}  // namespace tessaly
