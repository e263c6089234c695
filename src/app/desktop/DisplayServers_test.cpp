#include "app/desktop/DisplayServers.h"

#include <array>
#include <gtest/gtest.h>
#include <string>
#include <sys/socket.h>
#include <thread>
#include <utility>

#include <QByteArray>
#include <QtGlobal>

#include "support/Descriptor.h"
#include "support/MuteServer.h"
#include "support/TempTree.h"

namespace tessaly {
namespace {

// Sets an environment variable during its lifetime.
class Variable {
 public:
  Variable(const char* name, const std::string& value)
      : name_(name), before_(qgetenv(name)), wasSet_(qEnvironmentVariableIsSet(name)) {
    qputenv(name, QByteArray::fromStdString(value));
  }
  ~Variable() {
    if (wasSet_)
      qputenv(name_, before_);
    else
      qunsetenv(name_);
  }
  Variable(const Variable&) = delete;
  Variable& operator=(const Variable&) = delete;

 private:
  const char* name_;
  QByteArray before_;
  bool wasSet_;
};

// Accepts one connection, and writes `answer` to it after a request. The destructor shuts the
// listener down, which ends the thread.
class Server {
 public:
  Server(const MuteServer& listener, std::string answer)
      : listener_(listener.socket().get()), thread_([this, answer = std::move(answer)] {
          const Descriptor connection(::accept4(listener_, nullptr, nullptr, SOCK_CLOEXEC));
          std::array<char, 64> question{};
          if (::recv(connection.get(), question.data(), question.size(), 0) <= 0) return;
          ::send(connection.get(), answer.data(), answer.size(), MSG_NOSIGNAL);
          // Until the other end is closed.
          while (::recv(connection.get(), question.data(), question.size(), 0) > 0) {
          }
        }) {}
  ~Server() {
    ::shutdown(listener_, SHUT_RDWR);
    thread_.join();
  }
  Server(const Server&) = delete;
  Server& operator=(const Server&) = delete;

 private:
  int listener_;
  std::thread thread_;
};

class WaylandServer : public testing::Test {
 protected:
  bool answers(double seconds) {
    const Variable folder("XDG_RUNTIME_DIR", tree_.path());
    const Variable name("WAYLAND_DISPLAY", name_);
    return DisplayServers::waylandAnswers(Deadline::after(seconds));
  }

  TempTree tree_;
  std::string name_ = "wayland-7";
};

TEST_F(WaylandServer, a_missing_wayland_server_does_not_answer) {
  for (const std::string& name : {std::string(), std::string("none"), tree_.at("none"),
                                  std::string(200, 'x'), std::string("/dev/null")}) {
    name_ = name;
    EXPECT_FALSE(answers(60)) << name;
  }
}

TEST_F(WaylandServer, a_silent_wayland_server_does_not_answer) {
  const MuteServer listener = MuteServer::at(tree_.at(name_));
  EXPECT_FALSE(answers(0.2));
  EXPECT_TRUE(listener.wasAsked());
  const Server server(listener, "");
  EXPECT_FALSE(answers(0.2));
}

TEST_F(WaylandServer, a_wayland_server_that_says_something_answers) {
  const MuteServer listener = MuteServer::at(tree_.at(name_));
  {
    const Server server(listener, "something");
    EXPECT_TRUE(answers(60));
  }
  name_ = tree_.at("elsewhere");
  const MuteServer other = MuteServer::at(name_);
  const Server server(other, "something");
  EXPECT_TRUE(answers(60));
}

TEST_F(WaylandServer, a_wayland_server_with_a_full_queue_does_not_answer) {
  const MuteServer listener = MuteServer::at(tree_.at(name_));
  // The queue has one place, which is taken.
  ASSERT_EQ(::listen(listener.socket().get(), 0), 0);
  EXPECT_FALSE(answers(0.2));
  EXPECT_FALSE(answers(0.2));
}

class XServerSocket : public testing::Test {
 protected:
  void SetUp() override { ASSERT_TRUE(listener_.isThere()); }

  bool answers(double seconds) const { return answers(listener_.display(), seconds); }
  static bool answers(const std::string& display, double seconds) {
    const Variable name("DISPLAY", display);
    return DisplayServers::xAnswers(Deadline::after(seconds));
  }

  const MuteServer listener_ = MuteServer::ofX();
};

TEST_F(XServerSocket, a_missing_x_server_does_not_answer) {
  for (const char* name : {"", ":", "nonsense", "localhost:4999", ":4999", ":99999"})
    EXPECT_FALSE(answers(name, 60)) << name;
}

TEST_F(XServerSocket, a_silent_x_server_does_not_answer) {
  EXPECT_FALSE(answers(0.5));
  const Server server(listener_, "");
  EXPECT_FALSE(answers(0.5));
}

// Like a server without our cookie: the first byte is 0, the second the length of the reason, which
// the library prints to standard error.
TEST_F(XServerSocket, an_x_server_that_refuses_does_not_answer_and_its_reason_is_dropped) {
  const std::string reason = "Go away.";
  std::string refusal(8, '\0');
  refusal[1] = static_cast<char>(reason.size());
  refusal[2] = 11;  // version of the protocol
  refusal[6] = static_cast<char>(reason.size() / 4);
  const Server server(listener_, refusal + reason);
  testing::internal::CaptureStderr();
  EXPECT_FALSE(answers(60));
  EXPECT_EQ(testing::internal::GetCapturedStderr(), "");
}

}  // namespace
}  // namespace tessaly
