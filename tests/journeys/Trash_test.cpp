// Moves to the Trash and back, from the map.
#include <filesystem>
#include <gmock/gmock.h>

#include "app/map/TreemapSurface.h"
#include "journeys/Journey.h"
#include "support/WindowItems.h"

namespace tessaly {
namespace {

using testing::IsEmpty;
using testing::SizeIs;

class TrashJourney : public Journey {
 protected:
  TrashJourney()
      : Journey(
            "Movies/\n"
            "  beach.mp4 6M\n"
            "Code/\n"
            "  main.cpp 3M\n"
            "notes.txt 2M\n"
            "caf\\xE9.zip 2M\n") {
    for (const char* below : {"Movies", "Code", "notes.txt", "caf\xE9.zip"}) {
      machine_.trash.put(tree_.at(below), below);
    }
    session().scanHome();
    finishScan();
  }

  void pressCommandDelete() { press(Qt::Key_Backspace, Qt::ControlModifier); }
};

TEST_F(TrashJourney, command_delete_moves_the_tile_under_the_pointer) {
  hoverAt(tilePoint("notes.txt"));
  pressCommandDelete();
  EXPECT_FALSE(machine_.trash.has(tree_.at("notes.txt")));
  EXPECT_EQ(text("toast"), QStringLiteral("Moved notes.txt to Trash"));
  EXPECT_TRUE(shows("banner"));
  finishScan();
  EXPECT_TRUE(shows("putBack"));
}

TEST_F(TrashJourney, a_second_command_delete_does_not_move_the_tile_that_came_under_the_pointer) {
  const QPoint place = tilePoint("notes.txt");
  hoverAt(place);
  pressCommandDelete();
  ASSERT_FALSE(machine_.trash.has(tree_.at("notes.txt")));
  std::filesystem::remove(tree_.at("notes.txt"));
  finishScan();
  const auto& map = *qobject_cast<const TreemapSurface*>(item("canvas"));
  ASSERT_TRUE(map.tiles().at(map.mapFromScene(QPointF(place))).has_value());
  EXPECT_EQ(session().selection().focused()->path(), tree_.at("notes.txt"));
  EXPECT_FALSE(shows("mapTooltip"));
  pressCommandDelete();
  finishScan();
  for (const char* other : {"Movies", "Code", "caf\xE9.zip"})
    EXPECT_TRUE(machine_.trash.has(tree_.at(other))) << other;
}

TEST_F(TrashJourney, put_back_restores_the_items_of_the_last_move) {
  hoverAt(tilePoint("caf\xE9.zip"));
  pressCommandDelete();
  finishScan();
  ASSERT_FALSE(machine_.trash.has(tree_.at("caf\xE9.zip")));
  click("putBack");
  EXPECT_EQ(machine_.trash.contentOf(tree_.at("caf\xE9.zip")), "caf\xE9.zip");
  EXPECT_EQ(text("toast"), QStringLiteral("Put back 1 item"));
  EXPECT_FALSE(shows("putBack"));
}

// The name in the Trash is free again once the item has left it.
TEST_F(TrashJourney, put_back_does_not_restore_another_item_of_the_same_name) {
  hoverAt(tilePoint("notes.txt"));
  pressCommandDelete();
  finishScan();
  machine_.trash.remove(std::string(MemoryTrash::trash) + "/notes.txt");
  machine_.trash.put(tree_.at("notes.txt"), "the second");
  for (const DiskNode& child : session().navigation().current()->children()) {
    if (child.path() == tree_.at("notes.txt")) session().shown().setMenuNode(child);
  }
  settle(window());
  click("menuTrash");
  finishScan();
  ASSERT_FALSE(machine_.trash.has(tree_.at("notes.txt")));
  click("putBack");
  EXPECT_EQ(text("toast"), QStringLiteral("Put back 0 items"));
  EXPECT_FALSE(machine_.trash.has(tree_.at("notes.txt")));
  EXPECT_EQ(machine_.trash.contentOf(std::string(MemoryTrash::trash) + "/notes.txt"), "the second");
}

TEST_F(TrashJourney, shift_click_selects_and_command_click_queues_and_the_pills_show_the_counts) {
  EXPECT_FALSE(shows("queueSelection"));
  clickHolding(Qt::ShiftModifier, tilePoint("notes.txt"));
  clickHolding(Qt::ShiftModifier, tilePoint("Movies"));
  EXPECT_EQ(text("queueSelection"), QStringLiteral("Queue (2)"));
  clickHolding(Qt::ControlModifier, tilePoint("Code"));
  EXPECT_EQ(text("toast"), QStringLiteral("Queued Code"));
  EXPECT_THAT(session().cleanupQueue().queue(), SizeIs(1));
  click("queueSelection");
  EXPECT_EQ(text("toast"), QStringLiteral("Queued 2 items"));
  ASSERT_THAT(session().cleanupQueue().queue(), SizeIs(3));
  EXPECT_EQ(session().cleanupQueue().queue()[1].path(), tree_.at("notes.txt"));
  EXPECT_EQ(session().cleanupQueue().queue()[2].path(), tree_.at("Movies"));
  EXPECT_FALSE(shows("queueSelection"));
  EXPECT_FALSE(shows("clearSelection"));
}

TEST_F(TrashJourney, clear_clears_the_selection_at_once) {
  clickHolding(Qt::ShiftModifier, tilePoint("notes.txt"));
  click("clearSelection");
  EXPECT_THAT(session().selection().selected(), IsEmpty());
  EXPECT_FALSE(shows("clearSelection"));
}

TEST_F(TrashJourney, a_mark_stays_on_the_node_and_not_on_the_position) {
  clickHolding(Qt::ShiftModifier, tilePoint("notes.txt"));
  std::filesystem::resize_file(tree_.at("Code/main.cpp"), 0);
  session().rescan();
  finishScan();
  click("queueSelection");
  session().emptyQueue();
  EXPECT_FALSE(machine_.trash.has(tree_.at("notes.txt")));
  EXPECT_TRUE(machine_.trash.has(tree_.at("Movies")));
  EXPECT_TRUE(machine_.trash.has(tree_.at("Code")));
  EXPECT_TRUE(machine_.trash.has(tree_.at("caf\xE9.zip")));
}

class ProtectedLocation : public TrashJourney {
 protected:
  // The home is the node on screen, so Command Delete acts on it.
  void askForTheHome() {
    machine_.trash.put(tree_.path());
    session().selection().setFocused(std::nullopt);
    pressCommandDelete();
  }
};

TEST_F(ProtectedLocation, the_user_is_warned_before_a_protected_location_moves) {
  askForTheHome();
  EXPECT_TRUE(shows("protectedLocation"));
  EXPECT_EQ(text("alertTitle"), QStringLiteral("Protected location"));
  EXPECT_EQ(text("alertMessage"),
            QStringLiteral("Your home folder\n\n") + QString::fromStdString(tree_.path()));
  EXPECT_TRUE(machine_.trash.has(tree_.path()));
  EXPECT_EQ(session().run().status(), ScanStatus::complete);
}

TEST_F(ProtectedLocation, return_cancels_the_warning) {
  askForTheHome();
  EXPECT_TRUE(item("dismiss")->hasActiveFocus());
  press(Qt::Key_Return);
  EXPECT_FALSE(shows("protectedLocation"));
  EXPECT_TRUE(machine_.trash.has(tree_.path()));
  EXPECT_EQ(session().run().status(), ScanStatus::complete);
}

TEST_F(ProtectedLocation, escape_and_a_click_beside_it_close_the_warning) {
  askForTheHome();
  press(Qt::Key_Escape);
  EXPECT_FALSE(shows("protectedLocation"));
  askForTheHome();
  clickAt({5, window().height() - 5});
  EXPECT_FALSE(shows("protectedLocation"));
  EXPECT_TRUE(machine_.trash.has(tree_.path()));
}

TEST_F(ProtectedLocation, overruling_the_warning_moves_the_item_to_the_trash) {
  askForTheHome();
  press(Qt::Key_Tab);
  EXPECT_TRUE(item("overrule")->hasActiveFocus());
  press(Qt::Key_Space);
  EXPECT_FALSE(shows("protectedLocation"));
  EXPECT_FALSE(machine_.trash.has(tree_.path()));
  EXPECT_THAT(session().removal().lastTrashed(), IsEmpty());
  EXPECT_EQ(session().run().status(), ScanStatus::scanning);
}

TEST_F(ProtectedLocation, the_warning_keeps_its_item_through_a_rescan) {
  session().removal().setCriticalWarning(session().navigation().current()->children()[0]);
  ASSERT_EQ(session().removal().criticalWarning()->path(), tree_.at("Movies"));
  std::filesystem::resize_file(tree_.at("Movies/beach.mp4"), 1);
  session().rescan();
  finishScan();
  ASSERT_NE(session().navigation().current()->children()[0].path(), tree_.at("Movies"));
  click("overrule");
  EXPECT_FALSE(machine_.trash.has(tree_.at("Movies")));
  for (const char* other : {"Code", "notes.txt", "caf\xE9.zip"})
    EXPECT_TRUE(machine_.trash.has(tree_.at(other))) << other;
}

TEST_F(ProtectedLocation, the_warning_keeps_the_keyboard_focus) {
  askForTheHome();
  for (int i = 0; i < 4; ++i) {
    press(Qt::Key_Tab);
    EXPECT_TRUE(item("overrule")->hasActiveFocus() || item("dismiss")->hasActiveFocus());
  }
  session().selection().setFocused(session().navigation().current()->children()[0]);
  pressCommandDelete();
  EXPECT_TRUE(machine_.trash.has(tree_.at("Movies")));
  EXPECT_TRUE(shows("protectedLocation"));
}

TEST_F(ProtectedLocation, answering_the_warning_returns_the_keyboard_focus) {
  clickAt(tilePoint("Movies"));
  press(Qt::Key_Tab);
  QQuickItem* const before = window().activeFocusItem();
  ASSERT_NE(before, nullptr);
  session().removal().setCriticalWarning(session().navigation().stack().front());
  settle(window());
  EXPECT_NE(window().activeFocusItem(), before);
  press(Qt::Key_Escape);
  EXPECT_EQ(window().activeFocusItem(), before);
}

TEST_F(ProtectedLocation, no_tile_reacts_to_the_pointer_under_the_warning) {
  const QPoint notes = tilePoint("notes.txt");
  askForTheHome();
  hoverAt(notes);
  EXPECT_EQ(session().selection().focused(), std::nullopt);
}

}  // namespace
}  // namespace tessaly
