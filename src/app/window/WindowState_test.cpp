#include "app/window/WindowState.h"

#include <gtest/gtest.h>
#include <iterator>
#include <optional>
#include <string>
#include <vector>

#include <QSignalSpy>

#include "session/SessionFixture_test.h"

namespace tessaly {
namespace {

class WindowStateTest : public SessionFixture {
 public:
  static DiskNode anItem() { return file("/item", 1); }
  Shown& screens() { return session().shown(); }
  Removal& removal() { return session().removal(); }

  AccessController access_{settings_, [] { return true; }};
  WindowState state_{session(), access_};
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
  const QSignalSpy changes(&state_, &WindowState::layersChanged);
  EXPECT_FALSE(state_.canPutAway());
  session().cleanupQueue().addToQueue(file("/a", 1));
  EXPECT_TRUE(state_.canPutAway());
  EXPECT_EQ(changes.count(), 1);
  state_.putAway();
  EXPECT_FALSE(state_.canPutAway());
  EXPECT_TRUE(session().cleanupQueue().queueOpen());
  EXPECT_TRUE(session().cleanupQueue().queueMinimized());
  EXPECT_EQ(changes.count(), 2);
  session().cleanupQueue().clearQueue();
  session().cleanupQueue().setQueueOpen(true);
  session().cleanupQueue().setQueueMinimized(false);
  EXPECT_TRUE(state_.canPutAway());
  state_.putAway();
  EXPECT_FALSE(session().cleanupQueue().queueOpen());
}

// What Escape may put away, in front of the map as it is at first.
struct Layer {
  const char* name;
  void (*open)(ScanSession& session);
  bool (*isOpen)(ScanSession& session);
};

const Layer layers[] = {
    {"search", [](ScanSession& session) { session.shown().setSearchOpen(true); },
     [](ScanSession& session) { return session.shown().searchOpen(); }},
    {"queue", [](ScanSession& session) { session.cleanupQueue().setQueueOpen(true); },
     [](ScanSession& session) { return session.cleanupQueue().queueOpen(); }},
    {"pane", [](ScanSession& session) { session.shown().setPane(MainPane::apps); },
     [](ScanSession& session) { return session.shown().pane() != MainPane::map; }},
    {"list", [](ScanSession& session) { session.shown().setVizMode(VizMode::history); },
     [](ScanSession& session) { return session.shown().vizMode() != VizMode::treemap; }}};

TEST_F(WindowStateTest, puts_away_the_front_of_any_set_of_layers_and_nothing_else) {
  const std::size_t count = std::size(layers);
  for (std::size_t set = 0; set < 1U << count; ++set) {
    std::string expected;
    for (std::size_t i = 0; i < count; ++i) {
      if ((set >> i & 1U) == 0) continue;
      layers[i].open(session());
      expected += std::string(layers[i].name) + ' ';
    }
    SCOPED_TRACE(expected);
    std::string order;
    while (state_.canPutAway() && order.size() < 100) {
      std::vector<const Layer*> open;
      for (const Layer& layer : layers)
        if (layer.isOpen(session())) open.push_back(&layer);
      state_.putAway();
      for (const Layer* layer : open)
        if (!layer->isOpen(session())) order += std::string(layer->name) + ' ';
    }
    EXPECT_EQ(order, expected);
  }
}

// What lies over the whole window.
struct WindowCover {
  const char* name;
  void (*set)(WindowStateTest& test, bool open);
};

const WindowCover covers[] = {
    {"gate", [](WindowStateTest& test, bool open) { test.access_.setShowGate(open); }},
    {"settings", [](WindowStateTest& test, bool open) { test.state_.setSettingsOpen(open); }},
    {"assistant", [](WindowStateTest& test, bool open) { test.screens().setAiOpen(open); }},
    {"inbox", [](WindowStateTest& test, bool open) { test.screens().setOcrOpen(open); }},
    {"node menu",
     [](WindowStateTest& test, bool open) {
       test.screens().setMenuNode(open ? std::optional(WindowStateTest::anItem()) : std::nullopt);
     }},
    {"warning", [](WindowStateTest& test, bool open) {
       test.removal().setCriticalWarning(open ? std::optional(WindowStateTest::anItem())
                                              : std::nullopt);
     }}};

TEST_F(WindowStateTest, lets_no_key_act_under_what_covers_the_window) {
  session().selection().setFocused(anItem());
  for (const Layer& layer : layers) layer.open(session());
  for (const WindowCover& cover : covers) {
    SCOPED_TRACE(cover.name);
    const QSignalSpy changes(&state_, &WindowState::layersChanged);
    EXPECT_TRUE(state_.canPutAway());
    cover.set(*this, true);
    EXPECT_TRUE(state_.isCovered());
    EXPECT_FALSE(state_.isClear());
    EXPECT_FALSE(state_.takesCommands());
    EXPECT_FALSE(state_.canPreview());
    EXPECT_FALSE(state_.canPutAway());
    state_.putAway();
    for (const Layer& layer : layers) EXPECT_TRUE(layer.isOpen(session())) << layer.name;
    cover.set(*this, false);
    EXPECT_FALSE(state_.isCovered());
    EXPECT_EQ(changes.count(), 2);
  }
}

TEST_F(WindowStateTest, leaves_the_search_the_bars_but_no_commands) {
  const QSignalSpy changes(&state_, &WindowState::layersChanged);
  EXPECT_TRUE(state_.isClear());
  EXPECT_TRUE(state_.takesCommands());
  session().shown().setSearchOpen(true);
  EXPECT_FALSE(state_.isCovered());
  EXPECT_FALSE(state_.isClear());
  EXPECT_FALSE(state_.takesCommands());
  EXPECT_EQ(changes.count(), 1);
}

TEST_F(WindowStateTest, leaves_all_keys_to_the_open_menu_which_still_offers_the_commands) {
  session().shown().setPane(MainPane::apps);
  const QSignalSpy changes(&state_, &WindowState::layersChanged);
  state_.setMenuOpen(true);
  state_.setMenuOpen(true);
  EXPECT_EQ(changes.count(), 1);
  EXPECT_TRUE(state_.isClear());
  EXPECT_FALSE(state_.takesCommands());
  EXPECT_FALSE(state_.canPutAway());
  state_.setMenuOpen(false);
  EXPECT_TRUE(state_.takesCommands());
  EXPECT_TRUE(state_.canPutAway());
}

TEST_F(WindowStateTest, previews_on_the_map_alone) {
  EXPECT_FALSE(state_.canPreview());
  session().selection().setFocused(anItem());
  EXPECT_TRUE(state_.canPreview());
  session().shown().setPane(MainPane::apps);
  EXPECT_FALSE(state_.canPreview());
  session().shown().setPane(MainPane::map);
  session().shown().setSearchOpen(true);
  EXPECT_FALSE(state_.canPreview());
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
