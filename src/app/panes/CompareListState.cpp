#include "app/panes/CompareListState.h"

#include "app/model/DisplayText.h"

namespace tessaly {

CompareListState::CompareListState(ScanSession& session, QObject* parent)
    : QObject(parent), session_(session), rows_(session.comparison()) {
  connect(&rows_, &CompareListModel::countChanged, this, &CompareListState::captionChanged);
  connect(&session_.comparison(), &Comparison::compareNamesChanged, this,
          &CompareListState::captionChanged);
}

QString CompareListState::caption() const {
  if (rows_.rowCount() == 0) {
    return QStringLiteral(
        "Click Compare… and pick a second folder. Sizes are matched by relative path.");
  }
  return displayText(session_.comparison().compareLeftName()) + QStringLiteral("  vs  ") +
         displayText(session_.comparison().compareRightName());
}

}  // namespace tessaly
