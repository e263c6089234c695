#include "platform/linux/process/Reaper.h"

#include <csignal>
#include <gtest/gtest.h>
#include <sys/syscall.h>
#include <sys/wait.h>
#include <unistd.h>

#include "support/Eventually.h"
#include "support/RefusedThreads.h"

namespace tessaly::process {
namespace {

// A child that runs until it is killed.
pid_t child() {
  const pid_t number = ::fork();
  if (number != 0) return number;
  while (true) ::pause();
}

Child held(pid_t number) {
  return {number, FileDescriptor(static_cast<int>(::syscall(SYS_pidfd_open, number, 0)))};
}

// Kills it and waits until it can be reaped.
void end(pid_t number) {
  ::kill(number, SIGKILL);
  siginfo_t told{};
  ASSERT_EQ(::waitid(P_PID, static_cast<id_t>(number), &told, WEXITED | WNOWAIT), 0);
}

// Whether it still is a child of this process, running or ended.
bool isThere(pid_t number) {
  return ::kill(number, 0) == 0;
}

// Never destroyed, since the thread of the reaper may outlive the test.
struct Refused {
  RefusedThreads system;
  Reaper reaper{system.startThread()};

  static Refused& one() {
    static Refused& all = *new Refused;
    return all;
  }
};

TEST(Reaper, a_child_that_ended_while_the_reaper_had_no_thread_is_reaped) {
  Refused& refused = Refused::one();
  refused.system.refuse();
  const pid_t number = child();
  ASSERT_GT(number, 0);
  refused.reaper.adopt(held(number));
  EXPECT_GT(refused.system.refused(), 0);
  end(number);
  EXPECT_TRUE(isThere(number));
  refused.reaper.catchUp();
  EXPECT_FALSE(isThere(number));
}

TEST(Reaper, a_running_child_is_reaped_once_the_reaper_has_a_thread) {
  Refused& refused = Refused::one();
  refused.system.refuse();
  const pid_t number = child();
  ASSERT_GT(number, 0);
  refused.reaper.adopt(held(number));
  refused.reaper.catchUp();
  refused.system.relent();
  refused.reaper.catchUp();
  ::kill(number, SIGKILL);
  EXPECT_TRUE(eventually([&] { return !isThere(number); }, "the child's end"));
}

}  // namespace
}  // namespace tessaly::process
