// Whether some program, such as a screen reader, wants to know what stands in the window. As long
// as none does, nobody needs a description of hundreds of tiles.
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
