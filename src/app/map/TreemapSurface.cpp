#include "app/map/TreemapSurface.h"

#include <QCursor>
#include <QHoverEvent>
#include <QLineF>
#include <QMouseEvent>
#include <QQuickWindow>

#include "app/map/MapPicture.h"
#include "app/map/TooltipPlacement.h"
#include "app/map/TooltipText.h"
#include "treemap/NodeTint.h"

namespace tessaly {
namespace {

// A press that moves this far, in points, is no click any more.
constexpr double dragDistance = 8;

}  // namespace

TreemapSurface::TreemapSurface(QQuickItem* parent)
    : QQuickItem(parent),
      tileTexture_(new PictureItem(this)),
      hoverOverlay_(new PictureItem(this)) {
  tileTexture_->setObjectName(QStringLiteral("tileTexture"));
  hoverOverlay_->setObjectName(QStringLiteral("hoverOverlay"));
  setAcceptHoverEvents(true);
  setAcceptedMouseButtons(Qt::LeftButton);
}

void TreemapSurface::setSession(ScanSession* session) {
  if (session_ == session) return;
  if (session_ != nullptr) disconnect(session_, nullptr, this, nullptr);
  session_ = session;
  if (session_ != nullptr) {
    connect(session_, &ScanSession::filtersChanged, this, &TreemapSurface::renew);
    connect(session_, &ScanSession::deltasChanged, this, &TreemapSurface::renew);
    connect(session_, &ScanSession::heatmapChanged, this, &TreemapSurface::renew);
    connect(session_, &ScanSession::selectionChanged, this, &TreemapSurface::renew);
  }
  renew();
  emit sessionChanged();
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
  if (change == ItemDevicePixelRatioHasChanged || change == ItemSceneChange) renew();
}

// Several changes before the next frame cost one layout.
void TreemapSurface::renew() {
  stale_ = true;
  polish();
}

double TreemapSurface::scale() const {
  return window()->effectiveDevicePixelRatio();
}

void TreemapSurface::updatePolish() {
  if (!stale_ || window() == nullptr) return;
  stale_ = false;
  if (session_ == nullptr || !node_.isValid() || size().isEmpty()) {
    tiles_ = {};
    tileTexture_->clear();
  } else {
    tiles_ = CanvasTiles(
        *node_.node(), size(),
        {session_->filters(), session_->grewPaths(), session_->selected(), session_->heatmap()});
    tileTexture_->show(MapPicture::whole(tiles_, size(), scale(), labels_));
  }
  hovered_ = std::nullopt;
  enter(pointerInside_ ? tiles_.at(mouse_) : std::nullopt);
}

void TreemapSurface::hoverEnterEvent(QHoverEvent* event) {
  pointerInside_ = true;
  setMouse(event->position());
}

void TreemapSurface::hoverMoveEvent(QHoverEvent* event) {
  setMouse(event->position());
}

void TreemapSurface::hoverLeaveEvent(QHoverEvent*) {
  pointerInside_ = false;
  enter(std::nullopt);
}

void TreemapSurface::setMouse(QPointF mouse) {
  mouse_ = mouse;
  tooltip_.moveTo(TooltipPlacement::topLeft(mouse_, size()));
  // Tiles that are about to be made anew are not the ones the pointer will be on.
  if (!stale_) enter(tiles_.at(mouse_));
}

// The pointer has come to the tile at `index`, or to none.
void TreemapSurface::enter(std::optional<std::size_t> index) {
  if (index && hovered_ == index) return;
  hovered_ = index;
  if (!index) {
    hoverPath_ = std::nullopt;
    hoverOverlay_->clear();
    tooltip_.hide();
    unsetCursor();
    return;
  }
  const CanvasTile& tile = tiles_[*index];
  const std::string path = tile.rect.node.path();
  if (hoverPath_ != path) {
    hoverPath_ = path;
    session_->setFocused(tile.rect.node);
    setCursor(Qt::PointingHandCursor);
  }
  showHighlight();
  tooltip_.show(TooltipText::of(tile.rect, session_->heatmap(), NodeTint::presentTime()),
                tile.tint);
}

void TreemapSurface::showHighlight() {
  const auto picture = MapPicture::highlight(tiles_, *hovered_, size(), scale(), labels_);
  if (picture) {
    hoverOverlay_->show(*picture);
  } else {
    hoverOverlay_->clear();
  }
}

void TreemapSurface::mousePressEvent(QMouseEvent* event) {
  const auto index = tiles_.at(event->position());
  pressedPath_ = index ? std::optional(tiles_[*index].rect.node.path()) : std::nullopt;
  pressedAt_ = event->position();
}

void TreemapSurface::mouseReleaseEvent(QMouseEvent* event) {
  const auto pressedPath = std::exchange(pressedPath_, std::nullopt);
  if (!pressedPath || QLineF(pressedAt_, event->position()).length() >= dragDistance) return;
  const auto index = tiles_.at(event->position());
  if (index && tiles_[*index].rect.node.path() == pressedPath) {
    click(tiles_[*index].rect.node, event->modifiers());
  }
}

void TreemapSurface::click(const DiskNode& node, Qt::KeyboardModifiers modifiers) {
  const DiskNode clicked = node;  // the handlers may replace the tiles
  session_->setFocused(clicked);
  if (modifiers.testFlag(Qt::ShiftModifier)) {
    session_->toggleSelect(clicked);
  } else if (modifiers.testFlag(Qt::ControlModifier)) {  // Command on macOS
    session_->addToQueue(clicked);
    session_->flash("Queued " + std::string(clicked.name()));
  } else if (clicked.isDir() && !clicked.children().empty()) {
    emit open(NodeHandle(clicked));
  } else {
    session_->reveal(clicked);
  }
}

}  // namespace tessaly
