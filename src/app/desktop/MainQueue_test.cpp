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

TEST(MainQueue, runs_nothing_inside_post) {
  MainQueue queue;
  bool ran = false;
  queue.post([&] { ran = true; });
  EXPECT_FALSE(ran);
  QCoreApplication::processEvents();
  EXPECT_TRUE(ran);
}

TEST(MainQueue, keeps_the_order_in_which_work_was_handed_over) {
  MainQueue queue;
  std::vector<int> order;
  for (int i = 0; i < 50; ++i) queue.post([&order, i] { order.push_back(i); });
  QCoreApplication::processEvents();
  ASSERT_EQ(order.size(), 50u);
  for (int i = 0; i < 50; ++i) EXPECT_EQ(order[static_cast<std::size_t>(i)], i);
}

TEST(MainQueue, brings_work_of_another_thread_to_its_own) {
  MainQueue queue;
  QThread* ranOn = nullptr;
  std::thread worker([&] { queue.post([&] { ranOn = QThread::currentThread(); }); });
  eventuallyByEvents([&] { return ranOn != nullptr; }, "the work");
  worker.join();
  EXPECT_EQ(ranOn, QThread::currentThread());
}

TEST(MainQueue, drops_what_waits_when_it_goes) {
  auto queue = std::make_unique<MainQueue>();
  bool ran = false;
  queue->post([&] { ran = true; });
  queue.reset();
  QCoreApplication::processEvents();
  EXPECT_FALSE(ran);
}

TEST(MainQueue, runs_nothing_once_it_is_closed) {
  MainQueue queue;
  int ran = 0;
  // What is dropped may hold something that speaks up when it goes.
  auto token = std::shared_ptr<void>(nullptr, [&](void*) { queue.post([&] { ++ran; }); });
  queue.post([&ran, token = std::move(token)] { ++ran; });
  queue.close();
  queue.post([&] { ++ran; });
  QCoreApplication::processEvents();
  EXPECT_EQ(ran, 0);
}

}  // namespace
}  // namespace tessaly
