// The tiles of a canvas as texts for screen readers: one row per tile, in painting order.
#pragma once

#include <QAbstractListModel>
#include <QPointer>
#include <QRectF>
#include <QtQml/qqmlregistration.h>

#include "app/map/TreemapSurface.h"

namespace tessaly {

class TileElementModel : public QAbstractListModel {
  Q_OBJECT
  QML_ELEMENT
  Q_PROPERTY(
      tessaly::TreemapSurface* canvas READ canvas WRITE setCanvas NOTIFY canvasChanged REQUIRED)

 public:
  enum Role {
    PlaceRole = Qt::UserRole + 1,  // a rectangle, in points of the canvas
    NameRole,
    FactsRole,  // size, kind, share of the parent, number of items
    SelectableRole,
    SelectedRole,
    NodeRole,
  };

  using QAbstractListModel::QAbstractListModel;

  TreemapSurface* canvas() const { return canvas_; }
  void setCanvas(TreemapSurface* canvas);

  int rowCount(const QModelIndex& parent = {}) const override;
  QVariant data(const QModelIndex& index, int role) const override;
  QHash<int, QByteArray> roleNames() const override;

 signals:
  void canvasChanged();

 private:
  void renew();

  QPointer<TreemapSurface> canvas_;
  CanvasTiles tiles_;  // the tiles of the present rows
};

}  // namespace tessaly
