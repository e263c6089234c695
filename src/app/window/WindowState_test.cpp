#include "app/window/WindowState.h"

#include <gtest/gtest.h>

#include <QSignalSpy>

#include "session/SessionFixture_test.h"

namespace tessaly {
namespace {

class WindowStateTest : public SessionFixture {
 protected:
  WindowState state_{session()};
};

TEST_F(WindowStateTest, has_little_to_tell_at_first) {
  EXPECT_EQ(state_.pane(), WindowState::Map);
  EXPECT_FALSE(state_.showsBackButton());
  EXPECT_FALSE(state_.hasFocusedNode());
  EXPECT_EQ(state_.volumeName(), QStringLiteral("System Disk"));
}

TEST_F(WindowStateTest, brings_a_pane_to_the_front) {
  const QSignalSpy changes(&state_, &WindowState::changed);
  state_.setPane(WindowState::Monitor);
  EXPECT_EQ(session().shown().pane(), MainPane::monitor);
  session().shown().setPane(MainPane::apps);
  EXPECT_EQ(state_.pane(), WindowState::Apps);
  EXPECT_EQ(changes.count(), 2);
}

TEST_F(WindowStateTest, leads_back_to_the_treemap) {
  const QSignalSpy changes(&state_, &WindowState::changed);
  EXPECT_TRUE(state_.showsTreemap());
  session().shown().setVizMode(VizMode::history);
  EXPECT_FALSE(state_.showsTreemap());
  EXPECT_EQ(changes.count(), 1);
  state_.showTreemap();
  EXPECT_TRUE(state_.showsTreemap());
  EXPECT_EQ(session().shown().vizMode(), VizMode::treemap);
}

TEST_F(WindowStateTest, shows_the_way_back_below_the_root_and_breadcrumbs_on_the_map_alone) {
  scanTo(folder("/data", 2, {folder("/data/in", 2, {file("/data/in/a", 2)})}));
  EXPECT_FALSE(state_.showsBackButton());
  EXPECT_FALSE(state_.showsBreadcrumbs());
  session().open(session().navigation().current()->children()[0]);
  EXPECT_TRUE(state_.showsBackButton());
  EXPECT_TRUE(state_.showsBreadcrumbs());
  session().shown().setPane(MainPane::apps);
  EXPECT_TRUE(state_.showsBackButton());
  EXPECT_FALSE(state_.showsBreadcrumbs());
}

TEST_F(WindowStateTest, names_the_volume_of_the_folder_on_screen) {
  EXPECT_EQ(state_.volumeName(), QStringLiteral("System Disk"));
  df_ =
      "Filesystem 1K-blocks Used Available Use% Mounted on\n"
      "/dev/sda1 100 50 50 50% /\n"
      "/dev/sdb1 100 50 50 50% /media/user/Music\n";
  scanTo(folder("/media/user/Music/a", 1, {file("/media/user/Music/a/b", 1)}));
  EXPECT_EQ(state_.volumeName(), QStringLiteral("Music"));
}

TEST_F(WindowStateTest, remembers_whether_the_settings_are_open) {
  const QSignalSpy changes(&state_, &WindowState::settingsOpenChanged);
  EXPECT_FALSE(state_.settingsOpen());
  state_.setSettingsOpen(true);
  state_.setSettingsOpen(true);
  EXPECT_TRUE(state_.settingsOpen());
  EXPECT_EQ(changes.count(), 1);
  state_.setSettingsOpen(false);
  EXPECT_FALSE(state_.settingsOpen());
  EXPECT_EQ(changes.count(), 2);
}

TEST_F(WindowStateTest, folds_a_queue_in_which_something_waits_and_hides_an_empty_one) {
  const QSignalSpy changes(&state_, &WindowState::changed);
  EXPECT_FALSE(state_.isQueueUnfolded());
  session().cleanupQueue().addToQueue(file("/a", 1));
  EXPECT_TRUE(state_.isQueueUnfolded());
  EXPECT_EQ(changes.count(), 1);
  state_.putQueueAway();
  EXPECT_FALSE(state_.isQueueUnfolded());
  EXPECT_TRUE(session().cleanupQueue().queueOpen());
  EXPECT_TRUE(session().cleanupQueue().queueMinimized());
  EXPECT_EQ(changes.count(), 2);
  session().cleanupQueue().clearQueue();
  session().cleanupQueue().setQueueOpen(true);
  session().cleanupQueue().setQueueMinimized(false);
  EXPECT_TRUE(state_.isQueueUnfolded());
  state_.putQueueAway();
  EXPECT_FALSE(session().cleanupQueue().queueOpen());
}

TEST_F(WindowStateTest, has_nothing_to_look_into_in_what_stands_for_many_items) {
  DiskNode::Fields fields;
  fields.name = "+ 6 more";
  fields.path = "/__rest__";
  session().selection().setFocused(DiskNode(fields));
  EXPECT_FALSE(state_.hasFocusedNode());
  session().selection().setFocused(file("/__rest__", 1));
  EXPECT_TRUE(state_.hasFocusedNode());
}

TEST_F(WindowStateTest, tells_whether_something_has_the_focus) {
  const QSignalSpy changes(&state_, &WindowState::focusedChanged);
  session().selection().setFocused(file("/a", 1));
  EXPECT_TRUE(state_.hasFocusedNode());
  session().selection().setFocused(std::nullopt);
  EXPECT_FALSE(state_.hasFocusedNode());
  EXPECT_EQ(changes.count(), 2);
}

}  // namespace
}  // namespace tessaly
