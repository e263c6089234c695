#include "app/map/TooltipState.h"

#include "app/controls/QtColor.h"
#include "app/model/DisplayText.h"

namespace tessaly {

void TooltipState::show(const TooltipText& text, const Color& tint) {
  shown_ = true;
  tint_ = toQColor(tint);
  name_ = displayText(text.name);
  size_ = QString::fromStdString(text.size);
  facts_ = QString::fromStdString(text.facts);
  age_ = QString::fromStdString(text.age.value_or(std::string()));
  path_ = displayText(text.path);
  emit changed();
}

void TooltipState::hide() {
  if (!shown_) return;
  shown_ = false;
  emit changed();
}

void TooltipState::pointAt(QPointF pointer, QSizeF canvas) {
  if (pointer == pointer_ && canvas == canvas_) return;
  pointer_ = pointer;
  canvas_ = canvas;
  emit moved();
}

void TooltipState::setHeight(double height) {
  if (height == height_) return;
  height_ = height;
  emit moved();
}

}  // namespace tessaly
