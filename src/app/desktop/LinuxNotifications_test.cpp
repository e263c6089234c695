// A test's own notification service on its own bus.
#include "app/desktop/LinuxNotifications.h"

#include <fcntl.h>
#include <gtest/gtest.h>
#include <sys/stat.h>
#include <unistd.h>
#include <vector>

#include <QDBusArgument>
#include <QDBusError>

#include "support/PrivateBus.h"
#include "support/QtDispatch.h"
#include "support/TempTree.h"

namespace tessaly {
namespace {

const QString serviceName = QStringLiteral("org.freedesktop.Notifications");
const QString objectPath = QStringLiteral("/org/freedesktop/Notifications");

const NotificationCenter::Notification nearlyFull{.identifier = "marrow.disk.pressure",
                                                  .title = "Disk almost full",
                                                  .body = "This computer is 93% full.",
                                                  .hasSound = true};

NotificationCenter::Notification saying(const std::string& body,
                                        const std::string& identifier = "news") {
  return {.identifier = identifier, .title = "News", .body = body};
}

class LinuxNotificationsTest : public testing::Test {
 protected:
  void SetUp() override { ASSERT_TRUE(bus_.isRunning()) << "dbus-daemon is needed for this test"; }

  QDBusConnection server() { return bus_.connection(QStringLiteral("server")); }
  QDBusConnection program() { return bus_.connection(QStringLiteral("program")); }

  void startService() {
    service_.answer = [this](const QDBusMessage& call, const QDBusConnection& bus) {
      bus.send(call.createReply(++lastId_));
    };
    ASSERT_TRUE(server().registerVirtualObject(objectPath, &service_));
    ASSERT_TRUE(server().registerService(serviceName));
  }

  // The service answers late.
  void holdAnswers() {
    service_.answer = [](const QDBusMessage& call, const QDBusConnection&) {
      call.setDelayedReply(true);
    };
  }

  // Long enough for a notification that first asks for the owner of the service.
  void settle() {
    dispatch_.finish();
    for (int i = 0; i < 3; ++i) catchUp(program(), serviceName, objectPath);
  }

  void post(const NotificationCenter::Notification& notification) {
    notifications_.post(notification);
    settle();
  }

  QVariant argument(std::size_t call, int position) const {
    return service_.calls.at(call).arguments().at(position);
  }
  uint replacedBy(std::size_t call) const { return argument(call, 1).toUInt(); }
  QString body(std::size_t call) const { return argument(call, 4).toString(); }
  QVariantMap hints(std::size_t call) const {
    return qdbus_cast<QVariantMap>(argument(call, 6).value<QDBusArgument>());
  }

  uint lastId_ = 6;
  BusObject service_;
  PrivateBus bus_;
  QtDispatch dispatch_;
  LinuxNotifications notifications_{dispatch_, [this] { return program(); }};
};

TEST_F(LinuxNotificationsTest, the_notification_is_shown) {
  startService();
  post(nearlyFull);
  ASSERT_EQ(service_.calls.size(), 1u);
  const QDBusMessage& call = service_.calls.front();
  EXPECT_EQ(call.interface(), serviceName);
  EXPECT_EQ(call.member(), QStringLiteral("Notify"));
  EXPECT_EQ(call.signature(), QStringLiteral("susssasa{sv}i"));
  EXPECT_EQ(argument(0, 0), QStringLiteral("Tessaly"));
  EXPECT_EQ(replacedBy(0), 0u);
  EXPECT_EQ(argument(0, 3), QStringLiteral("Disk almost full"));
  EXPECT_EQ(body(0), QStringLiteral("This computer is 93% full."));
  EXPECT_TRUE(argument(0, 5).toStringList().isEmpty());
  EXPECT_EQ(argument(0, 7), -1);
  EXPECT_EQ(hints(0),
            (QVariantMap{{QStringLiteral("desktop-entry"), QStringLiteral("tessaly")},
                         {QStringLiteral("sound-name"), QStringLiteral("message-new-instant")}}));
}

TEST_F(LinuxNotificationsTest, a_notification_is_silent_unless_it_has_a_sound) {
  startService();
  post(saying("quiet"));
  EXPECT_EQ(hints(0), (QVariantMap{{QStringLiteral("desktop-entry"), QStringLiteral("tessaly")},
                                   {QStringLiteral("suppress-sound"), true}}));
}

TEST_F(LinuxNotificationsTest, the_body_is_escaped_so_that_it_is_not_read_as_markup) {
  startService();
  post({.identifier = "news", .title = "a < b", .body = "R&D <b>caf\u00e9</b>"});
  EXPECT_EQ(argument(0, 3), QStringLiteral("a < b"));
  EXPECT_EQ(body(0), QStringLiteral("R&amp;D &lt;b&gt;caf\u00e9&lt;/b&gt;"));
}

TEST_F(LinuxNotificationsTest, a_notification_replaces_the_earlier_one_of_its_identifier) {
  startService();
  post(saying("first"));
  post(saying("second"));
  post(saying("third"));
  ASSERT_EQ(service_.calls.size(), 3u);
  EXPECT_EQ(replacedBy(1), 7u);
  EXPECT_EQ(replacedBy(2), 8u);
}

TEST_F(LinuxNotificationsTest, a_notification_does_not_replace_those_of_other_identifiers) {
  startService();
  post(saying("first", "a"));
  post(saying("second", "b"));
  ASSERT_EQ(service_.calls.size(), 2u);
  EXPECT_EQ(replacedBy(1), 0u);
}

TEST_F(LinuxNotificationsTest, the_newest_is_shown_once_the_pending_one_has_its_id) {
  startService();
  holdAnswers();
  post(saying("first"));
  post(saying("second"));
  post(saying("third"));
  ASSERT_EQ(service_.calls.size(), 1u);
  server().send(service_.calls.front().createReply(31u));
  settle();
  ASSERT_EQ(service_.calls.size(), 2u);
  EXPECT_EQ(body(1), QStringLiteral("third"));
  EXPECT_EQ(replacedBy(1), 31u);
}

TEST_F(LinuxNotificationsTest, others_are_shown_while_one_gets_no_answer) {
  startService();
  holdAnswers();
  post(saying("first", "a"));
  post(saying("second", "b"));
  ASSERT_EQ(service_.calls.size(), 2u);
  EXPECT_EQ(body(1), QStringLiteral("second"));
}

TEST_F(LinuxNotificationsTest, an_error_of_the_service_gives_no_id) {
  startService();
  const auto accept = service_.answer;
  post(saying("first"));
  service_.answer = [](const QDBusMessage& call, const QDBusConnection& bus) {
    bus.send(call.createErrorReply(QDBusError::LimitsExceeded, QStringLiteral("too many")));
  };
  post(saying("second"));
  service_.answer = accept;
  post(saying("third"));
  ASSERT_EQ(service_.calls.size(), 3u);
  EXPECT_EQ(replacedBy(1), 7u);
  EXPECT_EQ(replacedBy(2), 0u);
}

TEST_F(LinuxNotificationsTest, nothing_is_replaced_at_a_restarted_service) {
  startService();
  post(saying("first"));
  ASSERT_TRUE(server().unregisterService(serviceName));
  BusObject successor;
  QDBusConnection other = bus_.connection(QStringLiteral("successor"));
  ASSERT_TRUE(other.registerVirtualObject(objectPath, &successor));
  ASSERT_TRUE(other.registerService(serviceName));
  post(saying("second"));
  other.unregisterObject(objectPath);
  EXPECT_EQ(service_.calls.size(), 1u);
  ASSERT_EQ(successor.calls.size(), 1u);
  EXPECT_EQ(successor.calls.front().arguments().at(1).toUInt(), 0u);
}

TEST_F(LinuxNotificationsTest, posting_does_not_wait_for_the_start_of_the_service) {
  const TempTree folder;
  const std::string pipe = folder.path() + "/started";
  ASSERT_EQ(mkfifo(pipe.c_str(), 0600), 0);
  bus_.startServiceBy(serviceName, ": > " + pipe);
  notifications_.post(nearlyFull);
  dispatch_.finish();
  // Opens once the bus has started to start the service.
  const int started = open(pipe.c_str(), O_RDONLY | O_CLOEXEC);
  ASSERT_GE(started, 0);
  close(started);
  EXPECT_TRUE(service_.calls.empty());
  startService();
  settle();
  ASSERT_EQ(service_.calls.size(), 1u);
  EXPECT_EQ(argument(0, 3), QStringLiteral("Disk almost full"));
}

TEST_F(LinuxNotificationsTest, nothing_is_shown_without_a_service_until_there_is_one) {
  notifications_.post(saying("lost"));
  dispatch_.finish();
  catchUp(program(), serviceName, objectPath);
  startService();
  post(saying("shown"));
  ASSERT_EQ(service_.calls.size(), 1u);
  EXPECT_EQ(body(0), QStringLiteral("shown"));
}

TEST_F(LinuxNotificationsTest, nothing_is_shown_without_a_bus) {
  startService();
  LinuxNotifications notifications(dispatch_,
                                   [] { return QDBusConnection(QStringLiteral("nobody")); });
  notifications.post(saying("first"));
  notifications.post(saying("second"));
  dispatch_.finish();
  notifications.post(saying("third"));
  settle();
  EXPECT_TRUE(service_.calls.empty());
}

TEST_F(LinuxNotificationsTest, requestAuthorization_sends_nothing) {
  startService();
  notifications_.requestAuthorization();
  settle();
  EXPECT_TRUE(service_.calls.empty());
}

}  // namespace
}  // namespace tessaly
