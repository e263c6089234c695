#include "app/window/WindowEdges.h"

#include <algorithm>

#include <QHoverEvent>
#include <QMouseEvent>
#include <QQuickWindow>

namespace tessaly {

namespace {

// The width of the area at an edge, in points, that resizes the window; and the length of a corner.
constexpr double grip = 5;
constexpr double corner = 12;

Qt::CursorShape shapeFor(Qt::Edges edges) {
  if (edges == (Qt::TopEdge | Qt::LeftEdge) || edges == (Qt::BottomEdge | Qt::RightEdge)) {
    return Qt::SizeFDiagCursor;
  }
  if (edges == (Qt::TopEdge | Qt::RightEdge) || edges == (Qt::BottomEdge | Qt::LeftEdge)) {
    return Qt::SizeBDiagCursor;
  }
  return edges & (Qt::LeftEdge | Qt::RightEdge) ? Qt::SizeHorCursor : Qt::SizeVerCursor;
}

}  // namespace

WindowEdges::WindowEdges(QQuickItem* parent) : QQuickItem(parent) {
  setAcceptedMouseButtons(Qt::LeftButton);
  setAcceptHoverEvents(true);
}

Qt::Edges WindowEdges::edgesAt(const QPointF& point) const {
  if (window() != nullptr &&
      window()->windowStates() & (Qt::WindowMaximized | Qt::WindowFullScreen)) {
    return {};
  }
  const double left = point.x();
  const double top = point.y();
  const double right = width() - point.x();
  const double bottom = height() - point.y();
  if (std::min({left, top, right, bottom}) < 0) return {};
  if (std::min({left, top, right, bottom}) >= grip) return {};
  Qt::Edges edges;
  if (left < corner && left <= right) edges |= Qt::LeftEdge;
  if (right < corner && right < left) edges |= Qt::RightEdge;
  if (top < corner && top <= bottom) edges |= Qt::TopEdge;
  if (bottom < corner && bottom < top) edges |= Qt::BottomEdge;
  return edges;
}

bool WindowEdges::contains(const QPointF& point) const {
  return edgesAt(point) != Qt::Edges();
}

void WindowEdges::hoverEnterEvent(QHoverEvent* event) {
  hoverMoveEvent(event);
}

void WindowEdges::hoverMoveEvent(QHoverEvent* event) {
  setCursor(shapeFor(edgesAt(event->position())));
}

void WindowEdges::mousePressEvent(QMouseEvent* event) {
  const Qt::Edges edges = edgesAt(event->position());
  pressedAt_ = event->globalPosition();
  windowWas_ = window()->geometry();
  pulled_ = window()->startSystemResize(edges) ? Qt::Edges() : edges;
}

void WindowEdges::mouseMoveEvent(QMouseEvent* event) {
  if (pulled_ != Qt::Edges()) pull(event->globalPosition() - pressedAt_);
}

void WindowEdges::mouseReleaseEvent(QMouseEvent*) {
  pulled_ = {};
}

void WindowEdges::mouseUngrabEvent() {
  pulled_ = {};
}

// For desktops without resizing by clients. The opposite edge stays in place, even at the smallest
// size.
void WindowEdges::pull(QPointF way) {
  const QPoint by = way.toPoint();
  QRect now = windowWas_;
  const QSize smallest = window()->minimumSize();
  if (pulled_ & Qt::LeftEdge) {
    now.setLeft(std::min(now.left() + by.x(), now.right() + 1 - smallest.width()));
  }
  if (pulled_ & Qt::RightEdge) {
    now.setWidth(std::max(now.width() + by.x(), smallest.width()));
  }
  if (pulled_ & Qt::TopEdge) {
    now.setTop(std::min(now.top() + by.y(), now.bottom() + 1 - smallest.height()));
  }
  if (pulled_ & Qt::BottomEdge) {
    now.setHeight(std::max(now.height() + by.y(), smallest.height()));
  }
  window()->setGeometry(now);
}

}  // namespace tessaly
