// An item in the notification area: the interface org.kde.StatusNotifierItem, with a picture that
// is sent in several sizes. Exported on a bus as an object with adaptors.
//
// Main thread only.
#pragma once

#include <vector>

#include <QByteArray>
#include <QDBusAbstractAdaptor>
#include <QDBusArgument>
#include <QDBusObjectPath>
#include <QImage>
#include <QList>
#include <QMetaType>
#include <QObject>
#include <QString>

namespace tessaly {

// (iiay): rows from the top, four bytes per pixel: alpha, red, green, blue.
struct StatusPixmap {
  int width = 0;
  int height = 0;
  QByteArray bytes;

  static StatusPixmap of(const QImage& image);
};

using StatusPixmaps = QList<StatusPixmap>;

// (sa(iiay)ss)
struct StatusToolTip {
  QString iconName;
  StatusPixmaps icon;
  QString title;
  QString text;
};

QDBusArgument& operator<<(QDBusArgument& out, const StatusPixmap& pixmap);
const QDBusArgument& operator>>(const QDBusArgument& in, StatusPixmap& pixmap);
QDBusArgument& operator<<(QDBusArgument& out, const StatusToolTip& toolTip);
const QDBusArgument& operator>>(const QDBusArgument& in, StatusToolTip& toolTip);

class StatusItem : public QObject {
  Q_OBJECT

 public:
  explicit StatusItem(QString menuPath, QObject* parent = nullptr);

  // Sets the picture and the text. Announces the change.
  void setLook(const std::vector<QImage>& pictures, const QString& text);

  const StatusPixmaps& icon() const { return icon_; }
  const QString& text() const { return text_; }
  const QString& menuPath() const { return menuPath_; }

 signals:
  void lookChanged();
  void activated();  // by the desktop's gesture for it

 private:
  QString menuPath_;
  StatusPixmaps icon_;
  QString text_;
};

// The interface on the bus.
class StatusItemAdaptor : public QDBusAbstractAdaptor {
  Q_OBJECT
  Q_CLASSINFO("D-Bus Interface", "org.kde.StatusNotifierItem")
  Q_PROPERTY(QString Category READ category)
  Q_PROPERTY(QString Id READ id)
  Q_PROPERTY(QString Title READ title)
  Q_PROPERTY(QString Status READ status)
  Q_PROPERTY(int WindowId READ windowId)
  Q_PROPERTY(QString IconName READ noName)
  Q_PROPERTY(tessaly::StatusPixmaps IconPixmap READ iconPixmap)
  Q_PROPERTY(QString OverlayIconName READ noName)
  Q_PROPERTY(tessaly::StatusPixmaps OverlayIconPixmap READ noPixmap)
  Q_PROPERTY(QString AttentionIconName READ noName)
  Q_PROPERTY(tessaly::StatusPixmaps AttentionIconPixmap READ noPixmap)
  Q_PROPERTY(QString AttentionMovieName READ noName)
  Q_PROPERTY(QString IconThemePath READ noName)
  Q_PROPERTY(tessaly::StatusToolTip ToolTip READ toolTip)
  Q_PROPERTY(bool ItemIsMenu READ itemIsMenu)
  Q_PROPERTY(QDBusObjectPath Menu READ menu)

 public:
  explicit StatusItemAdaptor(StatusItem& item);

  QString category() const { return QStringLiteral("ApplicationStatus"); }
  QString id() const { return QStringLiteral("tessaly"); }
  QString title() const { return QStringLiteral("Tessaly"); }
  QString status() const { return QStringLiteral("Active"); }
  int windowId() const { return 0; }
  StatusPixmaps iconPixmap() const { return item_.icon(); }
  StatusToolTip toolTip() const;
  // A click with any button opens the menu.
  bool itemIsMenu() const { return true; }
  QDBusObjectPath menu() const { return QDBusObjectPath(item_.menuPath()); }
  QString noName() const { return {}; }
  StatusPixmaps noPixmap() const { return {}; }

 public slots:
  void Activate(int x, int y);
  void SecondaryActivate(int x, int y);
  // The desktop draws the menu; a desktop that cannot shows none.
  void ContextMenu(int, int) {}
  void Scroll(int, const QString&) {}

 signals:
  void NewIcon();
  void NewToolTip();

 private:
  StatusItem& item_;
};

}  // namespace tessaly

Q_DECLARE_METATYPE(tessaly::StatusPixmap)
Q_DECLARE_METATYPE(tessaly::StatusToolTip)
