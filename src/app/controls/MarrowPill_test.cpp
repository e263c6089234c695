#include <gtest/gtest.h>

#include <QFontMetricsF>
#include <QTest>

#include "app/controls/PropertyTable.h"

namespace tessaly {
namespace {

const char* kPlain = "MarrowPill { text: \"Treemap\"; active: false }";
const char* kActive = "MarrowPill { text: \"Treemap\"; active: true }";

TEST(MarrowPill, an_inactive_pill_is_muted_and_regular) {
  const ControlScene scene(kPlain);
  expectProperties(scene, {{"label", "text", "Treemap"},
                           {"label", "color", "#9ca3af at 1.00"},
                           {"label", "font.pixelSize", 12},
                           {"label", "font.weight", QFont::Normal},
                           {"background", "color", "#ffffff at 0.04"},
                           {"background", "outlineColor", "#ffffff at 0.08"},
                           {"background", "outlineWidth", 1},
                           {"", "opacity", 1}});
}

TEST(MarrowPill, an_active_pill_has_its_tint_and_is_semibold) {
  const ControlScene scene(kActive);
  expectProperties(scene, {{"label", "color", "#007aff at 1.00"},
                           {"label", "font.pixelSize", 12},
                           {"label", "font.weight", QFont::DemiBold},
                           {"background", "color", "#007aff at 0.18"},
                           {"background", "outlineColor", "#007aff at 0.45"},
                           {"background", "outlineWidth", 1}});
}

TEST(MarrowPill, a_pill_follows_its_active_state) {
  const ControlScene scene(kPlain);
  scene.control()->setProperty("active", true);
  expectProperties(scene, {{"label", "color", "#007aff at 1.00"},
                           {"label", "font.weight", QFont::DemiBold},
                           {"background", "color", "#007aff at 0.18"}});
  scene.control()->setProperty("active", false);
  expectProperties(scene, {{"label", "color", "#9ca3af at 1.00"},
                           {"label", "font.weight", QFont::Normal},
                           {"background", "color", "#ffffff at 0.04"}});
}

TEST(MarrowPill, a_pill_has_its_tint_in_label_fill_and_outline) {
  const ControlScene scene("MarrowPill { text: \"A\"; active: true; tint: Theme.warning }");
  expectProperties(scene, {{"label", "color", "#ff9500 at 1.00"},
                           {"background", "color", "#ff9500 at 0.18"},
                           {"background", "outlineColor", "#ff9500 at 0.45"}});
}

TEST(MarrowPill, a_pill_has_11_points_beside_its_label_and_5_above_and_below) {
  const ControlScene scene(kPlain);
  const QQuickItem* label = scene.find("label");
  EXPECT_EQ(scene.control()->width(), std::ceil(label->implicitWidth()) + 22);
  EXPECT_EQ(scene.control()->height(), std::ceil(label->implicitHeight()) + 10);
  const QPointF corner = label->mapToItem(scene.control(), QPointF(0, 0));
  EXPECT_NEAR(corner.x(), 11, 0.51);
  EXPECT_EQ(corner.y(), 5);
}

TEST(MarrowPill, a_pill_is_a_capsule) {
  ControlScene scene(kActive);
  expectProperties(scene, {{"background", "radius", scene.control()->height() / 2}});
  EXPECT_EQ(scene.pixel(0, 0), QColor(0x12, 0x13, 0x18));
}

TEST(MarrowPill, a_pressed_pill_has_four_fifths_of_its_opacity) {
  ControlScene scene(kActive);
  scene.activate();
  const double middle = scene.control()->height() / 2;
  const QColor before = scene.pixel(6, middle);
  QTest::mousePress(&scene.view(), Qt::LeftButton, {}, scene.center());
  expectProperties(scene, {{"", "opacity", 0.8}});
  const QColor pressed = scene.pixel(6, middle);
  QTest::mouseRelease(&scene.view(), Qt::LeftButton, {}, scene.center());
  expectProperties(scene, {{"", "opacity", 1}});

  EXPECT_EQ(scene.pixel(6, middle), before);
  const auto faded = [](int full, int under) { return under + 0.8 * (full - under); };
  EXPECT_NEAR(pressed.red(), faded(before.red(), 0x12), 2);
  EXPECT_NEAR(pressed.green(), faded(before.green(), 0x13), 2);
  EXPECT_NEAR(pressed.blue(), faded(before.blue(), 0x18), 2);
  EXPECT_GT(before.blue(), pressed.blue());
}

TEST(MarrowPill, the_symbol_precedes_the_label_in_its_colour) {
  const ControlScene scene(
      "MarrowPill { text: \"Map\"; active: true; symbol: \"square.split.2x2\"; labelSize: 11\n"
      "labelWeight: Font.Medium }");
  expectProperties(scene, {{"symbol", "name", "square.split.2x2"},
                           {"symbol", "size", 11},
                           {"symbol", "color", "#007aff at 1.00"},
                           {"label", "font.pixelSize", 11},
                           {"label", "font.weight", QFont::Medium}});
  const QQuickItem* symbol = scene.find("symbol");
  EXPECT_LT(symbol->mapToScene(QPointF(symbol->width(), 0)).x(),
            scene.find("label")->mapToScene(QPointF(0, 0)).x());
}

TEST(MarrowPill, the_symbol_is_left_out_before_the_label_becomes_an_ellipsis) {
  const auto shown = [](int width) {
    const ControlScene scene(QStringLiteral("MarrowPill { width: %1; text: \"Warehouse\"; "
                                            "symbol: \"folder\"; active: false }")
                                 .arg(width));
    const QFontMetricsF metrics(scene.read("label", "font").value<QFont>());
    const double room = scene.read("label", "width").toDouble();
    return std::pair(
        scene.read("symbol", "visible").toBool(),
        metrics.elidedText(scene.read("label", "text").toString(), Qt::ElideRight, room)
            .toStdString());
  };
  EXPECT_EQ(shown(140), std::pair(true, std::string("Warehouse")));
  for (int width = 46; width < 110; ++width) {
    const auto [symbol, text] = shown(width);
    EXPECT_NE(text, "…") << width;
    EXPECT_NE(text, "") << width;
    EXPECT_TRUE(!symbol || width > 60) << width;
  }
}

}  // namespace
}  // namespace tessaly
