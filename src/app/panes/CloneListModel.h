// The groups of files that share blocks of the disk, in the session's order, one row for each file.
// The first row of a group has the heading. Follows the session.
#pragma once

#include <cstddef>
#include <cstdint>
#include <optional>
#include <string>

#include <QAbstractListModel>
#include <QtQml/qqmlregistration.h>

#include "app/model/KeyedRows.h"
#include "scan/PathSize.h"
#include "session/Findings.h"

namespace tessaly {

class CloneListModel : public QAbstractListModel {
  Q_OBJECT
  QML_ELEMENT
  QML_UNCREATABLE("Created in C++.")

 public:
  enum Role {
    KindRole = Qt::UserRole + 1,  // of the group whose heading is above the row: "Clone" or
                                  // "Hard link"; empty for none, like the next three
    CountRole,                    // "3×"
    SavesRole,                    // "saves 10.0 MB"
    SizesRole,                    // "Logical 20.0 MB · unique 10.0 MB"
    NameRole,
    PlaceRole,  // its path as displayed text
    NodeRole,   // the file as a NodeHandle, although the tree may lack it by now
  };

  // `findings` must outlive it.
  explicit CloneListModel(const Findings& findings, QObject* parent = nullptr);

  int rowCount(const QModelIndex& parent = {}) const override;
  QVariant data(const QModelIndex& index, int role) const override;
  QHash<int, QByteArray> roleNames() const override;

 private:
  struct Heading {
    bool isClone = false;
    std::size_t files = 0;
    std::int64_t logical = 0;
    std::int64_t unique = 0;

    friend bool operator==(const Heading&, const Heading&) = default;
  };
  struct Row {
    PathSize file = {};
    std::optional<Heading> heading = {};

    friend bool operator==(const Row&, const Row&) = default;
  };

  static QVariant of(const Heading& heading, int role);
  void follow();

  const Findings& findings_;
  KeyedRows<Row> rows_{*this};
};

}  // namespace tessaly
