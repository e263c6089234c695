// Finds visible items of a window by their object names.
#pragma once

#include <vector>

#include <QQuickItem>
#include <QQuickWindow>
#include <QString>

namespace tessaly {

// All visible items with this object name below `top`, in painting order, including children of a
// Loader and rows of a list.
std::vector<QQuickItem*> itemsNamed(QQuickItem* top, const QString& name);

// The only such item; null if there is none or more than one.
QQuickItem* itemNamed(QQuickItem* top, const QString& name);
QQuickItem* itemNamed(QQuickWindow& window, const QString& name);

// The middle of an item, in coordinates of the window.
QPoint middleOf(QQuickItem* item);

// Updates the scene after all that has happened.
void settle(QQuickWindow& window);

}  // namespace tessaly
