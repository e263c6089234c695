#include "app/panes/HistoryTexts.h"

#include <algorithm>
#include <cmath>

#include <QDateTime>
#include <QLocale>

#include "platform/CheckedArithmetic.h"
#include "scan/Format.h"

namespace tessaly::HistoryTexts {

namespace {

QString inFormat(double at, const QString& format) {
  // Beyond it, milliseconds since 1970 do not fit into 64 bits.
  constexpr double timesEnd = 9007199254740992.0;
  constexpr double millisecondsOfOne = 1000;
  static const QLocale formatter = QLocale::c();
  if (!(std::fabs(at) < timesEnd)) return {};
  const auto milliseconds = static_cast<qint64>(std::floor(at * millisecondsOfOne));
  return formatter.toString(QDateTime::fromMSecsSinceEpoch(milliseconds), format);
}

QString bytes(std::int64_t count) {
  return QString::fromStdString(Format::bytes(count));
}

}  // namespace

QString time(double at) {
  return inFormat(at, QStringLiteral("yyyy-MM-dd HH:mm"));
}

QString date(double at) {
  return inFormat(at, QStringLiteral("yyyy-MM-dd"));
}

QString scan(const std::vector<HistoryPoint>& points, std::size_t index) {
  const HistoryPoint& point = points.at(index);
  QString found = QStringLiteral("%1: %2").arg(time(point.at), bytes(point.bytes));
  if (index == 0) return found;
  const std::int64_t growth = checkedAdd(point.bytes, checkedMul(points[index - 1].bytes, -1));
  if (growth == 0) return found + QStringLiteral(", as much as the scan before");
  return found + (growth > 0 ? QStringLiteral(", %1 more than the scan before").arg(bytes(growth))
                             : QStringLiteral(", %1 less than the scan before")
                                   .arg(bytes(checkedMul(growth, -1))));
}

QString summary(const std::vector<HistoryPoint>& points) {
  if (points.empty()) return {};
  if (points.size() == 1) return QStringLiteral("1 scan. %1").arg(scan(points, 0));
  const auto [least, most] = std::minmax_element(
      points.begin(), points.end(),
      [](const HistoryPoint& a, const HistoryPoint& b) { return a.bytes < b.bytes; });
  return QStringLiteral("%1 scans from %2 to %3, between %4 and %5. The last: %6")
      .arg(QString::number(points.size()), time(points.front().at), time(points.back().at),
           bytes(least->bytes), bytes(most->bytes), bytes(points.back().bytes));
}

}  // namespace tessaly::HistoryTexts
