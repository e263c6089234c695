// Registers the parts of the session as QML types, so that a view can have typed properties for
// them.
#pragma once

#include <QtQml/qqml.h>

#include "session/ScanSession.h"

namespace tessaly {

struct ChoicesType {
  Q_GADGET
  QML_FOREIGN(tessaly::Choices)
  QML_NAMED_ELEMENT(Choices)
  QML_UNCREATABLE("Created in C++.")
};

struct CleanupQueueType {
  Q_GADGET
  QML_FOREIGN(tessaly::CleanupQueue)
  QML_NAMED_ELEMENT(CleanupQueue)
  QML_UNCREATABLE("Created in C++.")
};

struct LiveWatchType {
  Q_GADGET
  QML_FOREIGN(tessaly::LiveWatch)
  QML_NAMED_ELEMENT(LiveWatch)
  QML_UNCREATABLE("Created in C++.")
};

struct MessagesType {
  Q_GADGET
  QML_FOREIGN(tessaly::Messages)
  QML_NAMED_ELEMENT(Messages)
  QML_UNCREATABLE("Created in C++.")
};

struct NavigationType {
  Q_GADGET
  QML_FOREIGN(tessaly::Navigation)
  QML_NAMED_ELEMENT(Navigation)
  QML_UNCREATABLE("Created in C++.")
};

struct RemovalType {
  Q_GADGET
  QML_FOREIGN(tessaly::Removal)
  QML_NAMED_ELEMENT(Removal)
  QML_UNCREATABLE("Created in C++.")
};

struct ScanRunType {
  Q_GADGET
  QML_FOREIGN(tessaly::ScanRun)
  QML_NAMED_ELEMENT(ScanRun)
  QML_UNCREATABLE("Created in C++.")
};

struct SelectionType {
  Q_GADGET
  QML_FOREIGN(tessaly::Selection)
  QML_NAMED_ELEMENT(Selection)
  QML_UNCREATABLE("Created in C++.")
};

struct ShownType {
  Q_GADGET
  QML_FOREIGN(tessaly::Shown)
  QML_NAMED_ELEMENT(Shown)
  QML_UNCREATABLE("Created in C++.")
};

}  // namespace tessaly
