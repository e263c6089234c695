#include <gtest/gtest.h>

#include "app/controls/PropertyTable.h"
#include "app/overlays/OverlayScene_test.h"

namespace tessaly {
namespace {

constexpr const char* questionText = R"(
    QuestionPanel {
        objectName: "question"
        anchors.fill: parent
        shown: scene.overlayShown
        panelWidth: 300
        firstControl: no
        onDismissed: ++scene.closes

        Column {
            topPadding: 20
            bottomPadding: 20

            Text { objectName: "words"; text: "Really?" }
            MarrowSecondaryButton { objectName: "yes"; width: 100; height: 30; text: "Yes" }
            MarrowSecondaryButton { id: no; objectName: "no"; width: 100; height: 30; text: "No" }
        }
    })";

class QuestionPanel : public testing::Test {
 protected:
  OverlayScene scene_{QString::fromLatin1(questionText)};
};

TEST_F(QuestionPanel, the_panel_is_as_high_as_its_content_in_the_middle_of_a_dimmed_window) {
  const QRectF panel = scene_.place("panel");
  EXPECT_EQ(panel.width(), 300);
  EXPECT_EQ(panel.height(), 100 + scene_.place("words").height());
  EXPECT_LE((panel.center() - QPointF(640, 410)).manhattanLength(), 1);
  EXPECT_EQ(scene_.place("dim"), QRectF(0, 0, 1280, 820));
  expectProperties(scene_, {{"dim", "color", "#000000 at 0.50"},
                            {"panel", "radius", 12},
                            {"panel", "color", "#181a22 at 1.00"},
                            {"panel", "outlineColor", "#ffffff at 0.14"},
                            {"panel", "shadowColor", "#000000 at 0.60"},
                            {"panel", "shadowRadius", 18},
                            {"panel", "shadowOffset", 8}});
}

TEST_F(QuestionPanel, the_first_control_gets_the_focus_each_time_the_panel_is_shown) {
  EXPECT_EQ(scene_.focused(), "no");
  scene_.press(Qt::Key_Tab);
  EXPECT_EQ(scene_.focused(), "yes");
  scene_.press(Qt::Key_Backtab, Qt::ShiftModifier);
  EXPECT_EQ(scene_.focused(), "no");
  scene_.press(Qt::Key_Tab);
  scene_.setOverlayShown(false);
  scene_.setOverlayShown(true);
  EXPECT_EQ(scene_.focused(), "no");
}

TEST_F(QuestionPanel, escape_and_a_click_beside_the_panel_dismiss_it_and_a_click_on_it_does_not) {
  scene_.click("words");
  EXPECT_EQ(scene_.count("closes"), 0);
  scene_.press(Qt::Key_Escape);
  EXPECT_EQ(scene_.count("closes"), 1);
  scene_.clickAt(QPoint(480, 400));
  EXPECT_EQ(scene_.count("closes"), 2);
  EXPECT_EQ(scene_.count("clicksBelow"), 0);
}

}  // namespace
}  // namespace tessaly
