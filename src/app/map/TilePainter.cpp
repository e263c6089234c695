#include "app/map/TilePainter.h"

#include <algorithm>
#include <cmath>

#include "app/map/Pixel.h"
#include "look/MarrowTheme.h"

namespace tessaly::TilePainter {
namespace {

constexpr Color white = MarrowTheme::ink;
constexpr double canvasRadius = 10;
constexpr double glowRadius = 6;
constexpr double glowOpacity = 0.6;
constexpr double fillStart = 0.92;
constexpr double fillEnd = 0.7;
constexpr double sheenStart = 0.12;

// The colours of one row of a tile: a fill whose opacity decreases along the row, under white of a
// constant opacity.
struct RowColors {
  Color color;
  double start = 0;  // opacity of the fill at x = 0
  double slope = 0;  // the decrease of the opacity per pixel
  double white = 0;

  double opacityAt(double x) const { return start - slope * x; }

  std::uint32_t at(double opacity) const {
    const double rest = (1 - white) * opacity;
    return Pixel::fromParts(white + rest, white + rest * color.red / 255,
                            white + rest * color.green / 255, white + rest * color.blue / 255);
  }

  // The same as a colour of a gradient.
  Pixel::Gradient::Color exactly(double opacity, double rounding) const {
    const double rest = (1 - white) * opacity;
    const auto channel = [&](double value) {
      return static_cast<std::uint16_t>((white * 255 + rest * value + rounding) * 256);
    };
    return {.blue = channel(color.blue),
            .green = channel(color.green),
            .red = channel(color.red),
            .alpha = channel(255)};
  }

  // Starts at `opacity`.
  Pixel::Gradient gradient(double opacity) const {
    const auto now = exactly(opacity, 0);
    const auto next = exactly(opacity - slope, 0);
    const auto fall = [](std::uint16_t from, std::uint16_t to) {
      return static_cast<std::uint16_t>(from - to);
    };
    return {.first = exactly(opacity, 0.5),
            .step = {.blue = fall(now.blue, next.blue),
                     .green = fall(now.green, next.green),
                     .red = fall(now.red, next.red),
                     .alpha = fall(now.alpha, next.alpha)}};
  }

  std::uint32_t atPixel(int x) const { return at(opacityAt(x + 0.5)); }
};

// The steps of a gradient have 8 fractional bits, so the colour is computed again after this many
// pixels.
constexpr int pixelsBetween = 64;

// The fully covered part of a row.
void fillSpan(std::uint32_t* pixels, int from, int to, const RowColors& colors,
              std::uint8_t coverage) {
  for (; from < to; from += pixelsBetween) {
    Pixel::layOver(pixels + from, std::min(to - from, pixelsBetween),
                   colors.gradient(colors.opacityAt(from + 0.5)), coverage);
  }
}

void paintFill(PixelCanvas& canvas, const Rect& rect, double radius, const Color& color,
               double wash) {
  RoundedShape shape(rect, radius);
  const QRect& area = canvas.clip();
  const int left = area.left();
  const int right = area.right() + 1;
  const double diagonal = rect.width * rect.width + rect.height * rect.height;
  const double fall = color.opacity * (fillStart - fillEnd);
  RowColors colors{color};
  colors.slope = fall * rect.width / diagonal;

  const int end = std::min(shape.endRow(), area.bottom() + 1);
  for (int y = std::max(shape.firstRow(), area.top()); y < end; ++y) {
    const double down = std::clamp(y + 0.5 - rect.y, 0.0, rect.height);
    const double sheen = sheenStart * std::max(0.0, 1 - 2 * down / rect.height);
    colors.white = 1 - (1 - sheen) * (1 - wash);
    colors.start =
        color.opacity * fillStart - fall * down * rect.height / diagonal + colors.slope * rect.x;

    const RoundedShape::Row row = shape.row(y);
    std::uint32_t* pixels = canvas.row(y);
    const auto blend = [&](int from, int to) {
      for (int x = std::max(from, left); x < std::min(to, right); ++x) {
        pixels[x] = Pixel::over(Pixel::scaled(colors.atPixel(x), row.at(x)), pixels[x]);
      }
    };
    blend(row.begin, row.solidBegin);
    fillSpan(pixels, std::max(row.solidBegin, left), std::min(row.solidEnd, right), colors,
             row.solid);
    blend(row.solidEnd, row.end);
  }
}

double lineWidth(const CanvasTile& tile, bool highlighted) {
  return tile.selected || highlighted ? 2 : 1;
}

}  // namespace

void paintGround(PixelCanvas& canvas, QSizeF size) {
  RoundedShape all(canvas.toPixels({0, 0, size.width(), size.height()}), 0);
  canvas.fill(all, Pixel::fromColor(MarrowTheme::bg));
}

void paintOutline(PixelCanvas& canvas, QSizeF size) {
  const Rect rect = canvas.toPixels({0, 0, size.width(), size.height()});
  const double radius = canvasRadius * canvas.scale();
  const double line = canvas.scale();
  RoundedShape outer(rect, radius);
  RoundedShape inner({rect.x + line, rect.y + line, rect.width - 2 * line, rect.height - 2 * line},
                     radius - line);
  canvas.fillBetween(outer, inner, Pixel::fromColor(white.atOpacity(0.08)));
}

void cutCorners(PixelCanvas& canvas, QSizeF size) {
  RoundedShape shape(canvas.toPixels({0, 0, size.width(), size.height()}),
                     canvasRadius * canvas.scale());
  canvas.keep(shape);
}

QRect opaquePart(QSizeF size, double scale) {
  const double width = size.width() * scale;
  if (width != std::floor(width)) return {};
  const double height = size.height() * scale;
  const double cut = RoundedShape({0, 0, width, height}, canvasRadius * scale).cornerReach();
  const int first = static_cast<int>(std::ceil(cut));
  const int end = static_cast<int>(std::floor(height - cut));
  return {0, first, static_cast<int>(width), end - first};
}

std::optional<Glow> glowOf(const CanvasTile& tile, bool highlighted, double scale) {
  if (!highlighted && !tile.selected) return std::nullopt;
  const Color color = tile.selected ? MarrowTheme::accent : tile.tint;
  return Glow(tile.rect.rect(), color.atOpacity(glowOpacity), glowRadius, scale);
}

void paintBody(PixelCanvas& canvas, const CanvasTile& tile, bool highlighted) {
  const Rect rect = canvas.toPixels(tile.rect.rect());
  const double radius = tile.radius() * canvas.scale();
  const double wash = tile.selected ? 0.12 : highlighted ? 0.06 : 0;
  paintFill(canvas, rect, radius, tile.tint, wash);

  const Color line = tile.selected ? MarrowTheme::accent
                     : highlighted ? white.atOpacity(0.7)
                                   : tile.tint.atOpacity(0.4);
  canvas.stroke(rect, radius, lineWidth(tile, highlighted) * canvas.scale(),
                Pixel::fromColor(line));
}

double bodyReach(const CanvasTile& tile, bool highlighted) {
  return lineWidth(tile, highlighted) / 2;
}

double reach(const CanvasTile& tile, bool highlighted) {
  return tile.selected || highlighted ? Glow::reach(glowRadius) : bodyReach(tile, highlighted);
}

}  // namespace tessaly::TilePainter
