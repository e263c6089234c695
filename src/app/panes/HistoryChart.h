// The sizes of a folder over time as a line with a point for each scan, an axis of sizes and one of
// dates. Marks one scan at a time. A single scan is a point.
#pragma once

#include <vector>

#include <QPointF>
#include <QPointer>
#include <QQuickPaintedItem>
#include <QString>
#include <QtQml/qqmlregistration.h>

#include "app/panes/HistoryListState.h"
#include "app/panes/HistoryPlot.h"

namespace tessaly {

class HistoryChart : public QQuickPaintedItem {
  Q_OBJECT
  QML_ELEMENT
  Q_PROPERTY(tessaly::HistoryListState* history READ history WRITE setHistory NOTIFY historyChanged)
  // The index of the marked scan; -1 for none.
  Q_PROPERTY(int marked READ marked WRITE setMarked NOTIFY markChanged)
  // The marked scan in words, and its place; empty if there is none.
  Q_PROPERTY(QString markText READ markText NOTIFY markChanged)
  Q_PROPERTY(QPointF markPlace READ markPlace NOTIFY markChanged)

 public:
  explicit HistoryChart(QQuickItem* parent = nullptr);

  HistoryListState* history() const { return history_; }
  void setHistory(HistoryListState* history);
  int marked() const { return isMarked() ? marked_ : -1; }
  void setMarked(int index);
  QString markText() const;
  QPointF markPlace() const;

  // The index of the scan next to the position `x`; -1 if there is none.
  Q_INVOKABLE int nearest(double x) const { return plot_.nearest(x); }

  void paint(QPainter* painter) override;

 signals:
  void historyChanged();
  void markChanged();

 protected:
  void geometryChange(const QRectF& now, const QRectF& before) override;

 private:
  bool isMarked() const;
  QRectF plotArea() const;
  void follow();
  void paintAxes(QPainter& painter) const;
  void paintLine(QPainter& painter) const;
  void paintPoints(QPainter& painter) const;

  QPointer<HistoryListState> history_;
  int marked_ = -1;
  // The scans that are drawn. The history may have changed since, in the middle of a change.
  std::vector<HistoryPoint> points_;
  HistoryPlot plot_{{}, {}};
};

}  // namespace tessaly
