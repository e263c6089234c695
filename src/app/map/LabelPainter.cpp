#include "app/map/LabelPainter.h"

#include <QColor>
#include <QFontMetricsF>
#include <QPainter>
#include <algorithm>
#include <cmath>

#include "app/controls/Fonts.h"
#include "app/controls/SymbolPainter.h"
#include "app/map/TextShadow.h"
#include "app/model/DisplayText.h"

namespace tessaly {
namespace {

constexpr double gap = 4;
constexpr double iconSize = 9;
constexpr double iconOpacity = 0.85;
constexpr double sizeOpacity = 0.9;
constexpr double highestRow = 36;
constexpr qsizetype picturesToKeep = 2000;

QFont fontWith(Fonts::Voice voice, int pixelSize, QFont::Weight weight) {
  QFont font(Fonts::family(voice));
  font.setPixelSize(pixelSize);
  font.setWeight(weight);
  return font;
}

// The part of a tile that its label and the shadow of it can reach, all in pixels.
QRect rowOf(const Rect& tile, double scale) {
  const double height = std::min(tile.height, highestRow * scale);
  return {QPoint(static_cast<int>(std::floor(tile.x)), static_cast<int>(std::floor(tile.y))),
          QPoint(static_cast<int>(std::ceil(tile.x + tile.width)) - 1,
                 static_cast<int>(std::ceil(tile.y + height)) - 1)};
}

}  // namespace

LabelPainter::LabelPainter()
    : nameFont11_(fontWith(Fonts::Voice::ui, 11, QFont::DemiBold)),
      nameFont12_(fontWith(Fonts::Voice::ui, 12, QFont::DemiBold)),
      sizeFont_(fontWith(Fonts::Voice::mono, 10, QFont::Bold)) {}

const QFont& LabelPainter::fontOf(Style style) const {
  if (style == name12) return nameFont12_;
  return style == sizeText ? sizeFont_ : nameFont11_;
}

LabelPainter::Picture LabelPainter::makeText(Style style, const QString& text,
                                             double scale) const {
  const QFont& font = fontOf(style);
  const QFontMetricsF metrics(font);
  Picture made;
  made.width = metrics.horizontalAdvance(text);
  made.height = metrics.height();
  const int margin = TextShadow::margin(scale);
  const QSize content(static_cast<int>(std::ceil(made.width * scale)),
                      static_cast<int>(std::ceil(made.height * scale)));
  made.image = QImage(content + QSize(2 * margin, 2 * margin), QImage::Format_ARGB32_Premultiplied);
  made.image.fill(0);
  {
    QPainter painter(&made.image);
    painter.translate(margin, margin);
    painter.scale(scale, scale);
    painter.setFont(font);
    painter.setPen(Qt::white);
    painter.setOpacity(style == sizeText ? sizeOpacity : 1);
    painter.drawText(QPointF(0, metrics.ascent()), text);
  }
  TextShadow::layUnder(made.image, scale);
  return made;
}

LabelPainter::Picture LabelPainter::makeIcon(const QString& name, double scale) {
  const QImage symbol = SymbolPainter::image(name, iconSize, Qt::white, scale);
  Picture made;
  made.width = made.height = SymbolPainter::side(iconSize);
  const int margin = TextShadow::margin(scale);
  made.image =
      QImage(symbol.size() + QSize(2 * margin, 2 * margin), QImage::Format_ARGB32_Premultiplied);
  made.image.fill(0);
  {
    QPainter painter(&made.image);
    painter.setOpacity(iconOpacity);
    painter.drawImage(QRect(QPoint(margin, margin), symbol.size()), symbol);
  }
  TextShadow::layUnder(made.image, scale);
  return made;
}

const LabelPainter::Picture& LabelPainter::picture(Style style, const QString& text,
                                                   double scale) {
  if (scale != scale_) {
    pictures_.clear();
    scale_ = scale;
  }
  const QString key = QChar(static_cast<char16_t>(u'0' + style)) + text;
  auto found = pictures_.find(key);
  if (found == pictures_.end()) {
    found =
        pictures_.insert(key, style == icon ? makeIcon(text, scale) : makeText(style, text, scale));
  }
  found->lastPass = pass_;
  return *found;
}

void LabelPainter::endPass() {
  if (pictures_.size() > picturesToKeep) {
    pictures_.removeIf([this](auto entry) { return entry.value().lastPass != pass_; });
  }
  ++pass_;
}

void LabelPainter::paint(PixelCanvas& canvas, const TreemapRect& rect) {
  const double scale = canvas.scale();
  const QRect outerClip = canvas.clip();
  const QRect row = rowOf(canvas.toPixels(rect.rect()), scale);
  if (!row.intersects(outerClip)) return;
  const auto label = TileLabel::of(rect);
  if (!label) return;
  const int margin = TextShadow::margin(scale);
  const Style nameStyle = label->nameSize == 12 ? name12 : name11;
  canvas.setClip(outerClip & row);

  const auto place = [&](const Picture& part, double left, double middle) {
    canvas.draw(part.image, static_cast<int>(std::lround(left * scale)) - margin,
                static_cast<int>(std::lround((middle - part.height / 2) * scale)) - margin);
  };

  double left = rect.x + TileLabel::sidePadding;
  double right = rect.x + rect.width - TileLabel::sidePadding;
  const double rowHeight = QFontMetricsF(fontOf(nameStyle)).height();
  const double middle = rect.y + label->topPadding + rowHeight / 2;

  const QLatin1StringView symbol(label->symbol.data(), static_cast<qsizetype>(label->symbol.size()));
  const Picture& symbolPicture = picture(icon, symbol, scale);
  place(symbolPicture, left, middle);
  left += symbolPicture.width + gap;

  if (!label->size.empty()) {
    const Picture& size = picture(sizeText, QString::fromStdString(label->size), scale);
    right -= size.width;
    place(size, right, middle);
    right -= gap;
  }
  drawName(canvas, nameStyle, displayText(label->name), left, middle, right - left);
  canvas.setClip(outerClip);
}

void LabelPainter::drawName(PixelCanvas& canvas, Style style, const QString& text, double left,
                            double middle, double room) {
  if (room <= 0) return;
  const double scale = canvas.scale();
  const Picture* name = &picture(style, text, scale);
  if (name->width > room) {
    // Wide letters: fewer fit than a tile of this width usually has room for.
    const QString fitting = QFontMetricsF(fontOf(style)).elidedText(text, Qt::ElideRight, room);
    if (fitting.isEmpty()) return;
    name = &picture(style, fitting, scale);
  }
  const int margin = TextShadow::margin(scale);
  canvas.draw(name->image, static_cast<int>(std::lround(left * scale)) - margin,
              static_cast<int>(std::lround((middle - name->height / 2) * scale)) - margin);
}

}  // namespace tessaly
