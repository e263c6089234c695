// The list of items in the cloud without a copy on this disk: its rows. It changes nothing.
#pragma once

#include <QObject>
#include <QtQml/qqmlregistration.h>

#include "app/panes/CloudListModel.h"
#include "session/ScanSession.h"

namespace tessaly {

class CloudListState : public QObject {
  Q_OBJECT
  QML_ELEMENT
  QML_UNCREATABLE("Created in C++.")
  Q_PROPERTY(tessaly::CloudListModel* rows READ rows CONSTANT)

 public:
  // `session` must outlive it.
  explicit CloudListState(ScanSession& session, QObject* parent = nullptr)
      : QObject(parent), rows_(session.findings()) {}

  CloudListModel* rows() { return &rows_; }

 private:
  CloudListModel rows_;
};

}  // namespace tessaly
