// The panel in a window of its own, between a button before it and one after it, over a session on
// a fake machine. Any warning of the QML engine fails the test.
#pragma once

#include <memory>
#include <string>
#include <vector>

#include <QAccessible>
#include <QQuickItem>
#include <QQuickView>
#include <QString>
#include <QStringList>

#include "app/queue/CleanupQueueState.h"
#include "session/SessionFixture_test.h"

namespace tessaly {

class QueueScene : public SessionFixture {
 protected:
  void show();
  QQuickView& view() { return *view_; }

  void queue(const std::vector<DiskNode>& nodes);
  // A film, a song with a name that is not UTF-8, and a note.
  void queueThree();
  std::vector<std::string> queued() const;

  QQuickItem* panel();
  // The visible item with this object name; a failure and null if there is none.
  QQuickItem* item(const QString& name);
  bool shows(const QString& name);
  // The rows in and near the view, from the top.
  std::vector<QQuickItem*> rows();
  QStringList names();
  QQuickItem* removeButton(int row);

  // In coordinates of the window.
  static QRectF rectOf(QQuickItem* item);
  QQuickItem* focused() { return view_->activeFocusItem(); }
  void update();
  void click(QQuickItem* item);
  void clickAt(QPointF point);
  void press(Qt::Key key);
  void backtab();
  void wheelAt(QPointF point, int degrees);
  static QAccessibleInterface* told(QQuickItem* item);

  // The clicks and wheel turns that the item below the panel has got, plus 100 for each move.
  int clicksBelow() const;

 private:
  std::unique_ptr<CleanupQueueState> state_;
  std::unique_ptr<QQuickView> view_;
};

}  // namespace tessaly
