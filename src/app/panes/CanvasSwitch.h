// Makes a view load a new canvas for each folder, since the old one's pointer state is no longer
// valid, and passes the keyboard focus to the new canvas.
//
// Main thread only.
#pragma once

#include <QObject>
#include <QPointer>
#include <QtQml/qqmlregistration.h>

#include "app/map/TreemapSurface.h"
#include "app/panes/DiskMapState.h"

namespace tessaly {

class CanvasSwitch : public QObject {
  Q_OBJECT
  QML_ELEMENT
  Q_PROPERTY(tessaly::DiskMapState* map READ map WRITE setMap NOTIFY mapChanged REQUIRED)
  // Whether the view has a canvas. It loads a new one each time this becomes true.
  Q_PROPERTY(bool active READ isActive NOTIFY activeChanged)
  // The current canvas of the view; null if it has none.
  Q_PROPERTY(tessaly::TreemapSurface* canvas MEMBER canvas_ NOTIFY canvasChanged)

 public:
  using QObject::QObject;

  DiskMapState* map() const { return map_; }
  // Takes effect once. `map` must outlive the view.
  void setMap(DiskMapState* map);
  bool isActive() const;

 signals:
  void mapChanged();
  void activeChanged();
  void canvasChanged();

 private:
  void remake();
  void setRemaking(bool remaking);

  DiskMapState* map_ = nullptr;
  QPointer<TreemapSurface> canvas_;
  bool isRemaking_ = false;
};

}  // namespace tessaly
