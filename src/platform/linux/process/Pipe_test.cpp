#include "platform/linux/process/Pipe.h"

#include <fcntl.h>
#include <gtest/gtest.h>
#include <sys/resource.h>
#include <sys/socket.h>
#include <unistd.h>

#include "support/ForkedChild.h"

namespace tessaly::process {
namespace {

TEST(Pipe, a_pipe_transfers_bytes_from_one_end_to_the_other) {
  const Result<Pipe> pipe = Pipe::make("");
  ASSERT_TRUE(pipe.ok());
  ASSERT_EQ(write(pipe.value().writing.get(), "abc", 3), 3);
  char bytes[3];
  EXPECT_EQ(read(pipe.value().reading.get(), bytes, 3), 3);
}

TEST(Pipe, a_pipe_of_sockets_can_be_written_to_without_raising_a_signal) {
  Result<Pipe> pipe = Pipe::makeOfSockets("");
  ASSERT_TRUE(pipe.ok());
  ASSERT_EQ(send(pipe.value().writing.get(), "abc", 3, MSG_NOSIGNAL), 3);
  char bytes[3];
  EXPECT_EQ(read(pipe.value().reading.get(), bytes, 3), 3);
  for (const int end : {pipe.value().reading.get(), pipe.value().writing.get()}) {
    EXPECT_EQ(fcntl(end, F_GETFD), FD_CLOEXEC);
  }
  pipe.value().reading = FileDescriptor();
  EXPECT_EQ(send(pipe.value().writing.get(), "abc", 3, MSG_NOSIGNAL), -1);
}

class PipeAmongClosedStreams : public testing::TestWithParam<int> {};

INSTANTIATE_TEST_SUITE_P(of, PipeAmongClosedStreams, testing::Range(0, 8));

TEST_P(PipeAmongClosedStreams,
       a_pipe_takes_no_standard_descriptor_and_is_not_inherited_by_programs) {
  EXPECT_EQ(inForkedChild([]() -> std::string {
              for (const int standard : {0, 1, 2}) {
                if ((GetParam() & (1 << standard)) != 0) close(standard);
              }
              const Result<Pipe> pipe = Pipe::make("");
              if (!pipe) return pipe.error().description();
              for (const int end : {pipe.value().reading.get(), pipe.value().writing.get()}) {
                if (end <= 2) return "takes " + std::to_string(end);
                if (fcntl(end, F_GETFD) != FD_CLOEXEC) return "gets into programs";
              }
              for (const int standard : {0, 1, 2}) {
                const bool isClosed = (GetParam() & (1 << standard)) != 0;
                if (isClosed && fcntl(standard, F_GETFD) >= 0) return "leaves an end behind";
              }
              return "";
            }),
            "");
}

TEST(Pipe, an_error_for_lack_of_descriptors_names_the_purpose_of_the_pipe) {
  EXPECT_EQ(inForkedChild([]() -> std::string {
              // One is free, but a pipe needs two.
              const int next = dup(0);
              close(next);
              rlimit number{};
              number.rlim_cur = number.rlim_max = static_cast<rlim_t>(next) + 1;
              if (setrlimit(RLIMIT_NOFILE, &number) != 0) return "no limit";
              const Result<Pipe> pipe = Pipe::make("/bin/tool");
              if (pipe.ok()) return "made";
              if (pipe.error().path != "/bin/tool") return "another path";
              return pipe.error().kind == SystemError::Kind::tooManyOpenFiles ? "" : "another kind";
            }),
            "");
}

}  // namespace
}  // namespace tessaly::process
