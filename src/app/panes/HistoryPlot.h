// Where the scans of a history are in a line of bytes over time, and the texts along its axes. All
// lengths are in points. Pure, apart from the time zone.
#pragma once

#include <functional>
#include <vector>

#include <QPointF>
#include <QRectF>
#include <QString>

#include "scan/HistoryPoint.h"

namespace tessaly {

class HistoryPlot {
 public:
  struct Level {
    double y = 0;
    QString text;
  };
  struct Date {
    double left = 0;  // of the text
    QString text;
  };
  using WidthOf = std::function<double(const QString& text)>;

  // The line fills `area`.
  HistoryPlot(const std::vector<HistoryPoint>& points, const QRectF& area);

  // Of each scan, in the order of the points.
  const std::vector<QPointF>& places() const { return places_; }
  // The places in the order of time, which may differ if the clock was changed.
  const std::vector<QPointF>& line() const { return line_; }
  // From the bottom to the top; empty without points.
  const std::vector<Level>& levels() const { return levels_; }

  // The index of the scan whose place is next to `x`; -1 if there is none.
  int nearest(double x) const;

  // The times of as many scans as fit side by side between `left` and `right`, the first and the
  // last among them; in the order of time, without repetitions. Days alone, unless the scans are
  // closer together.
  std::vector<Date> dates(double left, double right, const WidthOf& widthOf) const;

 private:
  std::vector<HistoryPoint> sorted_;
  std::vector<QPointF> places_;
  std::vector<QPointF> line_;
  std::vector<Level> levels_;
};

}  // namespace tessaly
