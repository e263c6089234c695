// The program's icon on a desktop, where a window requests attention. Main thread only.
#pragma once

#include <QWindow>

#include "platform/ApplicationIcon.h"

namespace tessaly {

class DesktopIcon : public ApplicationIcon {
 public:
  // The window that requests attention; not owned, and may be destroyed before the icon. Without
  // one, requestAttention() does nothing.
  virtual void setWindow(QWindow* window) = 0;
};

}  // namespace tessaly
