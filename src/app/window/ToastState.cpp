#include "app/window/ToastState.h"

#include "app/model/DisplayText.h"

namespace tessaly {

ToastState::ToastState(const Messages& messages, QObject* parent)
    : QObject(parent), messages_(messages) {
  connect(&messages_, &Messages::toastChanged, this, &ToastState::take);
  take();
}

void ToastState::take() {
  shown_ = messages_.toast().has_value();
  if (shown_) text_ = displayText(*messages_.toast());
  emit changed();
}

}  // namespace tessaly
