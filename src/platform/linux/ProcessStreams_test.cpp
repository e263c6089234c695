// Data exchanged with a program while it runs.
#include <csignal>
#include <gtest/gtest.h>
#include <string>
#include <thread>
#include <unistd.h>
#include <utility>
#include <vector>

#include "platform/Process.h"
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
          .output = Process::Stream::captured};
}

Process started(std::vector<std::string> steps) {
  Result<Process> process = Process::launch(tool(std::move(steps)));
  EXPECT_TRUE(process.ok());
  return std::move(process).value();
}

// Its output after it has exited.
std::string outputOf(const Process::Launch& launch) {
  Result<Process> process = Process::launch(launch);
  if (!process) return process.error().description();
  process.value().waitUntil(Deadline::never());
  return process.value().readOutput(Deadline::never());
}

TEST(ProcessStreams, a_program_reads_what_is_written_to_its_captured_input) {
  Process::Launch launch = tool({"copy"});
  launch.input = Process::Stream::captured;
  std::string text;
  {
    Process process = Process::launch(launch).value();
    const std::string given(300'000, 'g');
    std::thread writer([&] { EXPECT_TRUE(process.writeInput(given, Deadline::never())); });
    while (text.size() < given.size() &&
           process.readMore(text, given.size(), Deadline::never()) == Process::Reading::more) {
    }
    writer.join();
    EXPECT_EQ(text, given);
  }
}

TEST(ProcessStreams, a_captured_input_ends_when_its_process_object_is_destroyed) {
  const OwnProcess before = OwnProcess::now();
  {
    Process::Launch launch = tool({"copy"});
    launch.input = Process::Stream::captured;
    const Result<Process> process = Process::launch(launch);
    ASSERT_TRUE(process.ok());
  }
  EXPECT_EQ(settled(before), before);
}

// A SIGPIPE would end this program.
TEST(ProcessStreams, writing_to_a_program_that_does_not_read_fails) {
  Process::Launch launch = tool({});
  launch.input = Process::Stream::captured;
  Process process = Process::launch(launch).value();
  ASSERT_TRUE(process.waitUntil(Deadline::never()));
  EXPECT_FALSE(process.writeInput("given", Deadline::never()));
}

TEST(ProcessStreams, writing_to_a_program_fails_at_the_deadline) {
  Process::Launch launch = tool({"sleep"});
  launch.input = Process::Stream::captured;
  Process process = Process::launch(launch).value();
  EXPECT_FALSE(process.writeInput(std::string(8'000'000, 'g'), Deadline::after(0.02)));
  process.kill();
}

TEST(ProcessStreams, output_is_read_while_the_program_runs) {
  const TempTree folder;
  Hold hold(folder.at("hold"));
  Process process = started({"say", "first", "hold", hold.path(), "say", "second"});
  std::string text;
  EXPECT_EQ(process.readMore(text, 3, Deadline::never()), Process::Reading::more);
  EXPECT_EQ(text, "fir");
  EXPECT_EQ(process.readMore(text, 100, Deadline::never()), Process::Reading::more);
  EXPECT_EQ(text, "first");
  EXPECT_EQ(process.readMore(text, 100, Deadline::after(0.02)), Process::Reading::late);
  hold.release();
  EXPECT_EQ(process.readMore(text, 100, Deadline::never()), Process::Reading::more);
  EXPECT_EQ(process.readMore(text, 100, Deadline::never()), Process::Reading::end);
  EXPECT_EQ(text, "firstsecond");
}

TEST(ProcessStreams, kill_ends_a_program_that_ignores_sigterm) {
  const TempTree folder;
  const ToolMessages ready(folder.at("ready"));
  Process process = started({"ignore-term", "tell", ready.path(), "sleep"});
  ready.wait();
  process.kill();
  EXPECT_TRUE(process.waitUntil(Deadline::never()));
  EXPECT_EQ(process.exit(), (Process::Exit{.status = 0, .signal = SIGKILL}));
  process.kill();
}

TEST(ProcessStreams, discarded_streams_are_empty_and_their_output_is_lost) {
  EXPECT_EQ(
      inForkedChild([]() -> std::string {
        int ends[2];
        if (pipe(ends) != 0 || write(ends[1], "ours", 4) != 4) return "no pipe";
        dup2(ends[0], STDIN_FILENO);
        dup2(ends[1], STDERR_FILENO);
        Process::Launch launch = tool({"copy", "complain", "3", "say", "fine ", "descriptors"});
        launch.input = Process::Stream::discarded;
        launch.error = Process::Stream::discarded;
        const std::string told = outputOf(launch);
        char buffer[100];
        const ssize_t count = read(ends[0], buffer, sizeof buffer);
        return told + " " + std::string(buffer, count > 0 ? static_cast<std::size_t>(count) : 0);
      }),
      "fine 0 1 2 ours");
}

}  // namespace
}  // namespace tessaly
