// A journey through one of the lists of the analysis, which stand in place of the map.
#pragma once

#include <algorithm>
#include <string>
#include <string_view>
#include <utility>
#include <vector>

#include <QQuickItem>

#include "journeys/Journey.h"
#include "support/WindowItems.h"

namespace tessaly {

// `Base` is Journey or derived from it.
template <class Base = Journey>
class ListJourney : public Base {
 protected:
  // `rowName` is the object name of the rows.
  ListJourney(const char* rowName, std::string_view tree, Journey::Lend lend)
      : Base(tree, std::move(lend)), rowName_(QString::fromLatin1(rowName)) {}

  void finishAnalysis() {
    this->dispatch_.drainAll();
    settle(this->window());
  }
  // From the first to the last.
  std::vector<QQuickItem*> listRows() {
    std::vector<QQuickItem*> rows = itemsNamed(this->window().contentItem(), rowName_);
    std::ranges::sort(rows, {}, [](QQuickItem* row) { return row->y(); });
    return rows;
  }
  // The paths that the rows show.
  std::vector<std::string> places() {
    std::vector<std::string> places;
    for (QQuickItem* const row : listRows()) places.push_back(placeOf(row));
    return places;
  }
  // The path of the row with the keyboard; empty if none has it.
  std::string keyboardRow() {
    for (QQuickItem* const row : listRows()) {
      if (row->hasActiveFocus()) return placeOf(row);
    }
    return {};
  }
  // Moves the keyboard focus to the first row.
  void enter() {
    finishAnalysis();
    this->tabTo("rowFace");
    ASSERT_EQ(keyboardRow(), placeOf(listRows().front()));
  }
  std::vector<std::string> queued() {
    std::vector<std::string> paths;
    for (const DiskNode& node : this->session().cleanupQueue().queue())
      paths.push_back(node.path());
    return paths;
  }
  // The texts of the open menu.
  std::vector<std::string> menuTexts() {
    std::vector<std::string> texts;
    for (QQuickItem* const entry : this->item("menuColumn")->childItems()) {
      if (entry->isVisible()) texts.push_back(entry->property("text").toString().toStdString());
    }
    return texts;
  }

 private:
  static std::string placeOf(QQuickItem* row) {
    return row->property("place").toString().toStdString();
  }

  const QString rowName_;
};

}  // namespace tessaly
