// The part of the session that a canvas of the treemap uses: the marks of its tiles, and the parts
// that its gestures and keys change.
#pragma once

#include <QObject>
#include <QtQml/qqmlregistration.h>

#include "app/map/CanvasTiles.h"
#include "app/map/TileMenuState.h"
#include "scan/DiskNode.h"
#include "session/Navigation.h"
#include "session/ScanSession.h"
#include "session/Selection.h"
#include "session/Shown.h"

namespace tessaly {

class CanvasState : public QObject {
  Q_OBJECT
  QML_ELEMENT
  QML_UNCREATABLE("Created in C++.")

 public:
  // The session must outlive it.
  explicit CanvasState(ScanSession& session, QObject* parent = nullptr);

  // Creates the state of the menu of a tile, as a child of `view`.
  Q_INVOKABLE tessaly::TileMenuState* menu(QObject* view) const;

  // The marks that determine the colours and frames of the tiles.
  CanvasTiles::State marks() const;

  Navigation& navigation() const { return session_.navigation(); }
  Selection& selection() const { return session_.selection(); }
  Shown& shown() const { return session_.shown(); }

  // Adds an item to the cleanup queue, with a message.
  void queue(const DiskNode& node) const;

 signals:
  void marksChanged();

 private:
  ScanSession& session_;
};

}  // namespace tessaly
