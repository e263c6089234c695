// Views in front of the window or instead of a pane: opening and closing them.
#include <gmock/gmock.h>

#include "journeys/Journey.h"
#include "support/WindowItems.h"

namespace tessaly {
namespace {

using testing::IsEmpty;
using testing::SizeIs;

constexpr const char* files =
    "Movies/\n"
    "  beach.mp4 6M\n"
    "notes.txt 2M\n";

class Frames : public Journey {
 protected:
  Frames() : Journey(files) {
    session().scanHome();
    finishScan();
    session().open(session().navigation().current()->children()[0]);
  }
};

TEST_F(Frames, panes_come_to_the_front_and_close_by_escape_and_by_their_button) {
  click("showApps");
  EXPECT_TRUE(shows("apps"));
  EXPECT_FALSE(shows("diskMap"));
  EXPECT_FALSE(shows("crumbs"));
  EXPECT_TRUE(shows("back"));
  press(Qt::Key_Escape);
  EXPECT_TRUE(shows("diskMap"));
  click("showPulse");
  EXPECT_TRUE(shows("pulse"));
  click("close");
  EXPECT_TRUE(shows("diskMap"));
  EXPECT_TRUE(shows("crumbs"));
}

TEST_F(Frames, search_opens_over_any_pane) {
  click("searchField");
  EXPECT_TRUE(shows("search"));
  session().shown().setPane(MainPane::apps);
  EXPECT_TRUE(shows("search"));
  press(Qt::Key_Escape);
  EXPECT_FALSE(session().shown().searchOpen());
  EXPECT_EQ(session().shown().pane(), MainPane::apps);
}

TEST_F(Frames, search_leaves_title_bar_and_sidebar_clickable) {
  click("searchField");
  click("showPulse");
  EXPECT_EQ(session().shown().pane(), MainPane::monitor);
  EXPECT_TRUE(shows("search"));
  click("diskTreemap");
  EXPECT_EQ(session().shown().pane(), MainPane::map);
}

TEST_F(Frames, escape_closes_cards_over_the_window) {
  click("openAssistant");
  EXPECT_TRUE(shows("assistant"));
  press(Qt::Key_Escape);
  EXPECT_FALSE(shows("assistant"));
  click("openInbox");
  EXPECT_TRUE(shows("inbox"));
  press(Qt::Key_Escape);
  EXPECT_FALSE(session().shown().ocrOpen());
}

TEST_F(Frames, no_command_acts_under_a_card) {
  const DiskNode film = session().navigation().current()->children()[0];
  machine_.trash.put(film.path());
  session().selection().setFocused(film);
  for (const char* opener : {"openAssistant", "openInbox", "searchField"}) {
    click(opener);
    press(Qt::Key_Backspace, Qt::ControlModifier);
    press(Qt::Key_Escape);
  }
  EXPECT_TRUE(machine_.trash.has(film.path()));
  press(Qt::Key_Backspace, Qt::ControlModifier);
  EXPECT_FALSE(machine_.trash.has(film.path()));
}

TEST_F(Frames, the_queue_is_in_its_corner_and_escape_collapses_it) {
  session().cleanupQueue().addToQueue(session().navigation().current()->children()[0]);
  QQuickItem* const queue = item("cleanupQueue");
  ASSERT_NE(queue, nullptr);
  EXPECT_EQ(queue->mapRectToScene(QRectF(0, 0, queue->width(), queue->height())),
            QRectF(1280 - 16 - 420, 820 - 16 - 360, 420, 360));
  press(Qt::Key_Escape);
  EXPECT_EQ(queue->mapRectToScene(QRectF(0, 0, queue->width(), queue->height())),
            QRectF(1280 - 16 - 420, 820 - 16 - 44, 420, 44));
  EXPECT_THAT(session().cleanupQueue().queue(), SizeIs(1));
}

// Constructed before the program, which asks for the access at its start.
struct Closed {
  bool isGranted = false;

  Journey::Lend lend() {
    return
        [this](Application::Services& services) { services.access = [this] { return isGranted; }; };
  }
};

class Gate : private Closed, public Journey {
 protected:
  Gate() : Journey(files, lend()) {}

  void grant() { isGranted = true; }
};

TEST_F(Gate, the_gate_is_shown_until_access_is_granted) {
  EXPECT_TRUE(shows("gate"));
  grant();
  click("check");
  EXPECT_FALSE(shows("gate"));
}

TEST_F(Gate, the_gate_lets_no_key_and_no_click_through) {
  EXPECT_TRUE(item("grant")->hasActiveFocus());
  clickAt({100, 300});
  press(Qt::Key_Escape);
  EXPECT_TRUE(shows("gate"));
  EXPECT_EQ(session().run().status(), ScanStatus::idle);
}

TEST_F(Gate, the_gate_reveals_the_program_in_the_file_viewer_and_opens_the_settings) {
  click("grant");
  ASSERT_THAT(workspace_.revealed, SizeIs(1));
  EXPECT_THAT(workspace_.revealed.front(), SizeIs(1));
  EXPECT_THAT(workspace_.settingsAsked, SizeIs(3));
}

TEST_F(Gate, the_gate_starts_the_program_again_and_ends_this_one) {
  click("relaunch");
  ASSERT_THAT(machine_.launched, SizeIs(1));
  EXPECT_EQ(machine_.launched.front().path, "/usr/bin/open");
  EXPECT_EQ(machine_.launched.front().args.front(), "-n");
  EXPECT_EQ(machine_.timesQuit, 0);
  while (dispatch_.advanceToNextDue()) comeHome();
  EXPECT_EQ(machine_.timesQuit, 1);
}

TEST_F(Gate, a_skipped_gate_is_not_shown_again) {
  clickAt(middleOf(itemNamed(item("gate"), "skip")));
  EXPECT_FALSE(shows("gate"));
  restart();
  EXPECT_FALSE(shows("gate"));
  click("scanFullMac");
  EXPECT_TRUE(shows("gate"));
  EXPECT_EQ(session().run().status(), ScanStatus::idle);
  EXPECT_THAT(machine_.launched, IsEmpty());
}

TEST_F(Gate, the_window_can_be_zoomed_while_the_gate_is_shown) {
  EXPECT_TRUE(shows("windowButtons"));
  click("zoomWindow");
  EXPECT_TRUE(window().windowStates().testFlag(Qt::WindowMaximized));
}

}  // namespace
}  // namespace tessaly
