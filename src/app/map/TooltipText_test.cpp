#include "app/map/TooltipText.h"

#include <gtest/gtest.h>

#include "app/map/SampleTiles_test.h"

namespace tessaly {
namespace {

constexpr double now = 1'700'000'000;

TreemapRect under(std::int64_t parentSize, const DiskNode& node) {
  TreemapRect rect{node};
  rect.parentSize = parentSize;
  return rect;
}

TEST(TooltipText, texts_of_a_file_are_name_size_kind_share_and_path) {
  const auto text =
      TooltipText::of(under(4096, fileNode("/home/film.mp4", 1024, FileKind::video)), false, now);
  EXPECT_EQ(text.name, "film.mp4");
  EXPECT_EQ(text.size, "1.0 KB");
  EXPECT_EQ(text.facts, "Video · 25.0% of parent");
  EXPECT_EQ(text.path, "/home/film.mp4");
}

TEST(TooltipText, texts_of_a_folder_count_its_direct_children) {
  const DiskNode folder = folderNode(
      "/a", 50, {folderNode("/a/b", 30, {fileNode("/a/b/c", 20)}), fileNode("/a/d", 10)});
  EXPECT_EQ(TooltipText::of(under(100, folder), false, now).facts,
            "Folder · 50.0% of parent · 2 items");
  EXPECT_EQ(TooltipText::of(under(100, folderNode("/e", 50)), false, now).facts,
            "Folder · 50.0% of parent · 0 items");
}

TEST(TooltipText, the_share_is_left_out_if_the_parent_has_no_size) {
  EXPECT_EQ(TooltipText::of(under(0, fileNode("/a", 5)), false, now).facts, "File");
  EXPECT_EQ(TooltipText::of(under(0, folderNode("/a", 5)), false, now).facts, "Folder · 0 items");
}

TEST(TooltipText, the_share_is_rounded_to_one_decimal) {
  EXPECT_EQ(TooltipText::of(under(3000, fileNode("/a", 1000)), false, now).facts,
            "File · 33.3% of parent");
  // Small files count more in their parent than their size, so a share may exceed 100 %.
  EXPECT_EQ(TooltipText::of(under(1000, fileNode("/a", 1500)), false, now).facts,
            "File · 150.0% of parent");
}

TEST(TooltipText, the_age_is_shown_only_while_the_map_shows_ages) {
  const TreemapRect rect = under(10, fileNode("/a", 5, FileKind::other, now - 3 * 86400));
  EXPECT_FALSE(TooltipText::of(rect, false, now).age.has_value());
  EXPECT_EQ(TooltipText::of(rect, true, now).age, "3 days ago");
}

TEST(TooltipText, an_unknown_time_is_shown_as_unknown) {
  EXPECT_EQ(TooltipText::of(under(10, fileNode("/a", 5)), true, now).age, "Unknown date");
}

TEST(TooltipText, names_and_paths_keep_their_bytes) {
  const auto text = TooltipText::of(under(10, fileNode("/caf\xE9", 5)), false, now);
  EXPECT_EQ(text.name, "caf\xE9");
  EXPECT_EQ(text.path, "/caf\xE9");
}

}  // namespace
}  // namespace tessaly
