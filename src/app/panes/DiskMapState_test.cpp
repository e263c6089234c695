#include "app/panes/DiskMapState.h"

#include <cerrno>
#include <gtest/gtest.h>

#include <QSignalSpy>

#include "session/SessionFixture_test.h"

namespace tessaly {
namespace {

class DiskMapStateTest : public SessionFixture {
 protected:
  void scan(const DiskNode& result) {
    walks_.at(walks_.ran()).result = result;
    session().scan(result.path());
    dispatch_.drainAll();
  }

  DiskMapState state_{session()};
};

TEST(DiskMapScreen, the_screen_follows_the_status_and_whether_there_is_a_tree) {
  using S = DiskMapState;
  EXPECT_EQ(S::screenFor(ScanStatus::idle, false), S::Idle);
  EXPECT_EQ(S::screenFor(ScanStatus::idle, true), S::Idle);
  EXPECT_EQ(S::screenFor(ScanStatus::scanning, true), S::Result);
  EXPECT_EQ(S::screenFor(ScanStatus::scanning, false), S::Scanning);
  EXPECT_EQ(S::screenFor(ScanStatus::complete, true), S::Result);
  EXPECT_EQ(S::screenFor(ScanStatus::complete, false), S::Idle);
  EXPECT_EQ(S::screenFor(ScanStatus::error, false), S::Failed);
  EXPECT_EQ(S::screenFor(ScanStatus::error, true), S::Failed);
}

TEST_F(DiskMapStateTest, the_state_is_idle_without_texts_at_first) {
  EXPECT_EQ(state_.screen(), DiskMapState::Idle);
  EXPECT_FALSE(state_.showsTreemap());
  EXPECT_FALSE(state_.isRescanning());
  EXPECT_FALSE(state_.node().isValid());
  EXPECT_EQ(state_.statsText(), QString());
}

TEST_F(DiskMapStateTest, the_screen_goes_from_idle_to_scanning_to_the_result) {
  QSignalSpy changes(&state_, &DiskMapState::screenChanged);
  EXPECT_EQ(state_.screen(), DiskMapState::Idle);
  walks_.at(0).result = folder("/home", 10, {file("/home/a", 10)});
  session().scan("/home");
  EXPECT_EQ(state_.screen(), DiskMapState::Scanning);
  EXPECT_FALSE(state_.isRescanning());
  EXPECT_GE(changes.count(), 1);
  changes.clear();
  dispatch_.drainAll();
  EXPECT_EQ(state_.screen(), DiskMapState::Result);
  EXPECT_GE(changes.count(), 1);
  session().rescan();
  EXPECT_EQ(state_.screen(), DiskMapState::Result);
  EXPECT_TRUE(state_.isRescanning());
}

TEST_F(DiskMapStateTest, the_folder_on_screen_has_its_texts) {
  scan(folder("/home", 3 << 20, {file("/home/a", 2 << 20), file("/home/b", 1 << 20)}));
  EXPECT_EQ(state_.nodeName(), QStringLiteral("home"));
  EXPECT_EQ(state_.sizeText(), QStringLiteral("3.0 MB"));
  EXPECT_EQ(state_.itemsText(), QStringLiteral("(2 items)"));
  EXPECT_EQ(state_.node().node()->path(), "/home");
}

TEST_F(DiskMapStateTest, a_name_that_is_not_utf8_is_shown_on_one_line) {
  scan(folder("/caf\xe9\n", 1));
  EXPECT_EQ(state_.nodeName(), QStringLiteral("caf\ufffd\ufffd"));
}

TEST_F(DiskMapStateTest, only_a_finished_scan_has_a_text_with_its_counts) {
  scan(folder("/home", 10, {folder("/home/d", 9, {file("/home/d/a", 9)})}));
  EXPECT_EQ(state_.statsText(), QStringLiteral("1 files · 2 folders · 0.00s"));
  session().rescan();
  EXPECT_EQ(state_.statsText(), QString());
}

TEST_F(DiskMapStateTest, unreadable_items_are_shown_only_beside_the_counts) {
  QSignalSpy changes(&state_, &DiskMapState::statsTextChanged);
  walks_.at(0).during = [](const DiskScanner::Callbacks& callbacks) {
    callbacks.unreadable(SystemError::fromErrno(EACCES, "/home/locked"));
  };
  scan(folder("/home", 10));
  EXPECT_EQ(state_.unreadableText(), QStringLiteral("· 1 unreadable"));
  EXPECT_EQ(state_.unreadableList(), QStringLiteral("/home/locked: not permitted"));
  EXPECT_GE(changes.count(), 1);
  session().rescan();
  EXPECT_EQ(state_.statsText(), QString());
  EXPECT_EQ(state_.unreadableText(), QString());
  EXPECT_EQ(state_.unreadableList(), QString());
  dispatch_.drainAll();
  EXPECT_EQ(state_.unreadableText(), QStringLiteral("· 1 unreadable"));
  scan(folder("/home", 10));
  EXPECT_NE(state_.statsText(), QString());
  EXPECT_EQ(state_.unreadableText(), QString());
}

TEST_F(DiskMapStateTest, the_time_of_the_scan_has_two_decimals) {
  walks_.at(0).during = [this](const DiskScanner::Callbacks&) {
    now_ += std::chrono::milliseconds(12346);
  };
  scan(folder("/home", 10));
  EXPECT_EQ(state_.statsText(), QStringLiteral("0 files · 1 folders · 12.35s"));
}

TEST_F(DiskMapStateTest, a_default_text_replaces_missing_progress) {
  EXPECT_EQ(state_.scanningText(), QStringLiteral("Walking directory tree"));
  EXPECT_EQ(state_.bannerText(), QStringLiteral("Scanning…"));
  session().scan("/home");
  EXPECT_EQ(state_.scanningText(), QStringLiteral("Scanning started…"));
  EXPECT_EQ(state_.bannerText(), QStringLiteral("Scanning started…"));
}

TEST_F(DiskMapStateTest, the_percentage_is_rounded_down) {
  EXPECT_EQ(state_.percentText(), QStringLiteral("0%"));
  walks_.at(0).during = [](const DiskScanner::Callbacks& callbacks) { callbacks.percent(0.429); };
  session().scan("/home");
  dispatch_.step(Dispatch::Queue::userInitiated);
  dispatch_.step(Dispatch::Queue::main);
  EXPECT_EQ(state_.percentText(), QStringLiteral("42%"));
}

TEST_F(DiskMapStateTest, a_failed_scan_shows_its_error) {
  scan(folder("/gone", 0));
  EXPECT_EQ(state_.screen(), DiskMapState::Failed);
  EXPECT_TRUE(state_.errorText().startsWith(QStringLiteral("Nothing readable at /gone.")));
}

TEST_F(DiskMapStateTest, another_folder_is_announced_and_a_newer_scan_of_the_same_is_not) {
  scan(folder("/home", 10, {folder("/home/d", 9, {file("/home/d/a", 9)})}));
  QSignalSpy places(&state_, &DiskMapState::placeChanged);
  QSignalSpy nodes(&state_, &DiskMapState::nodeChanged);
  scan(folder("/home", 12, {folder("/home/d", 11, {file("/home/d/a", 11)})}));
  EXPECT_EQ(places.count(), 0);
  EXPECT_GE(nodes.count(), 1);
  state_.open(NodeHandle(session().navigation().current()->children().front()));
  EXPECT_EQ(places.count(), 1);
  EXPECT_EQ(state_.nodeName(), QStringLiteral("d"));
}

TEST_F(DiskMapStateTest, the_treemap_is_shown_in_its_own_mode_only) {
  scan(folder("/home", 10));
  EXPECT_TRUE(state_.showsTreemap());
  session().shown().setVizMode(VizMode::largest);
  EXPECT_FALSE(state_.showsTreemap());
  EXPECT_EQ(state_.modeKey(), "largest");
  state_.showTreemap();
  EXPECT_TRUE(state_.showsTreemap());
  EXPECT_EQ(state_.modeKey(), "treemap");
}

TEST_F(DiskMapStateTest, the_menu_opens_for_the_given_node) {
  scan(folder("/home", 10, {file("/home/a", 9)}));
  const DiskNode marked = session().navigation().current()->children().front();
  scan(folder("/home", 10));
  state_.askAbout(NodeHandle(marked));
  EXPECT_EQ(session().shown().menuNode(), marked);
  state_.askAbout(NodeHandle());
  EXPECT_EQ(session().shown().menuNode(), marked);
}

TEST_F(DiskMapStateTest, an_empty_handle_opens_nothing) {
  scan(folder("/home", 10));
  state_.open(NodeHandle());
  EXPECT_EQ(session().navigation().stack().size(), 1u);
}

}  // namespace
}  // namespace tessaly
