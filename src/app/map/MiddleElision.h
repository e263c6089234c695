// A text that is elided in its middle if it is wider than its space. A text of ASCII characters
// that certainly fits, as most do, is not measured, since the tooltip does this for each tile that
// the pointer enters.
//
// Main thread only.
#pragma once

#include <QFont>
#include <QFontMetricsF>
#include <QObject>
#include <QString>
#include <QtQml/qqmlregistration.h>

namespace tessaly {

class MiddleElision : public QObject {
  Q_OBJECT
  QML_ELEMENT
  Q_PROPERTY(QFont font READ font WRITE setFont NOTIFY fontChanged)
  Q_PROPERTY(double room READ room WRITE setRoom NOTIFY roomChanged)  // in points
  Q_PROPERTY(QString text READ text WRITE setText NOTIFY textChanged)
  Q_PROPERTY(QString shortened READ shortened NOTIFY shortenedChanged)

 public:
  explicit MiddleElision(QObject* parent = nullptr);

  QFont font() const { return font_; }
  void setFont(const QFont& font);
  double room() const { return room_; }
  void setRoom(double room);
  QString text() const { return text_; }
  void setText(const QString& text);
  QString shortened() const { return shortened_; }

 signals:
  void fontChanged();
  void roomChanged();
  void textChanged();
  void shortenedChanged();

 private:
  void update();

  QFont font_;
  QFontMetricsF metrics_;
  double widestAscii_;
  double room_ = 0;
  QString text_;
  QString shortened_;
};

}  // namespace tessaly
