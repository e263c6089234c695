#include "app/desktop/DisplayServers.h"

#include <array>
#include <cstdint>
#include <cstdlib>
#include <filesystem>
#include <functional>
#include <gtest/gtest.h>
#include <memory>
#include <string>
#include <sys/socket.h>
#include <sys/un.h>
#include <thread>
#include <unistd.h>

#include <QByteArray>
#include <QtGlobal>

#include "support/Descriptor.h"
#include "support/TempTree.h"

namespace tessaly {
namespace {

// Sets a variable of the environment for as long as it is there.
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

// Listens on a socket, and takes no connection by itself: for who connects it is there.
Descriptor listenerAt(const sockaddr_un& address) {
  Descriptor socket(::socket(AF_UNIX, SOCK_STREAM | SOCK_CLOEXEC, 0));
  const auto* const any = reinterpret_cast<const sockaddr*>(&address);
  constexpr int waiting = 4;
  if (::bind(socket.get(), any, sizeof address) != 0 || ::listen(socket.get(), waiting) != 0)
    return Descriptor();
  return socket;
}

sockaddr_un addressOf(const std::string& path) {
  sockaddr_un address{};
  address.sun_family = AF_UNIX;
  path.copy(address.sun_path, sizeof address.sun_path - 1);
  return address;
}

// Takes one connection, and writes `answer` to it once something has been asked. Ends with the
// object, by its listener.
class Server {
 public:
  Server(const Descriptor& listener, std::string answer)
      : listener_(listener.get()), thread_([this, answer = std::move(answer)] {
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

TEST_F(WaylandServer, that_is_not_there_does_not_answer) {
  for (const std::string& name : {std::string(), std::string("none"), tree_.at("none"),
                                  std::string(200, 'x'), std::string("/dev/null")}) {
    name_ = name;
    EXPECT_FALSE(answers(60)) << name;
  }
}

TEST_F(WaylandServer, that_takes_a_connection_and_says_nothing_does_not_answer) {
  const Descriptor listener = listenerAt(addressOf(tree_.at(name_)));
  EXPECT_FALSE(answers(0.2));
  const Server server(listener, "");
  EXPECT_FALSE(answers(0.2));
}

TEST_F(WaylandServer, that_says_something_answers) {
  const Descriptor listener = listenerAt(addressOf(tree_.at(name_)));
  {
    const Server server(listener, "something");
    EXPECT_TRUE(answers(60));
  }
  name_ = tree_.at("elsewhere");
  const Descriptor other = listenerAt(addressOf(name_));
  const Server server(other, "something");
  EXPECT_TRUE(answers(60));
}

TEST_F(WaylandServer, whose_queue_is_full_does_not_answer) {
  const sockaddr_un address = addressOf(tree_.at(name_));
  const Descriptor listener = listenerAt(address);
  ASSERT_EQ(::listen(listener.get(), 0), 0);
  const Descriptor first(::socket(AF_UNIX, SOCK_STREAM | SOCK_CLOEXEC, 0));
  ASSERT_EQ(::connect(first.get(), reinterpret_cast<const sockaddr*>(&address), sizeof address), 0);
  EXPECT_FALSE(answers(0.2));
}

// A socket of X servers, of a number that nobody has.
class XServerSocket : public testing::Test {
 protected:
  void SetUp() override {
    constexpr int first = 4100;
    constexpr int last = 4200;
    for (int number = first; number < last; ++number) {
      // By a name that is no file, where the library looks first.
      sockaddr_un address{};
      address.sun_family = AF_UNIX;
      const std::string path = "/tmp/.X11-unix/X" + std::to_string(number);
      path.copy(address.sun_path + 1, path.size());
      socket_ = Descriptor(::socket(AF_UNIX, SOCK_STREAM | SOCK_CLOEXEC, 0));
      const auto length = static_cast<socklen_t>(offsetof(sockaddr_un, sun_path) + 1 + path.size());
      if (std::filesystem::exists(path) ||
          ::bind(socket_.get(), reinterpret_cast<const sockaddr*>(&address), length) != 0)
        continue;
      display_ = ":" + std::to_string(number);
      return;
    }
    GTEST_SKIP() << "no display number is free";
  }

  void listen() const {
    constexpr int waiting = 4;
    ASSERT_EQ(::listen(socket_.get(), waiting), 0);
  }
  bool answers(double seconds) const {
    const Variable name("DISPLAY", display_);
    return DisplayServers::xAnswers(Deadline::after(seconds));
  }

  Descriptor socket_;
  std::string display_;
};

TEST_F(XServerSocket, where_nobody_listens_does_not_answer) {
  EXPECT_FALSE(answers(60));
  for (const char* name : {"", ":", "nonsense", "localhost:4999", ":99999"}) {
    display_ = name;
    EXPECT_FALSE(answers(60)) << name;
  }
}

TEST_F(XServerSocket, that_takes_a_connection_and_says_nothing_does_not_answer) {
  listen();
  EXPECT_FALSE(answers(0.2));
  const Server server(socket_, "");
  EXPECT_FALSE(answers(0.2));
}

// As without the cookie: the first byte is 0, the second the length of the reason, which the
// library writes to standard error.
TEST_F(XServerSocket, that_lets_nobody_in_does_not_answer_and_its_words_are_lost) {
  listen();
  const std::string reason = "Go away.";
  std::string refusal(8, '\0');
  refusal[1] = static_cast<char>(reason.size());
  refusal[2] = 11;  // the version of the protocol
  refusal[6] = static_cast<char>(reason.size() / 4);
  const Server server(socket_, refusal + reason);
  testing::internal::CaptureStderr();
  EXPECT_FALSE(answers(60));
  EXPECT_EQ(testing::internal::GetCapturedStderr(), "");
}

}  // namespace
}  // namespace tessaly
