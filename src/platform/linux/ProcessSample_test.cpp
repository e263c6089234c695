// Programs whose streams are read in waitUntil().
#include <gtest/gtest.h>
#include <string>
#include <utility>
#include <vector>

#include "platform/Process.h"
#include "support/Eventually.h"
#include "support/TempTree.h"
#include "support/TestTool.h"

namespace tessaly {
namespace {

// Starts a tool with these steps and both streams sampled.
Process sampled(std::vector<std::string> steps) {
  Process::Launch launch{.path = testTool(), .args = std::move(steps)};
  launch.output = Process::Stream::sampled;
  launch.error = Process::Stream::sampled;
  Result<Process> process = Process::launch(launch);
  EXPECT_TRUE(process.ok());
  return std::move(process).value();
}

TEST(ProcessSample, a_sampled_program_is_not_blocked_by_its_output) {
  Process process =
      sampled({"print", "1048576", "complain", "1048576", "print", "1048576", "exit", "7"});
  EXPECT_TRUE(process.waitUntil(Deadline::never()));
  EXPECT_EQ(process.exit(), (Process::Exit{.status = 7, .signal = 0}));
  EXPECT_EQ(process.sample(), std::string(Process::mostSampled, 'x'));
}

TEST(ProcessSample, the_sample_is_in_the_order_of_writing) {
  Process process = sampled({"say", "first ", "complain", "3", "say", " last"});
  EXPECT_TRUE(process.waitUntil(Deadline::never()));
  EXPECT_EQ(process.sample(), "first xxx last");
}

TEST(ProcessSample, one_stream_alone_can_be_sampled) {
  Process::Launch launch{.path = testTool(), .args = {"print", "3", "complain", "1048576"}};
  launch.output = Process::Stream::captured;
  launch.error = Process::Stream::sampled;
  Result<Process> process = Process::launch(launch);
  ASSERT_TRUE(process);
  EXPECT_TRUE(process.value().waitUntil(Deadline::never()));
  EXPECT_EQ(process.value().readOutput(Deadline::never()), "xxx");
  EXPECT_EQ(process.value().sample(), std::string(Process::mostSampled, 'x'));
}

TEST(ProcessSample, a_sampled_program_that_writes_without_end_is_waited_for_until_the_deadline) {
  Process process = sampled({"flood"});
  EXPECT_FALSE(process.waitUntil(Deadline::after(0.02)));
  EXPECT_FALSE(process.waitUntil(Deadline::after(0)));
  // The program may take longer to start writing.
  const auto isFull = [&] {
    process.waitUntil(Deadline::after(0.02));
    return process.sample().size() == Process::mostSampled;
  };
  eventually(isFull, "a sample of what it writes");
  process.terminate();
  EXPECT_TRUE(process.waitUntil(Deadline::never()));
  EXPECT_EQ(process.sample().size(), Process::mostSampled);
}

TEST(ProcessSample, a_process_that_inherited_the_sampled_streams_is_not_waited_for) {
  const TempTree folder;
  Hold hold(folder.at("hold"));
  Process process = sampled({"say", "mine", "hand-over", "hold", hold.path(), "say", "theirs"});
  EXPECT_TRUE(process.waitUntil(Deadline::never()));
  EXPECT_EQ(process.sample(), "mine");
  hold.release();
}

}  // namespace
}  // namespace tessaly
