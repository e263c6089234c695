#include "app/panes/KindBreakdownModel.h"

#include <algorithm>
#include <cstddef>
#include <cstdio>

#include <QColor>
#include <QStringList>

#include "app/controls/QtColor.h"
#include "app/map/KindWord.h"
#include "treemap/KindColor.h"

namespace tessaly {

namespace {

QString percentText(double fraction) {
  // snprintf rounds the exact value; without decimals no locale has a say in it.
  char text[32];
  std::snprintf(text, sizeof text, "%.0f%%", fraction * 100);
  return QString::fromLatin1(text);
}

QString word(FileKind kind) {
  const std::string_view text = KindWord::of(kind);
  return QString::fromUtf8(text.data(), static_cast<qsizetype>(text.size()));
}

}  // namespace

void KindBreakdownModel::setNode(const NodeHandle& node) {
  beginResetModel();
  node_ = node;
  slices_ = node.isValid() ? KindBreakdown::slices(*node.node()) : std::vector<KindSlice>();
  endResetModel();
  emit nodeChanged();
}

QString KindBreakdownModel::summary() const {
  QStringList parts;
  for (const auto& slice : slices_)
    parts << word(slice.kind) + QLatin1Char(' ') + percentText(slice.fraction);
  return parts.join(QStringLiteral(", "));
}

double KindBreakdownModel::segmentWidth(double fraction, double barWidth) {
  return std::max(leastWidth, fraction * barWidth);
}

double KindBreakdownModel::barWidth(double wanted, double room) const {
  if (slices_.empty()) return wanted;
  const double gaps = gap * static_cast<double>(slices_.size() - 1);
  double width = wanted;
  // As the bar gets narrower more segments come to their least width, which the others pay for.
  for (std::size_t round = 0; round <= slices_.size(); ++round) {
    double end = gaps;
    double fixed = gaps;
    double shares = 0;
    for (const KindSlice& slice : slices_) {
      const double segment = segmentWidth(slice.fraction, width);
      end += segment;
      if (segment > leastWidth)
        shares += slice.fraction;
      else
        fixed += leastWidth;
    }
    if (end <= room || shares <= 0) break;
    width = std::max(0.0, (room - fixed) / shares);
  }
  return width;
}

int KindBreakdownModel::rowCount(const QModelIndex& parent) const {
  return parent.isValid() ? 0 : static_cast<int>(slices_.size());
}

QVariant KindBreakdownModel::data(const QModelIndex& index, int role) const {
  if (!checkIndex(index, CheckIndexOption::IndexIsValid)) return {};
  const KindSlice& slice = slices_[static_cast<std::size_t>(index.row())];
  switch (role) {
    case KindColorRole:
      return toQColor(KindColor::of(slice.kind));
    case FractionRole:
      return slice.fraction;
    case WordRole:
      return word(slice.kind);
    case PercentTextRole:
      return percentText(slice.fraction);
    default:
      return {};
  }
}

QHash<int, QByteArray> KindBreakdownModel::roleNames() const {
  return {{KindColorRole, "kindColor"},
          {FractionRole, "fraction"},
          {WordRole, "word"},
          {PercentTextRole, "percentText"}};
}

}  // namespace tessaly
