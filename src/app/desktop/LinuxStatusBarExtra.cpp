#include "app/desktop/LinuxStatusBarExtra.h"

#include <utility>

#include <QDBusServiceWatcher>
#include <QDBusVariant>

namespace tessaly {

namespace {

// The path that a watcher expects of an item registered by its bus name only.
const QString& itemPath() {
  static const QString path = QStringLiteral("/StatusNotifierItem");
  return path;
}
const QString& menuPath() {
  static const QString path = QStringLiteral("/StatusNotifierItem/Menu");
  return path;
}
const QString& watcherName() {
  static const QString name = QStringLiteral("org.kde.StatusNotifierWatcher");
  return name;
}
const QString& watcherPath() {
  static const QString path = QStringLiteral("/StatusNotifierWatcher");
  return path;
}

}  // namespace

LinuxStatusBarExtra::LinuxStatusBarExtra(Dispatch& dispatch, Paint paint,
                                         SessionBus::Connect connect)
    : paint_(std::move(paint)), item_(menuPath()), bus_(dispatch, std::move(connect)) {
  new MenuAdaptor(menu_);
  new StatusItemAdaptor(item_);
  QObject::connect(&item_, &StatusItem::activated, &menu_, &MenuOnBus::pressFirst);
  bus_.whenOpen([this](QDBusConnection& bus) { opened(bus); });
}

LinuxStatusBarExtra::~LinuxStatusBarExtra() = default;

void LinuxStatusBarExtra::setLabel(const Label& label) {
  if (label_ == label) return;
  label_ = label;
  item_.setLook(paint_(label), QString::fromStdString(label.text));
}

void LinuxStatusBarExtra::setMenu(std::vector<Entry> menu) {
  menu_.setEntries(std::move(menu));
}

void LinuxStatusBarExtra::setPresenceChanged(std::function<void()> changed) {
  presenceChanged_ = std::move(changed);
}

void LinuxStatusBarExtra::opened(QDBusConnection& bus) {
  if (!bus.isConnected()) {
    setPresence(Presence::absent);
    return;
  }
  ownName_ = bus.baseService();
  exportTo(bus);
  watch(bus);
  registerItem();
}

void LinuxStatusBarExtra::exportTo(QDBusConnection& bus) {
  bus.registerObject(menuPath(), &menu_);
  bus.registerObject(itemPath(), &item_);
}

void LinuxStatusBarExtra::watch(QDBusConnection& bus) {
  watcher_ = std::make_unique<QDBusServiceWatcher>(watcherName(), bus);
  QObject::connect(
      watcher_.get(), &QDBusServiceWatcher::serviceOwnerChanged, this,
      [this](const QString&, const QString&, const QString& owner) { ownerChanged(owner); });
  // Without the sender's name, which the bus would have to look up first.
  for (const char* signal : {"StatusNotifierHostRegistered", "StatusNotifierHostUnregistered"})
    bus.connect(QString(), watcherPath(), watcherName(), QString::fromLatin1(signal), this,
                SLOT(askForHost()));
}

void LinuxStatusBarExtra::ownerChanged(const QString& owner) {
  if (!owner.isEmpty()) {
    registerItem();
    return;
  }
  ++registration_;
  ++question_;
  setPresence(Presence::absent);
}

void LinuxStatusBarExtra::registerItem() {
  QDBusMessage registration = QDBusMessage::createMethodCall(
      watcherName(), watcherPath(), watcherName(), QStringLiteral("RegisterStatusNotifierItem"));
  registration << ownName_;
  bus_.call(registration, [this, number = ++registration_](const QDBusMessage& reply) {
    if (number != registration_) return;
    if (reply.type() == QDBusMessage::ReplyMessage) {
      askForHost();
    } else {
      setPresence(Presence::absent);
    }
  });
}

void LinuxStatusBarExtra::askForHost() {
  QDBusMessage question = QDBusMessage::createMethodCall(
      watcherName(), watcherPath(), QStringLiteral("org.freedesktop.DBus.Properties"),
      QStringLiteral("Get"));
  question << watcherName() << QStringLiteral("IsStatusNotifierHostRegistered");
  bus_.call(question, [this, number = ++question_](const QDBusMessage& reply) {
    if (number != question_) return;
    const QVariant answer = reply.arguments().value(0);
    const bool hasHost = reply.type() == QDBusMessage::ReplyMessage &&
                         answer.value<QDBusVariant>().variant().toBool();
    setPresence(hasHost ? Presence::shown : Presence::absent);
  });
}

void LinuxStatusBarExtra::setPresence(Presence presence) {
  if (presence == presence_) return;
  presence_ = presence;
  if (presenceChanged_) presenceChanged_();
}

}  // namespace tessaly
