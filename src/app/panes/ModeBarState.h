// What the row above the map offers at the moment, and its texts that change.
#pragma once

#include <cstddef>

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
  Q_PROPERTY(QString watchText READ watchText NOTIFY watchTextChanged)
  Q_PROPERTY(QString heatmapText READ heatmapText NOTIFY heatmapTextChanged)
  Q_PROPERTY(bool hasSelection READ hasSelection NOTIFY selectionChanged)
  // These two with the number of selected items.
  Q_PROPERTY(QString queueText READ queueText NOTIFY selectionChanged)
  Q_PROPERTY(QString zipText READ zipText NOTIFY selectionChanged)
  // The last move to the Trash can be taken back.
  Q_PROPERTY(bool canPutBack READ canPutBack NOTIFY lastTrashedChanged)

 public:
  // What it is given outlives it.
  explicit ModeBarState(ScanSession& session, QObject* parent = nullptr);

  bool canWatch() const;
  QString watchText() const;
  QString heatmapText() const;
  bool hasSelection() const { return selectedCount() > 0; }
  QString queueText() const;
  QString zipText() const;
  bool canPutBack() const;

  Q_INVOKABLE void toggleWatch();
  Q_INVOKABLE void zipSelected();

 signals:
  void canWatchChanged();
  void watchTextChanged();
  void heatmapTextChanged();
  void selectionChanged();
  void lastTrashedChanged();
  // There are more actions at the end of the row than before.
  void actionsAdded();

 private:
  std::size_t selectedCount() const;
  void countActions();

  ScanSession& session_;
  int actions_ = 0;
};

}  // namespace tessaly
