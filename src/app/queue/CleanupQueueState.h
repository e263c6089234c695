// Texts and actions of the cleanup queue's panel. It observes the session, which owns all data, and
// adds no state.
#pragma once

#include <QObject>
#include <QString>
#include <QtQml/qqmlregistration.h>

#include "app/model/NodeHandle.h"
#include "app/model/NodeRows.h"
#include "session/ScanSession.h"

namespace tessaly {

class CleanupQueueState : public QObject {
  Q_OBJECT
  QML_ELEMENT
  QML_UNCREATABLE("Created in C++.")
  Q_PROPERTY(tessaly::NodeRows* rows READ rows CONSTANT)
  Q_PROPERTY(Look look READ look NOTIFY lookChanged)
  Q_PROPERTY(QString countText READ countText NOTIFY queueChanged)
  // The accessible name of the header.
  Q_PROPERTY(QString headerName READ headerName NOTIFY headerNameChanged)
  // The button's text with the total size. Aborts if the total overflows.
  Q_PROPERTY(QString moveText READ moveText NOTIFY queueChanged)
  // False while a batch moves to the Trash; the items can be removed from the queue then.
  Q_PROPERTY(bool canTrash READ canTrash NOTIFY canTrashChanged)

 public:
  enum Look { Hidden, Open, Minimized };
  Q_ENUM(Look)

  // `session` must outlive it.
  explicit CleanupQueueState(ScanSession& session, QObject* parent = nullptr);

  NodeRows* rows() { return &rows_; }
  Look look() const;
  QString countText() const;
  QString headerName() const;
  QString moveText() const;
  bool canTrash() const { return !session_.removal().isMoving(); }

  Q_INVOKABLE void toggleMinimized();
  Q_INVOKABLE void remove(const tessaly::NodeHandle& node);
  Q_INVOKABLE void clear();
  Q_INVOKABLE void zipThenTrash();
  Q_INVOKABLE void moveToTrash();

 signals:
  void lookChanged();
  void queueChanged();
  void headerNameChanged();
  void canTrashChanged();

 private:
  void followQueue();

  ScanSession& session_;
  NodeRows rows_;
};

}  // namespace tessaly
