#include "app/panes/GrewListState.h"

namespace tessaly {

GrewListState::GrewListState(ScanSession& session, QObject* parent)
    : QObject(parent), session_(session), rows_(session.result(), session.navigation()) {
  connect(&rows_, &GrewListModel::countChanged, this, &GrewListState::titleChanged);
}

QString GrewListState::title() const {
  return rows_.rowCount() > 0 ? QStringLiteral("Grew since last scan of this folder")
                              : QStringLiteral("No growth to compare yet");
}

void GrewListState::showOnMap(const PathHandle& path) {
  if (path.isValid()) session_.focusPath(path.path());
}

}  // namespace tessaly
