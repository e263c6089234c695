// The signals of the session: one for each change, none without a change, and all fields of a step
// set before the first.

#include <gtest/gtest.h>
#include <memory>
#include <optional>
#include <string>
#include <vector>

#include <QSignalSpy>

#include "session/SessionFixture_test.h"

namespace tessaly {
namespace {

using FieldSignals = SessionFixture;

// Sets the other value, the same again, and the old one: two changes.
template <class Part, class Value>
void expectOneSignalAChange(Part& part, void (Part::*set)(Value), void (Part::*changed)(),
                            const std::decay_t<Value>& first, const std::decay_t<Value>& second) {
  QSignalSpy spy(&part, changed);
  ASSERT_TRUE(spy.isValid());
  (part.*set)(second);
  EXPECT_EQ(spy.count(), 1);
  (part.*set)(second);
  EXPECT_EQ(spy.count(), 1);
  (part.*set)(first);
  EXPECT_EQ(spy.count(), 2);
}

TEST_F(FieldSignals, a_field_that_views_set_signals_each_change_once) {
  ScanSession& s = session();
  const std::optional<DiskNode> node = file("/r/a", 1);
  expectOneSignalAChange(s.shown(), &Shown::setPane, &Shown::paneChanged, MainPane::map,
                         MainPane::apps);
  expectOneSignalAChange(s.shown(), &Shown::setVizMode, &Shown::vizModeChanged, VizMode::treemap,
                         VizMode::safe);
  expectOneSignalAChange(s.cleanupQueue(), &CleanupQueue::setQueueOpen,
                         &CleanupQueue::queueOpenChanged, false, true);
  expectOneSignalAChange(s.cleanupQueue(), &CleanupQueue::setQueueMinimized,
                         &CleanupQueue::queueMinimizedChanged, false, true);
  expectOneSignalAChange(s.shown(), &Shown::setSearchOpen, &Shown::searchOpenChanged, false, true);
  expectOneSignalAChange(s.shown(), &Shown::setAiOpen, &Shown::aiOpenChanged, false, true);
  expectOneSignalAChange(s.shown(), &Shown::setOcrOpen, &Shown::ocrOpenChanged, false, true);
  expectOneSignalAChange(s.shown(), &Shown::setHeatmap, &Shown::heatmapChanged, false, true);
  expectOneSignalAChange(s.shown(), &Shown::setMenuNode, &Shown::menuNodeChanged, {}, node);
  expectOneSignalAChange(s.removal(), &Removal::setCriticalWarning,
                         &Removal::criticalWarningChanged, {}, node);
  expectOneSignalAChange(s.selection(), &Selection::setFocused, &Selection::focusedChanged, {},
                         node);
  expectOneSignalAChange(s.choices(), &Choices::setFilters, &Choices::filtersChanged,
                         BloatFilter::catalog(), {});
  expectOneSignalAChange(s.choices(), &Choices::setExcludes, &Choices::excludesChanged, {},
                         {"/r/x"});
}

TEST_F(FieldSignals, a_field_has_its_new_value_when_it_signals) {
  session().shown().setPane(MainPane::monitor);
  session().shown().setVizMode(VizMode::largest);
  session().cleanupQueue().setQueueOpen(true);
  session().cleanupQueue().setQueueMinimized(true);
  session().shown().setSearchOpen(true);
  session().shown().setAiOpen(true);
  session().shown().setOcrOpen(true);
  session().shown().setHeatmap(true);
  session().shown().setMenuNode(file("/r/menu", 1));
  session().removal().setCriticalWarning(file("/r/critical", 1));
  session().selection().setFocused(file("/r/focused", 1));
  session().choices().setFilters({});
  session().choices().setExcludes({"/r/x"});
  EXPECT_EQ(session().shown().pane(), MainPane::monitor);
  EXPECT_EQ(session().shown().vizMode(), VizMode::largest);
  EXPECT_TRUE(session().cleanupQueue().queueOpen());
  EXPECT_TRUE(session().cleanupQueue().queueMinimized());
  EXPECT_TRUE(session().shown().searchOpen());
  EXPECT_TRUE(session().shown().aiOpen());
  EXPECT_TRUE(session().shown().ocrOpen());
  EXPECT_TRUE(session().shown().heatmap());
  EXPECT_EQ(session().shown().menuNode()->path(), "/r/menu");
  EXPECT_EQ(session().removal().criticalWarning()->path(), "/r/critical");
  EXPECT_EQ(session().selection().focused()->path(), "/r/focused");
  EXPECT_TRUE(session().choices().filters().empty());
  EXPECT_EQ(session().choices().excludes(), std::vector<std::string>{"/r/x"});
}

TEST_F(FieldSignals, all_fields_of_a_step_are_set_when_it_signals) {
  std::vector<std::string> seen;
  QObject::connect(&session().run(), &ScanRun::statusChanged, [&] {
    seen.push_back(session().run().scanRoot() + "|" + session().run().progress());
  });
  session().scan("/r");
  session().run().cancel();
  EXPECT_EQ(seen, (std::vector<std::string>{"/r|Scanning started…", "/r|"}));
}

TEST_F(FieldSignals, a_whole_scan_signals_each_change_once) {
  session().scan("/r");
  walks().at(0).result = folder("/r", 5, {file("/r/a", 5)});
  QSignalSpy stack(&session().navigation(), &Navigation::stackChanged);
  QSignalSpy status(&session().run(), &ScanRun::statusChanged);
  QSignalSpy progress(&session().run(), &ScanRun::progressChanged);
  QSignalSpy percent(&session().run(), &ScanRun::scanPercentChanged);
  QSignalSpy stats(&session().result(), &ScanResult::scanStatsChanged);
  QSignalSpy pane(&session().shown(), &Shown::paneChanged);
  QSignalSpy error(&session().run(), &ScanRun::errorMessageChanged);
  dispatch().drainAll();
  EXPECT_EQ(stack.count(), 1);
  EXPECT_EQ(status.count(), 1);
  EXPECT_EQ(progress.count(), 1);
  EXPECT_EQ(percent.count(), 1);
  EXPECT_EQ(stats.count(), 1);
  EXPECT_EQ(pane.count(), 0);
  EXPECT_EQ(error.count(), 0);
}

TEST_F(FieldSignals, a_new_tree_is_announced_even_if_it_equals_the_old_one) {
  scanTo(folder("/r", 5, {file("/r/a", 5)}));
  QSignalSpy stack(&session().navigation(), &Navigation::stackChanged);
  scanTo(folder("/r", 5, {file("/r/a", 5)}));
  EXPECT_EQ(stack.count(), 1);
}

TEST_F(FieldSignals, a_receiver_of_a_signal_may_start_the_next_step) {
  // The receiver cancels each scan at once.
  QObject::connect(&session().run(), &ScanRun::statusChanged, [&] {
    if (session().run().status() == ScanStatus::scanning) session().run().cancel();
  });
  session().scan("/r");
  EXPECT_EQ(session().run().status(), ScanStatus::idle);
  EXPECT_EQ(session().run().progress(), "");
  walks().at(0).result = folder("/r", 5, {file("/r/a", 5)});
  dispatch().drainAll();
  EXPECT_TRUE(session().navigation().stack().empty());
}

TEST_F(FieldSignals, a_receiver_of_a_signal_may_end_the_session) {
  QObject::connect(&session().run(), &ScanRun::statusChanged, [&] { endSession(); });
  session().scan("/r");
  EXPECT_FALSE(hasSession());
  dispatch().drainAll();
}

}  // namespace
}  // namespace tessaly
