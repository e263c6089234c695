// A menu that other programs draw: the interface com.canonical.dbusmenu, version 3. Exported on a
// bus as an object with adaptors.
//
// Main thread only. Entries have the same numbers in all menus; 0 is the menu itself.
#pragma once

#include <cstdint>
#include <vector>

#include <QDBusAbstractAdaptor>
#include <QDBusArgument>
#include <QDBusVariant>
#include <QList>
#include <QMetaType>
#include <QObject>
#include <QStringList>
#include <QVariantMap>

#include "platform/StatusBarExtra.h"

namespace tessaly {

// (ia{sv}av): an entry and its children.
struct MenuLayout {
  int id = 0;
  QVariantMap properties;
  QList<MenuLayout> children;
};

// (ia{sv})
struct MenuItemProperties {
  int id = 0;
  QVariantMap properties;
};

// (isvu)
struct MenuEvent {
  int id = 0;
  QString name;
  QDBusVariant data;
  uint timestamp = 0;
};

QDBusArgument& operator<<(QDBusArgument& out, const MenuLayout& layout);
const QDBusArgument& operator>>(const QDBusArgument& in, MenuLayout& layout);
QDBusArgument& operator<<(QDBusArgument& out, const MenuItemProperties& item);
const QDBusArgument& operator>>(const QDBusArgument& in, MenuItemProperties& item);
QDBusArgument& operator<<(QDBusArgument& out, const MenuEvent& event);
const QDBusArgument& operator>>(const QDBusArgument& in, MenuEvent& event);

class MenuOnBus : public QObject {
  Q_OBJECT

 public:
  explicit MenuOnBus(QObject* parent = nullptr);

  // Announces the change unless the menu looks the same.
  void setEntries(std::vector<StatusBarExtra::Entry> entries);

  // Runs the action of the entry; false if there is no such button.
  bool press(int id);
  // The same for the first button.
  void pressFirst();

  uint revision() const { return revision_; }
  bool has(int id) const;
  // With children unless `depth` is 0. With the named properties, or all if there are no names.
  MenuLayout layout(int id, int depth, const QStringList& names) const;
  // Of the requested entries that exist; of all if there are no numbers.
  QList<MenuItemProperties> properties(const QList<int>& ids, const QStringList& names) const;

 signals:
  void layoutUpdated(uint revision);

 private:
  const StatusBarExtra::Entry* entry(int id) const;
  QVariantMap propertiesOf(int id, const QStringList& names) const;

  std::vector<StatusBarExtra::Entry> entries_;
  uint revision_ = 1;
};

// The interface on the bus.
class MenuAdaptor : public QDBusAbstractAdaptor {
  Q_OBJECT
  Q_CLASSINFO("D-Bus Interface", "com.canonical.dbusmenu")
  Q_PROPERTY(uint Version READ version)
  Q_PROPERTY(QString TextDirection READ textDirection)
  Q_PROPERTY(QString Status READ status)
  Q_PROPERTY(QStringList IconThemePath READ iconThemePath)

 public:
  explicit MenuAdaptor(MenuOnBus& menu);

  uint version() const { return 3; }
  QString textDirection() const { return QStringLiteral("ltr"); }
  QString status() const { return QStringLiteral("normal"); }
  QStringList iconThemePath() const { return {}; }

 public slots:
  uint GetLayout(int parentId, int recursionDepth, const QStringList& propertyNames,
                 tessaly::MenuLayout& layout);
  QList<tessaly::MenuItemProperties> GetGroupProperties(const QList<int>& ids,
                                                        const QStringList& propertyNames);
  QDBusVariant GetProperty(int id, const QString& name);
  void Event(int id, const QString& eventId, const QDBusVariant& data, uint timestamp);
  QList<int> EventGroup(const QList<tessaly::MenuEvent>& events);
  bool AboutToShow(int id);
  QList<int> AboutToShowGroup(const QList<int>& ids, QList<int>& idErrors);

 signals:
  void LayoutUpdated(uint revision, int parent);

 private:
  MenuOnBus& menu_;
};

}  // namespace tessaly

Q_DECLARE_METATYPE(tessaly::MenuLayout)
Q_DECLARE_METATYPE(tessaly::MenuItemProperties)
Q_DECLARE_METATYPE(tessaly::MenuEvent)
