// Makes a view load a new canvas for each folder, since what the old one knows of the pointer no
// longer holds, and lets the keyboard go on there.
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
  // The view has a canvas while this is true, and another one each time it becomes true.
  Q_PROPERTY(bool active READ isActive NOTIFY activeChanged)
  // The canvas that the view has; null while it has none.
  Q_PROPERTY(tessaly::TreemapSurface* canvas MEMBER canvas_ NOTIFY canvasChanged)

 public:
  using QObject::QObject;

  DiskMapState* map() const { return map_; }
  // Once; it outlives the view.
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
