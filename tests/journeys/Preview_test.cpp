// Looking into a file from the map: with the panel of a fake, and with the real one over real
// files.
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

TEST_F(Preview, of_what_has_the_focus_comes_with_space) {
  hoverAt(tilePoint("caf\xE9.zip"));
  press(Qt::Key_Space);
  hoverAt(tilePoint("notes.txt"));
  press(Qt::Key_Space);
  EXPECT_THAT(machine_.previewPanel.shown,
              ElementsAre(EndsWith("/caf%E9.zip"), EndsWith("/notes.txt")));
}

TEST_F(Preview, comes_before_the_button_that_has_the_keyboard) {
  hoverAt(tilePoint("notes.txt"));
  tabTo("heatmap");
  press(Qt::Key_Space);
  EXPECT_FALSE(session().shown().heatmap());
  EXPECT_THAT(machine_.previewPanel.shown, ElementsAre(EndsWith("/notes.txt")));
  press(Qt::Key_Return);
  EXPECT_TRUE(session().shown().heatmap());
}

TEST_F(Preview, leaves_space_to_the_buttons_while_nothing_has_the_focus) {
  session().selection().setFocused(std::nullopt);
  tabTo("heatmap");
  press(Qt::Key_Space);
  EXPECT_TRUE(session().shown().heatmap());
  EXPECT_THAT(machine_.previewPanel.shown, IsEmpty());
}

TEST_F(Preview, does_not_come_under_a_question) {
  hoverAt(tilePoint("notes.txt"));
  session().shown().setMenuNode(session().selection().focused());
  settle(window());
  press(Qt::Key_Space);
  EXPECT_THAT(machine_.previewPanel.shown, IsEmpty());
  EXPECT_FALSE(shows("nodeMenu"));  // it pressed the first answer
}

// The panel that the program makes by itself.
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

TEST_F(RealPreview, opens_over_the_window_and_goes_with_space) {
  hoverAt(tilePoint("notes.txt"));
  press(Qt::Key_Space);
  dispatch_.drainAll();
  ASSERT_NE(panel(), nullptr);
  EXPECT_EQ(panel()->title(), QStringLiteral("notes.txt"));
  ASSERT_TRUE(QTest::qWaitFor([] { return QGuiApplication::focusWindow() == panel(); }));
  QTest::keyClick(panel(), Qt::Key_Space);
  EXPECT_EQ(panel(), nullptr);
}

// What the file holds is a picture, which another program reads.
TEST_F(RealPreview, shows_a_picture) {
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

TEST_F(RealPreview, shows_what_is_in_a_folder) {
  session().shown().setMenuNode(session().navigation().current()->children()[0]);
  settle(window());
  click("menuQuickLook");
  dispatch_.drainAll();
  ASSERT_NE(panel(), nullptr);
  EXPECT_EQ(panel()->title(), QStringLiteral("Movies"));
}

}  // namespace
}  // namespace tessaly
