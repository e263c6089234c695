// How something on screen looks, read from its items and compared with a table.
#pragma once

#include <vector>

#include <QQuickItem>
#include <QString>
#include <QVariant>

namespace tessaly {

struct LookRow {
  QString item;      // object names on the way down, "searchField/keyCap"; "" is the top
  QString property;  // by its path, as in "font.pixelSize"
  QVariant expected;
};

// Colours are expected as text, "#rrggbb at 0.18", the opacity to two digits; numbers to a
// thousandth; texts as they are.
void expectLook(QQuickItem* top, const std::vector<LookRow>& rows);

}  // namespace tessaly
