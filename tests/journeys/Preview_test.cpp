// Previews of files on the map: with a fake panel, and with the real one and real files.
#include <gmock/gmock.h>
#include <memory>

#include <QTest>

#include "app/preview/PreviewReader.h"
#include "app/quicklook/PreviewWindow.h"
#include "journeys/Journey.h"
#include "support/PreviewFile.h"
#include "support/WindowItems.h"

namespace tessaly {
namespace {

using testing::ElementsAre;
using testing::EndsWith;
using testing::IsEmpty;

constexpr const char* files =
    "Movies/\n"
    "  beach.mp4 6M\n"
    "notes.txt 2M\n"
    "caf\\xE9.zip 2M\n";

class Preview : public Journey {
 protected:
  Preview() : Journey(files) {
    session().scanHome();
    finishScan();
  }
};

TEST_F(Preview, space_previews_the_focused_item) {
  hoverAt(tilePoint("caf\xE9.zip"));
  press(Qt::Key_Space);
  hoverAt(tilePoint("notes.txt"));
  press(Qt::Key_Space);
  EXPECT_THAT(machine_.previewPanel.shown,
              ElementsAre(EndsWith("/caf%E9.zip"), EndsWith("/notes.txt")));
}

TEST_F(Preview, space_previews_even_if_a_button_has_the_keyboard_focus) {
  hoverAt(tilePoint("notes.txt"));
  tabTo("heatmap");
  press(Qt::Key_Space);
  EXPECT_FALSE(session().shown().heatmap());
  EXPECT_THAT(machine_.previewPanel.shown, ElementsAre(EndsWith("/notes.txt")));
  press(Qt::Key_Return);
  EXPECT_TRUE(session().shown().heatmap());
}

TEST_F(Preview, space_presses_buttons_while_no_item_has_the_focus) {
  session().selection().setFocused(std::nullopt);
  tabTo("heatmap");
  press(Qt::Key_Space);
  EXPECT_TRUE(session().shown().heatmap());
  EXPECT_THAT(machine_.previewPanel.shown, IsEmpty());
}

TEST_F(Preview, space_does_not_preview_under_a_question) {
  hoverAt(tilePoint("notes.txt"));
  session().shown().setMenuNode(session().selection().focused());
  settle(window());
  press(Qt::Key_Space);
  EXPECT_THAT(machine_.previewPanel.shown, IsEmpty());
  EXPECT_FALSE(shows("nodeMenu"));  // space pressed the first button
}

// The program's own panel.
class RealPreview : public Journey {
 protected:
  RealPreview()
      : Journey(files, [](Application::Services& services) { services.previewPanel = nullptr; }) {
    session().scanHome();
    finishScan();
  }

  static QWindow* panel() {
    for (QWindow* window : QGuiApplication::topLevelWindows()) {
      if (window->objectName() == "quickLookWindow" && window->isVisible()) return window;
    }
    return nullptr;
  }
};

TEST_F(RealPreview, the_panel_opens_over_the_window_and_space_closes_it) {
  hoverAt(tilePoint("notes.txt"));
  press(Qt::Key_Space);
  dispatch_.drainAll();
  ASSERT_NE(panel(), nullptr);
  EXPECT_EQ(panel()->title(), QStringLiteral("notes.txt"));
  ASSERT_TRUE(QTest::qWaitFor([] { return QGuiApplication::focusWindow() == panel(); }));
  QTest::keyClick(panel(), Qt::Key_Space);
  EXPECT_EQ(panel(), nullptr);
}

// The file contains a picture, which another process reads.
TEST_F(RealPreview, the_panel_shows_a_picture) {
  putFile(tree_.at("notes.txt"), encoded(quarters(64, 32), "png"));
  hoverAt(tilePoint("notes.txt"));
  press(Qt::Key_Space);
  dispatch_.drainAll();
  ASSERT_NE(panel(), nullptr);
  auto& shown = *qobject_cast<QQuickWindow*>(panel());
  settle(shown);
  const QQuickItem* picture = itemNamed(shown, "picture");
  ASSERT_NE(picture, nullptr);
  EXPECT_EQ(picture->implicitWidth(), 64);
}

TEST_F(RealPreview, the_panel_shows_the_contents_of_a_folder) {
  session().shown().setMenuNode(session().navigation().current()->children()[0]);
  settle(window());
  click("menuQuickLook");
  dispatch_.drainAll();
  ASSERT_NE(panel(), nullptr);
  EXPECT_EQ(panel()->title(), QStringLiteral("Movies"));
}

}  // namespace
}  // namespace tessaly
