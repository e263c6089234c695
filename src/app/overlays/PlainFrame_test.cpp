#include <gmock/gmock.h>

#include <QAccessible>
#include <QTest>

#include "app/controls/PropertyTable.h"
#include "app/overlays/OverlayScene_test.h"

namespace tessaly {
namespace {

// %1 is the value of isCard.
constexpr const char* frameText = R"(
    PlainFrame {
        objectName: "frame"
        anchors.fill: parent
        shown: scene.overlayShown
        title: "Duplicates <b>"
        isCard: %1
        onClosed: ++scene.closes

        MarrowSecondaryButton { objectName: "one"; x: 20; y: 20; text: "One" }
        MarrowSecondaryButton { objectName: "two"; x: 120; y: 20; text: "Two" }
    })";

class PlainFrame : public testing::TestWithParam<bool> {
 protected:
  explicit PlainFrame(bool isCard = GetParam())
      : isCard_(isCard), scene_(QString::fromLatin1(frameText).arg(isCard ? "true" : "false")) {}

  const bool isCard_;
  OverlayScene scene_;
};

TEST_P(PlainFrame, the_title_is_shown_as_plain_text) {
  expectProperties(scene_, {{"title", "text", "Duplicates <b>"},
                            {"title", "textFormat", Qt::PlainText},
                            {"title", "font.pixelSize", 15},
                            {"title", "font.weight", QFont::Bold},
                            {"title", "color", "#ffffff at 1.00"},
                            {"close/symbol", "name", "xmark"},
                            {"rule", "color", "#ffffff at 0.06"}});
}

TEST_P(PlainFrame, the_close_button_closes_the_frame) {
  scene_.click("close");
  EXPECT_EQ(scene_.count("closes"), 1);
}

TEST_P(PlainFrame, escape_closes_the_frame_from_any_control_in_it) {
  scene_.find("two")->forceActiveFocus();
  scene_.press(Qt::Key_Escape);
  EXPECT_EQ(scene_.count("closes"), 1);
}

TEST_P(PlainFrame, return_on_the_close_button_closes_the_frame) {
  scene_.find("two")->forceActiveFocus();
  scene_.press(Qt::Key_Tab);
  EXPECT_EQ(scene_.focused(), "close");
  EXPECT_TRUE(scene_.shows("focusRing"));
  scene_.press(Qt::Key_Return);
  EXPECT_EQ(scene_.count("closes"), 1);
}

TEST_P(PlainFrame, the_frame_stays_visible_until_its_owner_hides_it) {
  scene_.click("close");
  EXPECT_TRUE(scene_.shows("frame"));
  scene_.setOverlayShown(false);
  EXPECT_FALSE(scene_.shows("frame"));
  EXPECT_EQ(scene_.focused(), "");
}

TEST_P(PlainFrame, the_content_is_below_the_title) {
  const QRectF body = scene_.place("body");
  EXPECT_EQ(scene_.place("one").topLeft(), body.topLeft() + QPointF(20, 20));
  EXPECT_EQ(body.top(), scene_.place("surface").top() + 49);
  EXPECT_EQ(body.bottom(), scene_.place("surface").bottom());
}

TEST_P(PlainFrame, the_frame_is_accessible_with_its_title_as_name) {
  QAccessible::setActive(true);
  QAccessibleInterface* frame = QAccessible::queryAccessibleInterface(scene_.find("frame"));
  ASSERT_NE(frame, nullptr);
  EXPECT_EQ(frame->text(QAccessible::Name), "Duplicates <b>");
  EXPECT_EQ(frame->role(), isCard_ ? QAccessible::Dialog : QAccessible::Pane);
  QAccessibleInterface* close = QAccessible::queryAccessibleInterface(scene_.find("close"));
  ASSERT_NE(close, nullptr);
  EXPECT_EQ(close->text(QAccessible::Name), "Close");
}

INSTANTIATE_TEST_SUITE_P(Pane, PlainFrame, testing::Values(false));
INSTANTIATE_TEST_SUITE_P(Card, PlainFrame, testing::Values(true));

class PlainPane : public PlainFrame {
 protected:
  PlainPane() : PlainFrame(false) {}
};

TEST_F(PlainPane, a_pane_fills_its_area_and_blocks_no_input) {
  EXPECT_EQ(scene_.place("surface"), QRectF(0, 0, 1280, 820));
  EXPECT_FALSE(scene_.shows("dim"));
  EXPECT_EQ(scene_.focused(), "below");
  expectProperties(scene_, {{"surface", "color", "#121318 at 1.00"}, {"surface", "radius", 0}});
  scene_.press(Qt::Key_A);
  EXPECT_EQ(scene_.count("keysBelow"), 1);
  scene_.find("one")->forceActiveFocus();
  scene_.press(Qt::Key_A);
  EXPECT_EQ(scene_.count("keysBelow"), 2);
}

class PlainCard : public PlainFrame {
 protected:
  PlainCard() : PlainFrame(true) {}
};

TEST_F(PlainCard, the_card_is_560_by_420_in_the_middle_of_a_dimmed_window) {
  EXPECT_EQ(scene_.place("surface"), QRectF(360, 200, 560, 420));
  EXPECT_EQ(scene_.place("dim"), QRectF(0, 0, 1280, 820));
  expectProperties(scene_, {{"dim", "color", "#000000 at 0.35"},
                            {"surface", "color", "#181a22 at 1.00"},
                            {"surface", "radius", 12},
                            {"surface", "outlineColor", "#ffffff at 0.14"}});
}

TEST_F(PlainCard, the_card_has_the_focus_and_tab_stays_in_it) {
  EXPECT_EQ(scene_.focused(), "one");
  for (const char* next : {"two", "close", "one", "two"}) {
    scene_.press(Qt::Key_Tab);
    EXPECT_EQ(scene_.focused().toStdString(), next);
  }
  for (const char* previous : {"one", "close", "two"}) {
    scene_.press(Qt::Key_Backtab, Qt::ShiftModifier);
    EXPECT_EQ(scene_.focused().toStdString(), previous);
  }
}

TEST_F(PlainCard, the_focus_returns_to_its_item_when_the_card_is_hidden) {
  scene_.setOverlayShown(false);
  scene_.find("below")->forceActiveFocus();
  scene_.setOverlayShown(true);
  EXPECT_EQ(scene_.focused(), "one");
  scene_.setOverlayShown(false);
  EXPECT_EQ(scene_.focused(), "below");
}

TEST_F(PlainCard, a_click_beside_the_card_closes_it_and_one_on_it_does_not) {
  scene_.clickAt(QPoint(640, 550));
  scene_.click("title");
  EXPECT_EQ(scene_.count("closes"), 0);
  scene_.clickAt(QPoint(350, 400));
  EXPECT_EQ(scene_.count("closes"), 1);
  EXPECT_EQ(scene_.count("clicksBelow"), 0);
}

TEST_F(PlainCard, keys_and_wheel_do_not_pass_through_the_card) {
  for (const QPoint point : {QPoint(20, 20), QPoint(640, 550)}) {
    QWheelEvent turn(point, scene_.view().mapToGlobal(point), {}, QPoint(0, 120), Qt::NoButton,
                     Qt::NoModifier, Qt::NoScrollPhase, false);
    QCoreApplication::sendEvent(&scene_.view(), &turn);
  }
  scene_.press(Qt::Key_A);
  EXPECT_EQ(scene_.count("turnsBelow"), 0);
  EXPECT_EQ(scene_.count("keysBelow"), 0);
}

}  // namespace
}  // namespace tessaly
