#include "session/FieldChanges.h"

#include <functional>
#include <gmock/gmock.h>
#include <gtest/gtest.h>
#include <memory>
#include <string>
#include <vector>

#include "session/CleanupQueue.h"
#include "session/SessionFixture_test.h"
#include "session/Shown.h"

namespace tessaly {
namespace {

using testing::ElementsAre;
using testing::IsEmpty;

// A step over two parts, whose signals are recorded.
class AStep : public testing::Test {
 protected:
  AStep() {
    listen(*shown_, &Shown::paneChanged, "pane");
    listen(*shown_, &Shown::vizModeChanged, "vizMode");
    listen(queue_, &CleanupQueue::queueChanged, "queue");
    listen(queue_, &CleanupQueue::queueOpenChanged, "queueOpen");
  }

  template <class Part>
  void listen(Part& part, void (Part::*changed)(), const std::string& name) {
    QObject::connect(&part, changed, [this, name] {
      log_.push_back(name);
      if (then_) then_();
    });
  }

  std::unique_ptr<Shown> shown_ = std::make_unique<Shown>();
  CleanupQueue queue_;
  FieldChanges changes_;
  std::vector<std::string> log_;
  std::function<void()> then_;
};

TEST_F(AStep, a_step_announces_the_changes_of_all_parts_in_their_order) {
  shown_->setPane(changes_, MainPane::apps);
  queue_.addToQueue(changes_, file("/a", 1));
  shown_->setVizMode(changes_, VizMode::largest);
  EXPECT_THAT(log_, IsEmpty());
  changes_.announce();
  EXPECT_THAT(log_, ElementsAre("pane", "queue", "queueOpen", "vizMode"));
}

TEST_F(AStep, a_step_announces_a_field_once_and_only_if_it_changed) {
  shown_->setPane(changes_, MainPane::map);
  shown_->setVizMode(changes_, VizMode::largest);
  shown_->setVizMode(changes_, VizMode::list);
  changes_.announce();
  EXPECT_THAT(log_, ElementsAre("vizMode"));
  changes_.announce();
  EXPECT_THAT(log_, ElementsAre("vizMode"));
}

TEST_F(AStep, a_step_announces_the_same_field_of_two_parts_of_one_type) {
  CleanupQueue other;
  listen(other, &CleanupQueue::queueOpenChanged, "queueOpen of the other");
  queue_.addToQueue(changes_, file("/a", 1));
  other.addToQueue(changes_, file("/b", 1));
  changes_.announce();
  EXPECT_THAT(log_, ElementsAre("queue", "queueOpen", "queueOpen of the other"));
}

TEST_F(AStep, a_step_skips_a_part_that_a_receiver_deleted) {
  queue_.setQueueOpen(true);
  log_.clear();
  queue_.addToQueue(changes_, file("/a", 1));
  shown_->setPane(changes_, MainPane::apps);
  then_ = [this] { shown_.reset(); };
  changes_.announce();
  EXPECT_THAT(log_, ElementsAre("queue"));
}

TEST_F(AStep, a_receiver_may_start_another_step) {
  shown_->setPane(changes_, MainPane::apps);
  queue_.addToQueue(changes_, file("/a", 1));
  then_ = [this] {
    then_ = {};
    queue_.clearQueue();
  };
  changes_.announce();
  EXPECT_THAT(log_, ElementsAre("pane", "queue", "queueOpen", "queue", "queueOpen"));
  EXPECT_THAT(queue_.queue(), IsEmpty());
}

// The same for operations of the session that touch several parts.
using AStepOfTheSession = SessionFixture;

TEST_F(AStepOfTheSession, an_operation_stores_the_fields_of_all_parts_before_the_first_signal) {
  scanTo(folder("/r", 5, {file("/r/a", 5)}));
  session().selectAllCurrent();
  int steps = 0;
  const auto expectWhole = [&] {
    ++steps;
    EXPECT_EQ(session().cleanupQueue().queue().size(), 1U);
    EXPECT_TRUE(session().cleanupQueue().queueOpen());
    EXPECT_TRUE(session().selection().selected().empty());
    EXPECT_EQ(session().messages().toast(), "Queued 1 item");
  };
  QObject::connect(&session().cleanupQueue(), &CleanupQueue::queueChanged, expectWhole);
  QObject::connect(&session().selection(), &Selection::selectionChanged, expectWhole);
  QObject::connect(&session().messages(), &Messages::toastChanged, expectWhole);
  session().queueSelected();
  EXPECT_EQ(steps, 3);
}

TEST_F(AStepOfTheSession, a_scan_stores_its_whole_result_before_the_first_signal) {
  walks().at(0).result = folder("/r", 5, {file("/r/a", 5)});
  session().scan("/r");
  int steps = 0;
  const auto expectWhole = [&] {
    ++steps;
    EXPECT_EQ(session().run().status(), ScanStatus::complete);
    EXPECT_EQ(session().navigation().stack().size(), 1U);
    EXPECT_TRUE(session().result().scanStats().has_value());
    EXPECT_EQ(session().result().history().size(), 1U);
    EXPECT_EQ(session().choices().recents(), std::vector<std::string>{"/r"});
    EXPECT_TRUE(session().messages().toast().value_or("").starts_with("Scan complete"));
  };
  QObject::connect(&session().choices(), &Choices::recentsChanged, expectWhole);
  QObject::connect(&session().navigation(), &Navigation::stackChanged, expectWhole);
  QObject::connect(&session().run(), &ScanRun::statusChanged, expectWhole);
  QObject::connect(&session().result(), &ScanResult::historyChanged, expectWhole);
  QObject::connect(&session().messages(), &Messages::toastChanged, expectWhole);
  dispatch().drainAll();
  EXPECT_EQ(steps, 5);
}

}  // namespace
}  // namespace tessaly
