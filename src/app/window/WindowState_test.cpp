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
  CommandTarget target_{session()};
  WindowState state_{session(), access_, target_};
};

TEST_F(WindowStateTest, the_window_shows_the_map_and_the_system_disk_at_first) {
  EXPECT_EQ(state_.pane(), WindowState::Map);
  EXPECT_FALSE(state_.showsBackButton());
  EXPECT_FALSE(state_.target().isValid());
  EXPECT_EQ(state_.volumeName(), QStringLiteral("System Disk"));
}

TEST_F(WindowStateTest, the_current_pane_is_set_by_the_window_and_by_the_session) {
  const QSignalSpy changes(&state_, &WindowState::changed);
  state_.setPane(WindowState::Monitor);
  EXPECT_EQ(session().shown().pane(), MainPane::monitor);
  session().shown().setPane(MainPane::apps);
  EXPECT_EQ(state_.pane(), WindowState::Apps);
  EXPECT_EQ(changes.count(), 2);
}

TEST_F(WindowStateTest, the_back_button_is_shown_below_the_root_and_breadcrumbs_only_on_the_map) {
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

TEST_F(WindowStateTest, the_volume_of_the_folder_on_screen_is_named) {
  EXPECT_EQ(state_.volumeName(), QStringLiteral("System Disk"));
  df_ =
      "Filesystem 1K-blocks Used Available Use% Mounted on\n"
      "/dev/sda1 100 50 50 50% /\n"
      "/dev/sdb1 100 50 50 50% /media/user/Music\n";
  scanTo(folder("/media/user/Music/a", 1, {file("/media/user/Music/a/b", 1)}));
  EXPECT_EQ(state_.volumeName(), QStringLiteral("Music"));
}

TEST_F(WindowStateTest, opening_and_closing_the_settings_is_announced) {
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

TEST_F(WindowStateTest, escape_collapses_a_filled_queue_and_hides_an_empty_one) {
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

// The layers that Escape closes, topmost first, over the map.
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

TEST_F(WindowStateTest, escape_closes_the_topmost_of_any_set_of_open_layers) {
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

// The layers that cover the whole window.
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

TEST_F(WindowStateTest, no_shortcut_works_while_a_layer_covers_the_window) {
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

TEST_F(WindowStateTest, the_open_search_blocks_commands_but_does_not_cover_the_window) {
  const QSignalSpy changes(&state_, &WindowState::layersChanged);
  EXPECT_TRUE(state_.isClear());
  EXPECT_TRUE(state_.takesCommands());
  session().shown().setSearchOpen(true);
  EXPECT_FALSE(state_.isCovered());
  EXPECT_FALSE(state_.isClear());
  EXPECT_FALSE(state_.takesCommands());
  EXPECT_EQ(changes.count(), 1);
}

TEST_F(WindowStateTest, the_open_menu_blocks_shortcuts_and_keeps_its_commands) {
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

TEST_F(WindowStateTest, only_items_on_the_map_can_be_previewed) {
  EXPECT_FALSE(state_.canPreview());
  session().selection().setFocused(anItem());
  EXPECT_TRUE(state_.canPreview());
  session().shown().setPane(MainPane::apps);
  EXPECT_FALSE(state_.canPreview());
  session().shown().setPane(MainPane::map);
  session().shown().setSearchOpen(true);
  EXPECT_FALSE(state_.canPreview());
}

TEST_F(WindowStateTest, a_remainder_tile_cannot_be_previewed) {
  DiskNode::Fields fields;
  fields.name = "+ 6 more";
  fields.path = "/__rest__";
  session().selection().setFocused(DiskNode(fields));
  EXPECT_FALSE(state_.canPreview());
  session().selection().setFocused(file("/__rest__", 1));
  EXPECT_TRUE(state_.canPreview());
}

TEST_F(WindowStateTest, the_focused_item_of_the_map_cannot_be_previewed_in_a_list) {
  session().selection().setFocused(file("/a", 1));
  ASSERT_TRUE(state_.canPreview());
  session().shown().setVizMode(VizMode::largest);
  EXPECT_FALSE(state_.canPreview());
}

TEST_F(WindowStateTest, the_window_follows_the_target_of_the_commands) {
  const QSignalSpy changes(&state_, &WindowState::targetChanged);
  session().selection().setFocused(file("/a", 1));
  EXPECT_EQ(state_.target().node()->path(), "/a");
  session().selection().setFocused(std::nullopt);
  EXPECT_FALSE(state_.target().isValid());
  EXPECT_EQ(changes.count(), 2);
}

}  // namespace
}  // namespace tessaly
