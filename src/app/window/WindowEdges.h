// The edges that resize a window without a frame. The item covers the window but takes the pointer
// only within a few points of an edge, and not at all while the window is maximised or full-screen.
#pragma once

#include <QPointF>
#include <QQuickItem>
#include <QRect>
#include <QtQml/qqmlregistration.h>

namespace tessaly {

class WindowEdges : public QQuickItem {
  Q_OBJECT
  QML_ELEMENT

 public:
  explicit WindowEdges(QQuickItem* parent = nullptr);

  // The edges that a drag from `point` moves; a corner is two of them.
  Qt::Edges edgesAt(const QPointF& point) const;

  bool contains(const QPointF& point) const override;

 protected:
  void hoverEnterEvent(QHoverEvent* event) override;
  void hoverMoveEvent(QHoverEvent* event) override;
  void mousePressEvent(QMouseEvent* event) override;
  void mouseMoveEvent(QMouseEvent* event) override;
  void mouseReleaseEvent(QMouseEvent* event) override;
  void mouseUngrabEvent() override;

 private:
  void pull(QPointF way);

  Qt::Edges pulled_;   // while we resize the window ourselves
  QPointF pressedAt_;  // on the screen
  QRect windowWas_;    // its geometry at the press
};

}  // namespace tessaly
