// The figures of a storage gauge, and the texts and colours derived from them, for the view
// RadialStorageGauge. Byte counts have 64 bits.
#pragma once

#include <QColor>
#include <QQuickItem>
#include <QString>
#include <QtQml/qqmlregistration.h>

namespace tessaly {

class StorageGauge : public QQuickItem {
  Q_OBJECT
  QML_ELEMENT
  Q_PROPERTY(double usedPercent MEMBER usedPercent_ NOTIFY figuresChanged REQUIRED)
  Q_PROPERTY(qint64 usedBytes MEMBER usedBytes_ NOTIFY figuresChanged REQUIRED)
  Q_PROPERTY(qint64 totalBytes MEMBER totalBytes_ NOTIFY figuresChanged REQUIRED)
  Q_PROPERTY(qint64 freeBytes MEMBER freeBytes_ NOTIFY figuresChanged REQUIRED)
  Q_PROPERTY(QColor levelColor READ levelColor NOTIFY figuresChanged)
  Q_PROPERTY(QString percentText READ percentText NOTIFY figuresChanged)
  Q_PROPERTY(QString usedText READ usedText NOTIFY figuresChanged)
  Q_PROPERTY(QString freeText READ freeText NOTIFY figuresChanged)

 public:
  explicit StorageGauge(QQuickItem* parent = nullptr);

  QColor levelColor() const;
  QString percentText() const;
  QString usedText() const;
  QString freeText() const;

 signals:
  void figuresChanged();

 private:
  double usedPercent_ = 0;
  qint64 usedBytes_ = 0;
  qint64 totalBytes_ = 0;
  qint64 freeBytes_ = 0;
};

}  // namespace tessaly
