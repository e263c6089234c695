#include "app/controls/StorageGauge.h"

#include "app/controls/GaugeLevel.h"
#include "app/controls/QtColor.h"
#include "scan/Format.h"
#include "scan/Percent.h"

namespace tessaly {

namespace {

QString bytesText(qint64 bytes) {
  return QString::fromStdString(Format::bytes(bytes));
}

}  // namespace

StorageGauge::StorageGauge(QQuickItem* parent) : QQuickItem(parent) {}

QColor StorageGauge::levelColor() const {
  return toQColor(Gauge::levelColor(Gauge::levelFor(usedPercent_)));
}

QString StorageGauge::percentText() const {
  return QString::fromStdString(Percent::cut(usedPercent_));
}

QString StorageGauge::usedText() const {
  return QStringLiteral("%1 / %2").arg(bytesText(usedBytes_), bytesText(totalBytes_));
}

QString StorageGauge::freeText() const {
  return QStringLiteral("%1 free").arg(bytesText(freeBytes_));
}

}  // namespace tessaly
