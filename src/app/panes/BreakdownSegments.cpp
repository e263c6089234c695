#include "app/panes/BreakdownSegments.h"

#include <algorithm>
#include <cmath>

#include <QPainter>
#include <QQuickWindow>

#include "app/controls/ContinuousShape.h"
#include "app/controls/QtColor.h"
#include "app/panes/BreakdownLayout.h"
#include "treemap/KindColor.h"

namespace tessaly {

namespace {

constexpr double gap = 1;
constexpr double leastWidth = 2;
constexpr double radius = 3;

}  // namespace

void BreakdownSegments::setSlices(KindBreakdownModel* slices) {
  if (slices == slices_) return;
  if (slices_ != nullptr) slices_->disconnect(this);
  slices_ = slices;
  if (slices_ != nullptr)
    connect(slices_, &KindBreakdownModel::nodeChanged, this, &BreakdownSegments::polish);
  polish();
  emit slicesChanged();
}

void BreakdownSegments::itemChange(ItemChange change, const ItemChangeData& data) {
  TexturedItem::itemChange(change, data);
  if (change == ItemSceneChange) followPlace();
  if (change == ItemDevicePixelRatioHasChanged || change == ItemSceneChange) polish();
}

// Qt does not notify an item whose ancestors move.
void BreakdownSegments::followPlace() {
  for (const auto& connection : watched_) disconnect(connection);
  watched_.clear();
  const auto watch = [this](QQuickItem* item, auto signal) {
    watched_.push_back(connect(item, signal, this, &BreakdownSegments::polish));
  };
  QQuickItem* const place = parentItem();
  if (place == nullptr) return;
  watch(place, &QQuickItem::widthChanged);
  watch(place, &QQuickItem::heightChanged);
  for (QQuickItem* item = place; item != nullptr; item = item->parentItem()) {
    watch(item, &QQuickItem::xChanged);
    watch(item, &QQuickItem::yChanged);
  }
}

void BreakdownSegments::updatePolish() {
  const QQuickItem* const place = parentItem();
  if (place == nullptr || window() == nullptr || slices_ == nullptr) return;
  const double scale = window()->effectiveDevicePixelRatio();
  const QPointF from = place->mapToScene(QPointF(0, 0)) * scale;
  const QPointF to = place->mapToScene(QPointF(place->width(), place->height())) * scale;
  const QPointF corner(std::round(from.x()), std::round(from.y()));
  const auto width = static_cast<int>(std::round(to.x()) - corner.x());
  const double height = std::round(to.y()) - corner.y();
  setPosition((corner - from) / scale);
  setSize(QSizeF(width, height) / scale);

  std::vector<double> fractions;
  for (const KindSlice& slice : slices_->slices()) fractions.push_back(slice.fraction);
  const BreakdownLayout::Bar bar{
      .width = width,
      .gap = std::max(1, static_cast<int>(std::lround(gap * scale))),
      .least = static_cast<int>(std::ceil(leastWidth * scale)),
  };
  std::vector<Segment> segments;
  auto slice = slices_->slices().begin();
  for (const auto& [left, right] : BreakdownLayout::segments(fractions, bar)) {
    segments.push_back({{left / scale, 0, (right - left) / scale, height / scale},
                        toQColor(KindColor::of(slice->kind))});
    ++slice;
  }
  if (segments == segments_) return;
  segments_ = std::move(segments);
  repaint();
}

void BreakdownSegments::paint(QPainter& painter) const {
  for (const auto& [place, color] : segments_)
    painter.fillPath(ContinuousShape::path(place, radius), color);
}

}  // namespace tessaly
