#include "app/map/MiddleElision.h"

#include <algorithm>

namespace tessaly {
namespace {

constexpr char16_t firstPrintable = u' ';
constexpr char16_t lastPrintable = u'~';

bool isPrintableAscii(QChar c) {
  return c >= firstPrintable && c <= lastPrintable;
}

double widestOf(const QFontMetricsF& metrics) {
  double widest = 0;
  for (char16_t c = firstPrintable; c <= lastPrintable; ++c) {
    widest = std::max(widest, metrics.horizontalAdvance(QChar(c)));
  }
  return widest;
}

}  // namespace

MiddleElision::MiddleElision(QObject* parent)
    : QObject(parent), metrics_(font_), widestAscii_(widestOf(metrics_)) {}

void MiddleElision::setFont(const QFont& font) {
  if (font == font_) return;
  font_ = font;
  metrics_ = QFontMetricsF(font_);
  widestAscii_ = widestOf(metrics_);
  emit fontChanged();
  update();
}

void MiddleElision::setRoom(double room) {
  if (room == room_) return;
  room_ = room;
  emit roomChanged();
  update();
}

void MiddleElision::setText(const QString& text) {
  if (text == text_) return;
  text_ = text;
  emit textChanged();
  update();
}

void MiddleElision::update() {
  const bool surelyFits = static_cast<double>(text_.size()) * widestAscii_ <= room_ &&
                          std::ranges::all_of(text_, isPrintableAscii);
  const QString shortened = surelyFits ? text_ : metrics_.elidedText(text_, Qt::ElideMiddle, room_);
  if (shortened == shortened_) return;
  shortened_ = shortened;
  emit shortenedChanged();
}

}  // namespace tessaly
