#include "app/panes/HistoryPlot.h"

#include <algorithm>
#include <cmath>
#include <cstddef>
#include <utility>

#include "app/panes/ByteAxis.h"
#include "app/panes/HistoryTexts.h"

namespace tessaly {

namespace {

constexpr double twoDays = 2 * 86400;
constexpr double gapOfDates = 18;

bool isEarlier(const HistoryPoint& a, const HistoryPoint& b) {
  return a.at < b.at;
}

bool isSmaller(const HistoryPoint& a, const HistoryPoint& b) {
  return a.bytes < b.bytes;
}

}  // namespace

HistoryPlot::HistoryPlot(const std::vector<HistoryPoint>& points, const QRectF& area)
    : sorted_(points) {
  if (points.empty()) return;
  std::stable_sort(sorted_.begin(), sorted_.end(), isEarlier);
  const auto [least, most] = std::minmax_element(points.begin(), points.end(), isSmaller);
  const ByteAxis axis(least->bytes, most->bytes);
  const double first = sorted_.front().at;
  const double span = sorted_.back().at - first;
  const auto yOf = [&](double bytes) {
    return area.bottom() - (bytes - axis.low()) / (axis.high() - axis.low()) * area.height();
  };
  const auto placeOf = [&](const HistoryPoint& point) {
    const double x =
        span > 0 ? area.left() + (point.at - first) / span * area.width() : area.center().x();
    return QPointF(x, yOf(static_cast<double>(point.bytes)));
  };
  for (const HistoryPoint& point : points) places_.push_back(placeOf(point));
  for (const HistoryPoint& point : sorted_) line_.push_back(placeOf(point));
  for (const ByteAxis::Level& level : axis.levels())
    levels_.push_back({.y = yOf(level.bytes), .text = level.text});
}

int HistoryPlot::nearest(double x) const {
  int found = -1;
  for (std::size_t i = 0; i < places_.size(); ++i) {
    if (found < 0 ||
        std::fabs(places_[i].x() - x) < std::fabs(places_[static_cast<std::size_t>(found)].x() - x))
      found = static_cast<int>(i);
  }
  return found;
}

std::vector<HistoryPlot::Date> HistoryPlot::dates(double left, double right,
                                                  const WidthOf& widthOf) const {
  if (sorted_.empty()) return {};
  const bool showsDays = sorted_.back().at - sorted_.front().at >= twoDays;
  struct Placed {
    Date date;
    double right;
  };
  std::vector<Placed> placed;
  const auto place = [&](std::size_t index) {
    const double at = sorted_[index].at;
    const QString text = showsDays ? HistoryTexts::date(at) : HistoryTexts::time(at);
    const double width = widthOf(text);
    const double from = std::max(left, std::min(line_[index].x() - width / 2, right - width));
    const bool isFree = std::none_of(placed.begin(), placed.end(), [&](const Placed& other) {
      return other.date.text == text ||
             (from < other.right + gapOfDates && other.date.left < from + width + gapOfDates);
    });
    if (isFree) placed.push_back({.date = {.left = from, .text = text}, .right = from + width});
  };
  // The ends have precedence.
  place(0);
  place(sorted_.size() - 1);
  for (std::size_t index = 1; index + 1 < sorted_.size(); ++index) place(index);
  std::sort(placed.begin(), placed.end(),
            [](const Placed& a, const Placed& b) { return a.date.left < b.date.left; });
  std::vector<Date> dates;
  for (Placed& one : placed) dates.push_back(std::move(one.date));
  return dates;
}

}  // namespace tessaly
