// How far the threads of a walk read ahead of a caller that has stopped taking items, and how many
// threads there are.
#include <atomic>
#include <filesystem>
#include <fstream>
#include <gtest/gtest.h>
#include <string>
#include <thread>

#include "platform/DirectoryWalk.h"
#include "platform/linux/walk/ThreadCount.h"
#include "support/Eventually.h"
#include "support/OwnProcess.h"
#include "support/TempTree.h"

namespace tessaly {
namespace {

TEST(ThreadsOfAWalk, a_walk_has_two_to_four_threads_by_the_number_of_cores) {
  for (const auto& [cores, threads] :
       {std::pair(0U, 2), {1U, 2}, {2U, 2}, {3U, 3}, {4U, 4}, {5U, 4}, {64U, 4}}) {
    EXPECT_EQ(walk::threadCount(0, cores), threads) << cores;
  }
}

TEST(ThreadsOfAWalk, a_walk_has_as_many_threads_as_requested) {
  for (const int wanted : {1, 2, 3, 8}) EXPECT_EQ(walk::threadCount(wanted, 64), wanted);
}

TEST(ThreadsOfAWalk, the_threads_of_a_walk_end_with_it) {
  const TempTree tree("folder/\n");
  const OwnProcess before = OwnProcess::now();
  for (const int wanted : {0, 1, 2, 4}) {
    const int all = walk::threadCount(wanted, std::thread::hardware_concurrency());
    {
      const DirectoryWalk walk(tree.path(), {}, wanted);
      EXPECT_EQ(OwnProcess::now().threads, before.threads + static_cast<std::size_t>(all - 1));
    }
    // A thread that has ended is still listed for a moment.
    EXPECT_EQ(settled(before), before) << wanted;
  }
}

// Whether all other threads of the process are idle at this moment.
bool doOthersSleep() {
  std::size_t awake = 0;
  std::error_code gone;
  for (const auto& task : std::filesystem::directory_iterator("/proc/self/task", gone)) {
    std::string line;
    std::getline(std::ifstream(task.path() / "stat"), line);
    if (line.find(") S ") == std::string::npos) ++awake;
  }
  return awake <= 1;
}

// A walk with one thread that reads ahead, whose caller takes one item and then no more. Counts the
// folders of the second level for which the walk asks.
class ReadingAhead : public testing::Test {
 protected:
  DirectoryWalk walkOf(const TempTree& tree) {
    const auto decide = [this](const DirectoryWalk::Candidate& folder) {
      if (folder.depth == 2) ++count_;
      return DirectoryWalk::Descent{};
    };
    return DirectoryWalk(tree.path(), decide, 2);
  }

  std::size_t countWhen(std::size_t expected, const TempTree& tree) {
    DirectoryWalk walk = walkOf(tree);
    EXPECT_NE(walk.next(), nullptr);
    return countAtRest(expected);
  }

  // The count after `expected` folders have been reported and the threads are idle.
  std::size_t countAtRest(std::size_t expected) {
    eventually([&] { return count_ >= expected; }, "folders that are read ahead");
    std::size_t seen = 0;
    int looks = 0;
    eventually(
        [&] {
          const std::size_t now = count_;
          looks = now == seen && doOthersSleep() ? looks + 1 : 0;
          seen = now;
          return looks == 20;
        },
        "the end of reading ahead");
    return seen;
  }

  std::atomic<std::size_t> count_ = 0;
};

// The root, 2,048 folders in it and all but one of the folders in these are 4,096. The caller and
// the thread may each be reading one more.
TEST_F(ReadingAhead, reading_ahead_stops_after_4096_folders) {
  const TempTree tree("folder-####/ x4000\n  inner/\n");
  const std::size_t count = countWhen(2047, tree);
  EXPECT_GE(count, 2047U);
  EXPECT_LE(count, 2050U);
}

// The limit is reached with the 60 folders in the root and 1,001 items in each of 33 of them.
TEST_F(ReadingAhead, reading_ahead_stops_after_32768_items) {
  const TempTree tree("folder-##/ x60\n  inner/\n  film### x1000\n");
  const std::size_t count = countWhen(33, tree);
  EXPECT_GE(count, 33U);
  EXPECT_LE(count, 35U);
}

// If it resumed only after the caller had taken all items, the caller would read alone.
TEST_F(ReadingAhead, reading_ahead_resumes_when_the_caller_has_taken_half_of_the_items) {
  const TempTree tree("folder-####/ x4000\n  inner/\n");
  DirectoryWalk walk = walkOf(tree);
  ASSERT_NE(walk.next(), nullptr);
  EXPECT_LE(countAtRest(2047), 2050U);
  for (int taken = 1; taken < 2200; ++taken) ASSERT_NE(walk.next(), nullptr);
  eventually([&] { return count_ >= 3000; }, "as many again, read ahead");
}

TEST_F(ReadingAhead, reading_ahead_continues_while_the_caller_takes_items) {
  const TempTree tree("folder-####/ x4000\n  inner/\n");
  DirectoryWalk walk = walkOf(tree);
  ASSERT_NE(walk.next(), nullptr);
  eventually([&] { return count_ >= 2047; }, "folders that are read ahead");
  // 7,000 of the 8,000 items: the caller itself does not reach the last folders.
  for (int taken = 1; taken < 7000; ++taken) ASSERT_NE(walk.next(), nullptr);
  eventually([&] { return count_ == 4000; }, "the rest, read ahead");
  int rest = 0;
  while (walk.next() != nullptr) ++rest;
  EXPECT_EQ(rest, 8000 - 7000);
}

}  // namespace
}  // namespace tessaly
