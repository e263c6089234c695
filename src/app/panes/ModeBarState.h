// What the row above the map offers at the moment.
#pragma once

#include <QObject>
#include <QString>
#include <QtQml/qqmlregistration.h>

#include "session/ScanSession.h"

namespace tessaly {

class ModeBarState : public QObject {
  Q_OBJECT
  QML_ELEMENT
  QML_UNCREATABLE("The program makes it and hands it to its view.")
  // There is a folder on screen that can be watched.
  Q_PROPERTY(bool canWatch READ canWatch NOTIFY canWatchChanged)
  // How many items are selected.
  Q_PROPERTY(int selectedCount READ selectedCount NOTIFY selectionChanged)
  // The last move to the Trash can be taken back.
  Q_PROPERTY(bool canPutBack READ canPutBack NOTIFY lastTrashedChanged)

 public:
  // What it is given outlives it.
  explicit ModeBarState(ScanSession& session, QObject* parent = nullptr);

  bool canWatch() const;
  int selectedCount() const;
  bool canPutBack() const;

  Q_INVOKABLE void toggleWatch();
  Q_INVOKABLE void zipSelected();

 signals:
  void canWatchChanged();
  void selectionChanged();
  void lastTrashedChanged();

 private:
  ScanSession& session_;
};

}  // namespace tessaly
