// A test's own notification area on its own bus.
#include "app/desktop/LinuxStatusBarExtra.h"

#include <gtest/gtest.h>
#include <memory>
#include <string>
#include <vector>

#include <QCoreApplication>
#include <QDBusArgument>
#include <QDBusConnectionInterface>
#include <QDBusReply>
#include <QEventLoop>

#include "support/PrivateBus.h"
#include "support/QtDispatch.h"

namespace tessaly {

const QString watcherName = QStringLiteral("org.kde.StatusNotifierWatcher");
const QString watcherPath = QStringLiteral("/StatusNotifierWatcher");
const QString itemInterface = QStringLiteral("org.kde.StatusNotifierItem");
const QString menuInterface = QStringLiteral("com.canonical.dbusmenu");

// Records the signals of an item and its menu.
class ItemListener : public QObject {
  Q_OBJECT

 public:
  bool listenOn(QDBusConnection bus, const QString& item, const QString& menuPath) {
    const QString itemPath = QStringLiteral("/StatusNotifierItem");
    return bus.connect(item, itemPath, itemInterface, QStringLiteral("NewIcon"), this,
                       SLOT(heard(QDBusMessage))) &&
           bus.connect(item, itemPath, itemInterface, QStringLiteral("NewToolTip"), this,
                       SLOT(heard(QDBusMessage))) &&
           bus.connect(item, menuPath, menuInterface, QStringLiteral("LayoutUpdated"), this,
                       SLOT(heard(QDBusMessage))) &&
           bus.interface()->registeredServiceNames().isValid();
  }

  int count(const QString& member) const {
    int found = 0;
    for (const QDBusMessage& signal : signals_) found += signal.member() == member ? 1 : 0;
    return found;
  }
  const std::vector<QDBusMessage>& all() const { return signals_; }

 public slots:
  void heard(const QDBusMessage& signal) { signals_.push_back(signal); }

 private:
  std::vector<QDBusMessage> signals_;
};

namespace {

using Entry = StatusBarExtra::Entry;
using Presence = StatusBarExtra::Presence;

// A picture that identifies its label.
std::vector<QImage> paintWidth(const StatusBarExtra::Label& label) {
  QImage image(std::stoi(label.text), 2, QImage::Format_ARGB32_Premultiplied);
  image.fill(QColor(1, 2, 3));
  return {image, QImage(image.width() * 2, 4, QImage::Format_ARGB32_Premultiplied)};
}

class LinuxStatusBarExtraTest : public testing::Test {
 protected:
  void SetUp() override { ASSERT_TRUE(bus_.isRunning()) << "dbus-daemon is needed for this test"; }

  QDBusConnection desktop() { return bus_.connection(QStringLiteral("desktop")); }
  QDBusConnection program() { return bus_.connection(QStringLiteral("program")); }

  void startWatcher() {
    watcher_.answer = [this](const QDBusMessage& call, const QDBusConnection& bus) {
      if (call.member() == QLatin1String("Get")) {
        bus.send(call.createReply(QVariant::fromValue(QDBusVariant(hasHost_))));
      } else {
        bus.send(call.createReply());
      }
    };
    ASSERT_TRUE(desktop().registerVirtualObject(watcherPath, &watcher_));
    ASSERT_TRUE(desktop().registerService(watcherName));
  }
  void stopWatcher() {
    desktop().unregisterObject(watcherPath);
    ASSERT_TRUE(desktop().unregisterService(watcherName));
  }
  void say(const char* signal) {
    desktop().send(
        QDBusMessage::createSignal(watcherPath, watcherName, QString::fromLatin1(signal)));
  }

  void makeExtra() {
    extra_ =
        std::make_unique<LinuxStatusBarExtra>(dispatch_, paintWidth, [this] { return program(); });
    extra_->setPresenceChanged([this] { presences_.push_back(extra_->presence()); });
    extra_->setLabel({"externaldrive.fill", "7"});
    extra_->setMenu(menu_);
  }

  // Until both ends have handled all messages, and those that these have caused.
  void settle() {
    dispatch_.finish();
    for (int i = 0; i < 4; ++i) {
      for (const QDBusConnection& side : {program(), desktop()}) {
        callAndWait(side, QDBusMessage::createMethodCall(
                              QStringLiteral("org.freedesktop.DBus"), QStringLiteral("/"),
                              QStringLiteral("org.freedesktop.DBus"), QStringLiteral("GetId")));
      }
      QCoreApplication::processEvents();
    }
  }

  void start() {
    startWatcher();
    makeExtra();
    settle();
  }

  std::vector<QString> registrations() const {
    std::vector<QString> names;
    for (const QDBusMessage& call : watcher_.calls)
      if (call.member() == QLatin1String("RegisterStatusNotifierItem"))
        names.push_back(call.arguments().value(0).toString());
    return names;
  }

  // Calls like a panel, at the bus name of the registration.
  QDBusMessage ask(const QString& path, const QString& interface, const QString& method,
                   const QVariantList& arguments = {}) {
    QDBusMessage call =
        QDBusMessage::createMethodCall(program().baseService(), path, interface, method);
    call.setArguments(arguments);
    return callAndWait(desktop(), call);
  }
  QDBusMessage askItem(const char* method, const QVariantList& arguments = {}) {
    return ask(QStringLiteral("/StatusNotifierItem"), itemInterface, QString::fromLatin1(method),
               arguments);
  }
  QDBusMessage askMenu(const char* method, const QVariantList& arguments = {}) {
    return ask(menuPath(), menuInterface, QString::fromLatin1(method), arguments);
  }
  QVariant property(const QString& path, const QString& interface, const char* name) {
    const QDBusMessage reply = ask(path, QStringLiteral("org.freedesktop.DBus.Properties"),
                                   QStringLiteral("Get"), {interface, QString::fromLatin1(name)});
    EXPECT_EQ(reply.type(), QDBusMessage::ReplyMessage) << reply.errorMessage().toStdString();
    return reply.arguments().value(0).value<QDBusVariant>().variant();
  }
  QVariant itemProperty(const char* name) {
    return property(QStringLiteral("/StatusNotifierItem"), itemInterface, name);
  }
  QString menuPath() { return itemProperty("Menu").value<QDBusObjectPath>().path(); }

  MenuLayout layout(int depth = -1, const QStringList& names = {}) {
    const QDBusMessage reply = askMenu("GetLayout", {0, depth, names});
    EXPECT_EQ(reply.signature(), QStringLiteral("u(ia{sv}av)"));
    return qdbus_cast<MenuLayout>(reply.arguments().value(1).value<QDBusArgument>());
  }
  void click(int id) {
    askMenu("Event", {id, QStringLiteral("clicked"), QVariant::fromValue(QDBusVariant(0)), 0u});
  }
  StatusPixmaps icon() {
    return qdbus_cast<StatusPixmaps>(itemProperty("IconPixmap").value<QDBusArgument>());
  }

  Entry button(int id, const std::string& title) {
    return {id, Entry::Kind::button, title, [this, id] { pressed_.push_back(id); }};
  }

  bool hasHost_ = true;
  std::vector<int> pressed_;
  std::vector<Presence> presences_;
  std::vector<Entry> menu_ = {{1, Entry::Kind::text, "Disk 7% used"},
                              {2, Entry::Kind::divider},
                              button(4, "Quick Search…"),
                              button(5, "Quit")};
  BusObject watcher_;
  PrivateBus bus_;
  QtDispatch dispatch_;
  std::unique_ptr<LinuxStatusBarExtra> extra_;
};

TEST_F(LinuxStatusBarExtraTest, the_extra_is_unknown_until_the_desktop_has_answered) {
  makeExtra();
  EXPECT_EQ(extra_->presence(), Presence::unknown);
}

TEST_F(LinuxStatusBarExtraTest, the_extra_registers_by_its_bus_name_and_is_shown) {
  start();
  EXPECT_EQ(registrations(), std::vector{program().baseService()});
  EXPECT_EQ(extra_->presence(), Presence::shown);
  EXPECT_EQ(presences_, std::vector{Presence::shown});
}

TEST_F(LinuxStatusBarExtraTest, the_extra_is_absent_without_a_bus) {
  extra_ = std::make_unique<LinuxStatusBarExtra>(
      dispatch_, paintWidth, [] { return QDBusConnection(QStringLiteral("nobody")); });
  extra_->setLabel({"externaldrive.fill", "7"});
  dispatch_.finish();
  EXPECT_EQ(extra_->presence(), Presence::absent);
}

TEST_F(LinuxStatusBarExtraTest, the_extra_is_absent_without_a_watcher) {
  makeExtra();
  settle();
  EXPECT_EQ(presences_, std::vector{Presence::absent});
}

TEST_F(LinuxStatusBarExtraTest, the_extra_is_absent_if_the_watcher_refuses_it) {
  startWatcher();
  watcher_.answer = [](const QDBusMessage& call, const QDBusConnection& bus) {
    bus.send(call.createErrorReply(QDBusError::AccessDenied, QStringLiteral("no")));
  };
  makeExtra();
  settle();
  EXPECT_EQ(extra_->presence(), Presence::absent);
}

TEST_F(LinuxStatusBarExtraTest, the_extra_is_absent_while_the_watcher_has_no_host) {
  hasHost_ = false;
  start();
  EXPECT_EQ(presences_, std::vector{Presence::absent});
  hasHost_ = true;
  say("StatusNotifierHostRegistered");
  settle();
  EXPECT_EQ(extra_->presence(), Presence::shown);
  hasHost_ = false;
  say("StatusNotifierHostUnregistered");
  settle();
  EXPECT_EQ(presences_, (std::vector{Presence::absent, Presence::shown, Presence::absent}));
}

TEST_F(LinuxStatusBarExtraTest, the_extra_registers_with_a_watcher_that_starts_later) {
  makeExtra();
  settle();
  ASSERT_EQ(extra_->presence(), Presence::absent);
  startWatcher();
  settle();
  EXPECT_EQ(registrations().size(), 1u);
  EXPECT_EQ(extra_->presence(), Presence::shown);
}

TEST_F(LinuxStatusBarExtraTest,
       the_extra_is_absent_without_its_watcher_and_registers_with_the_next) {
  start();
  stopWatcher();
  settle();
  EXPECT_EQ(extra_->presence(), Presence::absent);
  startWatcher();
  settle();
  EXPECT_EQ(registrations().size(), 2u);
  EXPECT_EQ(presences_, (std::vector{Presence::shown, Presence::absent, Presence::shown}));
}

TEST_F(LinuxStatusBarExtraTest, the_answer_of_a_watcher_that_is_gone_is_ignored) {
  QDBusMessage asked;
  startWatcher();
  const auto usual = watcher_.answer;
  watcher_.answer = [&](const QDBusMessage& call, const QDBusConnection& bus) {
    if (call.member() != QLatin1String("Get")) {
      usual(call, bus);
      return;
    }
    call.setDelayedReply(true);
    asked = call;
  };
  makeExtra();
  settle();
  ASSERT_EQ(extra_->presence(), Presence::unknown);
  stopWatcher();
  settle();
  desktop().send(asked.createReply(QVariant::fromValue(QDBusVariant(true))));
  settle();
  EXPECT_EQ(extra_->presence(), Presence::absent);
}

TEST_F(LinuxStatusBarExtraTest, the_item_has_its_properties) {
  start();
  EXPECT_EQ(itemProperty("Category"), QStringLiteral("ApplicationStatus"));
  EXPECT_EQ(itemProperty("Id"), QStringLiteral("tessaly"));
  EXPECT_EQ(itemProperty("Title"), QStringLiteral("Tessaly"));
  EXPECT_EQ(itemProperty("Status"), QStringLiteral("Active"));
  EXPECT_EQ(itemProperty("IconName"), QString());
  EXPECT_EQ(itemProperty("ItemIsMenu"), true);
  const auto toolTip = qdbus_cast<StatusToolTip>(itemProperty("ToolTip").value<QDBusArgument>());
  EXPECT_EQ(toolTip.title, QStringLiteral("Tessaly"));
  EXPECT_EQ(toolTip.text, QStringLiteral("7"));
}

// Some panels read all properties at once and give up at a wrong type.
TEST_F(LinuxStatusBarExtraTest, all_properties_have_the_types_of_the_interface) {
  start();
  const QDBusMessage reply =
      ask(QStringLiteral("/StatusNotifierItem"), QStringLiteral("org.freedesktop.DBus.Properties"),
          QStringLiteral("GetAll"), {itemInterface});
  const auto all = qdbus_cast<QVariantMap>(reply.arguments().value(0).value<QDBusArgument>());
  const auto typeOf = [&](const char* name) {
    const QVariant value = all.value(QString::fromLatin1(name));
    return value.canConvert<QDBusArgument>() ? value.value<QDBusArgument>().currentSignature()
                                             : QString::fromLatin1(value.typeName());
  };
  EXPECT_EQ(typeOf("IconPixmap"), QStringLiteral("a(iiay)"));
  EXPECT_EQ(typeOf("OverlayIconPixmap"), QStringLiteral("a(iiay)"));
  EXPECT_EQ(typeOf("AttentionIconPixmap"), QStringLiteral("a(iiay)"));
  EXPECT_EQ(typeOf("ToolTip"), QStringLiteral("(sa(iiay)ss)"));
  EXPECT_EQ(typeOf("Menu"), QStringLiteral("QDBusObjectPath"));
  EXPECT_EQ(typeOf("ItemIsMenu"), QStringLiteral("bool"));
  EXPECT_EQ(typeOf("WindowId"), QStringLiteral("int"));
  EXPECT_EQ(all.size(), 16);
}

TEST_F(LinuxStatusBarExtraTest, pictures_are_sent_as_alpha_red_green_blue) {
  start();
  const StatusPixmaps pictures = icon();
  ASSERT_EQ(pictures.size(), 2);
  EXPECT_EQ(pictures[0].width, 7);
  EXPECT_EQ(pictures[0].height, 2);
  EXPECT_EQ(pictures[0].bytes, QByteArray("\xff\x01\x02\x03", 4).repeated(14));
  EXPECT_EQ(pictures[1].width, 14);
}

TEST_F(LinuxStatusBarExtraTest, pictures_are_painted_only_when_the_label_changes) {
  start();
  ItemListener listener;
  ASSERT_TRUE(listener.listenOn(desktop(), program().baseService(), menuPath()));
  extra_->setLabel({"externaldrive.fill", "7"});
  settle();
  EXPECT_TRUE(listener.all().empty());
  extra_->setLabel({"externaldrive.fill", "9"});
  settle();
  EXPECT_EQ(listener.count(QStringLiteral("NewIcon")), 1);
  EXPECT_EQ(listener.count(QStringLiteral("NewToolTip")), 1);
  EXPECT_EQ(icon().value(0).width, 9);
}

TEST_F(LinuxStatusBarExtraTest, the_menu_is_sent_entry_by_entry) {
  start();
  const MenuLayout menu = layout();
  EXPECT_EQ(menu.id, 0);
  EXPECT_EQ(menu.properties.value(QStringLiteral("children-display")), QStringLiteral("submenu"));
  ASSERT_EQ(menu.children.size(), 4);
  EXPECT_EQ(menu.children[0].properties,
            (QVariantMap{{QStringLiteral("label"), QStringLiteral("Disk 7% used")},
                         {QStringLiteral("enabled"), false}}));
  EXPECT_EQ(menu.children[1].properties,
            (QVariantMap{{QStringLiteral("type"), QStringLiteral("separator")}}));
  EXPECT_EQ(menu.children[2].id, 4);
  EXPECT_EQ(menu.children[2].properties,
            (QVariantMap{{QStringLiteral("label"), QStringLiteral("Quick Search…")}}));
}

TEST_F(LinuxStatusBarExtraTest, only_the_requested_part_of_the_menu_is_sent) {
  start();
  EXPECT_TRUE(layout(0).children.isEmpty());
  const MenuLayout menu = layout(1, {QStringLiteral("enabled")});
  ASSERT_EQ(menu.children.size(), 4);
  EXPECT_EQ(menu.children[0].properties, (QVariantMap{{QStringLiteral("enabled"), false}}));
  EXPECT_TRUE(menu.children[2].properties.isEmpty());
}

TEST_F(LinuxStatusBarExtraTest, an_underscore_is_shown_as_one) {
  menu_ = {button(1, "a_b")};
  start();
  EXPECT_EQ(layout().children[0].properties.value(QStringLiteral("label")), QStringLiteral("a__b"));
}

TEST_F(LinuxStatusBarExtraTest, a_click_runs_the_action_of_its_entry) {
  start();
  click(5);
  click(4);
  EXPECT_EQ(pressed_, (std::vector{5, 4}));
}

TEST_F(LinuxStatusBarExtraTest, other_events_texts_and_unknown_entries_do_nothing) {
  for (std::size_t i : {0u, 1u}) menu_[i].action = [this] { pressed_.push_back(0); };
  start();
  askMenu("Event", {4, QStringLiteral("hovered"), QVariant::fromValue(QDBusVariant(0)), 0u});
  click(1);
  click(2);
  click(0);
  click(99);
  EXPECT_TRUE(pressed_.empty());
}

TEST_F(LinuxStatusBarExtraTest, a_group_of_clicks_returns_the_unknown_entries) {
  start();
  const QDBusVariant nothing(0);
  const QList<MenuEvent> events = {{4, QStringLiteral("clicked"), nothing, 0},
                                   {99, QStringLiteral("clicked"), nothing, 0},
                                   {5, QStringLiteral("clicked"), nothing, 0}};
  const QDBusMessage reply = askMenu("EventGroup", {QVariant::fromValue(events)});
  EXPECT_EQ(pressed_, (std::vector{4, 5}));
  EXPECT_EQ(qdbus_cast<QList<int>>(reply.arguments().value(0).value<QDBusArgument>()),
            QList<int>{99});
}

TEST_F(LinuxStatusBarExtraTest, the_properties_of_some_entries_are_sent) {
  start();
  const QDBusMessage reply =
      askMenu("GetGroupProperties", {QVariant::fromValue(QList<int>{5, 99, 1}), QStringList()});
  const auto items =
      qdbus_cast<QList<MenuItemProperties>>(reply.arguments().value(0).value<QDBusArgument>());
  ASSERT_EQ(items.size(), 2);
  EXPECT_EQ(items[0].id, 5);
  EXPECT_EQ(items[0].properties.value(QStringLiteral("label")), QStringLiteral("Quit"));
  EXPECT_EQ(items[1].id, 1);
  const auto one = [&](int id, const char* name) {
    return askMenu("GetProperty", {id, QString::fromLatin1(name)})
        .arguments()
        .value(0)
        .value<QDBusVariant>()
        .variant();
  };
  EXPECT_EQ(one(1, "enabled"), false);
  EXPECT_EQ(one(5, "enabled"), true);
  EXPECT_EQ(one(5, "label"), QStringLiteral("Quit"));
}

TEST_F(LinuxStatusBarExtraTest, the_menu_needs_no_update_before_it_is_shown) {
  start();
  EXPECT_EQ(askMenu("AboutToShow", {0}).arguments().value(0), false);
  const QDBusMessage reply = askMenu("AboutToShowGroup", {QVariant::fromValue(QList<int>{0, 99})});
  EXPECT_EQ(qdbus_cast<QList<int>>(reply.arguments().value(1).value<QDBusArgument>()),
            QList<int>{99});
  EXPECT_EQ(property(menuPath(), menuInterface, "Version"), 3u);
  EXPECT_EQ(property(menuPath(), menuInterface, "Status"), QStringLiteral("normal"));
}

TEST_F(LinuxStatusBarExtraTest, a_changed_menu_is_announced_and_an_equal_one_is_not) {
  start();
  ItemListener listener;
  ASSERT_TRUE(listener.listenOn(desktop(), program().baseService(), menuPath()));
  extra_->setMenu(menu_);
  settle();
  EXPECT_TRUE(listener.all().empty());
  const uint before = askMenu("GetLayout", {0, 0, QStringList()}).arguments().value(0).toUInt();
  menu_[0].title = "Disk 8% used";
  extra_->setMenu(menu_);
  settle();
  ASSERT_EQ(listener.count(QStringLiteral("LayoutUpdated")), 1);
  EXPECT_EQ(listener.all().back().arguments(), (QVariantList{before + 1, 0}));
  EXPECT_EQ(askMenu("GetLayout", {0, 0, QStringList()}).arguments().value(0).toUInt(), before + 1);
}

TEST_F(LinuxStatusBarExtraTest, a_click_runs_the_action_of_the_newest_menu) {
  start();
  int newPresses = 0;
  menu_[2].action = [&] { ++newPresses; };
  extra_->setMenu(menu_);
  click(4);
  EXPECT_EQ(newPresses, 1);
  EXPECT_TRUE(pressed_.empty());
}

TEST_F(LinuxStatusBarExtraTest, an_action_may_replace_the_menu) {
  start();
  menu_[2].action = [this] {
    extra_->setMenu({button(9, "New")});
    pressed_.push_back(4);
  };
  extra_->setMenu(menu_);
  click(4);
  EXPECT_EQ(pressed_, std::vector{4});
  EXPECT_EQ(layout().children.value(0).id, 9);
}

TEST_F(LinuxStatusBarExtraTest, activating_the_item_runs_its_first_button) {
  start();
  askItem("Activate", {10, 20});
  askItem("SecondaryActivate", {10, 20});
  EXPECT_EQ(pressed_, (std::vector{4, 4}));
  extra_->setMenu({});
  askItem("Activate", {10, 20});
  EXPECT_EQ(pressed_.size(), 2u);
}

TEST_F(LinuxStatusBarExtraTest, answers_after_the_destruction_are_dropped) {
  startWatcher();
  makeExtra();
  extra_.reset();
  settle();
  EXPECT_TRUE(presences_.empty());
}

}  // namespace
}  // namespace tessaly

#include "LinuxStatusBarExtra_test.moc"
