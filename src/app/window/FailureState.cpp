#include "app/window/FailureState.h"

#include "app/model/DisplayText.h"

namespace tessaly {

FailureState::FailureState(const Messages& messages, QObject* parent)
    : QObject(parent), messages_(messages) {
  connect(&messages_, &Messages::failureChanged, this, &FailureState::changed);
}

bool FailureState::isShown() const {
  return !messages_.failures().empty();
}

QString FailureState::text() const {
  return isShown() ? displayText(messages_.failures().back()) : QString();
}

QString FailureState::earlier() const {
  const std::size_t count = messages_.failures().size();
  return count > 1 ? QStringLiteral("%1 earlier").arg(count - 1) : QString();
}

}  // namespace tessaly
