#include "app/map/MapPicture.h"

#include <cmath>
#include <vector>

#include <QRegion>

#include "app/map/TilePainter.h"

namespace tessaly::MapPicture {
namespace {

QRect pixelsAround(const Rect& rect, double margin, double scale) {
  return {QPoint(static_cast<int>(std::floor((rect.x - margin) * scale)),
                 static_cast<int>(std::floor((rect.y - margin) * scale))),
          QPoint(static_cast<int>(std::ceil((rect.x + rect.width + margin) * scale)) - 1,
                 static_cast<int>(std::ceil((rect.y + rect.height + margin) * scale)) - 1)};
}

QRect pixelsInside(const Rect& rect, double inset, double scale) {
  return {QPoint(static_cast<int>(std::ceil((rect.x + inset) * scale)),
                 static_cast<int>(std::ceil((rect.y + inset) * scale))),
          QPoint(static_cast<int>(std::floor((rect.x + rect.width - inset) * scale)) - 1,
                 static_cast<int>(std::floor((rect.y + rect.height - inset) * scale)) - 1)};
}

QRect canvasPixels(QSizeF size, double scale) {
  return {0, 0, static_cast<int>(std::ceil(size.width() * scale)),
          static_cast<int>(std::ceil(size.height() * scale))};
}

void paintTile(PixelCanvas& canvas, const CanvasTile& tile, LabelPainter& labels) {
  if (const auto glow = TilePainter::glowOf(tile, false, canvas.scale())) glow->paint(canvas);
  TilePainter::paintBody(canvas, tile, false);
  labels.paint(canvas, tile.rect);
}

// Everything inside a tile's square that its rounded corners do not cut off, for any tile.
constexpr double cornerCut = 3;
// A hole smaller than this is painted faster than it is left out.
constexpr int smallestHole = 24;

// The pieces of the canvas around one highlighted tile.
struct Surroundings {
  std::vector<const CanvasTile*> below;  // what the tile is painted over, in order
  std::vector<const CanvasTile*> above;  // what covers parts of it
  QRegion visible;                       // where anything of the tile or its glow may be seen
};

Surroundings surroundingsOf(const CanvasTiles& tiles, std::size_t index, const QRect& area,
                            const QRect& body, double scale) {
  Surroundings found;
  found.visible = area;
  const std::int64_t depth = tiles[index].rect.depth;
  for (std::size_t i = 0; i < tiles.all().size(); ++i) {
    const CanvasTile& tile = tiles[i];
    if (i < index) {
      const double reach = TilePainter::reach(tile, false);
      if (pixelsAround(tile.rect.rect(), reach, scale).intersects(body)) {
        found.below.push_back(&tile);
      }
    } else if (i > index && (tile.rect.depth <= depth + 1 || tile.selected)) {
      // Deeper tiles lie inside tiles that are among these, but for the glow of a selected one.
      const double reach = TilePainter::reach(tile, false);
      if (!pixelsAround(tile.rect.rect(), reach, scale).intersects(area)) continue;
      found.above.push_back(&tile);
      const QRect hole = pixelsInside(tile.rect.rect(), cornerCut, scale);
      if (hole.width() >= smallestHole && hole.height() >= smallestHole) found.visible -= hole;
    }
  }
  return found;
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

std::optional<PixelCanvas> highlight(const CanvasTiles& tiles, std::size_t index, QSizeF size,
                                     double scale, LabelPainter& labels) {
  const CanvasTile& tile = tiles[index];
  if (tile.selected) return std::nullopt;
  const Rect rect = tile.rect.rect();
  const QRect all = canvasPixels(size, scale);
  const QRect area = pixelsAround(rect, TilePainter::reach(tile, true), scale) & all;
  const QRect body = pixelsAround(rect, TilePainter::bodyReach(tile, true), scale) & all;
  if (area.isEmpty()) return std::nullopt;

  PixelCanvas canvas(area, scale);
  const Surroundings around = surroundingsOf(tiles, index, area, body, scale);
  const auto glow = TilePainter::glowOf(tile, true, scale);
  for (const QRect& part : around.visible) {
    // The fill lets what is under it shine through, so that is painted afresh below the tile, while
    // the glow around it lies over the picture that is there.
    canvas.setClip(part & body);
    if (!canvas.clip().isEmpty()) {
      TilePainter::paintGround(canvas, size);
      for (const CanvasTile* below : around.below) paintTile(canvas, *below, labels);
    }
    canvas.setClip(part);
    if (glow) glow->paint(canvas);
    TilePainter::paintBody(canvas, tile, true);
    labels.paint(canvas, tile.rect);
    canvas.setClip(part & body);
    for (const CanvasTile* above : around.above) {
      if (const auto over = TilePainter::glowOf(*above, false, scale)) over->paint(canvas);
    }
    canvas.setClip(part);
    for (const CanvasTile* above : around.above) {
      const double line = TilePainter::bodyReach(*above, false);
      const Rect covered = above->rect.rect();
      RoundedShape shape(canvas.toPixels({covered.x - line, covered.y - line,
                                          covered.width + 2 * line, covered.height + 2 * line}),
                         (above->radius() + line) * scale);
      canvas.erase(shape);
    }
  }
  canvas.setClip(area);
  TilePainter::cutCorners(canvas, size);
  return canvas;
}

}  // namespace tessaly::MapPicture
