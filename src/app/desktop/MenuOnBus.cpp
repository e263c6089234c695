#include "app/desktop/MenuOnBus.h"

#include <algorithm>
#include <functional>
#include <utility>

#include <QDBusMetaType>

namespace tessaly {

namespace {

using Entry = StatusBarExtra::Entry;

constexpr int wholeMenu = 0;

bool looksAlike(const Entry& a, const Entry& b) {
  return a.id == b.id && a.kind == b.kind && a.title == b.title;
}

// A single underscore would mark the access key.
QString labelOf(const Entry& entry) {
  return QString::fromStdString(entry.title).replace(QLatin1Char('_'), QLatin1String("__"));
}

// Default values are left out: a standard entry, visible and enabled.
QVariantMap allPropertiesOf(const Entry& entry) {
  switch (entry.kind) {
    case Entry::Kind::divider:
      return {{QStringLiteral("type"), QStringLiteral("separator")}};
    case Entry::Kind::text:
      return {{QStringLiteral("label"), labelOf(entry)}, {QStringLiteral("enabled"), false}};
    case Entry::Kind::button:
      break;
  }
  return {{QStringLiteral("label"), labelOf(entry)}};
}

// The default value of a property.
QVariant usual(const QString& property) {
  if (property == QLatin1String("type")) return QStringLiteral("standard");
  if (property == QLatin1String("enabled") || property == QLatin1String("visible")) return true;
  if (property == QLatin1String("toggle-state")) return -1;
  return QString();
}

}  // namespace

QDBusArgument& operator<<(QDBusArgument& out, const MenuLayout& layout) {
  out.beginStructure();
  out << layout.id << layout.properties;
  out.beginArray(QMetaType::fromType<QDBusVariant>());
  for (const MenuLayout& child : layout.children) out << QDBusVariant(QVariant::fromValue(child));
  out.endArray();
  out.endStructure();
  return out;
}

const QDBusArgument& operator>>(const QDBusArgument& in, MenuLayout& layout) {
  layout.children.clear();
  in.beginStructure();
  in >> layout.id >> layout.properties;
  in.beginArray();
  while (!in.atEnd()) {
    QDBusVariant child;
    in >> child;
    layout.children.push_back(qdbus_cast<MenuLayout>(child.variant().value<QDBusArgument>()));
  }
  in.endArray();
  in.endStructure();
  return in;
}

QDBusArgument& operator<<(QDBusArgument& out, const MenuItemProperties& item) {
  out.beginStructure();
  out << item.id << item.properties;
  out.endStructure();
  return out;
}

const QDBusArgument& operator>>(const QDBusArgument& in, MenuItemProperties& item) {
  in.beginStructure();
  in >> item.id >> item.properties;
  in.endStructure();
  return in;
}

QDBusArgument& operator<<(QDBusArgument& out, const MenuEvent& event) {
  out.beginStructure();
  out << event.id << event.name << event.data << event.timestamp;
  out.endStructure();
  return out;
}

const QDBusArgument& operator>>(const QDBusArgument& in, MenuEvent& event) {
  in.beginStructure();
  in >> event.id >> event.name >> event.data >> event.timestamp;
  in.endStructure();
  return in;
}

MenuOnBus::MenuOnBus(QObject* parent) : QObject(parent) {
  qDBusRegisterMetaType<QList<int>>();
  qDBusRegisterMetaType<MenuLayout>();
  qDBusRegisterMetaType<MenuItemProperties>();
  qDBusRegisterMetaType<QList<MenuItemProperties>>();
  qDBusRegisterMetaType<MenuEvent>();
  qDBusRegisterMetaType<QList<MenuEvent>>();
}

void MenuOnBus::setEntries(std::vector<Entry> entries) {
  const bool isAlike =
      std::equal(entries.begin(), entries.end(), entries_.begin(), entries_.end(), looksAlike);
  entries_ = std::move(entries);
  if (isAlike) return;
  ++revision_;
  emit layoutUpdated(revision_);
}

// The action may replace the menu, and the entry with it.
bool MenuOnBus::press(int id) {
  const Entry* pressed = entry(id);
  if (pressed == nullptr || pressed->kind != Entry::Kind::button) return false;
  const std::function<void()> action = pressed->action;
  if (action) action();
  return true;
}

void MenuOnBus::pressFirst() {
  const auto first = std::find_if(entries_.begin(), entries_.end(), [](const Entry& entry) {
    return entry.kind == Entry::Kind::button;
  });
  if (first != entries_.end()) press(first->id);
}

bool MenuOnBus::has(int id) const {
  return id == wholeMenu || entry(id) != nullptr;
}

MenuLayout MenuOnBus::layout(int id, int depth, const QStringList& names) const {
  MenuLayout layout{id, propertiesOf(id, names), {}};
  if (id != wholeMenu || depth == 0) return layout;
  for (const Entry& child : entries_)
    layout.children.push_back({child.id, propertiesOf(child.id, names), {}});
  return layout;
}

QList<MenuItemProperties> MenuOnBus::properties(const QList<int>& ids,
                                                const QStringList& names) const {
  QList<int> wanted = ids;
  if (wanted.isEmpty()) {
    wanted.push_back(wholeMenu);
    for (const Entry& entry : entries_) wanted.push_back(entry.id);
  }
  QList<MenuItemProperties> items;
  for (const int id : std::as_const(wanted))
    if (has(id)) items.push_back({id, propertiesOf(id, names)});
  return items;
}

const Entry* MenuOnBus::entry(int id) const {
  const auto found = std::find_if(entries_.begin(), entries_.end(),
                                  [id](const Entry& entry) { return entry.id == id; });
  return found == entries_.end() ? nullptr : &*found;
}

QVariantMap MenuOnBus::propertiesOf(int id, const QStringList& names) const {
  QVariantMap all;
  if (id == wholeMenu) all.insert(QStringLiteral("children-display"), QStringLiteral("submenu"));
  if (const Entry* found = entry(id)) all = allPropertiesOf(*found);
  if (names.isEmpty()) return all;
  QVariantMap chosen;
  for (const QString& name : names)
    if (all.contains(name)) chosen.insert(name, all.value(name));
  return chosen;
}

MenuAdaptor::MenuAdaptor(MenuOnBus& menu) : QDBusAbstractAdaptor(&menu), menu_(menu) {
  connect(&menu, &MenuOnBus::layoutUpdated, this,
          [this](uint revision) { emit LayoutUpdated(revision, wholeMenu); });
}

uint MenuAdaptor::GetLayout(int parentId, int recursionDepth, const QStringList& propertyNames,
                            MenuLayout& layout) {
  layout = menu_.layout(parentId, recursionDepth, propertyNames);
  return menu_.revision();
}

QList<MenuItemProperties> MenuAdaptor::GetGroupProperties(const QList<int>& ids,
                                                          const QStringList& propertyNames) {
  return menu_.properties(ids, propertyNames);
}

QDBusVariant MenuAdaptor::GetProperty(int id, const QString& name) {
  const QList<MenuItemProperties> found = menu_.properties({id}, {name});
  if (found.isEmpty()) return QDBusVariant(usual(name));
  return QDBusVariant(found.front().properties.value(name, usual(name)));
}

void MenuAdaptor::Event(int id, const QString& eventId, const QDBusVariant&, uint) {
  if (eventId == QLatin1String("clicked")) menu_.press(id);
}

// Unknown entries are collected before the first action, which may replace the menu.
QList<int> MenuAdaptor::EventGroup(const QList<MenuEvent>& events) {
  QList<int> unknown;
  for (const MenuEvent& event : events)
    if (!menu_.has(event.id)) unknown.push_back(event.id);
  for (const MenuEvent& event : events) Event(event.id, event.name, event.data, event.timestamp);
  return unknown;
}

bool MenuAdaptor::AboutToShow(int) {
  return false;
}

QList<int> MenuAdaptor::AboutToShowGroup(const QList<int>& ids, QList<int>& idErrors) {
  idErrors.clear();
  for (const int id : ids)
    if (!menu_.has(id)) idErrors.push_back(id);
  return {};
}

}  // namespace tessaly
