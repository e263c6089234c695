// Tests for every TrashCan and the TrashMover that fills it. To run them on an implementation,
// define a harness for a disk with an empty Trash: that of TrashContract, and
//
//     TrashCan& can();
//
//   INSTANTIATE_TYPED_TEST_SUITE_P(MyTrash, TrashCanContract, Harness);
#pragma once

#include <gtest/gtest.h>
#include <string>
#include <vector>

#include "platform/TrashCan.h"
#include "platform/TrashMover.h"

namespace tessaly {

template <class Harness>
class TrashCanContract : public ::testing::Test {
 protected:
  // Empty after a failure.
  ItemInTrash trashItem(const std::string& below, const std::string& content = "content") {
    harness_.put(harness_.at(below), content);
    const std::string item = harness_.at(below.substr(0, below.find('/')));
    const Result<ItemInTrash> moved = harness_.mover().moveToTrash(item);
    EXPECT_TRUE(moved) << item << ": " << (moved ? "" : moved.error().description());
    return moved ? moved.value() : ItemInTrash();
  }
  std::string trash(const std::string& below, const std::string& content = "content") {
    return trashItem(below, content).path;
  }
  std::int64_t count() {
    const Result<std::int64_t> counted = harness_.can().count();
    EXPECT_TRUE(counted) << (counted ? "" : counted.error().description());
    return counted ? counted.value() : -1;
  }
  // The number of deleted items; expects no failure.
  std::int64_t empty() {
    const EmptiedTrash emptied = harness_.can().empty();
    EXPECT_TRUE(emptied.isComplete());
    for (const SystemError& error : emptied.errors) ADD_FAILURE() << error.description();
    return emptied.deleted;
  }

  Harness harness_;
};

TYPED_TEST_SUITE_P(TrashCanContract);

TYPED_TEST_P(TrashCanContract, the_trash_is_empty_before_anything_is_moved_to_it) {
  EXPECT_EQ(this->count(), 0);
  EXPECT_EQ(this->empty(), 0);
  EXPECT_EQ(this->count(), 0);
}

TYPED_TEST_P(TrashCanContract, emptying_counts_items_and_deletes_them) {
  const std::string film = this->trash("film");
  EXPECT_EQ(this->count(), 1);
  const std::string folder = this->trash("folder/deeper/film");
  EXPECT_EQ(this->count(), 2);
  EXPECT_EQ(this->empty(), 2);
  EXPECT_EQ(this->count(), 0);
  for (const std::string& place : {film, folder, folder + "/deeper/film"}) {
    EXPECT_FALSE(this->harness_.has(place)) << place;
  }
}

TYPED_TEST_P(TrashCanContract, emptied_items_cannot_be_put_back) {
  const ItemInTrash item = this->trashItem("folder/film");
  EXPECT_EQ(this->empty(), 1);
  const Outcome back = this->harness_.mover().putBack(item, this->harness_.at("folder"));
  ASSERT_FALSE(back);
  EXPECT_EQ(back.error().kind, SystemError::Kind::notFound);
  EXPECT_FALSE(this->harness_.has(this->harness_.at("folder")));
}

TYPED_TEST_P(TrashCanContract, emptying_does_not_touch_items_that_were_put_back) {
  const ItemInTrash item = this->trashItem("folder/film");
  ASSERT_TRUE(this->harness_.mover().putBack(item, this->harness_.at("folder")));
  EXPECT_EQ(this->count(), 0);
  EXPECT_EQ(this->empty(), 0);
  EXPECT_EQ(this->harness_.contentOf(this->harness_.at("folder/film")), "content");
}

TYPED_TEST_P(TrashCanContract, emptying_does_not_touch_items_outside_of_the_trash) {
  this->harness_.put(this->harness_.at("kept/film"), "kept");
  this->trash("film");
  EXPECT_EQ(this->empty(), 1);
  EXPECT_EQ(this->harness_.contentOf(this->harness_.at("kept/film")), "kept");
}

TYPED_TEST_P(TrashCanContract, the_trash_can_be_filled_and_emptied_again) {
  for (int round = 0; round < 3; ++round) {
    std::vector<std::string> places;
    for (int number = 0; number < 5; ++number) places.push_back(this->trash("film.mkv"));
    places.push_back(this->trash("folder/film"));
    EXPECT_EQ(this->count(), 6);
    EXPECT_EQ(this->empty(), 6);
    EXPECT_EQ(this->count(), 0);
    for (const std::string& place : places) EXPECT_FALSE(this->harness_.has(place));
  }
}

TYPED_TEST_P(TrashCanContract, emptying_deletes_items_with_any_name) {
  const std::vector<std::string> names = {
      "line\nfeed", "\xff\xfe", "%41", " ", "-rf", "...", "\\x", "\"'", std::string(255, 'n')};
  for (const std::string& name : names) {
    this->trash(name);
    this->trash(name + "/film");
    EXPECT_EQ(this->count(), 2);
    EXPECT_EQ(this->empty(), 2);
    EXPECT_EQ(this->count(), 0);
  }
}

REGISTER_TYPED_TEST_SUITE_P(TrashCanContract, the_trash_is_empty_before_anything_is_moved_to_it,
                            emptying_counts_items_and_deletes_them,
                            emptied_items_cannot_be_put_back,
                            emptying_does_not_touch_items_that_were_put_back,
                            emptying_does_not_touch_items_outside_of_the_trash,
                            the_trash_can_be_filled_and_emptied_again,
                            emptying_deletes_items_with_any_name);

}  // namespace tessaly
