#include "app/controls/Theme.h"

#include <gtest/gtest.h>

#include "app/controls/PropertyTable.h"

namespace tessaly {
namespace {

TEST(Theme, gives_views_every_named_colour) {
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

TEST(Theme, gives_views_the_folder_palette_in_its_order) {
  const QList<QColor> palette = Theme().folderPalette();
  ASSERT_EQ(palette.size(), 15);
  EXPECT_EQ(palette.first(), QColor(0x3B, 0x82, 0xF6));
  EXPECT_EQ(palette.last(), QColor(0xBE, 0x18, 0x5D));
}

TEST(Theme, is_one_object_that_qml_reads_by_name) {
  const ControlScene scene("Text { color: Theme.accent; font.family: Theme.monoFamily }");
  expectProperties(scene, {{"", "color", "#007aff at 1.00"},
                           {"", "font.family", Fonts::family(Fonts::Voice::mono)}});
}

TEST(QtColor, keeps_the_opacity) {
  EXPECT_EQ(describe(toQColor(MarrowTheme::accent.atOpacity(0.18))), "#007aff at 0.18");
}

}  // namespace
}  // namespace tessaly
