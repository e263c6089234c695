// The program's icon on a desktop, where a window asks for attention. Main thread only.
#pragma once

#include <QWindow>

#include "platform/ApplicationIcon.h"

namespace tessaly {

class DesktopIcon : public ApplicationIcon {
 public:
  // The window that asks for attention; not owned, and it may go before the icon does. Until there
  // is one, requestAttention() does nothing.
  virtual void setWindow(QWindow* window) = 0;
};

}  // namespace tessaly
