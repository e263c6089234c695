// The rows of the page of what can be won back. Rows of one section follow each other; the first
// row of a section, and of a category in it, has the heading.
#pragma once

#include <cstdint>
#include <string>
#include <vector>

#include <QAbstractListModel>
#include <QtQml/qqmlregistration.h>

#include "app/model/KeyedRows.h"
#include "session/Navigation.h"

namespace tessaly {

class ListWinsModel : public QAbstractListModel {
  Q_OBJECT
  QML_ELEMENT
  QML_UNCREATABLE("The program makes it and hands it to its view.")

 public:
  enum Role {
    LabelRole = Qt::UserRole + 1,  // the whole row, for assistive tools
    SectionRole,                   // the heading of the section above the row; empty for none
    CategoryRole,                  // the same for the category
    TitleRole,
    NoteRole,
    SizeRole,         // as text
    CautionRole,      // whether removing it loses something
    TrashActionRole,  // whether it is the Trash, which can only be emptied
    PickedRole,
    TickableRole,  // false for an item that is no longer there
    PathRole,      // a PathHandle
    NodeRole,      // for commands on the row; a handle without a node if they must not act on it
  };

  struct Row {
    std::string key = {};  // unique
    std::string section = {};
    std::string category = {};
    std::string title = {};  // bytes, as the others
    std::string note = {};
    std::string path = {};
    std::int64_t bytes = 0;
    bool caution = false;
    bool isTrash = false;
    bool isPicked = false;
    bool isGone = false;

    friend bool operator==(const Row&, const Row&) = default;
  };

  // `navigation` has the tree of the nodes; it must outlive the model.
  explicit ListWinsModel(const Navigation& navigation, QObject* parent = nullptr)
      : QAbstractListModel(parent), navigation_(navigation) {}

  // Rows with the same key stay the same row for views.
  void set(std::vector<Row> rows);
  const std::vector<Row>& all() const { return rows_.all(); }

  int rowCount(const QModelIndex& parent = {}) const override;
  QVariant data(const QModelIndex& index, int role) const override;
  QHash<int, QByteArray> roleNames() const override;

 private:
  const Navigation& navigation_;
  KeyedRows<Row> rows_{*this};
};

}  // namespace tessaly
