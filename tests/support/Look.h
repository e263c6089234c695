// Compares how items on screen look with a table.
#pragma once

#include <vector>

#include <QQuickItem>
#include <QString>
#include <QVariant>

namespace tessaly {

struct LookRow {
  QString item;      // object names on the path to the item, "searchField/keyCap"; "" is the top
  QString property;  // the path of a property, as in "font.pixelSize"
  QVariant expected;
};

// Expected values: colours as text, "#rrggbb at 0.18", with two digits of opacity; numbers to a
// thousandth; texts exactly.
void expectLook(QQuickItem* top, const std::vector<LookRow>& rows);

}  // namespace tessaly
