// The history of the scanned folder: its rows, and its scans for a line.
#pragma once

#include <vector>

#include <QObject>
#include <QString>
#include <QtQml/qqmlregistration.h>

#include "app/panes/HistoryListModel.h"
#include "session/ScanSession.h"

namespace tessaly {

class HistoryListState : public QObject {
  Q_OBJECT
  QML_ELEMENT
  QML_UNCREATABLE("Created in C++.")
  Q_PROPERTY(tessaly::HistoryListModel* rows READ rows CONSTANT)
  // All scans in words, for assistive tools.
  Q_PROPERTY(QString summary READ summary NOTIFY pointsChanged)

 public:
  // `session` must outlive it.
  explicit HistoryListState(ScanSession& session, QObject* parent = nullptr);

  HistoryListModel* rows() { return &rows_; }
  QString summary() const;
  // Oldest first.
  const std::vector<HistoryPoint>& points() const { return session_.result().history(); }

 signals:
  void pointsChanged();

 private:
  ScanSession& session_;
  HistoryListModel rows_;
};

}  // namespace tessaly
