// The groups of files with the same content, in the session's order, one row for each file. The
// first row of a group has the heading. Follows the session, and the queue for the groups of which
// it has every copy.
#pragma once

#include <cstddef>
#include <cstdint>
#include <optional>
#include <string>

#include <QAbstractListModel>
#include <QtQml/qqmlregistration.h>

#include "app/model/KeyedRows.h"
#include "scan/PathSize.h"
#include "session/CleanupQueue.h"
#include "session/Findings.h"

namespace tessaly {

class DuplicateListModel : public QAbstractListModel {
  Q_OBJECT
  QML_ELEMENT
  QML_UNCREATABLE("Created in C++.")

 public:
  enum Role {
    GroupRole = Qt::UserRole + 1,  // the heading above the row, "3× 60.0 MB"; empty for none
    DigestRole,                    // the beginning of the group's digest; empty like the heading
    NoneKeptRole,                  // whether every copy of the group below this heading is queued
    NameRole,
    PlaceRole,       // its path as displayed text
    SizeRole,        // as text
    SameBlocksRole,  // whether it shares its blocks on the disk with another copy of its group
    NodeRole,        // the file as a NodeHandle, although the tree may lack it by now
  };

  // The arguments must outlive it.
  DuplicateListModel(const Findings& findings, const CleanupQueue& queue,
                     QObject* parent = nullptr);

  int rowCount(const QModelIndex& parent = {}) const override;
  QVariant data(const QModelIndex& index, int role) const override;
  QHash<int, QByteArray> roleNames() const override;

 signals:
  void countChanged();

 private:
  struct Heading {
    std::size_t copies = 0;
    std::int64_t bytes = 0;  // of each copy
    std::string digest = {};
    bool noneKept = false;

    friend bool operator==(const Heading&, const Heading&) = default;
  };
  struct Row {
    PathSize file = {};
    std::optional<Heading> heading = {};
    bool sharesBlocks = false;

    friend bool operator==(const Row&, const Row&) = default;
  };

  void follow();

  const Findings& findings_;
  const CleanupQueue& queue_;
  KeyedRows<Row> rows_{*this};
};

}  // namespace tessaly
