#include "app/controls/Symbol.h"

#include <cmath>

#include <QPainter>

#include "app/controls/SymbolPainter.h"

namespace tessaly {

Symbol::Symbol(QQuickItem* parent) : TexturedItem(parent) {
  fitToSymbol();
}

// A symbol without a name takes no space, so that a button without one needs no other layout.
void Symbol::fitToSymbol() {
  const int side = name_.isEmpty() ? 0 : SymbolPainter::side(size_);
  setImplicitSize(side, side);
  repaint();
}

void Symbol::setName(const QString& name) {
  if (name == name_) return;
  name_ = name;
  fitToSymbol();
  emit nameChanged();
}

void Symbol::setFontSize(double size) {
  if (size == size_) return;
  size_ = size;
  fitToSymbol();
  emit fontSizeChanged();
}

void Symbol::setColor(const QColor& color) {
  if (color == color_) return;
  color_ = color;
  repaint();
  emit colorChanged();
}

void Symbol::setBold(bool bold) {
  if (bold == bold_) return;
  bold_ = bold;
  repaint();
  emit boldChanged();
}

void Symbol::paint(QPainter& painter) const {
  if (name_.isEmpty()) return;
  const double ratio = painter.worldTransform().m11();
  const int side = SymbolPainter::side(size_);
  // Integer points, since a symbol between pixels would be blurred.
  const QPointF corner(std::floor((width() - side) / 2), std::floor((height() - side) / 2));
  painter.drawImage(corner, SymbolPainter::image(name_, size_, color_, ratio, bold_));
}

}  // namespace tessaly
