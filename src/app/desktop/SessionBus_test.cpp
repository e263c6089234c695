#include "app/desktop/SessionBus.h"

#include <future>
#include <gtest/gtest.h>
#include <memory>
#include <thread>
#include <vector>

#include <QDBusError>

#include "support/PrivateBus.h"
#include "support/QtDispatch.h"

namespace tessaly {
namespace {

const QString serviceName = QStringLiteral("tessaly.test.Service");
const QString objectPath = QStringLiteral("/object");

QDBusMessage method(const QString& name) {
  return QDBusMessage::createMethodCall(serviceName, objectPath, serviceName, name);
}

class SessionBusTest : public testing::Test {
 protected:
  void SetUp() override {
    ASSERT_TRUE(privateBus_.isRunning()) << "dbus-daemon is needed for this test";
    QDBusConnection bus = privateBus_.connection(QStringLiteral("service"));
    ASSERT_TRUE(bus.registerVirtualObject(objectPath, &service_));
    ASSERT_TRUE(bus.registerService(serviceName));
  }

  QDBusConnection program() { return privateBus_.connection(QStringLiteral("program")); }

  // Until all messages have arrived, and their answers have come back.
  void settle() {
    dispatch_.finish();
    catchUp(program(), serviceName, objectPath);
  }

  std::vector<QString> calledMethods() const {
    std::vector<QString> names;
    for (const auto& call : service_.calls) names.push_back(call.member());
    return names;
  }

  BusObject service_;
  PrivateBus privateBus_;
  QtDispatch dispatch_;
};

TEST_F(SessionBusTest, a_call_gets_its_reply) {
  service_.answer = [](const QDBusMessage& call, const QDBusConnection& bus) {
    bus.send(call.createReply(42));
  };
  SessionBus bus(dispatch_, [this] { return program(); });
  std::vector<QVariantList> replies;
  bus.call(method(QStringLiteral("Ask")),
           [&](const QDBusMessage& reply) { replies.push_back(reply.arguments()); });
  EXPECT_TRUE(replies.empty());
  settle();
  EXPECT_EQ(replies, std::vector<QVariantList>{{42}});
}

TEST_F(SessionBusTest, a_call_gets_an_error) {
  service_.answer = [](const QDBusMessage& call, const QDBusConnection& bus) {
    bus.send(call.createErrorReply(QDBusError::AccessDenied, QStringLiteral("no")));
  };
  SessionBus bus(dispatch_, [this] { return program(); });
  std::vector<QString> errors;
  bus.call(method(QStringLiteral("Ask")),
           [&](const QDBusMessage& reply) { errors.push_back(reply.errorMessage()); });
  settle();
  EXPECT_EQ(errors, std::vector{QStringLiteral("no")});
}

TEST_F(SessionBusTest, the_bus_is_opened_once_on_a_worker) {
  std::vector<std::thread::id> threads;
  SessionBus bus(dispatch_, [&] {
    threads.push_back(std::this_thread::get_id());
    return program();
  });
  bus.call(method(QStringLiteral("First")), [](const QDBusMessage&) {});
  bus.call(method(QStringLiteral("Second")), [](const QDBusMessage&) {});
  settle();
  bus.call(method(QStringLiteral("Third")), [](const QDBusMessage&) {});
  settle();
  EXPECT_EQ(service_.calls.size(), 3u);
  ASSERT_EQ(threads.size(), 1u);
  EXPECT_NE(threads.front(), std::this_thread::get_id());
}

TEST_F(SessionBusTest, a_hanging_bus_blocks_nothing_and_messages_keep_their_order) {
  std::promise<void> release;
  SessionBus bus(dispatch_, [this, released = release.get_future().share()] {
    released.wait();
    return program();
  });
  for (const char* name : {"First", "Second", "Third"})
    bus.call(method(QString::fromLatin1(name)), [](const QDBusMessage&) {});
  release.set_value();
  settle();
  EXPECT_EQ(calledMethods(),
            (std::vector<QString>{QStringLiteral("First"), QStringLiteral("Second"),
                                  QStringLiteral("Third")}));
}

TEST_F(SessionBusTest, a_hanging_service_blocks_nothing) {
  std::vector<QDBusMessage> asked;
  service_.answer = [&](const QDBusMessage& call, const QDBusConnection&) {
    call.setDelayedReply(true);
    asked.push_back(call);
  };
  SessionBus bus(dispatch_, [this] { return program(); });
  int answers = 0;
  bus.call(method(QStringLiteral("First")), [&](const QDBusMessage&) { ++answers; });
  settle();
  bus.call(method(QStringLiteral("Second")), [&](const QDBusMessage&) { ++answers; });
  settle();
  EXPECT_EQ(answers, 0);
  ASSERT_EQ(asked.size(), 2u);
  for (const QDBusMessage& call : asked)
    privateBus_.connection(QStringLiteral("service")).send(call.createReply());
  settle();
  EXPECT_EQ(answers, 2);
}

TEST_F(SessionBusTest, a_call_gets_an_error_without_a_bus) {
  SessionBus bus(dispatch_, [] { return QDBusConnection(QStringLiteral("nobody")); });
  std::vector<QDBusMessage::MessageType> answers;
  const auto keep = [&](const QDBusMessage& reply) { answers.push_back(reply.type()); };
  bus.call(method(QStringLiteral("First")), keep);
  bus.emitSignal(QDBusMessage::createSignal(objectPath, serviceName, QStringLiteral("Lost")));
  dispatch_.finish();
  EXPECT_EQ(answers, std::vector{QDBusMessage::ErrorMessage});
  bus.call(method(QStringLiteral("Second")), keep);
  dispatch_.finish();
  EXPECT_EQ(answers.size(), 2u);
}

TEST_F(SessionBusTest, a_bus_that_starts_later_is_found) {
  bool isThere = false;
  SessionBus bus(dispatch_,
                 [&] { return isThere ? program() : QDBusConnection(QStringLiteral("nobody")); });
  bus.call(method(QStringLiteral("First")), [](const QDBusMessage&) {});
  dispatch_.finish();
  isThere = true;
  bus.call(method(QStringLiteral("Second")), [](const QDBusMessage&) {});
  settle();
  EXPECT_EQ(calledMethods(), std::vector{QStringLiteral("Second")});
}

TEST_F(SessionBusTest, answers_after_the_destruction_are_dropped) {
  QDBusMessage asked;
  service_.answer = [&](const QDBusMessage& call, const QDBusConnection&) {
    call.setDelayedReply(true);
    asked = call;
  };
  auto bus = std::make_unique<SessionBus>(dispatch_, [this] { return program(); });
  int answers = 0;
  bus->call(method(QStringLiteral("Ask")), [&](const QDBusMessage&) { ++answers; });
  settle();
  bus.reset();
  privateBus_.connection(QStringLiteral("service")).send(asked.createReply());
  settle();
  EXPECT_EQ(answers, 0);
}

TEST_F(SessionBusTest, nothing_is_sent_after_the_destruction) {
  auto bus = std::make_unique<SessionBus>(dispatch_, [this] { return program(); });
  bus->call(method(QStringLiteral("Ask")), [](const QDBusMessage&) { ADD_FAILURE(); });
  bus.reset();
  settle();
  EXPECT_TRUE(service_.calls.empty());
}

}  // namespace
}  // namespace tessaly
