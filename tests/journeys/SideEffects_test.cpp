// Each control of the window changes only what it is for.
#include <gmock/gmock.h>
#include <string>

#include <QTest>

#include "journeys/Journey.h"
#include "support/SessionRecord.h"
#include "support/WindowItems.h"

namespace tessaly {
namespace {

using Names = SessionRecord::Names;
using testing::IsEmpty;

const Names aScanBegins = {"pane", "progress", "scanPercent", "status"};

class SideEffectsJourney : public Journey {
 protected:
  SideEffectsJourney()
      : Journey(
            "Movies/\n"
            "  2023/\n"
            "    beach.mp4 6M\n"
            "  trailer.mov 3M\n"
            "Code/\n"
            "  main.cpp 4M\n"
            "notes.txt 3M\n"
            "song.mp3 3M\n") {
    for (const char* below : {"Movies", "Code", "notes.txt", "song.mp3"})
      machine_.trash.put(tree_.at(below), below);
    session().scanHome();
    finishScan();
    session().selection().setFocused(node("song.mp3"));
    session().trashFocused();
    finishScan();
    // The pointer is on no tile, and every field has a value that could be lost.
    hoverAt(QPoint(640, 5));
    session().selection().selectNodes({node("notes.txt"), node("Code")}, false);
    session().selection().setFocused(node("Code"));
    session().cleanupQueue().addToQueue(node("Code"));
    session().cleanupQueue().setQueueMinimized(true);
    session().shown().setHeatmap(true);
    session().messages().flash("Before");
    settle(window());
  }

  DiskNode node(const std::string& name) {
    for (const DiskNode& child : session().navigation().stack().front().children())
      if (child.name() == name) return child;
    ADD_FAILURE() << "no " << name;
    return {};
  }

  template <class Step>
  Names changedBy(Step step) {
    const SessionRecord record(session(), machine_.settings);
    step();
    settle(window());
    return record.changed();
  }
  Names changedByClicking(const QString& name) {
    return changedBy([&] { click(name); });
  }
};

TEST_F(SideEffectsJourney, the_pointer_on_a_tile_changes_only_the_focus) {
  EXPECT_EQ(changedBy([&] { hoverAt(tilePoint("notes.txt")); }), Names{"focused"});
  EXPECT_EQ(changedBy([&] { hoverAt(QPoint(640, 5)); }), Names{});
}

TEST_F(SideEffectsJourney, a_click_on_a_file_changes_only_the_focus) {
  EXPECT_EQ(changedBy([&] { clickAt(tilePoint("notes.txt")); }), Names{"focused"});
  EXPECT_EQ(workspace_.revealed.size(), 1U);
}

TEST_F(SideEffectsJourney, a_click_on_a_folder_clears_the_selection_and_enters_it) {
  EXPECT_EQ(changedBy([&] { clickAt(tilePoint("Movies")); }),
            (Names{"focused", "selection", "stack"}));
  EXPECT_THAT(session().selection().selected(), IsEmpty());
  EXPECT_FALSE(shows("clearSelection"));
}

TEST_F(SideEffectsJourney, a_click_with_shift_changes_only_selection_and_focus) {
  EXPECT_EQ(changedBy([&] { clickHolding(Qt::ShiftModifier, tilePoint("Movies")); }),
            (Names{"focused", "selection"}));
}

TEST_F(SideEffectsJourney, a_click_with_command_keeps_the_selection) {
  EXPECT_EQ(changedBy([&] { clickHolding(Qt::ControlModifier, tilePoint("notes.txt")); }),
            (Names{"focused", "queue", "queueMinimized", "toast"}));
}

TEST_F(SideEffectsJourney, back_and_breadcrumbs_keep_selection_and_focus) {
  session().open(node("Movies"));
  session().open(session().navigation().current()->children()[0]);
  session().selection().selectNodes({node("notes.txt")}, false);
  session().shown().setVizMode(VizMode::largest);
  settle(window());
  EXPECT_EQ(changedByClicking("back"), Names{"stack"});
  EXPECT_EQ(changedBy([&] { clickAt(middleOf(itemsNamed(window().contentItem(), "chip")[1])); }),
            Names{});
  EXPECT_EQ(changedBy([&] { clickAt(middleOf(itemsNamed(window().contentItem(), "chip")[0])); }),
            Names{"stack"});
}

TEST_F(SideEffectsJourney, the_modes_change_only_the_mode) {
  // Wide enough for the whole row beside the buttons for the selection.
  window().resize(1800, 820);
  session().open(node("Movies"));
  session().selection().selectNodes({node("notes.txt")}, false);
  session().cleanupQueue().setQueueMinimized(false);
  for (const char* mode : {"listMode", "grewMode", "duplicatesMode", "compareMode", "largestMode",
                           "clonesMode", "historyMode", "safeMode", "treemapMode"})
    EXPECT_EQ(changedByClicking(mode), Names{"vizMode"}) << mode;
  EXPECT_EQ(changedByClicking("treemapMode"), Names{});
  for (int i = 0; i < 2; ++i) EXPECT_EQ(changedByClicking("heatmap"), Names{"heatmap"});
  for (int i = 0; i < 2; ++i)
    EXPECT_EQ(changedByClicking("watch"), (Names{"watchPath", "watching"}));
}

TEST_F(SideEffectsJourney, the_buttons_for_the_selection_change_only_what_they_say) {
  EXPECT_EQ(changedByClicking("queueSelection"),
            (Names{"queue", "queueMinimized", "selection", "toast"}));
  session().selection().selectNodes({node("notes.txt")}, false);
  EXPECT_EQ(changedByClicking("clearSelection"), Names{"selection"});
}

TEST_F(SideEffectsJourney, an_archive_cancelled_in_its_panel_changes_nothing) {
  EXPECT_EQ(changedByClicking("zipSelection"), Names{});
  EXPECT_EQ(machine_.savePanel.requests.size(), 1U);
}

TEST_F(SideEffectsJourney, undo_rescans) {
  EXPECT_EQ(changedByClicking("putBack"),
            (Names{"lastTrashed", "progress", "scanPercent", "status", "toast"}));
  EXPECT_EQ(session().messages().toast(), "Put back 1 item");
  EXPECT_TRUE(shows("banner"));
}

TEST_F(SideEffectsJourney, the_bars_change_one_field_each) {
  session().shown().setVizMode(VizMode::largest);
  session().shown().setSearchOpen(true);
  settle(window());
  EXPECT_EQ(changedByClicking("showApps"), Names{"pane"});
  EXPECT_EQ(changedByClicking("showPulse"), Names{"pane"});
  EXPECT_EQ(changedByClicking("showMap"), Names{"pane"});
  EXPECT_EQ(changedBy([&] { press(Qt::Key_Escape); }), Names{"searchOpen"});
  EXPECT_EQ(changedByClicking("openAssistant"), Names{"aiOpen"});
  EXPECT_EQ(changedBy([&] { press(Qt::Key_Escape); }), Names{"aiOpen"});
  EXPECT_EQ(changedByClicking("openInbox"), Names{"ocrOpen"});
  EXPECT_EQ(changedBy([&] { press(Qt::Key_Escape); }), Names{"ocrOpen"});
  EXPECT_EQ(changedByClicking("searchField"), Names{"searchOpen"});
  EXPECT_EQ(changedBy([&] { press(Qt::Key_Escape); }), Names{"searchOpen"});
}

TEST_F(SideEffectsJourney, the_queue_changes_only_its_own_fields) {
  session().cleanupQueue().addToQueue(node("notes.txt"));
  for (int i = 0; i < 2; ++i) EXPECT_EQ(changedByClicking("queueHeader"), Names{"queueMinimized"});
  EXPECT_EQ(changedBy([&] { clickAt(middleOf(itemsNamed(window().contentItem(), "remove")[0])); }),
            Names{"queue"});
  EXPECT_EQ(changedByClicking("clear"), (Names{"queue", "queueOpen"}));
}

TEST_F(SideEffectsJourney, emptying_the_queue_keeps_the_selection_and_rescans) {
  session().cleanupQueue().setQueueMinimized(false);
  settle(window());
  const Names changed = changedByClicking("moveToTrash");
  for (const char* name : {"lastTrashed", "queue", "queueOpen", "status"})
    EXPECT_TRUE(changed.contains(name)) << name;
  for (const char* name : {"focused", "selection", "stack", "toast", "vizMode", "heatmap"})
    EXPECT_FALSE(changed.contains(name)) << name;
}

TEST_F(SideEffectsJourney, cancelling_a_rescan_keeps_everything_on_screen) {
  session().open(node("Movies"));
  session().selection().selectNodes({node("notes.txt")}, false);
  session().rescan();
  settle(window());
  EXPECT_EQ(changedByClicking("cancel"), (Names{"progress", "status"}));
}

TEST_F(SideEffectsJourney, the_end_of_a_rescan_keeps_focus_selection_and_queue) {
  session().cleanupQueue().addToQueue(node("notes.txt"));
  session().cleanupQueue().setQueueMinimized(true);
  session().rescan();
  settle(window());
  const Names changed = changedBy([&] { finishScan(); });
  for (const char* name : {"focused", "selection", "queue", "queueOpen", "queueMinimized",
                           "vizMode", "heatmap", "pane", "pins", "excludes", "filters"})
    EXPECT_FALSE(changed.contains(name)) << name;
  EXPECT_TRUE(shows("clearSelection"));
  EXPECT_TRUE(shows("cleanupQueue"));
}

TEST_F(SideEffectsJourney, resizing_the_window_changes_nothing) {
  EXPECT_EQ(changedBy([&] { window().resize(1100, 680); }), Names{});
}

}  // namespace
}  // namespace tessaly
