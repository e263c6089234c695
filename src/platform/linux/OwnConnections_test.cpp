#include "platform/OwnConnections.h"

#include <array>
#include <cerrno>
#include <fcntl.h>
#include <gtest/gtest.h>
#include <string>
#include <sys/socket.h>
#include <sys/un.h>
#include <unistd.h>

#include "support/Descriptor.h"
#include "support/ForkedChild.h"
#include "support/TempTree.h"

namespace tessaly {
namespace {

struct Pair {
  explicit Pair(int flags = SOCK_CLOEXEC) {
    int ends[2] = {-1, -1};
    if (::socketpair(AF_UNIX, SOCK_STREAM | flags, 0, ends) != 0) return;
    ours = Descriptor(ends[0]);
    theirs = Descriptor(ends[1]);
    // Not marked as opened by this process, like an end in another process: only the shutdown of
    // the first end may reach it.
    ::fcntl(theirs.get(), F_SETFD, 0);
  }

  // Everything that the other end reads up to the end of the connection, or "open" if it has not
  // ended.
  std::string read() const {
    std::string text;
    std::array<char, 64> buffer{};
    while (true) {
      const ssize_t count = ::recv(theirs.get(), buffer.data(), buffer.size(), MSG_DONTWAIT);
      if (count < 0) return text + "open";
      if (count == 0) return text;
      text.append(buffer.data(), static_cast<std::size_t>(count));
    }
  }

  Descriptor ours;
  Descriptor theirs;
};

// In a process of its own, which has no connections of the test program.
TEST(OwnConnections, the_other_end_reads_what_was_sent_before_the_shutdown) {
  EXPECT_EQ(inForkedChild([]() -> std::string {
              const Pair pair;
              if (::send(pair.ours.get(), "last", 4, 0) != 4) return "not sent";
              OwnConnections::shutDown();
              return pair.read();
            }),
            "last");
}

TEST(OwnConnections, the_spared_connection_stays_open) {
  EXPECT_EQ(inForkedChild([]() -> std::string {
              const Pair one;
              const Pair other;
              OwnConnections::shutDown(one.ours.get());
              return one.read() + " " + other.read();
            }),
            "open ");
}

TEST(OwnConnections, connections_to_the_spared_server_stay_open) {
  const TempTree tree;
  EXPECT_EQ(inForkedChild([&]() -> std::string {
              std::string told;
              for (const char* name : {"one", "other"}) {
                sockaddr_un address{};
                address.sun_family = AF_UNIX;
                tree.at(name).copy(address.sun_path, sizeof address.sun_path - 1);
                const auto* const any = reinterpret_cast<const sockaddr*>(&address);
                // Without the flag of descriptors that the process has opened itself.
                const Descriptor server(::socket(AF_UNIX, SOCK_STREAM, 0));
                Pair pair;
                pair.ours = Descriptor(::socket(AF_UNIX, SOCK_STREAM | SOCK_CLOEXEC, 0));
                if (::bind(server.get(), any, sizeof address) != 0 ||
                    ::listen(server.get(), 1) != 0 ||
                    ::connect(pair.ours.get(), any, sizeof address) != 0) {
                  return "no connection";
                }
                pair.theirs = Descriptor(::accept(server.get(), nullptr, nullptr));
                OwnConnections::shutDown(-1, tree.at("one"));
                told += pair.read() + " ";
              }
              return told;
            }),
            "open  ");
}

TEST(OwnConnections, inherited_connections_stay_open) {
  EXPECT_EQ(inForkedChild([]() -> std::string {
              // Like a descriptor inherited at the start of a program.
              const Pair inherited(0);
              const Pair standard;
              if (::dup3(standard.ours.get(), STDERR_FILENO, O_CLOEXEC) < 0) return "none";
              const Pair own;
              OwnConnections::shutDown(standard.ours.get());
              return inherited.read() + " " + standard.read() + " " + own.read();
            }),
            "open open ");
}

TEST(OwnConnections, a_write_after_the_shutdown_fails_without_ending_the_program) {
  EXPECT_EQ(inForkedChild([]() -> std::string {
              OwnConnections::failWritesToEnded();
              const Pair pair;
              OwnConnections::shutDown();
              if (::write(pair.ours.get(), "late", 4) != -1 || errno != EPIPE) return "written";
              return "";
            }),
            "");
}

TEST(OwnConnections, pipes_are_not_shut_down) {
  EXPECT_EQ(inForkedChild([]() -> std::string {
              int ends[2] = {-1, -1};
              if (::pipe2(ends, O_CLOEXEC) != 0) return "no pipe";
              OwnConnections::shutDown();
              return ::write(ends[1], "x", 1) == 1 ? "" : "broken pipe";
            }),
            "");
}

}  // namespace
}  // namespace tessaly
