// The list of the items in which two folders differ: its caption, rows and action.
#pragma once

#include <QObject>
#include <QString>
#include <QtQml/qqmlregistration.h>

#include "app/panes/CompareListModel.h"
#include "session/ScanSession.h"

namespace tessaly {

class CompareListState : public QObject {
  Q_OBJECT
  QML_ELEMENT
  QML_UNCREATABLE("Created in C++.")
  Q_PROPERTY(tessaly::CompareListModel* rows READ rows CONSTANT)
  Q_PROPERTY(QString caption READ caption NOTIFY captionChanged)
  Q_PROPERTY(bool hasRows READ hasRows NOTIFY captionChanged)
  Q_PROPERTY(QString progress READ progress NOTIFY progressChanged)

 public:
  // `session` must outlive it.
  explicit CompareListState(ScanSession& session, QObject* parent = nullptr);

  CompareListModel* rows() { return &rows_; }
  QString caption() const;
  bool hasRows() const { return rows_.rowCount() != 0; }
  // Which folder is being compared, the latest of several; "" if none is.
  QString progress() const;

  // Asks for the folder to compare the scanned one with.
  Q_INVOKABLE void chooseFolder() { session_.compareWithFolder(); }

 signals:
  void captionChanged();
  void progressChanged();

 private:
  ScanSession& session_;
  CompareListModel rows_;
};

}  // namespace tessaly
