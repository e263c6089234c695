// Mouse and finger gestures in a window, as Qt events.
#pragma once

#include <QPoint>
#include <QPointingDevice>
#include <QQuickWindow>
#include <QTest>
#include <QWheelEvent>

#include "support/DrawnFrame.h"

namespace tessaly {

// The number of moves in a drag. Several moves within a frame count as one.
inline constexpr int movesOfAPull = 8;

inline void pullByMouse(QQuickWindow& window, QPoint from, QPoint by) {
  QTest::mousePress(&window, Qt::LeftButton, {}, from);
  for (int move = 1; move <= movesOfAPull; ++move) {
    QTest::mouseMove(&window, from + by * move / movesOfAPull);
    drawFrame(window);
  }
  QTest::mouseRelease(&window, Qt::LeftButton, {}, from + by);
}

// The touch screen of the test program, which Qt keeps until the end.
inline QPointingDevice* touchScreen() {
  static QPointingDevice* const screen = QTest::createTouchDevice();
  return screen;
}

inline void pullByFinger(QQuickWindow& window, QPoint from, QPoint by) {
  QTest::touchEvent(&window, touchScreen()).press(0, from, &window);
  for (int move = 1; move <= movesOfAPull; ++move) {
    QTest::touchEvent(&window, touchScreen()).move(0, from + by * move / movesOfAPull, &window);
    drawFrame(window);
  }
  QTest::touchEvent(&window, touchScreen()).release(0, from + by, &window);
}

// Turns the mouse wheel, in eighths of a degree; -120 is one notch down.
inline void turnWheel(QQuickWindow& window, QPointF point, QPoint angle) {
  QWheelEvent event(point, window.mapToGlobal(point), {}, angle, Qt::NoButton, Qt::NoModifier,
                    Qt::NoScrollPhase, false);
  QCoreApplication::sendEvent(&window, &event);
}

}  // namespace tessaly
