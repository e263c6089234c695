// `Symbol { name: "folder.fill"; size: 11; color: Theme.accent }`: one symbol beside text of that
// font size. Its implicit size is the square of the symbol; in a larger item it is centred.
#pragma once

#include <QColor>
#include <QString>
#include <QtQml/qqmlregistration.h>

#include "app/controls/TexturedItem.h"

namespace tessaly {

class Symbol : public tessaly::TexturedItem {
  Q_OBJECT
  QML_ELEMENT
  Q_PROPERTY(QString name READ name WRITE setName NOTIFY nameChanged REQUIRED)
  Q_PROPERTY(double size READ fontSize WRITE setFontSize NOTIFY fontSizeChanged REQUIRED)
  Q_PROPERTY(QColor color READ color WRITE setColor NOTIFY colorChanged REQUIRED)
  // Whether the text beside it is bold.
  Q_PROPERTY(bool bold READ isBold WRITE setBold NOTIFY boldChanged)

 public:
  explicit Symbol(QQuickItem* parent = nullptr);

  QString name() const { return name_; }
  void setName(const QString& name);
  double fontSize() const { return size_; }
  void setFontSize(double size);
  QColor color() const { return color_; }
  void setColor(const QColor& color);
  bool isBold() const { return bold_; }
  void setBold(bool bold);

 signals:
  void nameChanged();
  void fontSizeChanged();
  void colorChanged();
  void boldChanged();

 protected:
  void paint(QPainter& painter) const override;

 private:
  void fitToSymbol();

  QString name_;
  double size_ = 12;
  QColor color_ = Qt::white;
  bool bold_ = false;
};

}  // namespace tessaly
