#include "app/desktop/StatusItem.h"

#include <utility>

#include <QDBusMetaType>
#include <QtEndian>

namespace tessaly {

StatusPixmap StatusPixmap::of(const QImage& image) {
  const QImage plain = image.convertToFormat(QImage::Format_ARGB32);
  StatusPixmap pixmap{plain.width(), plain.height(), {}};
  pixmap.bytes.resize(qsizetype{4} * plain.width() * plain.height());
  char* row = pixmap.bytes.data();
  for (int y = 0; y < plain.height(); ++y, row += qsizetype{4} * plain.width())
    qToBigEndian<quint32>(plain.constScanLine(y), plain.width(), row);
  return pixmap;
}

QDBusArgument& operator<<(QDBusArgument& out, const StatusPixmap& pixmap) {
  out.beginStructure();
  out << pixmap.width << pixmap.height << pixmap.bytes;
  out.endStructure();
  return out;
}

const QDBusArgument& operator>>(const QDBusArgument& in, StatusPixmap& pixmap) {
  in.beginStructure();
  in >> pixmap.width >> pixmap.height >> pixmap.bytes;
  in.endStructure();
  return in;
}

QDBusArgument& operator<<(QDBusArgument& out, const StatusToolTip& toolTip) {
  out.beginStructure();
  out << toolTip.iconName << toolTip.icon << toolTip.title << toolTip.text;
  out.endStructure();
  return out;
}

const QDBusArgument& operator>>(const QDBusArgument& in, StatusToolTip& toolTip) {
  in.beginStructure();
  in >> toolTip.iconName >> toolTip.icon >> toolTip.title >> toolTip.text;
  in.endStructure();
  return in;
}

StatusItem::StatusItem(QString menuPath, QObject* parent)
    : QObject(parent), menuPath_(std::move(menuPath)) {
  qDBusRegisterMetaType<StatusPixmap>();
  qDBusRegisterMetaType<StatusPixmaps>();
  qDBusRegisterMetaType<StatusToolTip>();
}

void StatusItem::setLook(const std::vector<QImage>& pictures, const QString& text) {
  icon_.clear();
  for (const QImage& picture : pictures) icon_.push_back(StatusPixmap::of(picture));
  text_ = text;
  emit lookChanged();
}

StatusItemAdaptor::StatusItemAdaptor(StatusItem& item) : QDBusAbstractAdaptor(&item), item_(item) {
  connect(&item, &StatusItem::lookChanged, this, [this] {
    emit NewIcon();
    emit NewToolTip();
  });
}

StatusToolTip StatusItemAdaptor::toolTip() const {
  return {QString(), {}, title(), item_.text()};
}

void StatusItemAdaptor::Activate(int, int) {
  emit item_.activated();
}

void StatusItemAdaptor::SecondaryActivate(int, int) {
  emit item_.activated();
}

}  // namespace tessaly
