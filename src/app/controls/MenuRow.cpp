#include "app/controls/MenuRow.h"

namespace tessaly {

void MenuRow::setText(const QString& text) {
  if (text == text_) return;
  text_ = text;
  emit textChanged();
}

void MenuRow::pick() {
  if (isEnabled()) emit picked(this);
}

}  // namespace tessaly
