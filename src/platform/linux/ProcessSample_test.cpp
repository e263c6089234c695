// Programs whose streams are read during waitUntil().
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

TEST(ProcessSample, is_not_held_up_by_what_it_writes_where_it_is_sampled) {
  Process process =
      sampled({"print", "1048576", "complain", "1048576", "print", "1048576", "exit", "7"});
  EXPECT_TRUE(process.waitUntil(Deadline::never()));
  EXPECT_EQ(process.exit(), (Process::Exit{.status = 7, .signal = 0}));
  EXPECT_EQ(process.sample(), std::string(Process::mostSampled, 'x'));
}

TEST(ProcessSample, is_sampled_in_the_order_of_writing) {
  Process process = sampled({"say", "first ", "complain", "3", "say", " last"});
  EXPECT_TRUE(process.waitUntil(Deadline::never()));
  EXPECT_EQ(process.sample(), "first xxx last");
}

TEST(ProcessSample, is_sampled_on_one_stream_alone) {
  Process::Launch launch{.path = testTool(), .args = {"print", "3", "complain", "1048576"}};
  launch.output = Process::Stream::captured;
  launch.error = Process::Stream::sampled;
  Result<Process> process = Process::launch(launch);
  ASSERT_TRUE(process);
  EXPECT_TRUE(process.value().waitUntil(Deadline::never()));
  EXPECT_EQ(process.value().readOutput(Deadline::never()), "xxx");
  EXPECT_EQ(process.value().sample(), std::string(Process::mostSampled, 'x'));
}

TEST(ProcessSample,
     that_writes_without_end_is_not_waited_for_past_the_deadline_where_it_is_sampled) {
  Process process = sampled({"flood"});
  EXPECT_FALSE(process.waitUntil(Deadline::after(0.02)));
  EXPECT_FALSE(process.waitUntil(Deadline::after(0)));
  // It may take longer to begin.
  const auto isFull = [&] {
    process.waitUntil(Deadline::after(0.02));
    return process.sample().size() == Process::mostSampled;
  };
  eventually(isFull, "a sample of what it writes");
  process.terminate();
  EXPECT_TRUE(process.waitUntil(Deadline::never()));
  EXPECT_EQ(process.sample().size(), Process::mostSampled);
}

TEST(ProcessSample, that_hands_its_sampled_streams_on_is_waited_for_alone) {
  const TempTree folder;
  Hold hold(folder.at("hold"));
  Process process = sampled({"say", "mine", "hand-over", "hold", hold.path(), "say", "theirs"});
  EXPECT_TRUE(process.waitUntil(Deadline::never()));
  EXPECT_EQ(process.sample(), "mine");
  hold.release();
}

}  // namespace
}  // namespace tessaly
