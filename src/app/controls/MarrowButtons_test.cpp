#include <gtest/gtest.h>

#include <QTest>

#include "app/controls/PropertyTable.h"

namespace tessaly {
namespace {

const char* kPrimary = "MarrowPrimaryButton { text: \"Scan Home Folder\" }";
const char* kSecondary = "MarrowSecondaryButton { text: \"Choose Folder…\" }";

void expectPadding(const ControlScene& scene, double side, double top) {
  const QQuickItem* label = scene.find("label");
  EXPECT_EQ(scene.control()->width(), std::ceil(label->implicitWidth()) + 2 * side);
  EXPECT_EQ(scene.control()->height(), std::ceil(label->implicitHeight()) + 2 * top);
}

TEST(MarrowPrimaryButton, a_primary_button_has_a_white_semibold_label_on_a_glowing_blue_gradient) {
  const ControlScene scene(kPrimary);
  expectProperties(scene, {{"label", "text", "Scan Home Folder"},
                           {"label", "color", "#ffffff at 1.00"},
                           {"label", "font.pixelSize", 13},
                           {"label", "font.weight", QFont::DemiBold},
                           {"background", "radius", 8},
                           {"background", "color", "#007aff at 1.00"},
                           {"background", "endColor", "#0056b3 at 1.00"},
                           {"background", "outlineColor", "#ffffff at 0.18"},
                           {"background", "outlineWidth", 1},
                           {"background", "shadowColor", "#007aff at 0.35"},
                           {"background", "shadowRadius", 6},
                           {"background", "shadowOffset", 2},
                           {"", "opacity", 1}});
  expectPadding(scene, 14, 8);
}

TEST(MarrowPrimaryButton, a_pressed_primary_button_fades_and_glows_less) {
  ControlScene scene(kPrimary);
  scene.activate();
  QTest::mousePress(&scene.view(), Qt::LeftButton, {}, scene.center());
  expectProperties(scene,
                   {{"", "opacity", 0.75}, {"background", "shadowColor", "#007aff at 0.15"}});
  QTest::mouseRelease(&scene.view(), Qt::LeftButton, {}, scene.center());
  expectProperties(scene, {{"", "opacity", 1}, {"background", "shadowColor", "#007aff at 0.35"}});
}

TEST(MarrowPrimaryButton, a_disabled_primary_button_has_three_quarters_of_its_opacity) {
  ControlScene scene("MarrowPrimaryButton { text: \"Scan\"; enabled: false }");
  expectProperties(scene,
                   {{"", "opacity", 0.75}, {"background", "shadowColor", "#007aff at 0.35"}});
  // Half-way down its left padding the fill is half-way between the gradient's ends.
  const QColor color = scene.pixel(6, scene.control()->height() / 2);
  EXPECT_NEAR(color.red(), 0.25 * 0x12, 3);
  EXPECT_NEAR(color.green(), 0.25 * 0x13 + 0.75 * (0x7A + 0x56) / 2, 4);
  EXPECT_NEAR(color.blue(), 0.25 * 0x18 + 0.75 * (0xFF + 0xB3) / 2, 4);
}

TEST(MarrowPrimaryButton, the_glow_of_a_primary_button_is_stronger_below_than_above) {
  ControlScene scene(kPrimary);
  const double middle = scene.control()->width() / 2;
  const int above = scene.pixel(middle, -4).blue();
  const int below = scene.pixel(middle, scene.control()->height() + 3).blue();
  EXPECT_GT(above, 0x18 + 5);
  EXPECT_GT(below, above);
}

TEST(MarrowSecondaryButton, a_secondary_button_has_a_medium_label_on_the_colour_of_fields) {
  const ControlScene scene(kSecondary);
  expectProperties(scene, {{"label", "color", "#ffffff at 1.00"},
                           {"label", "font.pixelSize", 12},
                           {"label", "font.weight", QFont::Medium},
                           {"background", "radius", 8},
                           {"background", "color", "#232530 at 1.00"},
                           {"background", "outlineColor", "#ffffff at 0.09"},
                           {"background", "outlineWidth", 1},
                           {"background", "shadowColor", "#000000 at 0.00"},
                           {"", "opacity", 1}});
  expectPadding(scene, 12, 7);
}

TEST(MarrowSecondaryButton, a_pressed_secondary_button_fades) {
  ControlScene scene(kSecondary);
  scene.activate();
  QTest::mousePress(&scene.view(), Qt::LeftButton, {}, scene.center());
  expectProperties(scene, {{"", "opacity", 0.75}});
  QTest::mouseRelease(&scene.view(), Qt::LeftButton, {}, scene.center());
  expectProperties(scene, {{"", "opacity", 1}});
}

TEST(MarrowActionButton, an_action_button_changes_between_primary_and_secondary) {
  const ControlScene scene("MarrowActionButton { text: \"Relaunch\"; isPrimary: false }");
  expectPadding(scene, 12, 7);
  scene.control()->setProperty("isPrimary", true);
  expectProperties(scene, {{"label", "font.pixelSize", 13},
                           {"label", "font.weight", QFont::DemiBold},
                           {"background", "endColor", "#0056b3 at 1.00"},
                           {"background", "shadowColor", "#007aff at 0.35"}});
  expectPadding(scene, 14, 8);
  scene.control()->setProperty("isPrimary", false);
  expectProperties(scene, {{"background", "color", "#232530 at 1.00"},
                           {"background", "endColor", "#232530 at 1.00"},
                           {"background", "outlineColor", "#ffffff at 0.09"},
                           {"background", "shadowColor", "#000000 at 0.00"}});
  expectPadding(scene, 12, 7);
}

TEST(MarrowCard, a_card_has_its_content_on_a_raised_background) {
  ControlScene scene(
      "MarrowCard { radius: 12; strokeOpacity: 0.07; padding: 10\n"
      "contentItem: Item { objectName: \"content\"; implicitWidth: 60; implicitHeight: 30 } }");
  expectProperties(scene, {{"background", "radius", 12},
                           {"background", "color", "#181a22 at 1.00"},
                           {"background", "outlineColor", "#ffffff at 0.07"},
                           {"background", "outlineWidth", 1},
                           {"background", "shadowColor", "#000000 at 0.35"},
                           {"background", "shadowRadius", 8},
                           {"background", "shadowOffset", 3},
                           {"", "width", 80},
                           {"", "height", 50}});
  EXPECT_EQ(scene.find("content")->mapToItem(scene.control(), QPointF(0, 0)), QPointF(10, 10));
  EXPECT_EQ(scene.pixel(40, 25), QColor(0x18, 0x1A, 0x22));
}

}  // namespace
}  // namespace tessaly
