#include "support/SystemCallTrace.h"

#include <algorithm>
#include <cerrno>
#include <csignal>
#include <cstring>
#include <fcntl.h>
#include <gtest/gtest.h>
#include <stdexcept>
#include <sys/stat.h>
#include <sys/syscall.h>
#include <unistd.h>

#include "support/TempTree.h"

namespace tessaly {
namespace {

using End = TracedRun::End;

class SystemCallTraceTest : public ::testing::Test {
 protected:
  void SetUp() override {
    const std::string obstacle = SystemCallTrace::obstacle();
    if (!obstacle.empty()) GTEST_SKIP() << obstacle;
  }
};

// Creates two folders one after the other.
std::function<std::string()> makeTwo(const TempTree& tree) {
  return [first = tree.at("first"), second = tree.at("second")]() -> std::string {
    if (mkdir(first.c_str(), 0700) != 0) return std::string("first: ") + std::strerror(errno);
    if (mkdir(second.c_str(), 0700) != 0) return std::string("second: ") + std::strerror(errno);
    return "made";
  };
}

bool isThere(const TempTree& tree, const char* name) {
  return access(tree.at(name).c_str(), F_OK) == 0;
}

TEST_F(SystemCallTraceTest, the_trace_reports_the_result_of_the_body_and_its_calls) {
  const TempTree tree;
  const TracedRun run = SystemCallTrace::of(makeTwo(tree));
  EXPECT_EQ(run.end, End::finished);
  EXPECT_EQ(run.told, "made");
  EXPECT_EQ(run.failedCall, -1);
  EXPECT_EQ(run.calls.size(), 2u);
  EXPECT_TRUE(isThere(tree, "first"));
  EXPECT_TRUE(isThere(tree, "second"));
}

TEST_F(SystemCallTraceTest, long_results_are_reported_completely) {
  const TracedRun run = SystemCallTrace::of([] { return std::string(300000, 'x'); });
  EXPECT_EQ(run.told, std::string(300000, 'x'));
}

TEST_F(SystemCallTraceTest, the_child_is_killed_before_and_after_each_call) {
  struct State {
    bool first;
    bool second;
    bool operator==(const State&) const = default;
  };
  std::vector<State> found;
  while (true) {
    const TempTree tree;
    const TracedRun run = SystemCallTrace::killedAt(found.size() + 1, makeTwo(tree));
    if (run.end != End::killed) {
      EXPECT_EQ(run.told, "made");
      break;
    }
    found.push_back({isThere(tree, "first"), isThere(tree, "second")});
  }
  EXPECT_EQ(found,
            (std::vector<State>{{false, false}, {true, false}, {true, false}, {true, true}}));
}

TEST_F(SystemCallTraceTest, answers_of_the_system_are_changed) {
  const TempTree tree("file 4K");
  const std::int64_t told = 12345;
  const SystemCallTrace::Answer answer{
      .number = SYS_statx,
      .argument = 4,
      .offset = offsetof(struct statx, stx_size),
      .bytes = std::string(reinterpret_cast<const char*>(&told), sizeof told)};
  const TracedRun run = SystemCallTrace::answering(answer, [path = tree.at("file")] {
    struct statx attributes {};
    const int result = statx(AT_FDCWD, path.c_str(), 0, STATX_SIZE, &attributes);
    const std::string size = std::to_string(attributes.stx_size);
    const int missing = statx(AT_FDCWD, (path + "-").c_str(), 0, STATX_SIZE, &attributes);
    return std::to_string(result) + " " + size + " " + std::to_string(missing);
  });
  EXPECT_EQ(run.end, End::finished);
  EXPECT_EQ(run.told, "0 12345 -1");
}

TEST_F(SystemCallTraceTest, one_call_fails_without_effect) {
  {
    const TempTree tree;
    const TracedRun run = SystemCallTrace::failingAt(1, EDQUOT, makeTwo(tree));
    EXPECT_EQ(run.end, End::finished);
    EXPECT_EQ(run.told, std::string("first: ") + std::strerror(EDQUOT));
    EXPECT_EQ(run.failedCall, run.calls.front());
    EXPECT_FALSE(isThere(tree, "first"));
  }
  {
    const TempTree tree;
    const TracedRun run = SystemCallTrace::failingAt(2, EIO, makeTwo(tree));
    EXPECT_EQ(run.told, std::string("second: ") + std::strerror(EIO));
    EXPECT_TRUE(isThere(tree, "first"));
    EXPECT_FALSE(isThere(tree, "second"));
  }
  {
    const TempTree tree;
    const TracedRun run = SystemCallTrace::failingAt(3, EIO, makeTwo(tree));
    EXPECT_EQ(run.told, "made");
    EXPECT_EQ(run.failedCall, -1);
  }
}

TEST_F(SystemCallTraceTest, one_call_of_a_number_fails) {
  const auto body = [] {
    std::string told;
    for (int round = 0; round < 3; ++round) {
      ::syscall(SYS_getuid);
      told += ::syscall(SYS_getppid) < 0 ? "failed " : "ran ";
    }
    return told;
  };
  EXPECT_EQ(SystemCallTrace::failingNth(SYS_getppid, 2, EIO, body).told, "ran failed ran ");
  const TracedRun run = SystemCallTrace::failingNth(SYS_getppid, 4, EIO, body);
  EXPECT_EQ(run.told, "ran ran ran ");
  EXPECT_EQ(run.failedCall, -1);
}

TEST_F(SystemCallTraceTest, refused_calls_always_fail) {
  const TempTree tree;
  const SystemCallTrace::Refusals refusals = {{SYS_getppid, ENOSYS}};
  const TracedRun run = SystemCallTrace::refusing(refusals, [&]() -> std::string {
    for (int round = 0; round < 3; ++round) {
      if (::syscall(SYS_getppid) != -1 || errno != ENOSYS) return "ran";
    }
    return makeTwo(tree)();
  });
  EXPECT_EQ(run.told, "made");
  EXPECT_EQ(run.failedCall, SYS_getppid);
}

TEST_F(SystemCallTraceTest, the_parent_can_act_at_any_stop) {
  std::vector<std::string> told;
  while (true) {
    const TempTree tree;
    bool isDone = false;
    const auto act = [&] {
      isDone = true;
      ::mkdir(tree.at("second").c_str(), 0700);
    };
    const TracedRun run = SystemCallTrace::interruptedAt(told.size() + 1, act, makeTwo(tree));
    EXPECT_EQ(run.wasInterrupted, isDone);
    EXPECT_EQ(run.end, End::finished);
    if (!run.wasInterrupted) break;
    told.push_back(run.told);
  }
  const std::string late = std::string("second: ") + std::strerror(EEXIST);
  ASSERT_EQ(told.size(), 4U);
  EXPECT_EQ(std::vector(told.begin(), told.begin() + 3), std::vector(3, late));
}

TEST_F(SystemCallTraceTest, calls_for_memory_are_not_counted) {
  const TracedRun run = SystemCallTrace::failingAt(1, EIO, [] {
    const std::string large(64U << 20U, 'x');
    return std::string(::syscall(SYS_getppid) < 0 && large.back() == 'x' ? "failed" : "ran");
  });
  EXPECT_EQ(run.told, "failed");
  EXPECT_EQ(run.failedCall, SYS_getppid);
  EXPECT_GE(std::count(run.calls.begin(), run.calls.end(), SYS_mmap), 1);
}

TEST_F(SystemCallTraceTest, a_body_that_crashes_exits_or_throws_is_reported) {
  const TracedRun crashed = SystemCallTrace::of([]() -> std::string {
    ::signal(SIGTERM, SIG_DFL);
    ::raise(SIGTERM);
    return "";
  });
  EXPECT_EQ(crashed.end, End::crashed);
  EXPECT_EQ(crashed.told, "child ended by signal " + std::to_string(SIGTERM));
  const TracedRun left = SystemCallTrace::of([]() -> std::string { _exit(7); });
  EXPECT_EQ(left.end, End::crashed);
  EXPECT_EQ(left.told, "child left with 7");
  const TracedRun thrown =
      SystemCallTrace::of([]() -> std::string { throw std::runtime_error("no"); });
  EXPECT_EQ(thrown.end, End::finished);
  EXPECT_EQ(thrown.told, "exception: no");
}

TEST_F(SystemCallTraceTest, signals_reach_the_body) {
  static volatile std::sig_atomic_t seen = 0;
  const TracedRun run = SystemCallTrace::of([] {
    ::signal(SIGUSR1, [](int) { seen = 1; });
    ::raise(SIGUSR1);
    return std::string(seen == 1 ? "seen" : "not seen");
  });
  EXPECT_EQ(run.told, "seen");
}

}  // namespace
}  // namespace tessaly
