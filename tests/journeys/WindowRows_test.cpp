// Rows of the window that may be too long for it, and the focus rings.
#include <QQuickItem>
#include <QTest>

#include "journeys/Journey.h"
#include "support/PointerMoves.h"
#include "support/WindowItems.h"

namespace tessaly {
namespace {

// A few letters and the padding behind them.
constexpr double leastShown = 40;

class WindowRows : public Journey {
 protected:
  WindowRows()
      : Journey(
            "First-of-the-folders-that-lead-down/\n"
            "  Second/\n"
            "    3/\n"
            "      Fourth-of-the-folders-that-lead-down/\n"
            "        Fifth-of-the-folders-that-lead-down/\n"
            "          Sixth-of-the-folders-that-lead-down/\n"
            "            Seventh-of-the-folders-that-lead-down/\n"
            "              film.mp4 6M\n"
            "              song.mp3 2M\n") {
    window().resize(1100, 680);
    session().scanHome();
    finishScan();
  }

  void goDown() {
    while (session().navigation().current()->children()[0].isDir())
      session().open(session().navigation().current()->children()[0]);
    settle(window());
  }
  void select() {
    session().selection().selectNodes({session().navigation().current()->children()[0]}, false);
    settle(window());
  }

  static QRectF rectOf(const QQuickItem* item) {
    return item->mapRectToScene(QRectF(0, 0, item->width(), item->height()));
  }

  static void collectButtons(QQuickItem* item, std::vector<QQuickItem*>& found) {
    if (!item->isVisible()) return;
    if (item->inherits("QQuickAbstractButton")) found.push_back(item);
    for (QQuickItem* child : item->childItems()) collectButtons(child, found);
  }
  std::vector<QQuickItem*> buttonsOf(const QString& row) {
    std::vector<QQuickItem*> found;
    if (QQuickItem* const scroller = item(row)) collectButtons(scroller, found);
    return found;
  }

  void expectNoneCutToALetter(const QString& row) {
    const QRectF sight = rectOf(item(row));
    for (const QQuickItem* button : buttonsOf(row)) {
      const QRectF rect = rectOf(button);
      if (rect.left() >= sight.left() || rect.right() <= sight.left()) continue;
      EXPECT_GE(rect.right() - sight.left(), leastShown)
          << button->property("text").toString().toStdString() << " in a window of "
          << window().width();
    }
  }

  void turnWheel(const QString& row, int angle) {
    tessaly::turnWheel(window(), rectOf(item(row)).center(), {0, angle});
    settle(window());
  }

  void pullByFinger(QPoint from, QPoint by) {
    tessaly::pullByFinger(window(), from, by);
    settle(window());
  }
  // Expects that the focus ring, if there is one, is not cut off by the window or by the container
  // of its control.
  void expectWholeRing() {
    const auto rings = itemsNamed(window().contentItem(), "focusRing");
    ASSERT_LE(rings.size(), 1U);
    if (rings.empty()) return;
    const QRectF ring = rectOf(rings.front());
    QRectF seen = ring & QRectF(QPointF(), QSizeF(window().size()));
    for (const QQuickItem* above = rings.front()->parentItem(); above != nullptr;
         above = above->parentItem()) {
      if (above->clip()) seen = seen & rectOf(above);
    }
    EXPECT_EQ(seen, ring) << window().activeFocusItem()->objectName().toStdString();
  }

  // Presses Tab until it returns to the first control, and returns the number of controls with a
  // ring.
  int goAround() {
    constexpr int mostStops = 200;
    int rings = 0;
    press(Qt::Key_Tab);
    const QQuickItem* const first = window().activeFocusItem();
    for (int stop = 0; stop < mostStops; ++stop) {
      expectWholeRing();
      rings += static_cast<int>(itemsNamed(window().contentItem(), "focusRing").size());
      press(Qt::Key_Tab);
      if (window().activeFocusItem() == first) return rings;
    }
    ADD_FAILURE() << "Tab does not return to the first control";
    return rings;
  }
};

TEST_F(WindowRows, the_last_breadcrumb_is_never_cut_to_a_letter) {
  goDown();
  for (int width = 1100; width < 1240; width += 5) {
    window().resize(width, 680);
    settle(window());
    expectNoneCutToALetter("crumbs");
    EXPECT_TRUE(rectOf(item("crumbs")).contains(rectOf(buttonsOf("crumbs").back()))) << width;
  }
}

TEST_F(WindowRows, breadcrumbs_are_never_cut_to_a_letter_while_scrolling) {
  goDown();
  for (const int angle : {14, -14, 120, -120}) {
    for (int turn = 0; turn < 60; ++turn) {
      turnWheel("crumbs", angle);
      expectNoneCutToALetter("crumbs");
    }
  }
}

TEST_F(WindowRows, pills_are_never_cut_to_a_letter) {
  select();
  for (int width = 1100; width < 1180; width += 5) {
    window().resize(width, 680);
    session().selection().clearSelection();
    settle(window());
    select();
    expectNoneCutToALetter("modeScroller");
    EXPECT_TRUE(rectOf(item("modeScroller")).contains(rectOf(item("clearSelection")))) << width;
  }
  window().resize(1100, 680);
  for (const int angle : {14, -14, 120, -120}) {
    for (int turn = 0; turn < 30; ++turn) {
      turnWheel("modeScroller", angle);
      expectNoneCutToALetter("modeScroller");
    }
  }
}

TEST_F(WindowRows, a_finger_never_leaves_a_row_cut_to_a_letter) {
  goDown();
  select();
  for (int way = 20; way <= 200; way += 12) {
    for (const QString& row : {QStringLiteral("crumbs"), QStringLiteral("modeScroller")}) {
      const QRectF sight = rectOf(item(row));
      pullByFinger(sight.center().toPoint(), {way, 0});
      const auto isStill = [&] { return !item(row)->property("moving").toBool(); };
      ASSERT_TRUE(QTest::qWaitFor(isStill, 20000));
      expectNoneCutToALetter(row);
    }
  }
}

TEST_F(WindowRows, focus_rings_are_complete) {
  EXPECT_GT(goAround(), 25);
  goDown();
  select();
  session().choices().setExcludes({"/a", "/b", "/c", "/d", "/e", "/f", "/g", "/h", "/i", "/j", "/k",
                                   "/l", "/m", "/n", "/o", "/p", "/q", "/r"});
  session().cleanupQueue().addToQueue(session().navigation().current()->children()[1]);
  session().messages().tellFailure("“notes.txt” could not be put back: not permitted");
  settle(window());
  EXPECT_GT(goAround(), 60);
}

TEST_F(WindowRows, focus_rings_are_complete_in_views_over_the_window) {
  session().shown().setMenuNode(session().navigation().current()->children()[0]);
  settle(window());
  EXPECT_GT(goAround(), 5);
  session().shown().setMenuNode(std::nullopt);
  session().removal().setCriticalWarning(session().navigation().current());
  settle(window());
  EXPECT_GT(goAround(), 1);
  session().removal().dismissWarning();
  application().access().setShowGate(true);
  settle(window());
  EXPECT_GT(goAround(), 2);
}

TEST_F(WindowRows, rows_are_not_covered_by_the_banner_of_a_scan) {
  session().rescan();
  settle(window());
  const QRectF banner = rectOf(item("banner"));
  const QRectF modes = rectOf(item("modeBar"));
  EXPECT_FALSE(banner.intersects(modes));
  EXPECT_LE(banner.top() - modes.bottom(), 10);
  for (const char* name : {"grewMode", "compareMode", "largestMode", "treemapMode"}) {
    click(name);
    EXPECT_TRUE(item(name)->property("active").toBool()) << name;
  }
  finishScan();
}

class LongestName : public Journey {
 protected:
  LongestName() : Journey(std::string(250, 'n') + "/\n  film.mp4 20M\n") {
    window().resize(1100, 680);
    session().scanHome();
    finishScan();
  }
};

TEST_F(LongestName, the_breadcrumb_of_the_longest_name_is_completely_visible) {
  session().open(session().navigation().current()->children()[0]);
  settle(window());
  QQuickItem* const scroller = item("crumbs");
  QQuickItem* const chip = itemsNamed(scroller, "chip").back();
  const QRectF sight = scroller->mapRectToScene(scroller->boundingRect());
  EXPECT_TRUE(sight.contains(chip->mapRectToScene(chip->boundingRect())));
  EXPECT_TRUE(itemNamed(chip, "symbol")->isVisible());
  QQuickItem* const label = itemNamed(chip, "label");
  EXPECT_TRUE(label->property("truncated").toBool());
  EXPECT_GT(label->width(), 1000);
}

}  // namespace
}  // namespace tessaly
