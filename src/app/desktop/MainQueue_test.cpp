#include "app/desktop/MainQueue.h"

#include <gtest/gtest.h>
#include <memory>
#include <thread>
#include <utility>
#include <vector>

#include <QCoreApplication>
#include <QThread>

#include "support/EventuallyByEvents.h"

namespace tessaly {
namespace {

TEST(MainQueue, post_runs_nothing) {
  MainQueue queue;
  bool ran = false;
  queue.post([&] { ran = true; });
  EXPECT_FALSE(ran);
  QCoreApplication::processEvents();
  EXPECT_TRUE(ran);
}

TEST(MainQueue, work_runs_in_the_order_of_posting) {
  MainQueue queue;
  std::vector<int> order;
  for (int i = 0; i < 50; ++i) queue.post([&order, i] { order.push_back(i); });
  QCoreApplication::processEvents();
  ASSERT_EQ(order.size(), 50u);
  for (int i = 0; i < 50; ++i) EXPECT_EQ(order[static_cast<std::size_t>(i)], i);
}

TEST(MainQueue, work_of_another_thread_runs_on_the_queues_own) {
  MainQueue queue;
  QThread* ranOn = nullptr;
  std::thread worker([&] { queue.post([&] { ranOn = QThread::currentThread(); }); });
  eventuallyByEvents([&] { return ranOn != nullptr; }, "the work");
  worker.join();
  EXPECT_EQ(ranOn, QThread::currentThread());
}

TEST(MainQueue, destruction_drops_waiting_work) {
  auto queue = std::make_unique<MainQueue>();
  bool ran = false;
  queue->post([&] { ran = true; });
  queue.reset();
  QCoreApplication::processEvents();
  EXPECT_FALSE(ran);
}

TEST(MainQueue, a_closed_queue_runs_nothing) {
  MainQueue queue;
  int ran = 0;
  // Dropped work may own an object whose destructor posts.
  auto token = std::shared_ptr<void>(nullptr, [&](void*) { queue.post([&] { ++ran; }); });
  queue.post([&ran, token = std::move(token)] { ++ran; });
  queue.close();
  queue.post([&] { ++ran; });
  QCoreApplication::processEvents();
  EXPECT_EQ(ran, 0);
}

}  // namespace
}  // namespace tessaly
