#include "platform/linux/trash/ItemMark.h"

#include <gtest/gtest.h>
#include <sys/stat.h>

namespace tessaly {
namespace {

ItemMark markOfFile() {
  return {.identity = {.deviceMajor = 8, .deviceMinor = 1, .inode = 12, .mount = 30},
          .type = S_IFREG,
          .size = 4096,
          .changed = 200,
          .lastTouched = 300,
          .born = 100,
          .hasStableNumber = true};
}

ItemMark withoutBirth(ItemMark mark) {
  mark.born = 0;
  return mark;
}

// The mark with something in it changed.
template <class Change>
ItemMark with(ItemMark mark, const Change& change) {
  change(mark);
  return mark;
}

TEST(ItemMark, an_item_of_another_number_or_birth_or_type_is_another) {
  const ItemMark one = markOfFile();
  EXPECT_TRUE(one.isSameItem(one));
  EXPECT_FALSE(one.isSameItem(with(one, [](ItemMark& other) { other.identity.inode += 1; })));
  EXPECT_FALSE(one.isSameItem(with(one, [](ItemMark& other) { other.identity.deviceMinor += 1; })));
  EXPECT_FALSE(one.isSameItem(with(one, [](ItemMark& other) { other.born += 1; })));
  EXPECT_FALSE(one.isSameItem(with(one, [](ItemMark& other) { other.type = S_IFDIR; })));
}

TEST(ItemMark, an_item_whose_birth_is_known_stays_itself_when_it_is_written_to) {
  const ItemMark one = markOfFile();
  ItemMark written = one;
  written.size += 1;
  written.changed += 1;
  written.lastTouched += 1;
  EXPECT_TRUE(one.isSameItem(written));
  EXPECT_FALSE(one.isUnchanged(written));
}

// The inode number of a deleted item is soon reused.
TEST(ItemMark, size_and_time_stand_for_a_birth_that_is_not_kept) {
  const ItemMark one = withoutBirth(markOfFile());
  // As a move does.
  EXPECT_TRUE(one.isSameItem(with(one, [](ItemMark& other) { other.lastTouched += 1; })));
  EXPECT_FALSE(one.isSameItem(with(one, [](ItemMark& other) { other.size += 1; })));
  EXPECT_FALSE(one.isSameItem(with(one, [](ItemMark& other) { other.changed += 1; })));
  EXPECT_FALSE(one.isSameItem(with(one, [](ItemMark& other) { other.identity.inode += 1; })));
}

TEST(ItemMark, size_and_time_stand_for_a_number_that_does_not_last) {
  ItemMark one = markOfFile();
  one.hasStableNumber = false;
  EXPECT_TRUE(one.isSameItem(with(one, [](ItemMark& other) { other.identity.inode += 1; })));
  EXPECT_FALSE(one.isSameItem(with(one, [](ItemMark& other) { other.identity.deviceMajor += 1; })));
  EXPECT_FALSE(one.isSameItem(with(one, [](ItemMark& other) { other.size += 1; })));
  EXPECT_FALSE(one.isSameItem(with(one, [](ItemMark& other) { other.changed += 1; })));
}

}  // namespace
}  // namespace tessaly
