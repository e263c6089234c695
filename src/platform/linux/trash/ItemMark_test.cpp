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

// The mark after `change` was applied to it.
template <class Change>
ItemMark with(ItemMark mark, const Change& change) {
  change(mark);
  return mark;
}

TEST(ItemMark, an_item_with_another_number_birth_time_or_type_is_another_one) {
  const ItemMark one = markOfFile();
  EXPECT_TRUE(one.isSameItem(one));
  EXPECT_FALSE(one.isSameItem(with(one, [](ItemMark& other) { other.identity.inode += 1; })));
  EXPECT_FALSE(one.isSameItem(with(one, [](ItemMark& other) { other.identity.deviceMinor += 1; })));
  EXPECT_FALSE(one.isSameItem(with(one, [](ItemMark& other) { other.born += 1; })));
  EXPECT_FALSE(one.isSameItem(with(one, [](ItemMark& other) { other.type = S_IFDIR; })));
}

TEST(ItemMark, an_item_with_a_known_birth_time_stays_the_same_when_it_is_written_to) {
  const ItemMark one = markOfFile();
  ItemMark written = one;
  written.size += 1;
  written.changed += 1;
  written.lastTouched += 1;
  EXPECT_TRUE(one.isSameItem(written));
  EXPECT_FALSE(one.isUnchanged(written));
}

// The inode number of a deleted item is soon reused.
TEST(ItemMark, size_and_time_replace_a_birth_time_that_is_not_stored) {
  const ItemMark one = withoutBirth(markOfFile());
  // A move changes only this time.
  EXPECT_TRUE(one.isSameItem(with(one, [](ItemMark& other) { other.lastTouched += 1; })));
  EXPECT_FALSE(one.isSameItem(with(one, [](ItemMark& other) { other.size += 1; })));
  EXPECT_FALSE(one.isSameItem(with(one, [](ItemMark& other) { other.changed += 1; })));
  EXPECT_FALSE(one.isSameItem(with(one, [](ItemMark& other) { other.identity.inode += 1; })));
}

TEST(ItemMark, size_and_time_replace_a_number_that_is_not_lasting) {
  ItemMark one = markOfFile();
  one.hasStableNumber = false;
  EXPECT_TRUE(one.isSameItem(with(one, [](ItemMark& other) { other.identity.inode += 1; })));
  EXPECT_FALSE(one.isSameItem(with(one, [](ItemMark& other) { other.identity.deviceMajor += 1; })));
  EXPECT_FALSE(one.isSameItem(with(one, [](ItemMark& other) { other.size += 1; })));
  EXPECT_FALSE(one.isSameItem(with(one, [](ItemMark& other) { other.changed += 1; })));
}

}  // namespace
}  // namespace tessaly
