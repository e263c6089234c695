// The rubber band over the map in the real window.
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

  // Keeps the button pressed.
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

  QPoint begin_;  // start of a band that touches the three films
  QPoint end_;
};

TEST_F(BandJourney, a_band_selects_exactly_the_tiles_that_it_touches) {
  drag(begin_, end_);
  release(end_);
  EXPECT_THAT(session().selection().selected(), areTheFilms());
  EXPECT_EQ(text("queueSelection"), QStringLiteral("Queue (3)"));
  EXPECT_THAT(workspace_.revealed, IsEmpty());
  EXPECT_EQ(session().navigation().stack().size(), 1U);
}

TEST_F(BandJourney, a_band_with_shift_adds_to_the_selection_and_without_replaces_it) {
  clickHolding(Qt::ShiftModifier, tilePoint("backup.zip"));
  drag(begin_, end_);
  release(end_, Qt::ShiftModifier);
  EXPECT_EQ(session().selection().selected().size(), 4U);
  EXPECT_TRUE(session().selection().selected().contains(tree_.at("backup.zip")));
  drag(begin_, end_);
  release(end_);
  EXPECT_THAT(session().selection().selected(), areTheFilms());
}

TEST_F(BandJourney, a_tiny_band_clears_the_selection) {
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

TEST_F(BandJourney, escape_cancels_the_band_and_closes_nothing_else) {
  session().cleanupQueue().setQueueOpen(true);
  drag(begin_, end_);
  press(Qt::Key_Escape);
  EXPECT_TRUE(session().cleanupQueue().queueOpen());
  release(end_);
  EXPECT_THAT(session().selection().selected(), IsEmpty());
  press(Qt::Key_Escape);
  EXPECT_FALSE(session().cleanupQueue().queueOpen());
}

TEST_F(BandJourney, a_band_hides_the_tooltip_until_the_pointer_enters_another_tile) {
  hoverAt(tilePoint("Movies/beach.mp4"));
  EXPECT_TRUE(shows("mapTooltip"));
  drag(begin_, end_);
  EXPECT_FALSE(shows("mapTooltip"));
  release(end_);
  EXPECT_FALSE(shows("mapTooltip"));
  QTest::mouseMove(&window(), tilePoint("backup.zip"));
  EXPECT_TRUE(shows("mapTooltip"));
}

TEST_F(BandJourney, a_band_after_a_rescan_selects_the_new_tiles) {
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

TEST_F(BandJourney, a_band_continues_when_a_folder_opens_meanwhile) {
  drag(begin_, end_);
  session().open(session().navigation().current()->children().front());
  settle(window());
  release(end_);
  EXPECT_THAT(session().selection().selected(), IsEmpty());
  EXPECT_EQ(session().navigation().stack().size(), 2U);
}

}  // namespace
}  // namespace tessaly
