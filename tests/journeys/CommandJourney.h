// A journey in a small scanned folder, with the menu of commands.
#pragma once

#include <cstddef>
#include <string>
#include <string_view>
#include <utility>
#include <vector>

#include <QString>

#include "journeys/CommandKeys.h"
#include "journeys/Journey.h"
#include "support/WindowItems.h"

namespace tessaly {

class CommandJourney : public Journey {
 protected:
  // `tree` has the items of the usual one, with other sizes.
  explicit CommandJourney(std::string_view tree =
                              "Movies/\n"
                              "  beach.mp4 6M\n"
                              "notes.txt 2M\n",
                          Lend lend = {})
      : Journey(tree, std::move(lend)) {
    for (const char* below : {"Movies", "Movies/beach.mp4", "notes.txt"})
      machine_.trash.put(tree_.at(below), below);
  }

  void scan() {
    session().scanHome();
    finishScan();
  }

  DiskNode child(std::size_t index) { return session().navigation().current()->children()[index]; }
  bool isMenuOpen() { return shows("menuRows"); }
  std::vector<QQuickItem*> rows() {
    settle(window());
    return itemsNamed(window().contentItem(), QStringLiteral("menuCommand"));
  }
  QQuickItem* rowOf(const QString& title) {
    for (QQuickItem* row : rows())
      if (row->property("text") == title) return row;
    ADD_FAILURE() << "the menu has no " << title.toStdString();
    return nullptr;
  }
  // The titles in the open menu.
  std::vector<std::string> offered() {
    std::vector<std::string> titles;
    for (QQuickItem* row : rows())
      if (row->isEnabled()) titles.push_back(row->property("text").toString().toStdString());
    return titles;
  }

  void choose(const char* title) {
    press(Qt::Key_F10);
    ASSERT_TRUE(isMenuOpen());
    if (QQuickItem* row = rowOf(QString::fromUtf8(title))) {
      EXPECT_TRUE(row->isEnabled()) << title;
      clickAt(middleOf(row));
    }
    EXPECT_FALSE(isMenuOpen());
  }
};

}  // namespace tessaly
