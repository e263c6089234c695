#include "platform/Process.h"

#include <cerrno>
#include <csignal>
#include <cstdlib>
#include <fcntl.h>
#include <filesystem>
#include <fstream>
#include <gmock/gmock.h>
#include <gtest/gtest.h>
#include <pthread.h>
#include <sys/resource.h>
#include <thread>
#include <unistd.h>

#include "support/Descriptor.h"
#include "support/Eventually.h"
#include "support/ForkedChild.h"
#include "support/OwnProcess.h"
#include "support/TempTree.h"
#include "support/TestTool.h"

namespace tessaly {
namespace {

Process::Launch tool(std::vector<std::string> steps) {
  return {.path = testTool(),
          .args = std::move(steps),
          .cwd = std::nullopt,
          .environment = {},
          .output = Process::Stream::captured,
          .error = Process::Stream::captured};
}

// Its output after it has exited, with errors in parentheses.
std::string outputOf(const Process::Launch& launch) {
  Result<Process> process = Process::launch(launch);
  if (!process) return "(" + process.error().description() + ")";
  process.value().waitUntil(Deadline::never());
  std::string output = process.value().readOutput(Deadline::never());
  const Process::Exit exit = *process.value().exit();
  if (exit.isSuccess()) return output;
  return output + "(" + std::to_string(exit.status) + ", " + std::to_string(exit.signal) + ")";
}

Process started(std::vector<std::string> steps) {
  Result<Process> process = Process::launch(tool(std::move(steps)));
  EXPECT_TRUE(process.ok());
  return std::move(process).value();
}

TEST(Process, arguments_are_passed_unchanged) {
  EXPECT_EQ(outputOf(tool({"say", "a b", "say", "'$HOME' \"*\" \\n;", "say", "", "say", "\xff\n"})),
            "a b'$HOME' \"*\" \\n;\xff\n");
}

TEST(Process, the_exit_status_is_reported) {
  Process process = started({"exit", "3"});
  EXPECT_EQ(process.exit(), std::nullopt);
  EXPECT_TRUE(process.waitUntil(Deadline::never()));
  EXPECT_EQ(process.exit(), (Process::Exit{.status = 3, .signal = 0}));
  EXPECT_FALSE(process.exit()->isSuccess());
}

TEST(Process, the_signal_that_ended_a_program_is_reported) {
  Process process = started({"sleep"});
  process.terminate();
  EXPECT_TRUE(process.waitUntil(Deadline::never()));
  EXPECT_EQ(process.exit(), (Process::Exit{.status = 0, .signal = SIGTERM}));
  EXPECT_FALSE(process.exit()->isSuccess());
  process.terminate();
}

TEST(Process, a_program_is_not_waited_for_past_the_deadline) {
  Process process = started({"sleep"});
  EXPECT_FALSE(process.waitUntil(Deadline::after(0)));
  EXPECT_FALSE(process.waitUntil(Deadline::after(0.02)));
  EXPECT_EQ(process.exit(), std::nullopt);
  process.terminate();
  EXPECT_TRUE(process.waitUntil(Deadline::never()));
  EXPECT_TRUE(process.waitUntil(Deadline::after(0)));
}

TEST(Process, terminate_sends_a_signal_that_the_program_can_handle) {
  const TempTree folder;
  const ToolMessages ready(folder.at("ready"));
  Process process = started({"record-term", folder.at("asked"), "tell", ready.path(), "sleep"});
  ready.wait();
  process.terminate();
  EXPECT_TRUE(process.waitUntil(Deadline::never()));
  EXPECT_EQ(process.exit(), Process::Exit{});
  EXPECT_EQ(access(folder.at("asked").c_str(), F_OK), 0);
}

TEST(Process, kill_ends_a_program_that_ignores_sigterm) {
  const TempTree folder;
  const ToolMessages ready(folder.at("ready"));
  Process process = started({"ignore-term", "tell", ready.path(), "sleep"});
  ready.wait();
  process.terminate();
  EXPECT_FALSE(process.waitUntil(Deadline::after(0.02)));
  process.kill();
  EXPECT_TRUE(process.waitUntil(Deadline::never()));
  EXPECT_EQ(process.exit(), (Process::Exit{.status = 0, .signal = SIGKILL}));
  process.kill();
}

TEST(Process, waiting_continues_after_interruptions_by_signals) {
  struct sigaction action {};
  action.sa_handler = [](int) {};
  struct sigaction before {};
  ASSERT_EQ(sigaction(SIGUSR1, &action, &before), 0);
  const TempTree folder;
  Hold hold(folder.at("hold"));
  Process process = started({"hold", hold.path()});
  const pthread_t waiter = pthread_self();
  std::thread interrupter([&] {
    for (int i = 0; i < 1000; ++i) pthread_kill(waiter, SIGUSR1);
    hold.release();
  });
  EXPECT_TRUE(process.waitUntil(Deadline::never()));
  interrupter.join();
  EXPECT_EQ(process.exit(), Process::Exit{});
  sigaction(SIGUSR1, &before, nullptr);
}

TEST(Process, a_program_starts_in_the_given_folder) {
  const TempTree folder("in\\shere/");
  Process::Launch launch = tool({"cwd"});
  launch.cwd = folder.at("in here");
  EXPECT_EQ(outputOf(launch), folder.at("in here"));
}

TEST(Process, a_program_without_a_given_folder_starts_in_the_current_one) {
  char here[4096];
  ASSERT_NE(getcwd(here, sizeof here), nullptr);
  EXPECT_EQ(outputOf(tool({"cwd"})), here);
}

TEST(Process, a_program_inherits_the_environment_with_the_given_variables) {
  setenv("TESSALY_TEST_OURS", "ours", 1);
  setenv("TESSALY_TEST_REPLACED", "ours", 1);
  Process::Launch launch = tool({"variable", "TESSALY_TEST_OURS", "variable",
                                 "TESSALY_TEST_REPLACED", "variable", "TESSALY_TEST_NEW"});
  launch.environment = {{"TESSALY_TEST_REPLACED", " its "}, {"TESSALY_TEST_NEW", "a=b"}};
  EXPECT_EQ(outputOf(launch), "ours its a=b");
  EXPECT_STREQ(getenv("TESSALY_TEST_REPLACED"), "ours");
  unsetenv("TESSALY_TEST_OURS");
  unsetenv("TESSALY_TEST_REPLACED");
}

TEST(Process, a_program_inherits_no_other_descriptors) {
  // Neither is closed automatically when a program is started.
  const Descriptor file(open("/dev/null", O_RDONLY));
  const Descriptor high(fcntl(file.get(), F_DUPFD, 700));
  ASSERT_TRUE(file && high);
  EXPECT_EQ(outputOf(tool({"descriptors"})), "0 1 2");
}

TEST(Process, a_program_starts_with_no_signal_blocked_or_ignored) {
  sigset_t all;
  sigset_t before;
  sigfillset(&all);
  ASSERT_EQ(pthread_sigmask(SIG_SETMASK, &all, &before), 0);
  const auto handler = std::signal(SIGINT, SIG_IGN);
  const std::string told = outputOf(tool({"signals"}));
  std::signal(SIGINT, handler);
  pthread_sigmask(SIG_SETMASK, &before, nullptr);
  // Signals 32 and 33 are internal to the C library, which ignores them when it starts a program.
  EXPECT_THAT(told, testing::AnyOf("SigBlk:\t0000000000000000\nSigIgn:\t0000000180000000\n",
                                   "SigBlk:\t0000000000000000\nSigIgn:\t0000000000000000\n"));
}

TEST(Process, the_exit_status_is_reported_even_if_sigchld_was_ignored) {
  for (const int flags : {0, SA_NOCLDWAIT}) {
    EXPECT_EQ(inForkedChild([&] {
                struct sigaction action {};
                action.sa_handler = flags == 0 ? SIG_IGN : SIG_DFL;
                action.sa_flags = flags;
                sigaction(SIGCHLD, &action, nullptr);
                return outputOf(tool({"exit", "5"}));
              }),
              "(5, 0)");
  }
}

TEST(Process, a_program_inherits_the_standard_input) {
  EXPECT_EQ(inForkedChild([]() -> std::string {
              int ends[2];
              if (pipe(ends) != 0 || write(ends[1], "given", 5) != 5) return "no pipe";
              dup2(ends[0], STDIN_FILENO);
              close(ends[0]);
              close(ends[1]);
              return outputOf(tool({"copy"}));
            }),
            "given");
}

TEST(Process, a_program_writes_to_inherited_streams) {
  EXPECT_EQ(inForkedChild([]() -> std::string {
              int ends[2];
              if (pipe(ends) != 0) return "no pipe";
              dup2(ends[1], STDOUT_FILENO);
              dup2(ends[1], STDERR_FILENO);
              Process::Launch launch = tool({"say", "it is ", "complain", "3"});
              launch.output = Process::Stream::inherited;
              launch.error = Process::Stream::inherited;
              const std::string captured = outputOf(launch);
              char buffer[100];
              const ssize_t count = read(ends[0], buffer, sizeof buffer);
              return captured +
                     std::string(buffer, count > 0 ? static_cast<std::size_t>(count) : 0);
            }),
            "it is " + std::string(3, 'x'));
}

TEST(Process, errors_are_not_mixed_into_the_captured_output) {
  EXPECT_EQ(outputOf(tool({"complain", "10", "say", "fine", "complain", "10"})), "fine");
}

TEST(Process, only_a_detached_program_has_a_session_of_its_own) {
  Process::Launch launch = tool({});
  launch.path = "/bin/sh";
  launch.args = {"-c",
                 "read number name state parent group session rest </proc/self/stat\n"
                 "echo $((number == session)) $session"};
  EXPECT_EQ(outputOf(launch), "0 " + std::to_string(getsid(0)) + "\n");
  launch.isDetached = true;
  EXPECT_EQ(outputOf(launch).substr(0, 2), "1 ");
}

TEST(Process, a_detached_program_inherits_none_of_the_streams) {
  EXPECT_EQ(inForkedChild([]() -> std::string {
              int ends[2];
              if (pipe(ends) != 0 || write(ends[1], "ours", 4) != 4) return "no pipe";
              dup2(ends[0], STDIN_FILENO);
              dup2(ends[1], STDOUT_FILENO);
              dup2(ends[1], STDERR_FILENO);
              Process::Launch launch = tool({"copy", "say", "lost", "complain", "3"});
              launch.output = Process::Stream::inherited;
              launch.error = Process::Stream::inherited;
              launch.isDetached = true;
              const std::string told = outputOf(launch);
              char buffer[100];
              const ssize_t count = read(ends[0], buffer, sizeof buffer);
              return told + std::string(buffer, count > 0 ? static_cast<std::size_t>(count) : 0);
            }),
            "ours");
}

TEST(Process, the_output_of_a_detached_program_can_be_captured) {
  Process::Launch launch = tool({"copy", "complain", "10", "say", "fine ", "descriptors"});
  launch.isDetached = true;
  EXPECT_EQ(outputOf(launch), "fine 0 1 2");
}

class ClosedStreams : public testing::TestWithParam<int> {};

INSTANTIATE_TEST_SUITE_P(of, ClosedStreams, testing::Range(1, 8));

TEST_P(ClosedStreams, closed_standard_streams_do_not_affect_captured_ones) {
  EXPECT_EQ(inForkedChild([]() -> std::string {
              for (const int standard : {0, 1, 2}) {
                if ((GetParam() & (1 << standard)) != 0) close(standard);
              }
              return outputOf(tool({"say", "fine ", "complain", "10", "descriptors"}));
            }),
            (GetParam() & 1) != 0 ? "fine 1 2" : "fine 0 1 2");
}

class ProcessRefusal : public testing::Test {
 protected:
  TempTree folder_ = TempTree(R"(
    note mode=0644
    garbage 4K mode=0755
    folder/
  )");

  Process::Launch file(const std::string& name) const {
    Process::Launch launch = tool({});
    launch.path = folder_.at(name);
    return launch;
  }

  // Also checks that nothing is left behind.
  static void expectError(const Process::Launch& launch, SystemError::Kind kind) {
    const OwnProcess before = OwnProcess::now();
    const Result<Process> process = Process::launch(launch);
    ASSERT_FALSE(process.ok());
    EXPECT_EQ(process.error().kind, kind) << process.error().description();
    EXPECT_EQ(process.error().path, launch.path);
    EXPECT_EQ(OwnProcess::now(), before);
  }
};

TEST_F(ProcessRefusal, a_missing_program_is_refused) {
  expectError(file("missing"), SystemError::Kind::notFound);
}

TEST_F(ProcessRefusal, an_empty_path_is_refused) {
  Process::Launch launch = tool({});
  launch.path.clear();
  expectError(launch, SystemError::Kind::notFound);
}

TEST_F(ProcessRefusal, a_file_without_execute_permission_is_refused) {
  expectError(file("note"), SystemError::Kind::notPermitted);
}

TEST_F(ProcessRefusal, a_file_that_is_no_program_is_refused) {
  expectError(file("garbage"), SystemError::Kind::other);
}

TEST_F(ProcessRefusal, a_folder_is_refused) {
  expectError(file("folder"), SystemError::Kind::notPermitted);
}

TEST_F(ProcessRefusal, a_path_below_a_file_is_refused) {
  expectError(file("note/tool"), SystemError::Kind::notADirectory);
}

TEST_F(ProcessRefusal, a_missing_working_folder_is_refused) {
  Process::Launch launch = tool({});
  launch.cwd = folder_.at("missing");
  expectError(launch, SystemError::Kind::notFound);
}

TEST_F(ProcessRefusal, a_working_folder_that_is_a_file_is_refused) {
  Process::Launch launch = tool({});
  launch.cwd = folder_.at("note");
  expectError(launch, SystemError::Kind::notADirectory);
}

TEST_F(ProcessRefusal, texts_with_a_nul_byte_are_refused) {
  using std::string_literals::operator""s;
  expectError(tool({"say", "a\0b"s}), SystemError::Kind::other);
  Process::Launch launch = tool({});
  launch.path += "\0x"s;
  expectError(launch, SystemError::Kind::other);
  launch = tool({});
  launch.cwd = "/\0x"s;
  expectError(launch, SystemError::Kind::other);
}

TEST_F(ProcessRefusal, an_error_names_the_tool_and_not_its_stand_in) {
  Process::Launch launch = tool({});
  launch.path = "/usr/bin/osascript";
  launch.cwd = folder_.at("missing");
  expectError(launch, SystemError::Kind::notFound);
}

// Opens descriptors until only `left` more can be opened.
std::vector<Descriptor> allDescriptorsBut(std::size_t left) {
  rlimit number{};
  number.rlim_cur = number.rlim_max = 64;
  if (setrlimit(RLIMIT_NOFILE, &number) != 0) _exit(7);
  std::vector<Descriptor> held;
  while (true) {
    Descriptor one(open("/dev/null", O_RDONLY | O_CLOEXEC));
    if (!one) break;
    held.push_back(std::move(one));
  }
  while (left-- > 0) held.pop_back();
  return held;
}

class FewDescriptors : public testing::TestWithParam<std::size_t> {};

INSTANTIATE_TEST_SUITE_P(left, FewDescriptors, testing::Range<std::size_t>(0, 6));

TEST_P(FewDescriptors, a_start_with_few_descriptors_succeeds_or_reports_the_reason_and_leaks_none) {
  constexpr std::size_t needed = 4;  // the ends of two pipes; the handle is opened later
  EXPECT_EQ(inForkedChild([]() -> std::string {
              std::vector<Descriptor> held = allDescriptorsBut(GetParam());
              for (int i = 0; i < 3; ++i) {
                Result<Process> process = Process::launch(tool({"say", "fine"}));
                if (process.ok() != (GetParam() >= needed)) return "unexpected";
                if (!process.ok() && process.error().kind != SystemError::Kind::tooManyOpenFiles) {
                  return process.error().description();
                }
                if (process.ok()) {
                  process.value().waitUntil(Deadline::never());
                  if (process.value().readOutput(Deadline::never()) != "fine") return "not read";
                }
              }
              if (allDescriptorsBut(0).size() != GetParam()) return "descriptors are left open";
              held.clear();
              return OwnProcess::now().hasChildren ? "a child is left" : "";
            }),
            "");
}

TEST(Process, a_start_without_a_descriptor_for_the_handle_reports_the_reason_and_leaks_none) {
  EXPECT_EQ(inForkedChild([]() -> std::string {
              std::vector<Descriptor> held = allDescriptorsBut(0);
              Process::Launch launch = tool({"sleep"});
              launch.output = Process::Stream::inherited;
              launch.error = Process::Stream::inherited;
              const Result<Process> process = Process::launch(launch);
              held.clear();
              if (process.ok()) return "started";
              if (process.error().kind != SystemError::Kind::tooManyOpenFiles) {
                return process.error().description();
              }
              return OwnProcess::now().hasChildren ? "a child is left" : "";
            }),
            "");
}

TEST(Process, a_full_pipe_can_be_read_after_the_end_of_the_program) {
  EXPECT_EQ(outputOf(tool({"print", "65536"})), std::string(65536, 'x'));
}

TEST(Process, a_full_pipe_can_be_read_after_the_deadline) {
  Process process = started({"print", "65536"});
  ASSERT_TRUE(process.waitUntil(Deadline::never()));
  EXPECT_EQ(process.readOutput(Deadline::after(0)), std::string(65536, 'x'));
}

TEST(Process, an_output_that_is_not_captured_is_read_as_empty) {
  Process::Launch launch = tool({});
  launch.output = Process::Stream::inherited;
  EXPECT_EQ(outputOf(launch), "");
}

TEST(Process, the_output_is_read_until_all_processes_that_hold_it_have_ended) {
  const TempTree folder;
  const ToolMessages left(folder.at("left"));
  Hold hold(folder.at("hold"));
  Process process =
      started({"say", "a", "hand-over", "tell", left.path(), "hold", hold.path(), "say", "b"});
  ASSERT_TRUE(process.waitUntil(Deadline::never()));
  left.wait();
  hold.release();
  EXPECT_EQ(process.readOutput(Deadline::never()), "ab");
}

TEST(Process, an_output_that_other_processes_hold_is_read_until_the_deadline) {
  const TempTree folder;
  const Hold hold(folder.at("hold"));
  Process process = started({"say", "a", "hand-over", "hold", hold.path(), "say", "b"});
  ASSERT_TRUE(process.waitUntil(Deadline::never()));
  EXPECT_EQ(process.readOutput(Deadline::after(0.02)), "a");
}

TEST(Process, a_program_that_nobody_waits_for_is_reaped) {
  const TempTree folder;
  Hold hold(folder.at("hold"));
  const OwnProcess before = OwnProcess::now();
  for (int i = 0; i < 5; ++i) started({"hold", hold.path()});
  started({});
  EXPECT_TRUE(OwnProcess::now().hasChildren);
  hold.release();
  // Releasing the hold closes its descriptor.
  const OwnProcess after{before.descriptors - 1, before.threads, false};
  EXPECT_EQ(settled(after), after);
}

TEST(Process, a_program_whose_object_is_assigned_another_one_is_reaped) {
  const TempTree folder;
  Hold hold(folder.at("hold"));
  const OwnProcess before = OwnProcess::now();
  Process process = started({"hold", hold.path()});
  process = started({"exit", "4"});
  EXPECT_TRUE(process.waitUntil(Deadline::never()));
  EXPECT_EQ(process.exit()->status, 4);
  hold.release();
  process = started({});
  EXPECT_TRUE(process.waitUntil(Deadline::never()));
  {
    const Process ended = std::move(process);
    EXPECT_EQ(ended.exit(), Process::Exit{});
  }
  const OwnProcess after{before.descriptors - 1, before.threads, false};
  EXPECT_EQ(settled(after), after);
}

TEST(ProcessDeathTest, a_running_program_does_not_delay_the_exit) {
  const TempTree folder;
  const Hold hold(folder.at("hold"));
  EXPECT_EXIT(
      {
        started({"hold", hold.path()});
        // Runs all cleanup of a normal exit, which sanitizers check.
        std::exit(0);
      },
      testing::ExitedWithCode(0), "");
}

// Waits until the reaper thread has nothing to do.
void waitUntilReaperSleeps() {
  const auto first = [](const std::filesystem::path& file) {
    std::string line;
    std::getline(std::ifstream(file) >> std::ws, line);
    return line;
  };
  const auto sleeps = [&] {
    for (const auto& task : std::filesystem::directory_iterator("/proc/self/task")) {
      if (first(task.path() / "comm") == "tessaly-reaper" &&
          first(task.path() / "stat").find(") S ") != std::string::npos) {
        return true;
      }
    }
    return false;
  };
  eventually(sleeps, "a thread without a program to see off");
}

TEST(Process, a_program_is_reaped_while_another_one_runs) {
  const TempTree folder;
  Hold longHold(folder.at("long"));
  Hold shortHold(folder.at("short"));
  const OwnProcess before = OwnProcess::now();
  started({"hold", longHold.path()});
  OwnProcess one = OwnProcess::now();
  waitUntilReaperSleeps();
  started({"hold", shortHold.path()});
  shortHold.release();
  --one.descriptors;  // of the hold
  EXPECT_EQ(settled(one), one);
  longHold.release();
  const OwnProcess after{before.descriptors - 2, before.threads, false};
  EXPECT_EQ(settled(after), after);
}

TEST(Process, a_program_is_reaped_while_another_one_runs_without_free_descriptors) {
  EXPECT_EQ(inForkedChild([]() -> std::string {
              const TempTree folder;
              Hold longHold(folder.at("long"));
              Hold shortHold(folder.at("short"));
              const std::size_t threads = OwnProcess::now().threads;
              const auto start = [](const Hold& hold) {
                Process::Launch launch = tool({"hold", hold.path()});
                launch.output = Process::Stream::inherited;
                launch.error = Process::Stream::inherited;
                return Process::launch(launch);
              };
              std::optional<Result<Process>> longOne = start(longHold);
              std::optional<Result<Process>> shortOne = start(shortHold);
              if (!longOne->ok() || !shortOne->ok()) return "not started";
              std::vector<Descriptor> held = allDescriptorsBut(0);
              longOne.reset();
              held.pop_back();  // for OwnProcess::now()
              held.pop_back();
              waitUntilReaperSleeps();
              shortOne.reset();
              OwnProcess seen = OwnProcess::now();
              shortHold.release();
              seen.descriptors -= 2;  // the hold's and the handle
              if (settled(seen) != seen) return "the short one is left behind";
              longHold.release();
              seen = {seen.descriptors - 2, threads, false};
              return settled(seen) == seen ? "" : "the long one is left behind";
            }),
            "");
}

}  // namespace
}  // namespace tessaly
