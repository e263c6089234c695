// The warning before a critical item is moved to the Trash.
#pragma once

#include <string>

#include <QObject>
#include <QString>
#include <QtQml/qqmlregistration.h>

#include "session/Removal.h"

namespace tessaly {

class ProtectedLocationState : public QObject {
  Q_OBJECT
  QML_ELEMENT
  QML_UNCREATABLE("Created in C++.")
  Q_PROPERTY(bool shown READ isShown NOTIFY changed)
  // The reason, and below an empty line the item's path.
  Q_PROPERTY(QString message READ message NOTIFY changed)

 public:
  // `removal` must outlive it.
  ProtectedLocationState(const Removal& removal, std::string homeDirectory,
                         QObject* parent = nullptr);

  bool isShown() const;
  QString message() const;

 signals:
  void changed();

 private:
  const Removal& removal_;
  const std::string homeDirectory_;
};

}  // namespace tessaly
