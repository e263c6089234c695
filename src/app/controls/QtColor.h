// Converts the program's own colours to Qt's.
#pragma once

#include <QColor>

#include "look/Color.h"

namespace tessaly {

inline QColor toQColor(const Color& color) {
  QColor result(color.red, color.green, color.blue);
  result.setAlphaF(static_cast<float>(color.opacity));
  return result;
}

}  // namespace tessaly
