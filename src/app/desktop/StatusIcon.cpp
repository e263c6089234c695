#include "app/desktop/StatusIcon.h"

#include <algorithm>

#include <QFont>
#include <QPainter>
#include <QPainterPath>
#include <QString>

#include "app/controls/Fonts.h"
#include "app/controls/QtColor.h"
#include "app/controls/SymbolPainter.h"
#include "look/MarrowTheme.h"

namespace tessaly::StatusIcon {

namespace {

// Relative to the side.
constexpr double symbolShare = 1.0;
constexpr double textHeight = 0.5;
constexpr double widestText = 0.92;
constexpr double haloWidth = 0.11;

// The outline of the text, as large as fits its part of the picture, starting at the left edge of
// the baseline.
QPainterPath textPath(const QString& text, double side) {
  QFont font(Fonts::family(Fonts::Voice::rounded));
  font.setBold(true);
  font.setPixelSize(100);
  QPainterPath path;
  path.addText(0, 0, font, text);
  const QRectF bounds = path.boundingRect();
  if (bounds.isEmpty()) return {};
  const double scale =
      std::min(textHeight * side / bounds.height(), widestText * side / bounds.width());
  const double left = (side - bounds.width() * scale) / 2;
  const double top = side * (1 - haloWidth / 2) - bounds.height() * scale;
  return QTransform::fromTranslate(left, top)
      .scale(scale, scale)
      .translate(-bounds.left(), -bounds.top())
      .map(path);
}

}  // namespace

QImage paint(const StatusBarExtra::Label& label, int side) {
  QImage image(side, side, QImage::Format_ARGB32_Premultiplied);
  image.fill(Qt::transparent);
  QPainter painter(&image);
  painter.setRenderHint(QPainter::Antialiasing);
  painter.setRenderHint(QPainter::SmoothPixmapTransform);

  const QString symbol = QString::fromStdString(label.symbol);
  const double points = side * symbolShare / 1.25;
  QImage drive = SymbolPainter::image(symbol, points, toQColor(MarrowTheme::accent), 1);
  drive.setDevicePixelRatio(1);
  painter.drawImage(QPointF((side - drive.width()) / 2.0, -side * 0.17), drive);

  const QPainterPath text = textPath(QString::fromStdString(label.text), side);
  QPen halo(toQColor(MarrowTheme::bg), haloWidth * side, Qt::SolidLine, Qt::RoundCap,
            Qt::RoundJoin);
  painter.strokePath(text, halo);
  painter.fillPath(text, Qt::white);
  return image;
}

std::vector<QImage> paint(const StatusBarExtra::Label& label) {
  std::vector<QImage> pictures;
  for (const int side : {22, 32, 48}) pictures.push_back(paint(label, side));
  return pictures;
}

}  // namespace tessaly::StatusIcon
