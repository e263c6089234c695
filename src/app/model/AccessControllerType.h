// Registers AccessController as a QML type, so that a view can have a typed property for it.
#pragma once

#include <QtQml/qqml.h>

#include "session/AccessController.h"

namespace tessaly {

struct AccessControllerType {
  Q_GADGET
  QML_FOREIGN(tessaly::AccessController)
  QML_NAMED_ELEMENT(AccessController)
  QML_UNCREATABLE("Created in C++.")
};

}  // namespace tessaly
