#include "app/desktop/WindowStart.h"

#include <gtest/gtest.h>
#include <memory>

#include "app/desktop/WindowPolicy.h"
#include "support/FakeStatusBarExtra.h"
#include "support/HandSteppedDispatch.h"

namespace tessaly {
namespace {

using Presence = StatusBarExtra::Presence;
using WindowPolicy::Start;

TEST(WindowPolicy, the_window_is_shown_at_once_unless_the_start_is_hidden) {
  for (const Presence presence : {Presence::unknown, Presence::shown, Presence::absent})
    EXPECT_EQ(WindowPolicy::atStart(false, presence, false), Start::show);
}

TEST(WindowPolicy, the_window_is_hidden_only_if_there_is_a_status_bar) {
  EXPECT_EQ(WindowPolicy::atStart(true, Presence::shown, false), Start::hide);
  EXPECT_EQ(WindowPolicy::atStart(true, Presence::shown, true), Start::hide);
  EXPECT_EQ(WindowPolicy::atStart(true, Presence::absent, true), Start::show);
  EXPECT_EQ(WindowPolicy::atStart(true, Presence::unknown, true), Start::show);
}

TEST(WindowPolicy, a_hidden_start_waits_for_the_status_bar) {
  EXPECT_EQ(WindowPolicy::atStart(true, Presence::unknown, false), Start::wait);
  EXPECT_EQ(WindowPolicy::atStart(true, Presence::absent, false), Start::wait);
}

TEST(WindowPolicy, closing_keeps_the_program_only_if_there_is_a_status_bar) {
  EXPECT_FALSE(WindowPolicy::quitsOnClose(Presence::shown));
  EXPECT_TRUE(WindowPolicy::quitsOnClose(Presence::absent));
  EXPECT_TRUE(WindowPolicy::quitsOnClose(Presence::unknown));
}

class WindowStartTest : public testing::Test {
 protected:
  HandSteppedDispatch dispatch_;
  FakeStatusBarExtra extra_;
  int shows_ = 0;
  bool quitsOnClose_ = false;
  std::unique_ptr<WindowStart> start_ = std::make_unique<WindowStart>(
      dispatch_, extra_,
      WindowStart::Services{.show = [this] { ++shows_; },
                            .setQuitsOnClose = [this](bool quits) { quitsOnClose_ = quits; }});
};

TEST_F(WindowStartTest, the_window_is_shown_once) {
  start_->begin(false);
  EXPECT_EQ(shows_, 1);
  extra_.become(Presence::absent);
  extra_.become(Presence::shown);
  EXPECT_FALSE(dispatch_.advanceToNextDue());
  EXPECT_EQ(shows_, 1);
}

TEST_F(WindowStartTest, nothing_is_shown_before_begin) {
  extra_.become(Presence::absent);
  EXPECT_EQ(shows_, 0);
}

TEST_F(WindowStartTest, the_window_stays_hidden_if_there_is_a_status_bar) {
  start_->begin(true);
  EXPECT_EQ(shows_, 0);
  extra_.become(Presence::shown);
  dispatch_.advanceToNextDue();
  dispatch_.drainAll();
  extra_.become(Presence::absent);
  EXPECT_EQ(shows_, 0);
}

TEST_F(WindowStartTest, the_window_stays_hidden_if_the_status_bar_appears_in_time) {
  start_->begin(true);
  extra_.become(Presence::absent);
  dispatch_.advance(WindowStart::patience / 2);
  dispatch_.drainAll();
  EXPECT_EQ(shows_, 0);
  extra_.become(Presence::shown);
  dispatch_.advance(WindowStart::patience);
  dispatch_.drainAll();
  EXPECT_EQ(shows_, 0);
}

TEST_F(WindowStartTest, the_window_is_shown_late_if_there_is_no_status_bar) {
  start_->begin(true);
  extra_.become(Presence::absent);
  dispatch_.advance(WindowStart::patience);
  dispatch_.drainAll();
  EXPECT_EQ(shows_, 1);
}

TEST_F(WindowStartTest, the_window_is_shown_late_if_the_desktop_never_answers) {
  start_->begin(true);
  dispatch_.advance(WindowStart::patience);
  dispatch_.drainAll();
  EXPECT_EQ(shows_, 1);
}

TEST_F(WindowStartTest, a_window_requested_meanwhile_is_left_as_it_is) {
  start_->begin(true);
  start_->settle();
  dispatch_.advance(WindowStart::patience);
  dispatch_.drainAll();
  EXPECT_EQ(shows_, 0);
}

TEST_F(WindowStartTest, closing_quits_while_there_is_no_status_bar) {
  EXPECT_TRUE(quitsOnClose_);
  start_->begin(false);
  extra_.become(Presence::shown);
  EXPECT_FALSE(quitsOnClose_);
  extra_.become(Presence::absent);
  EXPECT_TRUE(quitsOnClose_);
}

TEST_F(WindowStartTest, nothing_is_shown_after_the_destruction) {
  start_->begin(true);
  start_.reset();
  extra_.become(Presence::shown);
  dispatch_.advance(WindowStart::patience);
  dispatch_.drainAll();
  EXPECT_EQ(shows_, 0);
}

}  // namespace
}  // namespace tessaly
