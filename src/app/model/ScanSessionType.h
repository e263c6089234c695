// Registers ScanSession as a QML type, so that a view can have a typed property for it.
#pragma once

#include <QtQml/qqml.h>

#include "session/ScanSession.h"

namespace tessaly {

struct ScanSessionType {
  Q_GADGET
  QML_FOREIGN(tessaly::ScanSession)
  QML_NAMED_ELEMENT(ScanSession)
  QML_UNCREATABLE("Created in C++.")
};

}  // namespace tessaly
