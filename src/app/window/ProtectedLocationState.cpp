#include "app/window/ProtectedLocationState.h"

#include <utility>

#include "app/model/DisplayText.h"
#include "reclaim/CriticalPaths.h"

namespace tessaly {

ProtectedLocationState::ProtectedLocationState(const Removal& removal, std::string homeDirectory,
                                               QObject* parent)
    : QObject(parent), removal_(removal), homeDirectory_(std::move(homeDirectory)) {
  connect(&removal_, &Removal::criticalWarningChanged, this, &ProtectedLocationState::changed);
}

bool ProtectedLocationState::isShown() const {
  return removal_.criticalWarning().has_value();
}

QString ProtectedLocationState::message() const {
  if (!isShown()) return {};
  const std::string path = removal_.criticalWarning()->path();
  return displayText(CriticalPaths::reason(path, homeDirectory_)) + QStringLiteral("\n\n") +
         displayText(path);
}

}  // namespace tessaly
