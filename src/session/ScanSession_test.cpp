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

TEST_F(ScanSessionTest, the_session_begins_idle_on_an_empty_map) {
  const ScanSession& s = session();
  EXPECT_EQ(s.shown().pane(), MainPane::map);
  EXPECT_EQ(s.run().status(), ScanStatus::idle);
  EXPECT_EQ(s.run().progress(), "");
  EXPECT_EQ(s.run().scanPercent(), 0);
  EXPECT_EQ(s.run().errorMessage(), "");
  EXPECT_TRUE(s.navigation().stack().empty());
  EXPECT_EQ(s.shown().vizMode(), VizMode::treemap);
  EXPECT_EQ(s.choices().filters(), BloatFilter::catalog());
  EXPECT_TRUE(s.cleanupQueue().queue().empty());
  EXPECT_FALSE(s.cleanupQueue().queueOpen());
  EXPECT_FALSE(s.cleanupQueue().queueMinimized());
  EXPECT_FALSE(s.shown().searchOpen());
  EXPECT_EQ(s.machine().trashCount(), 0);
  EXPECT_EQ(s.run().scanRoot(), "");
  EXPECT_FALSE(s.shown().menuNode());
  EXPECT_FALSE(s.removal().criticalWarning());
  EXPECT_TRUE(s.choices().recents().empty());
  EXPECT_TRUE(s.result().grewPaths().empty());
  EXPECT_FALSE(s.messages().toast());
  EXPECT_FALSE(s.messages().failure());
  EXPECT_FALSE(s.selection().focused());
  EXPECT_TRUE(s.selection().selected().empty());
  EXPECT_TRUE(s.selection().selectedNodes().empty());
  EXPECT_FALSE(s.shown().heatmap());
  EXPECT_TRUE(s.comparison().compareRows().empty());
  EXPECT_EQ(s.comparison().compareLeftName(), "");
  EXPECT_EQ(s.comparison().compareRightName(), "");
  EXPECT_FALSE(s.watch().watching());
  EXPECT_EQ(s.watch().watchPath(), "");
  EXPECT_TRUE(s.choices().pins().empty());
  EXPECT_FALSE(s.result().scanStats());
  EXPECT_TRUE(s.result().largest().empty());
  EXPECT_TRUE(s.result().emptyFolders().empty());
  EXPECT_TRUE(s.choices().excludes().empty());
  EXPECT_FALSE(s.shown().aiOpen());
  EXPECT_FALSE(s.shown().ocrOpen());
  EXPECT_FALSE(s.navigation().current());
}

TEST_F(ScanSessionTest, modes_are_numbered_in_the_order_of_their_buttons) {
  EXPECT_EQ(static_cast<int>(VizMode::treemap), 0);
  EXPECT_EQ(static_cast<int>(VizMode::compare), 4);
  EXPECT_EQ(static_cast<int>(VizMode::aliases), 6);
  EXPECT_EQ(static_cast<int>(VizMode::safe), 10);
}

TEST_F(Toast, a_toast_is_shown_for_2800_milliseconds) {
  session().messages().flash("Hello");
  EXPECT_EQ(session().messages().toast(), "Hello");
  dispatch().advance(milliseconds(2799));
  runMain();
  EXPECT_EQ(session().messages().toast(), "Hello");
  dispatch().advance(milliseconds(1));
  runMain();
  EXPECT_EQ(session().messages().toast(), std::nullopt);
}

TEST_F(Toast, a_toast_with_another_text_is_shown_for_its_full_time) {
  session().messages().flash("first");
  dispatch().advance(milliseconds(1000));
  session().messages().flash("second");
  dispatch().advance(milliseconds(1800));
  runMain();
  EXPECT_EQ(session().messages().toast(), "second");
  dispatch().advance(milliseconds(999));
  runMain();
  EXPECT_EQ(session().messages().toast(), "second");
  dispatch().advance(milliseconds(1));
  runMain();
  EXPECT_EQ(session().messages().toast(), std::nullopt);
}

TEST_F(Toast, a_toast_shown_twice_disappears_with_the_timer_of_the_first) {
  session().messages().flash("same");
  dispatch().advance(milliseconds(1000));
  session().messages().flash("same");
  dispatch().advance(milliseconds(1800));
  runMain();
  EXPECT_EQ(session().messages().toast(), std::nullopt);
}

TEST_F(Toast, a_toast_signals_when_it_appears_and_disappears) {
  QSignalSpy toast(&session().messages(), &Messages::toastChanged);
  session().messages().flash("first");
  EXPECT_EQ(toast.count(), 1);
  session().messages().flash("second");
  EXPECT_EQ(toast.count(), 2);
  dispatch().advance(milliseconds(2800));
  runMain();
  EXPECT_EQ(toast.count(), 3);
}

TEST_F(Toast, a_toast_may_time_out_after_the_session_is_gone) {
  session().messages().flash("Hello");
  endSession();
  dispatch().advance(milliseconds(2800));
  EXPECT_EQ(dispatch().drain(Queue::main), 1u);
}

TEST_F(ScanSessionTest, a_failure_stays_whatever_toasts_are_shown_until_it_is_dismissed) {
  const QSignalSpy changed(&session().messages(), &Messages::failureChanged);
  session().messages().tellFailure("first");
  session().messages().flash("Hello");
  dispatch().advance(milliseconds(10000));
  runMain();
  EXPECT_EQ(session().messages().failure(), "first");
  session().messages().dismissFailure();
  EXPECT_FALSE(session().messages().failure());
  session().messages().dismissFailure();
  EXPECT_EQ(changed.count(), 2);
}

TEST_F(ScanSessionTest, a_failure_is_shown_again_once_a_later_one_is_dismissed) {
  const QSignalSpy changed(&session().messages(), &Messages::failureChanged);
  session().messages().tellFailure("first");
  session().messages().tellFailure("second");
  EXPECT_EQ(session().messages().failure(), "second");
  EXPECT_EQ(session().messages().failures(), (std::vector<std::string>{"first", "second"}));
  session().messages().dismissFailure();
  EXPECT_EQ(session().messages().failure(), "first");
  session().messages().dismissFailure();
  EXPECT_FALSE(session().messages().failure());
  EXPECT_EQ(changed.count(), 4);
}

TEST_F(ScanSessionTest, the_same_failure_is_kept_once) {
  const QSignalSpy changed(&session().messages(), &Messages::failureChanged);
  for (const char* text : {"first", "first", "second", "first"})
    session().messages().tellFailure(text);
  EXPECT_EQ(session().messages().failures(), (std::vector<std::string>{"second", "first"}));
  EXPECT_EQ(changed.count(), 3);
}

TEST_F(ScanSessionTest, the_number_of_failures_is_limited) {
  for (std::size_t i = 0; i <= Messages::failuresLimit; ++i)
    session().messages().tellFailure(std::to_string(i));
  EXPECT_EQ(session().messages().failures().size(), Messages::failuresLimit);
  EXPECT_EQ(session().messages().failures().front(), "1");
}

}  // namespace
}  // namespace tessaly
