#include "app/controls/Theme.h"

#include <gtest/gtest.h>

#include "app/controls/PropertyTable.h"

namespace tessaly {
namespace {

TEST(Theme, views_get_every_named_colour) {
  const Theme theme;
  const std::pair<const char*, Color> rows[] = {{"bg", MarrowTheme::bg},
                                                {"bg2", MarrowTheme::bg2},
                                                {"bg3", MarrowTheme::bg3},
                                                {"ink", MarrowTheme::ink},
                                                {"secondary", MarrowTheme::secondary},
                                                {"muted", MarrowTheme::muted},
                                                {"accent", MarrowTheme::accent},
                                                {"accent2", MarrowTheme::accent2},
                                                {"success", MarrowTheme::success},
                                                {"warning", MarrowTheme::warning},
                                                {"error", MarrowTheme::error},
                                                {"cyan", MarrowTheme::cyan},
                                                {"highlight", MarrowTheme::highlight},
                                                {"video", MarrowTheme::video},
                                                {"image", MarrowTheme::image},
                                                {"document", MarrowTheme::document},
                                                {"developer", MarrowTheme::developer},
                                                {"archive", MarrowTheme::archive},
                                                {"other", MarrowTheme::other}};
  for (const auto& [name, color] : rows) {
    const QVariant value = theme.property(name);
    ASSERT_TRUE(value.isValid()) << name;
    EXPECT_EQ(value.value<QColor>(), QColor(color.red, color.green, color.blue)) << name;
  }
}

TEST(Theme, views_get_the_colours_by_their_role) {
  const Theme theme;
  const std::pair<const char*, const char*> rows[] = {
      {"accentDeep", "#0056b3 at 1.00"},       {"indigo", "#5856d6 at 1.00"},
      {"faintHairline", "#ffffff at 0.05"},    {"hairline", "#ffffff at 0.06"},
      {"strongHairline", "#ffffff at 0.12"},   {"separator", "#ffffff at 0.08"},
      {"chipOutline", "#ffffff at 0.06"},      {"controlOutline", "#ffffff at 0.08"},
      {"secondaryOutline", "#ffffff at 0.09"}, {"primaryOutline", "#ffffff at 0.18"},
      {"queueOutline", "#ffffff at 0.10"},     {"floatOutline", "#ffffff at 0.12"},
      {"panelOutline", "#ffffff at 0.14"},     {"faintFill", "#ffffff at 0.02"},
      {"chipFill", "#ffffff at 0.03"},         {"softFill", "#ffffff at 0.04"},
      {"buttonFill", "#ffffff at 0.06"},       {"badgeFill", "#ffffff at 0.06"},
      {"hoverFill", "#ffffff at 0.08"},        {"keyCapFill", "#ffffff at 0.08"},
      {"switchTrack", "#ffffff at 0.14"},      {"dim", "#000000 at 0.35"},
      {"deepDim", "#000000 at 0.50"},          {"cardShadow", "#000000 at 0.35"},
      {"queueShadow", "#000000 at 0.45"},      {"floatShadow", "#000000 at 0.50"},
      {"panelShadow", "#000000 at 0.60"},      {"windowClose", "#ff5f57 at 1.00"},
      {"windowMinimise", "#febc2e at 1.00"},   {"windowZoom", "#28c840 at 1.00"},
      {"windowSymbol", "#000000 at 0.65"},     {"windowOutline", "#000000 at 0.20"}};
  for (const auto& [name, color] : rows)
    EXPECT_EQ(describe(theme.property(name).value<QColor>()), color) << name;
}

TEST(Theme, views_get_the_folder_palette_in_its_order) {
  const QList<QColor> palette = Theme().folderPalette();
  ASSERT_EQ(palette.size(), 15);
  EXPECT_EQ(palette.first(), QColor(0x3B, 0x82, 0xF6));
  EXPECT_EQ(palette.last(), QColor(0xBE, 0x18, 0x5D));
}

TEST(Theme, qml_reads_the_theme_as_a_singleton) {
  const ControlScene scene("Text { color: Theme.accent; font.family: Theme.monoFamily }");
  expectProperties(scene, {{"", "color", "#007aff at 1.00"},
                           {"", "font.family", Fonts::family(Fonts::Voice::mono)}});
}

TEST(QtColor, the_opacity_of_a_colour_is_kept) {
  EXPECT_EQ(describe(toQColor(MarrowTheme::accent.atOpacity(0.18))), "#007aff at 0.18");
}

}  // namespace
}  // namespace tessaly
