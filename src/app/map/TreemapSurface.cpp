#include "app/map/TreemapSurface.h"

#include <QQuickWindow>

#include "app/map/MapPicture.h"
#include "app/map/PointerWatch.h"
#include "app/map/TilePainter.h"

namespace tessaly {

TreemapSurface::TreemapSurface(QQuickItem* parent)
    : QQuickItem(parent),
      tileTexture_(new PictureItem(this)),
      hoverOverlay_(new PictureItem(this)),
      bandItem_(new BandItem(this)) {
  tileTexture_->setObjectName(QStringLiteral("tileTexture"));
  hoverOverlay_->setObjectName(QStringLiteral("hoverOverlay"));
  bandItem_->setObjectName(QStringLiteral("rubberBand"));
  setAcceptHoverEvents(true);
  setActiveFocusOnTab(true);
  setAcceptedMouseButtons(Qt::LeftButton | Qt::RightButton);
  connect(&escapeWatch_, &EscapeWatch::escaped, this, &TreemapSurface::dropBand);
}

void TreemapSurface::componentComplete() {
  QQuickItem::componentComplete();
  connect(map_, &CanvasState::marksChanged, this, &TreemapSurface::renew);
  connect(&map_->shown(), &Shown::menuNodeChanged, this, &TreemapSurface::followMenu);
  renew();
}

void TreemapSurface::setNode(const NodeHandle& node) {
  node_ = node;
  renew();
  emit nodeChanged();
}

void TreemapSurface::geometryChange(const QRectF& now, const QRectF& before) {
  QQuickItem::geometryChange(now, before);
  if (now.size() != before.size()) renew();
}

void TreemapSurface::itemChange(ItemChange change, const ItemChangeData& data) {
  QQuickItem::itemChange(change, data);
  if (change == ItemSceneChange) dropBand();
  // Must watch from now on to recognise the first move over the canvas.
  if (change == ItemSceneChange && data.window != nullptr) PointerWatch::of(*data.window);
  if (change == ItemDevicePixelRatioHasChanged || change == ItemSceneChange) renew();
}

// Several changes before the next frame cause one layout.
void TreemapSurface::renew() {
  stale_ = true;
  polish();
}

double TreemapSurface::scale() const {
  return window()->effectiveDevicePixelRatio();
}

void TreemapSurface::updatePolish() {
  makeTiles();
  drawBand();
}

// Replaces the tiles if they are out of date.
void TreemapSurface::makeTiles() {
  if (!stale_ || window() == nullptr || !isComponentComplete()) return;
  stale_ = false;
  if (!node_.isValid() || size().isEmpty()) {
    tiles_ = {};
    tileTexture_->clear();
  } else {
    tiles_ = CanvasTiles(*node_.node(), size(), map_->marks());
    tileTexture_->show(MapPicture::whole(tiles_, size(), scale(), labels_),
                       TilePainter::opaquePart(size(), scale()));
  }
  hovered_ = std::nullopt;
  emit tilesChanged();
  highlight(tileToKeep());
  placeTooltip();
  if (keyboardPath_) emit keyboardTileChanged();
}

}  // namespace tessaly
