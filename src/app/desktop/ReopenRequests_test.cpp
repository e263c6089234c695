#include "app/desktop/ReopenRequests.h"

#include <gtest/gtest.h>
#include <optional>
#include <poll.h>
#include <thread>

#include <QCoreApplication>
#include <QEventLoop>

#include "support/Eventually.h"
#include "support/TempTree.h"

namespace tessaly {
namespace {

class ReopenRequestsTest : public testing::Test {
 protected:
  bool startAgain() { return !SingleInstance::claim(place_, 0).has_value(); }

  TempTree tree_;
  SingleInstance::Address place_{tree_.at("run"), "tessaly"};
  int reopened_ = 0;
  ReopenRequests requests_{*SingleInstance::claim(place_), [this] { ++reopened_; }};
};

TEST_F(ReopenRequestsTest, later_starts_send_requests) {
  ASSERT_TRUE(startAgain());
  EXPECT_EQ(reopened_, 0);
  eventually(
      [&] {
        QCoreApplication::processEvents();
        return reopened_ > 0;
      },
      "the first request");
  ASSERT_TRUE(startAgain());
  eventually(
      [&] {
        QCoreApplication::processEvents();
        return reopened_ > 1;
      },
      "the second request");
  EXPECT_EQ(reopened_, 2);
}

TEST_F(ReopenRequestsTest, requests_end_when_the_instance_is_given_up) {
  requests_.giveUp();
  auto next = SingleInstance::claim(place_, 0);
  ASSERT_TRUE(next.has_value());
  EXPECT_TRUE(startAgain());
  QCoreApplication::processEvents();
  EXPECT_EQ(reopened_, 0);
  EXPECT_TRUE(next->takeRequests());
  requests_.giveUp();
}

TEST_F(ReopenRequestsTest, held_requests_wait_until_the_instance_is_given_up) {
  requests_.hold();
  std::optional<SingleInstance> next;
  std::thread start([&] { next = SingleInstance::claim(place_, 3600); });
  // The request has arrived and can be read.
  pollfd asked{requests_.descriptor(), POLLIN, 0};
  while (::poll(&asked, 1, -1) < 0) {
  }
  QCoreApplication::processEvents();
  EXPECT_EQ(reopened_, 0);
  requests_.giveUp();
  start.join();
  EXPECT_TRUE(next.has_value());
}

TEST(ReopenRequests, an_instance_that_cannot_lock_gets_no_requests) {
  TempTree tree("file\n");
  int reopened = 0;
  ReopenRequests requests(*SingleInstance::claim({tree.at("file/run"), "tessaly"}),
                          [&] { ++reopened; });
  QCoreApplication::processEvents();
  requests.giveUp();
  EXPECT_EQ(reopened, 0);
}

}  // namespace
}  // namespace tessaly
