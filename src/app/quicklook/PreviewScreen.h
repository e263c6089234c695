// The ways in which a preview shows a file, each with a view of its own.
#pragma once

#include <QObject>
#include <QtQml/qqmlregistration.h>

namespace tessaly::PreviewScreen {

Q_NAMESPACE
QML_NAMED_ELEMENT(PreviewScreen)

enum class Kind {
  Nothing,  // the panel is closed
  Loading,
  Facts,
  Image,
  Text,
  Pages,
  Media,
  Folder,
  Failure,
};
Q_ENUM_NS(Kind)

}  // namespace tessaly::PreviewScreen
