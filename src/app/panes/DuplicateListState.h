// The list of files with the same content: its rows, its actions, and how far a running comparison
// is.
#pragma once

#include <QObject>
#include <QString>
#include <QtQml/qqmlregistration.h>

#include "app/model/NodeHandle.h"
#include "app/panes/DuplicateListModel.h"
#include "session/ScanSession.h"

namespace tessaly {

class DuplicateListState : public QObject {
  Q_OBJECT
  QML_ELEMENT
  QML_UNCREATABLE("Created in C++.")
  Q_PROPERTY(tessaly::DuplicateListModel* rows READ rows CONSTANT)
  Q_PROPERTY(bool hasRows READ hasRows NOTIFY hasRowsChanged)
  // How far the running comparison is, see ComparingText; empty if none runs.
  Q_PROPERTY(QString progress READ progress NOTIFY progressChanged)

 public:
  // `session` must outlive it.
  explicit DuplicateListState(ScanSession& session, QObject* parent = nullptr);

  DuplicateListModel* rows() { return &rows_; }
  bool hasRows() const { return rows_.rowCount() != 0; }
  QString progress() const;

  // The actions do nothing for a handle without a node. A file that the tree lacks is shown in the
  // file manager instead.
  Q_INVOKABLE void showOnMap(const tessaly::NodeHandle& node);
  Q_INVOKABLE void addToQueue(const tessaly::NodeHandle& node);

 signals:
  void hasRowsChanged();
  void progressChanged();

 private:
  ScanSession& session_;
  DuplicateListModel rows_;
};

}  // namespace tessaly
