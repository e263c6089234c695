// Makes ScanSession a type that QML knows, so that a view can ask for one by a typed property.
#pragma once

#include <QtQml/qqml.h>

#include "session/ScanSession.h"

namespace tessaly {

struct ScanSessionType {
  Q_GADGET
  QML_FOREIGN(tessaly::ScanSession)
  QML_NAMED_ELEMENT(ScanSession)
  QML_UNCREATABLE("The program makes its one session and hands it to its views.")
};

}  // namespace tessaly
