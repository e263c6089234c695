#include "app/map/CanvasState.h"

#include <string>

namespace tessaly {

CanvasState::CanvasState(ScanSession& session, QObject* parent)
    : QObject(parent), session_(session) {
  connect(&session_.choices(), &Choices::filtersChanged, this, &CanvasState::marksChanged);
  connect(&session_.result(), &ScanResult::deltasChanged, this, &CanvasState::marksChanged);
  connect(&session_.shown(), &Shown::heatmapChanged, this, &CanvasState::marksChanged);
  connect(&session_.selection(), &Selection::selectionChanged, this, &CanvasState::marksChanged);
}

TileMenuState* CanvasState::menu(QObject* view) const {
  return new TileMenuState(session_, view);
}

CanvasTiles::State CanvasState::marks() const {
  return {session_.choices().filters(), session_.result().grewPaths(),
          session_.selection().selected(), session_.shown().heatmap()};
}

void CanvasState::queue(const DiskNode& node) const {
  session_.cleanupQueue().addToQueue(node);
  session_.messages().flash("Queued " + std::string(node.name()));
}

}  // namespace tessaly
