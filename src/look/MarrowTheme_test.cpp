#include "look/MarrowTheme.h"

#include <algorithm>
#include <array>
#include <cstddef>
#include <cstdint>
#include <gtest/gtest.h>
#include <string>

namespace tessaly {
namespace {

TEST(Color, the_channels_are_read_from_a_hexadecimal_number) {
  EXPECT_EQ(Color::fromRgb(0x123456), (Color{0x12, 0x34, 0x56, 1}));
}

TEST(Color, opacities_are_multiplied) {
  const Color faint = Color{1, 2, 3, 0.5}.atOpacity(0.5);
  EXPECT_EQ(faint, (Color{1, 2, 3, 0.25}));
}

TEST(MarrowTheme, the_named_colours_have_their_values) {
  EXPECT_EQ(MarrowTheme::bg, (Color{0x12, 0x13, 0x18}));
  EXPECT_EQ(MarrowTheme::bg2, (Color{0x18, 0x1A, 0x22}));
  EXPECT_EQ(MarrowTheme::bg3, (Color{0x23, 0x25, 0x30}));
  EXPECT_EQ(MarrowTheme::ink, (Color{255, 255, 255}));
  EXPECT_EQ(MarrowTheme::secondary, (Color{0xE5, 0xE7, 0xEB}));
  EXPECT_EQ(MarrowTheme::muted, (Color{0x9C, 0xA3, 0xAF}));
  EXPECT_EQ(MarrowTheme::accent, (Color{0, 122, 255}));
  EXPECT_EQ(MarrowTheme::accent2, (Color{139, 92, 246}));
  EXPECT_EQ(MarrowTheme::success, (Color{0x34, 0xC7, 0x59}));
  EXPECT_EQ(MarrowTheme::warning, (Color{0xFF, 0x95, 0x00}));
  EXPECT_EQ(MarrowTheme::error, (Color{0xFF, 0x3B, 0x30}));
  EXPECT_EQ(MarrowTheme::cyan, (Color{0x06, 0xB6, 0xD4}));
  EXPECT_EQ(MarrowTheme::highlight, (Color{0xFF, 0x95, 0x00}));
  EXPECT_EQ(MarrowTheme::video, (Color{59, 130, 246}));
  EXPECT_EQ(MarrowTheme::image, (Color{245, 158, 11}));
  EXPECT_EQ(MarrowTheme::document, (Color{139, 92, 246}));
  EXPECT_EQ(MarrowTheme::developer, (Color{34, 197, 94}));
  EXPECT_EQ(MarrowTheme::archive, (Color{239, 68, 68}));
  EXPECT_EQ(MarrowTheme::other, (Color{107, 114, 128}));
}

TEST(MarrowTheme, the_palette_of_folders_has_three_shades_of_five_hues) {
  const std::array<std::string, 15> expected = {"3B82F6", "2563EB", "1D4ED8", "10B981", "059669",
                                                "047857", "F59E0B", "D97706", "B45309", "8B5CF6",
                                                "7C3AED", "6D28D9", "EC4899", "DB2777", "BE185D"};
  for (std::size_t k = 0; k < expected.size(); ++k) {
    const auto rgb = static_cast<std::uint32_t>(std::stoul(expected[k], nullptr, 16));
    EXPECT_EQ(MarrowTheme::folderPalette[k], Color::fromRgb(rgb)) << k;
  }
}

TEST(FolderColor, a_sum_divisible_by_15_gives_the_first_colour) {
  EXPECT_EQ(MarrowTheme::folderColor("Z"), MarrowTheme::folderPalette[0]);   // sum 90
  EXPECT_EQ(MarrowTheme::folderColor("ZZ"), MarrowTheme::folderPalette[0]);  // sum 180
  EXPECT_EQ(MarrowTheme::folderColor(""), MarrowTheme::folderPalette[0]);
}

TEST(FolderColor, the_index_is_the_sum_of_the_characters_modulo_15) {
  EXPECT_EQ(MarrowTheme::folderColor("src"), MarrowTheme::folderPalette[(115 + 114 + 99) % 15]);
  // The values of whole characters, not of their bytes.
  EXPECT_EQ(MarrowTheme::folderColor("\u00e9"), MarrowTheme::folderPalette[0xE9 % 15]);
  EXPECT_EQ(MarrowTheme::folderColor("\U0001F4C1"), MarrowTheme::folderPalette[0x1F4C1 % 15]);
}

TEST(FolderColor, the_colour_does_not_depend_on_the_order_of_letters) {
  EXPECT_EQ(MarrowTheme::folderColor("listen"), MarrowTheme::folderColor("silent"));
}

TEST(FolderColor, upper_and_lower_case_have_different_colours) {
  // 97 and 65 differ by 32, which is 2 modulo 15.
  EXPECT_EQ(MarrowTheme::folderColor("a"), MarrowTheme::folderPalette[7]);
  EXPECT_EQ(MarrowTheme::folderColor("A"), MarrowTheme::folderPalette[5]);
}

TEST(FolderColor, bytes_that_are_not_utf8_give_a_fixed_colour_of_the_palette) {
  const std::string bytes = "\xff\xfe\x80";
  const Color color = MarrowTheme::folderColor(bytes);
  EXPECT_EQ(color, MarrowTheme::folderColor(bytes));
  EXPECT_NE(std::find(MarrowTheme::folderPalette.begin(), MarrowTheme::folderPalette.end(), color),
            MarrowTheme::folderPalette.end());
}

}  // namespace
}  // namespace tessaly
