// Whether a program such as a screen reader reads the window. Without one, no description of
// hundreds of tiles is needed.
#pragma once

#include <QAccessible>
#include <QObject>
#include <QtQml/qqmlregistration.h>

namespace tessaly {

class AssistiveAccess : public QObject, private QAccessible::ActivationObserver {
  Q_OBJECT
  QML_ELEMENT
  Q_PROPERTY(bool wanted READ isWanted NOTIFY wantedChanged)

 public:
  explicit AssistiveAccess(QObject* parent = nullptr);
  ~AssistiveAccess() override;

  bool isWanted() const { return isWanted_; }

 signals:
  void wantedChanged();

 private:
  void accessibilityActiveChanged(bool active) override;

  bool isWanted_ = QAccessible::isActive();
};

}  // namespace tessaly
