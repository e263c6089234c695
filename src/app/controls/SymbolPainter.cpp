#include "app/controls/SymbolPainter.h"

#include <algorithm>
#include <cmath>

#include <QCache>
#include <QDir>
#include <QFile>
#include <QLoggingCategory>
#include <QPainter>
#include <QSvgRenderer>

namespace tessaly::SymbolPainter {

namespace {

constexpr double kGrid = 24;
// Below 1.1 points, a line of a small symbol fades into its background.
constexpr double kThinnestLine = 1.1;
constexpr double kLine = 1.5;
constexpr double kThickestLine = 2.6;
constexpr double kBoldness = 1.4;
constexpr int kCacheKilobytes = 4096;

QString folder() {
  return QStringLiteral(":/tessaly/symbols/");
}
QString pathOf(const QString& name) {
  return folder() + name + QStringLiteral(".svg");
}

// The drawing of a symbol, with thicker lines if it is bold, or so small that they would be too
// thin to see. Empty if there is no such symbol.
QByteArray drawing(const QString& name, int side, bool isBold) {
  QFile file(pathOf(name));
  if (!file.open(QIODevice::ReadOnly)) return {};
  QByteArray svg = file.readAll();
  double line = std::clamp(kThinnestLine * kGrid / side, kLine, kThickestLine);
  if (isBold) line *= kBoldness;
  if (line > kLine) {
    svg.replace("stroke-width=\"1.5\"",
                "stroke-width=\"" + QByteArray::number(line, 'f', 2) + "\"");
  }
  return svg;
}

// Turns black into `color` and white into transparency.
void tint(QImage& image, const QColor& color) {
  for (int y = 0; y < image.height(); ++y) {
    auto* line = reinterpret_cast<QRgb*>(image.scanLine(y));
    for (int x = 0; x < image.width(); ++x) {
      const int ink = std::max(0, qAlpha(line[x]) - qRed(line[x]));
      const double alpha = ink * color.alphaF();
      line[x] = qPremultiply(
          qRgba(color.red(), color.green(), color.blue(), static_cast<int>(std::lround(alpha))));
    }
  }
}

QImage blank(int pixels) {
  QImage image(pixels, pixels, QImage::Format_ARGB32_Premultiplied);
  image.fill(Qt::transparent);
  return image;
}

QImage drawMissing(const QString& name, int pixels, const QColor& color) {
  qWarning("no symbol is named \"%s\"", qPrintable(name));
  QImage image = blank(pixels);
  QPainter painter(&image);
  painter.setPen(QPen(color, 1, Qt::DashLine));
  painter.drawRect(1, 1, pixels - 3, pixels - 3);
  return image;
}

QImage draw(const QString& name, int side, int pixels, const QColor& color, bool isBold) {
  const QByteArray svg = drawing(name, side, isBold);
  QSvgRenderer renderer(svg);
  if (svg.isEmpty() || !renderer.isValid()) return drawMissing(name, pixels, color);
  QImage image = blank(pixels);
  QPainter painter(&image);
  painter.setRenderHint(QPainter::Antialiasing);
  renderer.render(&painter, QRectF(0, 0, pixels, pixels));
  painter.end();
  tint(image, color);
  return image;
}

}  // namespace

int side(double size) {
  return std::max(1, static_cast<int>(std::lround(size * 1.25)));
}

QImage image(const QString& name, double size, const QColor& color, double devicePixelRatio,
             bool isBold) {
  static QCache<QString, QImage> cache(kCacheKilobytes);
  const int points = side(size);
  const int pixels = std::max(1, static_cast<int>(std::lround(points * devicePixelRatio)));
  const QString key = QStringLiteral("%1|%2|%3|%4|%5")
                          .arg(name)
                          .arg(points)
                          .arg(pixels)
                          .arg(color.rgba())
                          .arg(isBold ? 1 : 0);
  if (const QImage* known = cache.object(key)) return *known;
  QImage drawn = draw(name, points, pixels, color, isBold);
  drawn.setDevicePixelRatio(static_cast<double>(pixels) / points);
  cache.insert(key, new QImage(drawn), 1 + static_cast<int>(drawn.sizeInBytes() / 1024));
  return drawn;
}

QPixmap pixmap(const QString& name, double size, const QColor& color, double devicePixelRatio) {
  return QPixmap::fromImage(image(name, size, color, devicePixelRatio));
}

bool exists(const QString& name) {
  return QFile::exists(pathOf(name));
}

QStringList names() {
  QStringList found = QDir(folder()).entryList({QStringLiteral("*.svg")}, QDir::Files, QDir::Name);
  for (QString& name : found) name.chop(4);
  return found;
}

}  // namespace tessaly::SymbolPainter
