// Items are marked on the map, collected in the panel, and moved to the Trash together.
#include <filesystem>
#include <gmock/gmock.h>
#include <set>
#include <string>

#include <QTest>

#include "journeys/Journey.h"
#include "support/WindowItems.h"

namespace tessaly {
namespace {

using testing::ElementsAre;
using testing::IsEmpty;
using testing::SizeIs;

constexpr const char* files[] = {"Movies", "Code", "notes.txt", "caf\xE9\n.zip"};

class QueueJourney : public Journey {
 protected:
  QueueJourney()
      : Journey(
            "Movies/\n"
            "  beach.mp4 6M\n"
            "Code/\n"
            "  main.cpp 3M\n"
            "notes.txt 2M\n"
            "caf\\xE9\\n.zip 2M\n") {
    for (const char* below : files) machine_.trash.put(tree_.at(below), below);
    session().scanHome();
    finishScan();
  }

  void mark(std::string_view below) { clickHolding(Qt::ControlModifier, tilePoint(below)); }
  void markThree() {
    for (const char* below : {"notes.txt", "caf\xE9\n.zip", "Code"}) mark(below);
  }
  std::vector<std::string> queued() {
    std::vector<std::string> names;
    for (const DiskNode& node : session().cleanupQueue().queue()) names.emplace_back(node.name());
    return names;
  }
  // Those of the four items that are still in their place.
  std::set<std::string> left() {
    std::set<std::string> names;
    for (const char* below : files)
      if (machine_.trash.has(tree_.at(below))) names.insert(below);
    return names;
  }
  double panelHeight() {
    QQuickItem* const panel = item("cleanupQueue");
    return panel != nullptr ? panel->height() : 0;
  }
  void clickRemove(std::size_t row) {
    settle(window());
    const auto buttons = itemsNamed(window().contentItem(), "remove");
    ASSERT_LT(row, buttons.size());
    clickAt(middleOf(buttons[row]));
  }
};

TEST_F(QueueJourney, three_marked_items_move_to_the_trash_and_back) {
  EXPECT_FALSE(shows("cleanupQueue"));
  markThree();
  EXPECT_THAT(queued(), ElementsAre("notes.txt", "caf\xE9\n.zip", "Code"));
  EXPECT_EQ(panelHeight(), 360);
  EXPECT_THAT(itemsNamed(window().contentItem(), "queueRow"), SizeIs(3));
  EXPECT_EQ(text("moveToTrash"), QStringLiteral("Move 3 to Trash · 7.0 MB"));
  click("queueHeader");
  EXPECT_EQ(panelHeight(), 44);
  EXPECT_FALSE(shows("moveToTrash"));
  click("queueHeader");
  EXPECT_EQ(panelHeight(), 360);
  clickRemove(1);
  EXPECT_THAT(queued(), ElementsAre("notes.txt", "Code"));
  EXPECT_EQ(text("moveToTrash"), QStringLiteral("Move 2 to Trash · 5.0 MB"));
  EXPECT_THAT(left(), SizeIs(4));
  click("moveToTrash");
  EXPECT_FALSE(shows("cleanupQueue"));
  EXPECT_THAT(left(), ElementsAre("Movies", "caf\xE9\n.zip"));
  EXPECT_TRUE(shows("banner"));
  finishScan();
  click("putBack");
  EXPECT_EQ(text("toast"), QStringLiteral("Put back 2 items"));
  EXPECT_THAT(left(), SizeIs(4));
  EXPECT_EQ(machine_.trash.contentOf(tree_.at("notes.txt")), "notes.txt");
}

TEST_F(QueueJourney, only_the_marked_items_move_whatever_the_next_scan_finds) {
  mark("caf\xE9\n.zip");
  mark("Code");
  // Every tile changes its position.
  std::filesystem::resize_file(tree_.at("Movies/beach.mp4"), 1);
  std::filesystem::resize_file(tree_.at("notes.txt"), 1);
  session().rescan();
  finishScan();
  EXPECT_TRUE(shows("moveToTrash"));
  click("moveToTrash");
  EXPECT_THAT(left(), ElementsAre("Movies", "notes.txt"));
  EXPECT_THAT(session().removal().lastTrashed(), SizeIs(2));
}

TEST_F(QueueJourney, items_that_are_gone_are_skipped_without_a_message) {
  markThree();
  ASSERT_TRUE(machine_.trash.moveToTrash(tree_.at("caf\xE9\n.zip")).ok());
  session().rescan();
  finishScan();
  const auto toast = session().messages().toast();
  click("moveToTrash");
  EXPECT_THAT(queued(), IsEmpty());
  EXPECT_THAT(session().removal().lastTrashed(), SizeIs(2));
  EXPECT_EQ(session().messages().toast(), toast);
  EXPECT_FALSE(shows("protectedLocation"));
}

TEST_F(QueueJourney, clearing_the_queue_removes_all_and_it_opens_expanded_the_next_time) {
  markThree();
  click("clear");
  EXPECT_FALSE(shows("cleanupQueue"));
  EXPECT_THAT(queued(), IsEmpty());
  EXPECT_THAT(left(), SizeIs(4));
  EXPECT_EQ(session().run().status(), ScanStatus::complete);
  session().cleanupQueue().setQueueMinimized(true);
  mark("Code");
  EXPECT_EQ(panelHeight(), 360);
}

TEST_F(QueueJourney, the_queue_stays_collapsed_when_a_queued_item_is_marked_again) {
  mark("notes.txt");
  click("queueHeader");
  mark("notes.txt");
  EXPECT_EQ(panelHeight(), 44);
  EXPECT_THAT(queued(), SizeIs(1));
  mark("Code");
  EXPECT_EQ(panelHeight(), 360);
}

TEST_F(QueueJourney, the_queue_passes_all_its_items_to_the_archive) {
  markThree();
  click("zipThenTrash");
  EXPECT_THAT(machine_.savePanel.requests, SizeIs(1));
  EXPECT_THAT(left(), SizeIs(4));
  EXPECT_THAT(queued(), SizeIs(3));
  machine_.savePanel.answer = tree_.at("kept.zip");
  click("zipThenTrash");
  EXPECT_EQ(text("toast"), QStringLiteral("Zipping 3 items…"));
}

TEST_F(QueueJourney, the_queue_lets_no_click_through_to_the_map) {
  mark("notes.txt");
  settle(window());
  QQuickItem* const panel = item("cleanupQueue");
  session().selection().setFocused(std::nullopt);
  hoverAt(middleOf(panel));
  EXPECT_EQ(session().selection().focused(), std::nullopt);
  clickHolding(Qt::ShiftModifier, middleOf(panel));
  clickHolding(Qt::ControlModifier, middleOf(panel));
  EXPECT_THAT(session().selection().selected(), IsEmpty());
  EXPECT_THAT(queued(), SizeIs(1));
}

TEST_F(QueueJourney, the_queue_works_by_the_keyboard_and_escape_collapses_it) {
  markThree();
  tabTo("queueHeader");
  session().selection().setFocused(std::nullopt);
  press(Qt::Key_Space);
  EXPECT_EQ(panelHeight(), 44);
  press(Qt::Key_Return);
  EXPECT_EQ(panelHeight(), 360);
  press(Qt::Key_Tab);
  press(Qt::Key_Return);
  EXPECT_THAT(queued(), ElementsAre("caf\xE9\n.zip", "Code"));
  press(Qt::Key_Escape);
  EXPECT_EQ(panelHeight(), 44);
  EXPECT_THAT(queued(), SizeIs(2));
  ASSERT_EQ(window().activeFocusItem(), item("queueHeader"));
  EXPECT_THAT(itemsNamed(item("queueHeader"), "focusRing"), SizeIs(1));
  press(Qt::Key_Return);
  EXPECT_EQ(panelHeight(), 360);
  EXPECT_TRUE(shows("moveToTrash"));
}

TEST_F(QueueJourney, the_queue_stays_reachable_while_it_has_items) {
  markThree();
  session().shown().setVizMode(VizMode::duplicates);
  session().shown().setPane(MainPane::apps);
  press(Qt::Key_Escape);
  EXPECT_EQ(panelHeight(), 44);
  EXPECT_EQ(session().shown().pane(), MainPane::apps);
  press(Qt::Key_Escape);
  EXPECT_EQ(session().shown().pane(), MainPane::map);
  EXPECT_EQ(session().shown().vizMode(), VizMode::duplicates);
  press(Qt::Key_Escape);
  EXPECT_EQ(session().shown().vizMode(), VizMode::treemap);
  for (int i = 0; i < 3; ++i) press(Qt::Key_Escape);
  EXPECT_EQ(panelHeight(), 44);
  EXPECT_EQ(text("count"), QStringLiteral("3"));
  session().rescan();
  finishScan();
  EXPECT_EQ(panelHeight(), 44);
  click("queueHeader");
  EXPECT_EQ(panelHeight(), 360);
  EXPECT_THAT(queued(), SizeIs(3));
}

TEST_F(QueueJourney, collapsing_the_queue_returns_the_keyboard_focus_to_the_map) {
  mark("notes.txt");
  clickAt(tilePoint("Code"));
  ASSERT_TRUE(item("canvas")->hasActiveFocus());
  press(Qt::Key_Escape);
  EXPECT_EQ(panelHeight(), 44);
  EXPECT_TRUE(item("canvas")->hasActiveFocus());
  ASSERT_THAT(session().navigation().stack(), SizeIs(2));
  press(Qt::Key_Escape);
  EXPECT_THAT(session().navigation().stack(), SizeIs(1));
  EXPECT_EQ(panelHeight(), 44);
}

TEST_F(QueueJourney, the_queue_is_in_the_corner_of_the_smallest_window) {
  window().resize(1100, 680);
  mark("notes.txt");
  QQuickItem* const panel = item("cleanupQueue");
  ASSERT_NE(panel, nullptr);
  EXPECT_EQ(panel->mapRectToScene(QRectF(0, 0, panel->width(), panel->height())),
            QRectF(1100 - 16 - 420, 680 - 16 - 360, 420, 360));
}

}  // namespace
}  // namespace tessaly
