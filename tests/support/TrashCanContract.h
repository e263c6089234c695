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

TYPED_TEST_P(TrashCanContract, is_empty_where_nothing_was_thrown_away) {
  EXPECT_EQ(this->count(), 0);
  EXPECT_EQ(this->empty(), 0);
  EXPECT_EQ(this->count(), 0);
}

TYPED_TEST_P(TrashCanContract, counts_items_and_deletes_them) {
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

TYPED_TEST_P(TrashCanContract, leaves_nothing_to_be_put_back) {
  const ItemInTrash item = this->trashItem("folder/film");
  EXPECT_EQ(this->empty(), 1);
  const Outcome back = this->harness_.mover().putBack(item, this->harness_.at("folder"));
  ASSERT_FALSE(back);
  EXPECT_EQ(back.error().kind, SystemError::Kind::notFound);
  EXPECT_FALSE(this->harness_.has(this->harness_.at("folder")));
}

TYPED_TEST_P(TrashCanContract, leaves_alone_what_was_put_back) {
  const ItemInTrash item = this->trashItem("folder/film");
  ASSERT_TRUE(this->harness_.mover().putBack(item, this->harness_.at("folder")));
  EXPECT_EQ(this->count(), 0);
  EXPECT_EQ(this->empty(), 0);
  EXPECT_EQ(this->harness_.contentOf(this->harness_.at("folder/film")), "content");
}

TYPED_TEST_P(TrashCanContract, leaves_alone_what_was_not_thrown_away) {
  this->harness_.put(this->harness_.at("kept/film"), "kept");
  this->trash("film");
  EXPECT_EQ(this->empty(), 1);
  EXPECT_EQ(this->harness_.contentOf(this->harness_.at("kept/film")), "kept");
}

TYPED_TEST_P(TrashCanContract, can_be_filled_and_emptied_again) {
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

TYPED_TEST_P(TrashCanContract, deletes_any_name) {
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

REGISTER_TYPED_TEST_SUITE_P(TrashCanContract, is_empty_where_nothing_was_thrown_away,
                            counts_items_and_deletes_them, leaves_nothing_to_be_put_back,
                            leaves_alone_what_was_put_back, leaves_alone_what_was_not_thrown_away,
                            can_be_filled_and_emptied_again, deletes_any_name);

}  // namespace tessaly
