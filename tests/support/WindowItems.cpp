#include "support/WindowItems.h"

#include <QCoreApplication>

namespace tessaly {

namespace {

void collect(QQuickItem* item, const QString& name, std::vector<QQuickItem*>& found) {
  if (!item->isVisible()) return;
  if (item->objectName() == name) found.push_back(item);
  for (QQuickItem* child : item->childItems()) collect(child, name, found);
}

}  // namespace

std::vector<QQuickItem*> itemsNamed(QQuickItem* top, const QString& name) {
  std::vector<QQuickItem*> found;
  if (top != nullptr) collect(top, name, found);
  return found;
}

QQuickItem* itemNamed(QQuickItem* top, const QString& name) {
  const auto found = itemsNamed(top, name);
  return found.size() == 1 ? found.front() : nullptr;
}

QQuickItem* itemNamed(QQuickWindow& window, const QString& name) {
  return itemNamed(window.contentItem(), name);
}

namespace {

// Only the message of the window is animated.
bool isMessageMoving(const QQuickWindow& window) {
  const auto* const toast = window.findChild<QQuickItem*>(QStringLiteral("toastPanel"));
  if (toast == nullptr) return false;
  const bool isWanted = toast->property("state").toString() == QLatin1String("shown");
  const double place = toast->parentItem()->mapToScene(toast->position()).y();
  const bool isLifted = qFuzzyIsNull(toast->mapToScene(QPointF(0, 0)).y() - place);
  return isWanted ? toast->opacity() < 1 || !isLifted : toast->opacity() > 0;
}

}  // namespace

QPoint middleOf(QQuickItem* item) {
  return item->mapToScene(QPointF(item->width() / 2, item->height() / 2)).toPoint();
}

void settle(QQuickWindow& window) {
  // Deferred deletions, layouts and polishing can each cause the next.
  do {
    for (int round = 0; round < 3; ++round) {
      QCoreApplication::sendPostedEvents(nullptr, QEvent::DeferredDelete);
      QCoreApplication::processEvents();
      window.grabWindow();
    }
  } while (isMessageMoving(window));
}

}  // namespace tessaly
