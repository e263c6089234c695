// The rubber band over the map of the real window.
#include <algorithm>
#include <filesystem>
#include <gmock/gmock.h>

#include <QTest>

#include "journeys/Journey.h"
#include "support/WindowItems.h"

namespace tessaly {
namespace {

using testing::IsEmpty;
using testing::UnorderedElementsAre;

class BandJourney : public Journey {
 protected:
  BandJourney()
      : Journey(
            "Movies/\n"
            "  beach.mp4 3M\n"
            "  lake.mp4 3M\n"
            "  caf\\xE9.mp4 3M\n"
            "backup.zip 6M\n"
            "notes.txt 2M\n") {
    session().scanHome();
    finishScan();
    const std::vector<QPoint> films = {tilePoint("Movies/beach.mp4"), tilePoint("Movies/lake.mp4"),
                                       tilePoint("Movies/caf\xE9.mp4")};
    const auto [left, right] = std::ranges::minmax(films, {}, &QPoint::x);
    const auto [top, bottom] = std::ranges::minmax(films, {}, &QPoint::y);
    begin_ = QPoint(left.x() - 5, top.y() - 5);
    end_ = QPoint(right.x() + 5, bottom.y() + 5);
  }

  // With the button still held.
  void drag(QPoint from, QPoint to) {
    QTest::mouseMove(&window(), from);
    QTest::mousePress(&window(), Qt::LeftButton, Qt::NoModifier, from);
    QTest::mouseMove(&window(), (from + to) / 2);
    QTest::mouseMove(&window(), to);
    settle(window());
  }
  void release(QPoint at, Qt::KeyboardModifiers modifiers = Qt::NoModifier) {
    QTest::mouseRelease(&window(), Qt::LeftButton, modifiers, at);
    settle(window());
  }

  auto areTheFilms() {
    return UnorderedElementsAre(tree_.at("Movies/beach.mp4"), tree_.at("Movies/lake.mp4"),
                                tree_.at("Movies/caf\xE9.mp4"));
  }

  QPoint begin_;  // of a band that touches the three films
  QPoint end_;
};

TEST_F(BandJourney, selects_exactly_the_tiles_that_it_touches) {
  drag(begin_, end_);
  release(end_);
  EXPECT_THAT(session().selection().selected(), areTheFilms());
  EXPECT_EQ(text("queueSelection"), QStringLiteral("Queue (3)"));
  EXPECT_THAT(workspace_.revealed, IsEmpty());
  EXPECT_EQ(session().navigation().stack().size(), 1U);
}

TEST_F(BandJourney, adds_to_the_selection_with_shift_and_replaces_it_without) {
  clickHolding(Qt::ShiftModifier, tilePoint("backup.zip"));
  drag(begin_, end_);
  release(end_, Qt::ShiftModifier);
  EXPECT_EQ(session().selection().selected().size(), 4U);
  EXPECT_TRUE(session().selection().selected().contains(tree_.at("backup.zip")));
  drag(begin_, end_);
  release(end_);
  EXPECT_THAT(session().selection().selected(), areTheFilms());
}

TEST_F(BandJourney, clears_the_selection_when_it_is_tiny) {
  const QPoint notes = tilePoint("notes.txt");
  drag(begin_, end_);
  release(end_);
  drag(notes, notes + QPoint(40, 2));
  release(notes + QPoint(40, 2), Qt::ShiftModifier);
  EXPECT_THAT(session().selection().selected(), areTheFilms());
  drag(notes, notes + QPoint(40, 2));
  release(notes + QPoint(40, 2));
  EXPECT_THAT(session().selection().selected(), IsEmpty());
  EXPECT_FALSE(shows("clearSelection"));
}

TEST_F(BandJourney, is_given_up_by_escape_which_puts_nothing_else_away) {
  session().cleanupQueue().setQueueOpen(true);
  drag(begin_, end_);
  press(Qt::Key_Escape);
  EXPECT_TRUE(session().cleanupQueue().queueOpen());
  release(end_);
  EXPECT_THAT(session().selection().selected(), IsEmpty());
  press(Qt::Key_Escape);
  EXPECT_FALSE(session().cleanupQueue().queueOpen());
}

TEST_F(BandJourney, hides_the_tooltip_until_the_pointer_enters_another_tile) {
  hoverAt(tilePoint("Movies/beach.mp4"));
  EXPECT_TRUE(shows("mapTooltip"));
  drag(begin_, end_);
  EXPECT_FALSE(shows("mapTooltip"));
  release(end_);
  EXPECT_FALSE(shows("mapTooltip"));
  QTest::mouseMove(&window(), tilePoint("backup.zip"));
  EXPECT_TRUE(shows("mapTooltip"));
}

TEST_F(BandJourney, selects_what_a_rescan_has_left_on_screen) {
  session().rescan();
  drag(begin_, end_);
  std::filesystem::remove(tree_.at("Movies/lake.mp4"));
  walk();
  dispatch_.drain(Dispatch::Queue::main);
  release(end_);
  for (const DiskNode& node : session().selection().selectedNodes()) {
    EXPECT_NE(node.path(), tree_.at("Movies/lake.mp4"));
  }
  EXPECT_FALSE(session().selection().selected().empty());
}

TEST_F(BandJourney, outlives_a_folder_that_opens_meanwhile) {
  drag(begin_, end_);
  session().open(session().navigation().current()->children().front());
  settle(window());
  release(end_);
  EXPECT_THAT(session().selection().selected(), IsEmpty());
  EXPECT_EQ(session().navigation().stack().size(), 2U);
}

}  // namespace
}  // namespace tessaly
