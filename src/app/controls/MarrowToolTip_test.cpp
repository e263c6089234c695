#include <gtest/gtest.h>

#include "app/controls/PropertyTable.h"

namespace tessaly {
namespace {

const QString corner = QStringLiteral(
    "Item { width: 20; height: 20\n"
    "MarrowToolTip { objectName: \"tip\"; text: \"<b>What</b> this does, in a few words\"\n"
    "delay: %1 } }");

// The text of the tip after the pointer has entered and the given time has passed, if it is shown.
QQuickItem* textIn(ControlScene& scene) {
  scene.activate();
  auto* tip = scene.control()->findChild<QObject*>("tip");
  if (tip == nullptr) return nullptr;
  tip->setProperty("visible", true);
  scene.picture();
  return tip->property("contentItem").value<QQuickItem*>();
}

TEST(MarrowToolTip, the_tip_is_above_its_control_within_the_window) {
  ControlScene scene(corner.arg(0));
  QQuickItem* text = textIn(scene);
  ASSERT_NE(text, nullptr);
  ASSERT_TRUE(text->isVisible());
  EXPECT_EQ(text->property("text"), "<b>What</b> this does, in a few words");
  EXPECT_EQ(text->property("textFormat").toInt(), Qt::PlainText);
  const QRectF words = text->mapRectToScene(QRectF(0, 0, text->width(), text->height()));
  EXPECT_GE(words.left(), 6);
  EXPECT_LE(words.bottom(), scene.control()->mapToScene(QPointF()).y());
  EXPECT_FALSE(text->property("truncated").toBool());
}

TEST(MarrowToolTip, the_tip_waits_for_the_pointer_to_rest) {
  const ControlScene scene("Item { MarrowToolTip { objectName: \"tip\" } }");
  auto* tip = scene.control()->findChild<QObject*>("tip");
  ASSERT_NE(tip, nullptr);
  EXPECT_EQ(tip->property("delay"), 600);
}

}  // namespace
}  // namespace tessaly
