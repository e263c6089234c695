#include "app/map/AssistiveAccess.h"

namespace tessaly {

AssistiveAccess::AssistiveAccess(QObject* parent) : QObject(parent) {
  QAccessible::installActivationObserver(this);
}

AssistiveAccess::~AssistiveAccess() {
  QAccessible::removeActivationObserver(this);
}

void AssistiveAccess::accessibilityActiveChanged(bool active) {
  isWanted_ = active;
  emit wantedChanged();
}

}  // namespace tessaly
