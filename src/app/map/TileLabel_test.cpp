#include "app/map/TileLabel.h"

#include <gtest/gtest.h>

#include "app/map/SampleTiles_test.h"

namespace tessaly {
namespace {

TileLabel labelOf(const DiskNode& node, double width, double height) {
  return TileLabel::of(tileRect(node, width, height)).value();
}

bool hasLabel(double width, double height) {
  return TileLabel::of(tileRect(fileNode("/a", 1), width, height)).has_value();
}

TEST(TileLabel, a_label_needs_a_width_above_38_and_a_height_above_20) {
  EXPECT_FALSE(hasLabel(38, 100));
  EXPECT_TRUE(hasLabel(38.5, 21));
  EXPECT_FALSE(hasLabel(91, 20));
  EXPECT_TRUE(hasLabel(91, 20.1));
}

TEST(TileLabel, the_size_is_shown_on_tiles_wider_than_90) {
  const DiskNode node = fileNode("/a", 1536);
  EXPECT_EQ(labelOf(node, 90, 40).size, "");
  EXPECT_EQ(labelOf(node, 90.5, 40).size, "1.5 KB");
}

TEST(TileLabel, a_tile_100_wide_keeps_three_characters) {
  EXPECT_EQ(labelOf(fileNode("/abcd", 1), 100, 40).name, "abc…");
  EXPECT_EQ(labelOf(fileNode("/abc", 1), 100, 40).name, "abc");
  EXPECT_FALSE(hasLabel(100, 20));
}

TEST(TileLabel, a_name_of_exactly_the_limit_is_complete) {
  // (152 - 80) / 7.2 is 10.
  EXPECT_EQ(TileLabel::shortened("0123456789", 152, true), "0123456789");
  EXPECT_EQ(TileLabel::shortened("0123456789a", 152, true), "012345678…");
  EXPECT_EQ(TileLabel::shortened("0123456789", 151.9, true), "01234567…");
}

TEST(TileLabel, the_name_has_more_space_if_no_size_is_shown) {
  // (56 - 20) / 7.2 is 5.
  EXPECT_EQ(TileLabel::shortened("abcde", 56, false), "abcde");
  EXPECT_EQ(TileLabel::shortened("abcdef", 56, false), "abcd…");
}

TEST(TileLabel, at_least_three_characters_are_kept) {
  EXPECT_EQ(TileLabel::shortened("abcdef", 38.5, false), "abc…");
  EXPECT_EQ(TileLabel::shortened("abcdef", 42, false), "abc…");  // room for 3
  EXPECT_EQ(TileLabel::shortened("abcdef", 49, false), "abc…");  // room for 4 keeps 3
  EXPECT_EQ(TileLabel::shortened("abcd", 49, false), "abcd");
}

TEST(TileLabel, grapheme_clusters_count_as_characters) {
  // A family of four is one character of 25 bytes.
  const std::string family = "👨‍👩‍👧‍👦";
  EXPECT_EQ(TileLabel::shortened(family + family + family, 100, true), family + family + family);
  EXPECT_EQ(TileLabel::shortened(family + family + family + family, 100, true),
            family + family + family + "…");
  EXPECT_EQ(TileLabel::shortened("e\u0301e\u0301e\u0301e\u0301", 100, true),
            "e\u0301e\u0301e\u0301…");
}

TEST(TileLabel, a_byte_that_is_not_utf8_counts_as_a_character) {
  EXPECT_EQ(TileLabel::shortened("\xFF\xFE\xFD", 100, true), "\xFF\xFE\xFD");
  EXPECT_EQ(TileLabel::shortened("\xFF\xFE\xFD\xFC", 100, true), "\xFF\xFE\xFD…");
}

TEST(TileLabel, the_name_is_larger_on_large_tiles_without_children) {
  TreemapRect rect = tileRect(folderNode("/a", 1), 180.5, 80.5);
  EXPECT_EQ(TileLabel::of(rect)->nameSize, 12);
  rect.nested = true;
  EXPECT_EQ(TileLabel::of(rect)->nameSize, 11);
  EXPECT_EQ(labelOf(folderNode("/a", 1), 180, 81).nameSize, 11);
  EXPECT_EQ(labelOf(folderNode("/a", 1), 181, 80).nameSize, 11);
}

TEST(TileLabel, the_name_is_a_point_higher_in_a_header_band) {
  TreemapRect rect = tileRect(folderNode("/a", 1), 100, 100);
  EXPECT_EQ(TileLabel::of(rect)->topPadding, 5);
  rect.nested = true;
  EXPECT_EQ(TileLabel::of(rect)->topPadding, 4);
}

}  // namespace
}  // namespace tessaly
