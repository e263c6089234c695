// The failures, as the line in the window shows them.
#pragma once

#include <QObject>
#include <QString>
#include <QtQml/qqmlregistration.h>

#include "session/Messages.h"

namespace tessaly {

class FailureState : public QObject {
  Q_OBJECT
  QML_ELEMENT
  QML_UNCREATABLE("Created in C++.")
  Q_PROPERTY(bool shown READ isShown NOTIFY changed)
  // The latest failure that has not been dismissed.
  Q_PROPERTY(QString text READ text NOTIFY changed)
  // The number of earlier failures, "2 earlier"; empty for none.
  Q_PROPERTY(QString earlier READ earlier NOTIFY changed)

 public:
  // `messages` must outlive it.
  explicit FailureState(const Messages& messages, QObject* parent = nullptr);

  bool isShown() const;
  QString text() const;
  QString earlier() const;

 signals:
  void changed();

 private:
  const Messages& messages_;
};

}  // namespace tessaly
