// The available actions of the row above the map, and its variable texts.
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
  QML_UNCREATABLE("Created in C++.")
  // A folder that can be watched is on screen.
  Q_PROPERTY(bool canWatch READ canWatch NOTIFY canWatchChanged)
  Q_PROPERTY(QString watchText READ watchText NOTIFY watchTextChanged)
  Q_PROPERTY(QString heatmapText READ heatmapText NOTIFY heatmapTextChanged)
  Q_PROPERTY(bool hasSelection READ hasSelection NOTIFY selectionChanged)
  // Both contain the number of selected items.
  Q_PROPERTY(QString queueText READ queueText NOTIFY selectionChanged)
  Q_PROPERTY(QString zipText READ zipText NOTIFY selectionChanged)
  // The last move to the Trash can be undone.
  Q_PROPERTY(bool canPutBack READ canPutBack NOTIFY lastTrashedChanged)

 public:
  // `session` must outlive it.
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
  // The row has more actions at its end than before.
  void actionsAdded();

 private:
  std::size_t selectedCount() const;
  void countActions();

  ScanSession& session_;
  int actions_ = 0;
};

}  // namespace tessaly
