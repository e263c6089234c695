#include "app/map/MapPicture.h"

#include <algorithm>
#include <cmath>
#include <functional>
#include <vector>

#include <QRegion>

#include "app/map/TilePainter.h"

namespace tessaly::MapPicture {
namespace {

QRect pixelsInside(const Rect& rect, double inset, double scale) {
  return {QPoint(static_cast<int>(std::ceil((rect.x + inset) * scale)),
                 static_cast<int>(std::ceil((rect.y + inset) * scale))),
          QPoint(static_cast<int>(std::floor((rect.x + rect.width - inset) * scale)) - 1,
                 static_cast<int>(std::floor((rect.y + rect.height - inset) * scale)) - 1)};
}

QRect canvasPixels(QSizeF size, double scale) {
  return pixelsAround({0, 0, size.width(), size.height()}, 0, scale);
}

void paintTile(PixelCanvas& canvas, const CanvasTile& tile, LabelPainter& labels) {
  if (const auto glow = TilePainter::glowOf(tile, false, canvas.scale())) glow->paint(canvas);
  TilePainter::paintBody(canvas, tile, false);
  labels.paint(canvas, tile.rect);
}

// Rounded corners of any tile affect only this distance from its edges.
constexpr double cornerCut = 3;
// A smaller hole is painted faster than it is left out.
constexpr int smallestHole = 24;
// Each piece has a cost, whatever its size.
constexpr int mostPieces = 24;

// The tiles that touch a rectangle of pixels, relative to a highlighted one.
struct Surroundings {
  std::vector<const CanvasTile*> below;  // painted below it, in order
  std::vector<const CanvasTile*> above;  // cover parts of it
};

bool meets(const CanvasTile& tile, const QRect& pixels, double scale) {
  return pixelsAround(tile.rect.rect(), TilePainter::reach(tile, false), scale).intersects(pixels);
}

Surroundings surroundingsOf(const CanvasTiles& tiles, std::size_t index, const QRect& area,
                            const QRect& body, double scale) {
  Surroundings found;
  const std::int64_t depth = tiles[index].rect.depth;
  for (std::size_t i = 0; i < tiles.all().size(); ++i) {
    const CanvasTile& tile = tiles[i];
    if (i < index) {
      if (meets(tile, body, scale)) found.below.push_back(&tile);
    } else if (i > index && (tile.rect.depth <= depth + 1 || tile.selected)) {
      // Deeper tiles are inside these, except for the glow of a selected one.
      if (meets(tile, area, scale)) found.above.push_back(&tile);
    }
  }
  return found;
}

// The visible part of a tile and its glow: `area` without the tiles above, the largest ones first.
QRegion visiblePart(const QRect& area, const std::vector<const CanvasTile*>& above, double scale) {
  std::vector<QRect> holes;
  for (const CanvasTile* tile : above) {
    const QRect hole = pixelsInside(tile->rect.rect(), cornerCut, scale) & area;
    if (hole.width() >= smallestHole && hole.height() >= smallestHole) holes.push_back(hole);
  }
  std::ranges::stable_sort(holes, std::greater(),
                           [](const QRect& hole) { return hole.width() * hole.height(); });
  QRegion visible = area;
  for (const QRect& hole : holes) {
    const QRegion less = visible - hole;
    if (less.rectCount() > mostPieces) break;
    visible = less;
  }
  return visible;
}

void paintGlows(PixelCanvas& canvas, const std::vector<const CanvasTile*>& tiles) {
  for (const CanvasTile* tile : tiles) {
    if (const auto glow = TilePainter::glowOf(*tile, false, canvas.scale())) glow->paint(canvas);
  }
}

// Erases the area of `tile`.
void eraseBelow(PixelCanvas& canvas, const CanvasTile& tile) {
  const double line = TilePainter::bodyReach(tile, false);
  const Rect rect = tile.rect.rect();
  RoundedShape shape(canvas.toPixels({rect.x - line, rect.y - line, rect.width + 2 * line,
                                      rect.height + 2 * line}),
                     (tile.radius() + line) * canvas.scale());
  canvas.erase(shape);
}

}  // namespace

PixelCanvas whole(const CanvasTiles& tiles, QSizeF size, double scale, LabelPainter& labels) {
  PixelCanvas canvas(canvasPixels(size, scale), scale);
  TilePainter::paintGround(canvas, size);
  for (const CanvasTile& tile : tiles.all()) paintTile(canvas, tile, labels);
  TilePainter::paintOutline(canvas, size);
  TilePainter::cutCorners(canvas, size);
  labels.endPass();
  return canvas;
}

std::vector<PixelCanvas> highlight(const CanvasTiles& tiles, std::size_t index, QSizeF size,
                                   double scale, LabelPainter& labels) {
  const CanvasTile& tile = tiles[index];
  if (tile.selected) return {};
  const Rect rect = tile.rect.rect();
  const QRect all = canvasPixels(size, scale);
  const QRect area = pixelsAround(rect, TilePainter::reach(tile, true), scale) & all;
  const QRect body = pixelsAround(rect, TilePainter::bodyReach(tile, true), scale) & all;
  if (area.isEmpty()) return {};

  const Surroundings around = surroundingsOf(tiles, index, area, body, scale);
  const Glow glow = *TilePainter::glowOf(tile, true, scale);
  std::vector<PixelCanvas> pieces;
  for (const QRect& part : visiblePart(area, around.above, scale)) {
    PixelCanvas& canvas = pieces.emplace_back(part, scale);
    // The fill is translucent, so the background is painted again below the tile, while the glow is
    // drawn over the existing picture.
    canvas.setClip(part & body);
    if (!canvas.clip().isEmpty()) {
      TilePainter::paintGround(canvas, size);
      for (const CanvasTile* below : around.below) {
        if (meets(*below, canvas.clip(), scale)) paintTile(canvas, *below, labels);
      }
    }
    canvas.setClip(part);
    glow.paint(canvas);
    TilePainter::paintBody(canvas, tile, true);
    labels.paint(canvas, tile.rect);
    canvas.setClip(part & body);
    paintGlows(canvas, around.above);
    canvas.setClip(part);
    for (const CanvasTile* above : around.above) {
      if (meets(*above, part, scale)) eraseBelow(canvas, *above);
    }
    TilePainter::cutCorners(canvas, size);
  }
  return pieces;
}

}  // namespace tessaly::MapPicture
