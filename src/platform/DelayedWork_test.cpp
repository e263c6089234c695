#include "platform/DelayedWork.h"

#include <gtest/gtest.h>
#include <string>

namespace tessaly {
namespace {

using Queue = Dispatch::Queue;
using Time = DelayedWork::Time;

TEST(DelayedWork, an_empty_list_has_no_work_due) {
  DelayedWork works;
  EXPECT_FALSE(works.nextDue());
  EXPECT_FALSE(works.takeDue(Time::max()));
}

TEST(DelayedWork, each_piece_of_work_is_returned_once_and_not_before_its_time) {
  DelayedWork works;
  works.add(Time(10), Queue::utility, [] {});
  EXPECT_EQ(works.nextDue(), Time(10));
  EXPECT_FALSE(works.takeDue(Time(9)));
  const auto item = works.takeDue(Time(10));
  ASSERT_TRUE(item);
  EXPECT_EQ(item->queue, Queue::utility);
  EXPECT_FALSE(works.takeDue(Time(10)));
}

TEST(DelayedWork, work_is_returned_by_time_and_then_in_the_order_of_adding) {
  DelayedWork works;
  std::string ran;
  works.add(Time(20), Queue::main, [&] { ran += 'd'; });
  works.add(Time(10), Queue::main, [&] { ran += 'b'; });
  works.add(Time(10), Queue::main, [&] { ran += 'c'; });
  works.add(Time(5), Queue::main, [&] { ran += 'a'; });
  while (const auto item = works.takeDue(Time(20))) item->work();
  EXPECT_EQ(ran, "abcd");
}

}  // namespace
}  // namespace tessaly
