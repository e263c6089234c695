// Tests for every TrashMover. To run them on an implementation, define a harness for a disk with an
// empty Trash:
//
//   struct Harness {
//     TrashMover& mover();
//     std::string at(const std::string& below);  // the path of an item in an existing folder
//     // Creates a file with this content, and the folders above it.
//     void put(const std::string& path, const std::string& content);
//     void remove(const std::string& path);      // the item and everything in it
//     // Removes an item from the Trash with its record, like another program.
//     void takeOut(const std::string& trashPath);
//     bool has(const std::string& path);
//     std::string contentOf(const std::string& path);  // "" for a missing item
//   };
//   INSTANTIATE_TYPED_TEST_SUITE_P(MyTrash, TrashContract, Harness);
#pragma once

#include <cerrno>
#include <gtest/gtest.h>
#include <string>
#include <vector>

#include "platform/TrashMover.h"

namespace tessaly {

template <class Harness>
class TrashContract : public ::testing::Test {
 protected:
  using Kind = SystemError::Kind;

  TrashMover& mover() { return harness_.mover(); }
  std::string at(const std::string& below) { return harness_.at(below); }

  // Empty after a failure.
  ItemInTrash trash(const std::string& path) {
    const Result<ItemInTrash> moved = mover().moveToTrash(path);
    EXPECT_TRUE(moved) << path << ": " << (moved ? "" : moved.error().description());
    return moved ? moved.value() : ItemInTrash();
  }
  SystemError refusalOf(const std::string& path) {
    const Result<ItemInTrash> moved = mover().moveToTrash(path);
    EXPECT_FALSE(moved) << path;
    return moved ? SystemError() : moved.error();
  }
  SystemError refusalOf(const ItemInTrash& item, const std::string& original) {
    const Outcome back = mover().putBack(item, original);
    EXPECT_FALSE(back) << original;
    return back ? SystemError() : back.error();
  }

  Harness harness_;
};

TYPED_TEST_SUITE_P(TrashContract);

TYPED_TEST_P(TrashContract, an_item_is_moved_and_its_place_reported) {
  auto& disk = this->harness_;
  disk.put(this->at("folder/film"), "content");
  const ItemInTrash item = this->trash(this->at("folder/film"));
  EXPECT_FALSE(disk.has(this->at("folder/film")));
  EXPECT_TRUE(disk.has(this->at("folder")));
  EXPECT_EQ(disk.contentOf(item.path), "content");
  EXPECT_TRUE(item.path.starts_with('/'));
}

TYPED_TEST_P(TrashContract, a_folder_is_moved_with_its_contents) {
  auto& disk = this->harness_;
  disk.put(this->at("folder/deeper/film"), "1");
  disk.put(this->at("folder/sound"), "2");
  disk.put(this->at("folder2"), "3");
  const ItemInTrash item = this->trash(this->at("folder"));
  EXPECT_FALSE(disk.has(this->at("folder")));
  EXPECT_EQ(disk.contentOf(item.path + "/deeper/film"), "1");
  EXPECT_EQ(disk.contentOf(item.path + "/sound"), "2");
  EXPECT_EQ(disk.contentOf(this->at("folder2")), "3");
}

TYPED_TEST_P(TrashContract, all_items_of_one_name_are_kept) {
  auto& disk = this->harness_;
  std::vector<ItemInTrash> items;
  for (int number = 0; number < 40; ++number) {
    disk.put(this->at("film.mkv"), std::to_string(number));
    items.push_back(this->trash(this->at("film.mkv")));
  }
  for (int number = 0; number < 40; ++number) {
    EXPECT_EQ(disk.contentOf(items[static_cast<std::size_t>(number)].path), std::to_string(number));
  }
}

TYPED_TEST_P(TrashContract, items_with_any_name_are_moved) {
  auto& disk = this->harness_;
  const std::vector<std::string> names = {"line\nfeed",
                                          "\xff\xfe",
                                          "%41",
                                          " ",
                                          "-rf",
                                          "...",
                                          "\\x",
                                          "\"'",
                                          "\xE2\x82\xAC",
                                          std::string(255, 'n'),
                                          std::string(251, 'n') + ".mkv"};
  for (const std::string& name : names) {
    disk.put(this->at(name), name);
    const ItemInTrash item = this->trash(this->at(name));
    EXPECT_FALSE(disk.has(this->at(name)));
    EXPECT_EQ(disk.contentOf(item.path), name);
    EXPECT_TRUE(this->mover().putBack(item, this->at(name)));
    EXPECT_EQ(disk.contentOf(this->at(name)), name);
  }
}

TYPED_TEST_P(TrashContract, trailing_slashes_are_ignored) {
  auto& disk = this->harness_;
  disk.put(this->at("folder/film"), "content");
  const ItemInTrash item = this->trash(this->at("folder") + "///");
  EXPECT_EQ(disk.contentOf(item.path + "/film"), "content");
  EXPECT_TRUE(this->mover().putBack(item, this->at("folder") + "//"));
  EXPECT_EQ(disk.contentOf(this->at("folder/film")), "content");
}

TYPED_TEST_P(TrashContract, a_missing_item_is_refused) {
  EXPECT_EQ(this->refusalOf(this->at("none")).kind, SystemError::Kind::notFound);
  EXPECT_EQ(this->refusalOf(this->at("none/none")).kind, SystemError::Kind::notFound);
}

TYPED_TEST_P(TrashContract, paths_that_name_no_item_are_refused) {
  auto& disk = this->harness_;
  disk.put(this->at("folder/film"), "content");
  const std::string folder = this->at("folder");
  for (const std::string& path :
       {std::string(), std::string("."), std::string(".."), std::string("folder"), folder + "/.",
        folder + "/..", folder + "/./", folder + std::string("\0x", 2)}) {
    EXPECT_EQ(this->refusalOf(path).code, EINVAL) << path;
  }
  EXPECT_EQ(this->refusalOf("/").code, EBUSY);
  EXPECT_EQ(this->refusalOf("//").code, EBUSY);
  EXPECT_EQ(disk.contentOf(this->at("folder/film")), "content");
}

TYPED_TEST_P(TrashContract, an_item_in_the_trash_is_refused) {
  auto& disk = this->harness_;
  disk.put(this->at("folder/film"), "content");
  const ItemInTrash item = this->trash(this->at("folder"));
  const std::string& place = item.path;
  for (const std::string& path : {place + "/film", place, place.substr(0, place.rfind('/'))}) {
    EXPECT_EQ(this->refusalOf(path).code, EINVAL) << path;
  }
  EXPECT_EQ(disk.contentOf(item.path + "/film"), "content");
}

TYPED_TEST_P(TrashContract, an_item_can_be_moved_and_put_back_repeatedly) {
  auto& disk = this->harness_;
  disk.put(this->at("folder/film"), "content");
  for (int round = 0; round < 3; ++round) {
    const ItemInTrash item = this->trash(this->at("folder"));
    ASSERT_TRUE(this->mover().putBack(item, this->at("folder")));
    EXPECT_EQ(disk.contentOf(this->at("folder/film")), "content");
    EXPECT_FALSE(disk.has(item.path));
  }
}

TYPED_TEST_P(TrashContract, putting_back_creates_folders_that_were_deleted) {
  auto& disk = this->harness_;
  disk.put(this->at("a/b/c/film"), "content");
  const ItemInTrash item = this->trash(this->at("a/b/c/film"));
  disk.remove(this->at("a"));
  EXPECT_TRUE(this->mover().putBack(item, this->at("a/b/c/film")));
  EXPECT_EQ(disk.contentOf(this->at("a/b/c/film")), "content");
}

TYPED_TEST_P(TrashContract, putting_back_never_replaces_an_item) {
  auto& disk = this->harness_;
  disk.put(this->at("film"), "old");
  const ItemInTrash item = this->trash(this->at("film"));
  disk.put(this->at("film"), "new");
  EXPECT_EQ(this->refusalOf(item, this->at("film")).kind, SystemError::Kind::alreadyExists);
  EXPECT_EQ(disk.contentOf(this->at("film")), "new");
  EXPECT_EQ(disk.contentOf(item.path), "old");
  disk.remove(this->at("film"));
  EXPECT_TRUE(this->mover().putBack(item, this->at("film")));
  EXPECT_EQ(disk.contentOf(this->at("film")), "old");
}

TYPED_TEST_P(TrashContract, an_item_that_has_left_the_trash_cannot_be_put_back) {
  auto& disk = this->harness_;
  disk.put(this->at("film"), "content");
  const ItemInTrash item = this->trash(this->at("film"));
  disk.remove(item.path);
  EXPECT_EQ(this->refusalOf(item, this->at("film")).kind, SystemError::Kind::notFound);
  EXPECT_FALSE(disk.has(this->at("film")));
}

// The second item exists before the first one is moved, so that they never have the same inode.
TYPED_TEST_P(TrashContract, an_item_is_not_taken_for_an_earlier_one_of_its_name) {
  auto& disk = this->harness_;
  disk.put(this->at("notes.txt"), "first");
  disk.put(this->at("elsewhere/notes.txt"), "the second");
  const ItemInTrash first = this->trash(this->at("notes.txt"));
  disk.takeOut(first.path);
  const ItemInTrash second = this->trash(this->at("elsewhere/notes.txt"));
  ASSERT_EQ(second.path, first.path);
  EXPECT_NE(second.identity, first.identity);
  EXPECT_EQ(this->refusalOf(first, this->at("notes.txt")).kind, SystemError::Kind::stale);
  EXPECT_FALSE(disk.has(this->at("notes.txt")));
  EXPECT_EQ(disk.contentOf(second.path), "the second");
  EXPECT_TRUE(this->mover().putBack(second, this->at("elsewhere/notes.txt")));
  EXPECT_EQ(disk.contentOf(this->at("elsewhere/notes.txt")), "the second");
}

TYPED_TEST_P(TrashContract, a_folder_is_not_taken_for_an_earlier_one_of_its_name) {
  auto& disk = this->harness_;
  disk.put(this->at("folder/film"), "first");
  disk.put(this->at("elsewhere/folder/film"), "the second");
  const ItemInTrash first = this->trash(this->at("folder"));
  disk.takeOut(first.path);
  const ItemInTrash second = this->trash(this->at("elsewhere/folder"));
  ASSERT_EQ(second.path, first.path);
  EXPECT_EQ(this->refusalOf(first, this->at("folder")).kind, SystemError::Kind::stale);
  EXPECT_EQ(disk.contentOf(second.path + "/film"), "the second");
}

TYPED_TEST_P(TrashContract, an_item_that_was_not_examined_is_not_put_back) {
  auto& disk = this->harness_;
  disk.put(this->at("film"), "content");
  const ItemInTrash item = this->trash(this->at("film"));
  const ItemInTrash unknown{.path = item.path, .identity = {}};
  EXPECT_EQ(this->refusalOf(unknown, this->at("film")).kind, SystemError::Kind::stale);
  EXPECT_EQ(disk.contentOf(item.path), "content");
}

TYPED_TEST_P(TrashContract, an_item_cannot_be_put_back_to_a_path_that_names_no_item) {
  auto& disk = this->harness_;
  disk.put(this->at("film"), "content");
  const ItemInTrash item = this->trash(this->at("film"));
  for (const std::string& path : {std::string(), std::string("film"), this->at("."), this->at(".."),
                                  this->at("film") + std::string("\0x", 2)}) {
    EXPECT_EQ(this->refusalOf(item, path).code, EINVAL) << path;
  }
  const ItemInTrash nowhere{.path = "", .identity = item.identity};
  EXPECT_EQ(this->refusalOf(nowhere, this->at("film")).code, EINVAL);
  EXPECT_EQ(disk.contentOf(item.path), "content");
  EXPECT_FALSE(disk.has(this->at("film")));
}

REGISTER_TYPED_TEST_SUITE_P(
    TrashContract, an_item_is_moved_and_its_place_reported, a_folder_is_moved_with_its_contents,
    all_items_of_one_name_are_kept, items_with_any_name_are_moved, trailing_slashes_are_ignored,
    a_missing_item_is_refused, paths_that_name_no_item_are_refused, an_item_in_the_trash_is_refused,
    an_item_can_be_moved_and_put_back_repeatedly, putting_back_creates_folders_that_were_deleted,
    putting_back_never_replaces_an_item, an_item_that_has_left_the_trash_cannot_be_put_back,
    an_item_is_not_taken_for_an_earlier_one_of_its_name,
    a_folder_is_not_taken_for_an_earlier_one_of_its_name,
    an_item_that_was_not_examined_is_not_put_back,
    an_item_cannot_be_put_back_to_a_path_that_names_no_item);

}  // namespace tessaly
