#include "app/map/TileElementModel.h"

#include "app/map/TooltipText.h"
#include "app/model/DisplayText.h"
#include "app/model/NodeHandle.h"
#include "scan/Remainder.h"

namespace tessaly {

void TileElementModel::setCanvas(TreemapSurface* canvas) {
  if (canvas == canvas_) return;
  if (canvas_) disconnect(canvas_, nullptr, this, nullptr);
  canvas_ = canvas;
  if (canvas_) connect(canvas_, &TreemapSurface::tilesChanged, this, &TileElementModel::renew);
  renew();
  emit canvasChanged();
}

void TileElementModel::renew() {
  beginResetModel();
  tiles_ = canvas_ ? canvas_->tiles() : CanvasTiles();
  endResetModel();
}

int TileElementModel::rowCount(const QModelIndex& parent) const {
  return parent.isValid() ? 0 : static_cast<int>(tiles_.all().size());
}

QVariant TileElementModel::data(const QModelIndex& index, int role) const {
  if (!checkIndex(index, CheckIndexOption::IndexIsValid)) return {};
  const CanvasTile& tile = tiles_[static_cast<std::size_t>(index.row())];
  switch (role) {
    case PlaceRole:
      return QRectF(tile.rect.x, tile.rect.y, tile.rect.width, tile.rect.height);
    case Qt::DisplayRole:
    case NameRole:
      return displayText(tile.rect.node.name());
    case FactsRole: {
      const TooltipText text = TooltipText::of(tile.rect, false, 0);
      return QString::fromStdString(text.size + ", " + text.facts);
    }
    case SelectableRole:
      return !isRemainder(tile.rect.node);
    case SelectedRole:
      return tile.selected;
    case NodeRole:
      return QVariant::fromValue(NodeHandle(tile.rect.node));
    default:
      return {};
  }
}

QHash<int, QByteArray> TileElementModel::roleNames() const {
  return {{PlaceRole, "place"},           {NameRole, "name"},         {FactsRole, "facts"},
          {SelectableRole, "selectable"}, {SelectedRole, "selected"}, {NodeRole, "node"}};
}

}  // namespace tessaly
