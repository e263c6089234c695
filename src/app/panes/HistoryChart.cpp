#include "app/panes/HistoryChart.h"

#include <algorithm>
#include <cmath>
#include <cstddef>
#include <vector>

#include <QFont>
#include <QFontMetricsF>
#include <QLinearGradient>
#include <QPainter>
#include <QPen>
#include <QPolygonF>

#include "app/controls/Fonts.h"
#include "app/controls/QtColor.h"
#include "app/panes/HistoryTexts.h"
#include "look/MarrowTheme.h"

namespace tessaly {

namespace {

constexpr double levelsWidth = 70;  // of the texts at the left
constexpr double textGap = 10;      // between a text and the area of the line
constexpr double topRoom = 10;
constexpr double rightRoom = 14;
constexpr double datesHeight = 24;
constexpr double pointRadius = 3;
constexpr double markRadius = 5;
// Points that are closer to each other on average are not drawn.
constexpr double leastDistance = 9;

QFont textFont() {
  QFont font(Fonts::family(Fonts::Voice::ui));
  font.setPixelSize(10);
  return font;
}

QColor faded(const Color& color, double opacity) {
  QColor faded = toQColor(color);
  faded.setAlphaF(static_cast<float>(opacity));
  return faded;
}

}  // namespace

HistoryChart::HistoryChart(QQuickItem* parent) : QQuickPaintedItem(parent) {
  setAntialiasing(true);
}

void HistoryChart::setHistory(HistoryListState* history) {
  if (history_ == history) return;
  if (history_) history_->disconnect(this);
  history_ = history;
  if (history_) connect(history_, &HistoryListState::pointsChanged, this, &HistoryChart::follow);
  follow();
  emit historyChanged();
}

QRectF HistoryChart::plotArea() const {
  return {levelsWidth + textGap, topRoom,
          std::max(1.0, width() - levelsWidth - textGap - rightRoom),
          std::max(1.0, height() - topRoom - datesHeight)};
}

void HistoryChart::follow() {
  points_ = history_ ? history_->points() : std::vector<HistoryPoint>();
  plot_ = HistoryPlot(points_, plotArea());
  emit markChanged();
  update();
}

void HistoryChart::geometryChange(const QRectF& now, const QRectF& before) {
  QQuickPaintedItem::geometryChange(now, before);
  if (now.size() != before.size()) follow();
}

bool HistoryChart::isMarked() const {
  return marked_ >= 0 && static_cast<std::size_t>(marked_) < points_.size();
}

void HistoryChart::setMarked(int index) {
  if (marked_ == index) return;
  marked_ = index;
  emit markChanged();
  update();
}

QString HistoryChart::markText() const {
  return isMarked() ? HistoryTexts::scan(points_, static_cast<std::size_t>(marked_)) : QString();
}

QPointF HistoryChart::markPlace() const {
  return isMarked() ? plot_.places()[static_cast<std::size_t>(marked_)] : QPointF();
}

void HistoryChart::paintAxes(QPainter& painter) const {
  constexpr double textHeight = 14;
  const QRectF area = plotArea();
  painter.setFont(textFont());
  for (const HistoryPlot::Level& level : plot_.levels()) {
    painter.setPen(QPen(faded(MarrowTheme::ink, 0.07), 1));
    // In the middle of a row of pixels, so that it is one pixel high.
    const double y = std::floor(level.y) + 0.5;
    painter.drawLine(QPointF(area.left(), y), QPointF(area.right(), y));
    painter.setPen(toQColor(MarrowTheme::muted));
    painter.drawText(QRectF(0, level.y - textHeight / 2, levelsWidth, textHeight),
                     Qt::AlignRight | Qt::AlignVCenter, level.text);
  }
  const QFontMetricsF metrics(textFont());
  const auto widthOf = [&](const QString& text) { return metrics.horizontalAdvance(text); };
  for (const HistoryPlot::Date& date : plot_.dates(area.left() - textGap, width(), widthOf)) {
    painter.drawText(QRectF(date.left, area.bottom() + 8, widthOf(date.text) + 1, textHeight),
                     Qt::AlignLeft | Qt::AlignVCenter, date.text);
  }
}

void HistoryChart::paintLine(QPainter& painter) const {
  if (plot_.line().size() < 2) return;
  const QRectF area = plotArea();
  const QPolygonF line(QList<QPointF>(plot_.line().begin(), plot_.line().end()));
  QPolygonF below = line;
  below << QPointF(line.last().x(), area.bottom()) << QPointF(line.first().x(), area.bottom());
  QLinearGradient fill(area.topLeft(), area.bottomLeft());
  fill.setColorAt(0, faded(MarrowTheme::accent, 0.24));
  fill.setColorAt(1, faded(MarrowTheme::accent, 0.02));
  painter.setPen(Qt::NoPen);
  painter.setBrush(fill);
  painter.drawPolygon(below);
  painter.setPen(
      QPen(toQColor(MarrowTheme::accent), 2, Qt::SolidLine, Qt::RoundCap, Qt::RoundJoin));
  painter.setBrush(Qt::NoBrush);
  painter.drawPolyline(line);
}

void HistoryChart::paintPoints(QPainter& painter) const {
  const QRectF area = plotArea();
  const bool isDense = area.width() < leastDistance * static_cast<double>(plot_.places().size());
  painter.setPen(Qt::NoPen);
  painter.setBrush(toQColor(MarrowTheme::accent));
  if (!isDense) {
    for (const QPointF& place : plot_.places())
      painter.drawEllipse(place, pointRadius, pointRadius);
  }
  if (!isMarked()) return;
  painter.setPen(QPen(faded(MarrowTheme::ink, 0.25), 1));
  const double x = std::floor(markPlace().x()) + 0.5;
  painter.drawLine(QPointF(x, area.top()), QPointF(x, area.bottom()));
  painter.setPen(QPen(toQColor(MarrowTheme::accent), 2));
  painter.setBrush(toQColor(MarrowTheme::ink));
  painter.drawEllipse(markPlace(), markRadius - 1, markRadius - 1);
}

void HistoryChart::paint(QPainter* painter) {
  painter->setRenderHint(QPainter::Antialiasing);
  paintAxes(*painter);
  paintLine(*painter);
  paintPoints(*painter);
}

}  // namespace tessaly
