#include "session/ProgressRelay.h"

#include <gtest/gtest.h>
#include <optional>
#include <string>
#include <thread>
#include <utility>
#include <vector>

#include "platform/ThreadedDispatch.h"
#include "support/HandSteppedDispatch.h"
#include "support/MainLoop.h"

namespace tessaly {
namespace {

using Queue = Dispatch::Queue;

class ProgressRelayTest : public ::testing::Test {
 protected:
  HandSteppedDispatch dispatch_;
  std::vector<std::string> lines_;
  std::vector<double> percents_;
  std::optional<ProgressRelay> relay_{
      std::in_place, dispatch_,
      ProgressRelay::Receiver{[this](const std::string& line) { lines_.push_back(line); },
                              [this](double fraction) { percents_.push_back(fraction); }}};
};

TEST_F(ProgressRelayTest, progress_is_delivered_on_the_main_queue_only) {
  relay_->line("a");
  relay_->percent(0.5);
  EXPECT_TRUE(lines_.empty());
  EXPECT_TRUE(percents_.empty());
  dispatch_.drain(Queue::main);
  EXPECT_EQ(lines_, std::vector<std::string>{"a"});
  EXPECT_EQ(percents_, std::vector<double>{0.5});
}

TEST_F(ProgressRelayTest, one_update_of_each_kind_waits_however_much_is_reported) {
  for (int k = 0; k < 100'000; ++k) {
    relay_->line(std::to_string(k));
    relay_->percent(k / 100'000.0);
  }
  EXPECT_EQ(dispatch_.waiting(Queue::main), 2u);
  dispatch_.drain(Queue::main);
  EXPECT_EQ(lines_, std::vector<std::string>{"99999"});
  EXPECT_EQ(percents_, std::vector<double>{0.99999});
}

TEST_F(ProgressRelayTest, a_report_after_a_delivery_is_delivered_too) {
  relay_->line("a");
  dispatch_.drain(Queue::main);
  EXPECT_EQ(dispatch_.waiting(Queue::main), 0u);
  relay_->line("b");
  relay_->line("c");
  dispatch_.drain(Queue::main);
  EXPECT_EQ(lines_, (std::vector<std::string>{"a", "c"}));
}

TEST_F(ProgressRelayTest, lines_and_percentages_are_delivered_separately) {
  relay_->line("a");
  EXPECT_EQ(dispatch_.waiting(Queue::main), 1u);
  relay_->percent(1);
  EXPECT_EQ(dispatch_.waiting(Queue::main), 2u);
  dispatch_.step(Queue::main);
  EXPECT_EQ(lines_.size(), 1u);
  EXPECT_TRUE(percents_.empty());
}

TEST_F(ProgressRelayTest, progress_is_delivered_before_work_posted_after_the_last_report) {
  std::string atEnd;
  relay_->line("first");
  relay_->line("last");
  dispatch_.async(Queue::main, [&] { atEnd = lines_.empty() ? "" : lines_.back(); });
  dispatch_.drain(Queue::main);
  EXPECT_EQ(atEnd, "last");
}

TEST_F(ProgressRelayTest, the_relay_may_be_destroyed_before_its_reports_are_delivered) {
  relay_->line("late");
  relay_.reset();
  dispatch_.drain(Queue::main);
  EXPECT_EQ(lines_, std::vector<std::string>{"late"});
}

TEST(ProgressRelayThreads, the_last_report_of_another_thread_is_delivered_before_its_end) {
  MainLoop mainLoop;
  ThreadedDispatch dispatch([&](Dispatch::Work work) { mainLoop.post(std::move(work)); });
  std::string newest;
  double percent = 0;
  int deliveries = 0;
  bool isDone = false;
  ProgressRelay relay(dispatch, {[&](const std::string& line) {
                                   newest = line;
                                   ++deliveries;
                                 },
                                 [&](double fraction) { percent = fraction; }});
  dispatch.async(Queue::userInitiated, [&] {
    for (int k = 1; k <= 20'000; ++k) {
      relay.line(std::to_string(k));
      relay.percent(k);
    }
    dispatch.async(Queue::main, [&] { isDone = true; });
  });
  mainLoop.runUntil([&] { return isDone; });
  EXPECT_EQ(newest, "20000");
  EXPECT_EQ(percent, 20'000);
  EXPECT_GE(deliveries, 1);
}

}  // namespace
}  // namespace tessaly
