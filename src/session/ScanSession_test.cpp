#include "session/ScanSession.h"

#include <chrono>
#include <gtest/gtest.h>
#include <string>

#include <QSignalSpy>

#include "session/SessionFixture_test.h"

namespace tessaly {
namespace {

using std::chrono::milliseconds;
using ScanSessionTest = SessionFixture;
using Toast = SessionFixture;

TEST_F(ScanSessionTest, begins_idle_on_the_map_with_nothing_in_it) {
  const ScanSession& s = session();
  EXPECT_EQ(s.pane(), MainPane::map);
  EXPECT_EQ(s.status(), ScanStatus::idle);
  EXPECT_EQ(s.progress(), "");
  EXPECT_EQ(s.scanPercent(), 0);
  EXPECT_EQ(s.errorMessage(), "");
  EXPECT_TRUE(s.stack().empty());
  EXPECT_EQ(s.vizMode(), VizMode::treemap);
  EXPECT_EQ(s.filters(), BloatFilter::catalog());
  EXPECT_TRUE(s.queue().empty());
  EXPECT_FALSE(s.queueOpen());
  EXPECT_FALSE(s.queueMinimized());
  EXPECT_FALSE(s.searchOpen());
  EXPECT_EQ(s.trashCount(), 0);
  EXPECT_EQ(s.scanRoot(), "");
  EXPECT_FALSE(s.menuNode());
  EXPECT_FALSE(s.criticalWarning());
  EXPECT_TRUE(s.recents().empty());
  EXPECT_TRUE(s.grewPaths().empty());
  EXPECT_FALSE(s.toast());
  EXPECT_FALSE(s.failure());
  EXPECT_FALSE(s.focused());
  EXPECT_TRUE(s.selected().empty());
  EXPECT_TRUE(s.selectedNodes().empty());
  EXPECT_FALSE(s.heatmap());
  EXPECT_TRUE(s.compareRows().empty());
  EXPECT_EQ(s.compareLeftName(), "");
  EXPECT_EQ(s.compareRightName(), "");
  EXPECT_FALSE(s.watching());
  EXPECT_EQ(s.watchPath(), "");
  EXPECT_TRUE(s.pins().empty());
  EXPECT_FALSE(s.scanStats());
  EXPECT_TRUE(s.largest().empty());
  EXPECT_TRUE(s.emptyFolders().empty());
  EXPECT_TRUE(s.excludes().empty());
  EXPECT_FALSE(s.aiOpen());
  EXPECT_FALSE(s.ocrOpen());
  EXPECT_FALSE(s.current());
}

TEST_F(ScanSessionTest, numbers_its_modes_in_the_order_of_their_buttons) {
  EXPECT_EQ(static_cast<int>(VizMode::treemap), 0);
  EXPECT_EQ(static_cast<int>(VizMode::compare), 4);
  EXPECT_EQ(static_cast<int>(VizMode::aliases), 6);
  EXPECT_EQ(static_cast<int>(VizMode::safe), 10);
}

TEST_F(Toast, stands_for_2800_milliseconds) {
  session().flash("Hello");
  EXPECT_EQ(session().toast(), "Hello");
  dispatch().advance(milliseconds(2799));
  runMain();
  EXPECT_EQ(session().toast(), "Hello");
  dispatch().advance(milliseconds(1));
  runMain();
  EXPECT_EQ(session().toast(), std::nullopt);
}

TEST_F(Toast, of_another_text_keeps_its_full_time) {
  session().flash("first");
  dispatch().advance(milliseconds(1000));
  session().flash("second");
  dispatch().advance(milliseconds(1800));
  runMain();
  EXPECT_EQ(session().toast(), "second");
  dispatch().advance(milliseconds(999));
  runMain();
  EXPECT_EQ(session().toast(), "second");
  dispatch().advance(milliseconds(1));
  runMain();
  EXPECT_EQ(session().toast(), std::nullopt);
}

TEST_F(Toast, shown_twice_goes_with_the_time_of_the_first) {
  session().flash("same");
  dispatch().advance(milliseconds(1000));
  session().flash("same");
  dispatch().advance(milliseconds(1800));
  runMain();
  EXPECT_EQ(session().toast(), std::nullopt);
}

TEST_F(Toast, signals_when_it_comes_and_when_it_goes) {
  QSignalSpy toast(&session(), &ScanSession::toastChanged);
  session().flash("first");
  EXPECT_EQ(toast.count(), 1);
  session().flash("second");
  EXPECT_EQ(toast.count(), 2);
  dispatch().advance(milliseconds(2800));
  runMain();
  EXPECT_EQ(toast.count(), 3);
}

TEST_F(Toast, outlives_the_session_without_harm) {
  session().flash("Hello");
  endSession();
  dispatch().advance(milliseconds(2800));
  EXPECT_EQ(dispatch().drain(Queue::main), 1u);
}

TEST_F(ScanSessionTest, keeps_a_failure_whatever_is_flashed_until_it_is_dismissed) {
  const QSignalSpy changed(&session(), &ScanSession::failureChanged);
  session().tellFailure("first");
  session().flash("Hello");
  dispatch().advance(milliseconds(10000));
  runMain();
  EXPECT_EQ(session().failure(), "first");
  session().dismissFailure();
  EXPECT_FALSE(session().failure());
  session().dismissFailure();
  EXPECT_EQ(changed.count(), 2);
}

TEST_F(ScanSessionTest, tells_a_failure_again_once_a_later_one_is_dismissed) {
  const QSignalSpy changed(&session(), &ScanSession::failureChanged);
  session().tellFailure("first");
  session().tellFailure("second");
  EXPECT_EQ(session().failure(), "second");
  EXPECT_EQ(session().failures(), (std::vector<std::string>{"first", "second"}));
  session().dismissFailure();
  EXPECT_EQ(session().failure(), "first");
  session().dismissFailure();
  EXPECT_FALSE(session().failure());
  EXPECT_EQ(changed.count(), 4);
}

TEST_F(ScanSessionTest, tells_the_same_failure_once) {
  const QSignalSpy changed(&session(), &ScanSession::failureChanged);
  for (const char* text : {"first", "first", "second", "first"}) session().tellFailure(text);
  EXPECT_EQ(session().failures(), (std::vector<std::string>{"second", "first"}));
  EXPECT_EQ(changed.count(), 3);
}

TEST_F(ScanSessionTest, holds_so_many_failures_and_no_more) {
  for (std::size_t i = 0; i <= ScanSession::failuresLimit; ++i)
    session().tellFailure(std::to_string(i));
  EXPECT_EQ(session().failures().size(), ScanSession::failuresLimit);
  EXPECT_EQ(session().failures().front(), "1");
}

}  // namespace
}  // namespace tessaly
