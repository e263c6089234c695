// The signals of the session: once for each change, none without one, and all fields of a step set
// before the first.

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

// Sets a field twice to another value and once back: two changes, and a setting that is none.
template <class Value>
void expectOneSignalAChange(ScanSession& session, void (ScanSession::*set)(Value),
                            void (ScanSession::*changed)(), const std::decay_t<Value>& first,
                            const std::decay_t<Value>& second) {
  QSignalSpy spy(&session, changed);
  ASSERT_TRUE(spy.isValid());
  (session.*set)(second);
  EXPECT_EQ(spy.count(), 1);
  (session.*set)(second);
  EXPECT_EQ(spy.count(), 1);
  (session.*set)(first);
  EXPECT_EQ(spy.count(), 2);
}

TEST_F(FieldSignals, come_once_for_each_change_of_a_field_that_views_set) {
  using S = ScanSession;
  S& s = session();
  const std::optional<DiskNode> node = file("/r/a", 1);
  expectOneSignalAChange(s, &S::setPane, &S::paneChanged, MainPane::map, MainPane::apps);
  expectOneSignalAChange(s, &S::setVizMode, &S::vizModeChanged, VizMode::treemap, VizMode::safe);
  expectOneSignalAChange(s, &S::setQueueOpen, &S::queueOpenChanged, false, true);
  expectOneSignalAChange(s, &S::setQueueMinimized, &S::queueMinimizedChanged, false, true);
  expectOneSignalAChange(s, &S::setSearchOpen, &S::searchOpenChanged, false, true);
  expectOneSignalAChange(s, &S::setAiOpen, &S::aiOpenChanged, false, true);
  expectOneSignalAChange(s, &S::setOcrOpen, &S::ocrOpenChanged, false, true);
  expectOneSignalAChange(s, &S::setHeatmap, &S::heatmapChanged, false, true);
  expectOneSignalAChange(s, &S::setMenuNode, &S::menuNodeChanged, {}, node);
  expectOneSignalAChange(s, &S::setCriticalWarning, &S::criticalWarningChanged, {}, node);
  expectOneSignalAChange(s, &S::setFocused, &S::focusedChanged, {}, node);
  expectOneSignalAChange(s, &S::setFilters, &S::filtersChanged, BloatFilter::catalog(), {});
  expectOneSignalAChange(s, &S::setExcludes, &S::excludesChanged, {}, {"/r/x"});
}

TEST_F(FieldSignals, leave_the_set_value_behind) {
  session().setPane(MainPane::monitor);
  session().setVizMode(VizMode::largest);
  session().setQueueOpen(true);
  session().setQueueMinimized(true);
  session().setSearchOpen(true);
  session().setAiOpen(true);
  session().setOcrOpen(true);
  session().setHeatmap(true);
  session().setMenuNode(file("/r/menu", 1));
  session().setCriticalWarning(file("/r/critical", 1));
  session().setFocused(file("/r/focused", 1));
  session().setFilters({});
  session().setExcludes({"/r/x"});
  EXPECT_EQ(session().pane(), MainPane::monitor);
  EXPECT_EQ(session().vizMode(), VizMode::largest);
  EXPECT_TRUE(session().queueOpen());
  EXPECT_TRUE(session().queueMinimized());
  EXPECT_TRUE(session().searchOpen());
  EXPECT_TRUE(session().aiOpen());
  EXPECT_TRUE(session().ocrOpen());
  EXPECT_TRUE(session().heatmap());
  EXPECT_EQ(session().menuNode()->path(), "/r/menu");
  EXPECT_EQ(session().criticalWarning()->path(), "/r/critical");
  EXPECT_EQ(session().focused()->path(), "/r/focused");
  EXPECT_TRUE(session().filters().empty());
  EXPECT_EQ(session().excludes(), std::vector<std::string>{"/r/x"});
}

TEST_F(FieldSignals, come_after_all_fields_of_the_step_are_set) {
  std::vector<std::string> seen;
  QObject::connect(&session(), &ScanSession::statusChanged,
                   [&] { seen.push_back(session().scanRoot() + "|" + session().progress()); });
  session().scan("/r");
  session().cancel();
  EXPECT_EQ(seen, (std::vector<std::string>{"/r|Scanning started…", "/r|"}));
}

TEST_F(FieldSignals, come_once_each_in_a_whole_scan) {
  session().scan("/r");
  walks().at(0).result = folder("/r", 5, {file("/r/a", 5)});
  QSignalSpy stack(&session(), &ScanSession::stackChanged);
  QSignalSpy status(&session(), &ScanSession::statusChanged);
  QSignalSpy progress(&session(), &ScanSession::progressChanged);
  QSignalSpy percent(&session(), &ScanSession::scanPercentChanged);
  QSignalSpy stats(&session(), &ScanSession::scanStatsChanged);
  QSignalSpy pane(&session(), &ScanSession::paneChanged);
  QSignalSpy error(&session(), &ScanSession::errorMessageChanged);
  dispatch().drainAll();
  EXPECT_EQ(stack.count(), 1);
  EXPECT_EQ(status.count(), 1);
  EXPECT_EQ(progress.count(), 1);
  EXPECT_EQ(percent.count(), 1);
  EXPECT_EQ(stats.count(), 1);
  EXPECT_EQ(pane.count(), 0);
  EXPECT_EQ(error.count(), 0);
}

TEST_F(FieldSignals, tell_of_a_new_tree_even_if_it_equals_the_old_one) {
  scanTo(folder("/r", 5, {file("/r/a", 5)}));
  QSignalSpy stack(&session(), &ScanSession::stackChanged);
  scanTo(folder("/r", 5, {file("/r/a", 5)}));
  EXPECT_EQ(stack.count(), 1);
}

TEST_F(FieldSignals, may_lead_to_the_next_step) {
  // Whoever hears of a scan cancels it at once.
  QObject::connect(&session(), &ScanSession::statusChanged, [&] {
    if (session().status() == ScanStatus::scanning) session().cancel();
  });
  session().scan("/r");
  EXPECT_EQ(session().status(), ScanStatus::idle);
  EXPECT_EQ(session().progress(), "");
  walks().at(0).result = folder("/r", 5, {file("/r/a", 5)});
  dispatch().drainAll();
  EXPECT_TRUE(session().stack().empty());
}

TEST_F(FieldSignals, may_end_the_session) {
  QObject::connect(&session(), &ScanSession::statusChanged, [&] { endSession(); });
  session().scan("/r");
  EXPECT_FALSE(hasSession());
  dispatch().drainAll();
}

}  // namespace
}  // namespace tessaly
