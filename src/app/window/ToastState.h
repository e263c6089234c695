// The short message at the bottom of the window.
#pragma once

#include <QObject>
#include <QString>
#include <QtQml/qqmlregistration.h>

#include "session/Messages.h"

namespace tessaly {

class ToastState : public QObject {
  Q_OBJECT
  QML_ELEMENT
  QML_UNCREATABLE("Created in C++.")
  Q_PROPERTY(bool shown READ isShown NOTIFY changed)
  // The current message, or the last one, which is still visible while it fades out.
  Q_PROPERTY(QString text READ text NOTIFY changed)

 public:
  // `messages` must outlive it.
  explicit ToastState(const Messages& messages, QObject* parent = nullptr);

  bool isShown() const { return shown_; }
  QString text() const { return text_; }

 signals:
  void changed();

 private:
  void take();

  const Messages& messages_;
  bool shown_ = false;
  QString text_;
};

}  // namespace tessaly
