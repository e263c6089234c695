#include "app/panes/CompareListState.h"

#include <string>
#include <vector>

#include "app/model/DisplayText.h"

namespace tessaly {

CompareListState::CompareListState(ScanSession& session, QObject* parent)
    : QObject(parent), session_(session), rows_(session.comparison()) {
  connect(&rows_, &CompareListModel::countChanged, this, &CompareListState::captionChanged);
  connect(&session_.comparison(), &Comparison::compareNamesChanged, this,
          &CompareListState::captionChanged);
  connect(&session_.comparison(), &Comparison::comparingChanged, this,
          &CompareListState::progressChanged);
}

QString CompareListState::caption() const {
  if (!hasRows()) {
    return QStringLiteral(
        "Click Compare… and pick a second folder. Sizes are matched by relative path.");
  }
  return displayText(session_.comparison().compareLeftName()) + QStringLiteral("  vs  ") +
         displayText(session_.comparison().compareRightName());
}

QString CompareListState::progress() const {
  const std::vector<std::string>& names = session_.comparison().comparing();
  return names.empty() ? QString()
                       : QStringLiteral("Comparing with ") + displayText(names.back()) + u'…';
}

}  // namespace tessaly
