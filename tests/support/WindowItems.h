// Finding things in a window as a user would: what is shown, by the name it bears in the views.
#pragma once

#include <vector>

#include <QQuickItem>
#include <QQuickWindow>
#include <QString>

namespace tessaly {

// All visible items of this object name below `top`, in painting order. Children of a Loader and
// rows of a list included.
std::vector<QQuickItem*> itemsNamed(QQuickItem* top, const QString& name);

// The one such item, null when there is none or more than one.
QQuickItem* itemNamed(QQuickItem* top, const QString& name);
QQuickItem* itemNamed(QQuickWindow& window, const QString& name);

// The middle of an item, in the window.
QPoint middleOf(QQuickItem* item);

// Brings the scene up to date with everything that has happened.
void settle(QQuickWindow& window);

}  // namespace tessaly
