// A test's own dock on its own bus; windows without a display.
#include "app/desktop/LinuxApplicationIcon.h"

#include <gtest/gtest.h>
#include <memory>
#include <stdexcept>
#include <string>
#include <vector>

#include <QCoreApplication>
#include <QDBusArgument>
#include <QDBusConnectionInterface>
#include <QWindow>

#include "support/Eventually.h"
#include "support/EventuallyByEvents.h"
#include "support/PrivateBus.h"
#include "support/QtDispatch.h"

namespace tessaly {

class ListeningDock : public QObject {
  Q_OBJECT

 public:
  bool listenOn(QDBusConnection bus) {
    // The reply to this call shows that the bus knows of the listener.
    return bus.connect(QString(), QString(), QStringLiteral("com.canonical.Unity.LauncherEntry"),
                       QStringLiteral("Update"), this, SLOT(update(QDBusMessage))) &&
           bus.interface()->registeredServiceNames().isValid();
  }

  QVariantMap properties(std::size_t update) const {
    return qdbus_cast<QVariantMap>(updates.at(update).arguments().at(1).value<QDBusArgument>());
  }

  std::vector<QDBusMessage> updates;

 public slots:
  void update(const QDBusMessage& message) { updates.push_back(message); }
};

namespace {

class LinuxApplicationIconTest : public testing::Test {
 protected:
  void SetUp() override {
    ASSERT_TRUE(bus_.isRunning()) << "dbus-daemon is needed for this test";
    ASSERT_TRUE(dock_.listenOn(bus_.connection(QStringLiteral("dock"))));
  }

  // What the dock receives for a badge.
  QVariantMap badge(const std::string& text) {
    const std::size_t before = dock_.updates.size();
    icon_.setBadge(text);
    dispatch_.finish();
    awaitUpdates(before + 1);
    return dock_.properties(before);
  }

  void awaitUpdates(std::size_t count) {
    if (!eventuallyByEvents([&] { return dock_.updates.size() >= count; }, "updates of the dock"))
      throw std::runtime_error("the dock was not told");
  }

  ListeningDock dock_;
  PrivateBus bus_;
  QtDispatch dispatch_;
  std::vector<QWindow*> alerts_;
  LinuxApplicationIcon icon_{dispatch_,
                             {[this] { return bus_.connection(QStringLiteral("program")); },
                              [this](QWindow& window) { alerts_.push_back(&window); }}};
};

TEST_F(LinuxApplicationIconTest, the_dock_gets_the_number_of_the_badge) {
  const QVariantMap properties = badge("87%");
  const QDBusMessage& update = dock_.updates.front();
  EXPECT_EQ(update.signature(), QStringLiteral("sa{sv}"));
  EXPECT_EQ(update.arguments().at(0), QStringLiteral("application://tessaly.desktop"));
  EXPECT_EQ(properties, (QVariantMap{{QStringLiteral("count"), 87LL},
                                     {QStringLiteral("count-visible"), true},
                                     {QStringLiteral("progress"), 0.0},
                                     {QStringLiteral("progress-visible"), false}}));
  EXPECT_EQ(properties.value(QStringLiteral("count")).typeId(), QMetaType::LongLong);
}

TEST_F(LinuxApplicationIconTest, every_integer_is_a_badge) {
  for (const auto& [text, count] : std::vector<std::pair<std::string, qlonglong>>{
           {"0%", 0}, {"-0%", 0}, {"100%", 100}, {"12", 12}, {"9223372036854775807", INT64_MAX}}) {
    const QVariantMap properties = badge(text);
    EXPECT_EQ(properties.value(QStringLiteral("count")).toLongLong(), count) << text;
    EXPECT_TRUE(properties.value(QStringLiteral("count-visible")).toBool()) << text;
  }
}

TEST_F(LinuxApplicationIconTest, a_text_that_is_not_a_number_hides_the_badge) {
  for (const std::string text :
       {"", "%", "nan%", "inf%", "full", "87 files", "8.5%", "87%%", "9223372036854775808"})
    EXPECT_FALSE(badge(text).value(QStringLiteral("count-visible")).toBool()) << text;
}

TEST_F(LinuxApplicationIconTest, the_dock_gets_every_badge_in_order) {
  icon_.setBadge("1%");
  icon_.setBadge("2%");
  badge("2%");
  awaitUpdates(3);
  for (const auto& [update, count] :
       std::vector<std::pair<std::size_t, int>>{{0, 1}, {1, 2}, {2, 2}})
    EXPECT_EQ(dock_.properties(update).value(QStringLiteral("count")), count);
}

TEST_F(LinuxApplicationIconTest, the_window_requests_attention) {
  QWindow window;
  icon_.setWindow(&window);
  icon_.requestAttention();
  EXPECT_EQ(alerts_, std::vector<QWindow*>{&window});
}

TEST_F(LinuxApplicationIconTest, an_active_window_does_not_request_attention) {
  QWindow window;
  window.show();
  window.requestActivate();
  eventually(
      [&] {
        QCoreApplication::processEvents();
        return window.isActive();
      },
      "the keyboard for the window");
  icon_.setWindow(&window);
  icon_.requestAttention();
  EXPECT_TRUE(alerts_.empty());
}

TEST_F(LinuxApplicationIconTest, nothing_requests_attention_without_a_window) {
  icon_.requestAttention();
  auto window = std::make_unique<QWindow>();
  icon_.setWindow(window.get());
  window.reset();
  icon_.requestAttention();
  EXPECT_TRUE(alerts_.empty());
}

}  // namespace
}  // namespace tessaly

#include "LinuxApplicationIcon_test.moc"
