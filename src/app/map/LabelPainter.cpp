#include "app/map/LabelPainter.h"

#include <algorithm>
#include <cmath>

#include <QColor>
#include <QFontMetricsF>
#include <QPainter>

#include "app/controls/Fonts.h"
#include "app/controls/SymbolPainter.h"
#include "app/map/LabelFit.h"
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

}  // namespace

LabelPainter::LabelPainter()
    : nameFont11_(fontWith(Fonts::Voice::ui, 11, QFont::DemiBold)),
      nameFont12_(fontWith(Fonts::Voice::ui, 12, QFont::DemiBold)),
      sizeFont_(fontWith(Fonts::Voice::mono, 10, QFont::Bold)) {}

const QFont& LabelPainter::fontOf(Style style) const {
  if (style == name12) return nameFont12_;
  return style == sizeText ? sizeFont_ : nameFont11_;
}

LabelPainter::Picture LabelPainter::makeText(Style style, const QString& text, double scale) const {
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

template <typename Make>
const LabelPainter::Picture& LabelPainter::kept(const QString& key, Make make) {
  auto found = pictures_.find(key);
  if (found == pictures_.end()) found = pictures_.insert(key, make());
  found->lastPass = pass_;
  return *found;
}

const LabelPainter::Picture& LabelPainter::picture(Style style, const QString& text) {
  return kept(QChar(static_cast<char16_t>(u'0' + style)) + text, [&] {
    return style == icon ? makeIcon(text, scale_) : makeText(style, text, scale_);
  });
}

LabelPainter::Picture LabelPainter::fitting(Style style, const QString& name, double room,
                                            double symbolRoom) {
  if (room > 0) {
    const Picture& whole = picture(style, name);
    if (whole.width <= room) return whole;
  }
  // Space is counted in quarters of a point, so that pictures are reused when a folder is shown
  // again.
  const int quarters = static_cast<int>(std::floor(room * 4));
  const QString key =
      QStringLiteral("%1/%2/%3").arg(static_cast<int>(style)).arg(quarters).arg(name);
  return kept(key, [&] {
    const QFontMetricsF metrics(fontOf(style));
    const LabelFit fit = LabelFit::of(name, metrics, quarters / 4.0, symbolRoom);
    Picture made = makeText(style, fit.name, scale_);
    made.takesSymbolsRoom = !fit.showsSymbol;
    return made;
  });
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
  const double height = std::min(rect.height, highestRow);
  const QRect row = pixelsAround({rect.x, rect.y, rect.width, height}, 0, scale);
  if (!row.intersects(outerClip)) return;
  const auto label = TileLabel::of(rect);
  if (!label) return;
  const int margin = TextShadow::margin(scale);
  const Style nameStyle = label->nameSize == 12 ? name12 : name11;
  canvas.setClip(outerClip & row);
  if (scale != scale_) {
    pictures_.clear();
    scale_ = scale;
  }

  const auto place = [&](const Picture& part, double left, double middle) {
    canvas.draw(part.image, static_cast<int>(std::lround(left * scale)) - margin,
                static_cast<int>(std::lround((middle - part.height / 2) * scale)) - margin);
  };

  double left = rect.x + TileLabel::sidePadding;
  double right = rect.x + rect.width - TileLabel::sidePadding;
  const double rowHeight = QFontMetricsF(fontOf(nameStyle)).height();
  const double middle = rect.y + label->topPadding + rowHeight / 2;

  const QLatin1StringView symbol(label->symbol.data(),
                                 static_cast<qsizetype>(label->symbol.size()));
  const double symbolRoom = SymbolPainter::side(iconSize) + gap;

  if (!label->size.empty()) {
    const Picture& size = picture(sizeText, QString::fromStdString(label->size));
    right -= size.width;
    place(size, right, middle);
    right -= gap;
  }
  const Picture name =
      fitting(nameStyle, displayText(label->name), right - left - symbolRoom, symbolRoom);
  if (!name.takesSymbolsRoom) {
    place(picture(icon, symbol), left, middle);
    left += symbolRoom;
  }
  place(name, left, middle);
  canvas.setClip(outerClip);
}

}  // namespace tessaly
