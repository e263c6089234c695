#include "app/panes/KindBreakdownModel.h"

#include <cstddef>

#include <QColor>
#include <QStringList>

#include "app/controls/QtColor.h"
#include "app/model/KindWord.h"
#include "scan/Percent.h"
#include "treemap/KindColor.h"

namespace tessaly {

namespace {

QString percentText(double fraction) {
  return QString::fromStdString(Percent::rounded(fraction * 100));
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

int KindBreakdownModel::rowCount(const QModelIndex& parent) const {
  return parent.isValid() ? 0 : static_cast<int>(slices_.size());
}

QVariant KindBreakdownModel::data(const QModelIndex& index, int role) const {
  if (!checkIndex(index, CheckIndexOption::IndexIsValid)) return {};
  const KindSlice& slice = slices_[static_cast<std::size_t>(index.row())];
  switch (role) {
    case KindColorRole:
      return toQColor(KindColor::of(slice.kind));
    case WordRole:
      return word(slice.kind);
    case PercentTextRole:
      return percentText(slice.fraction);
    default:
      return {};
  }
}

QHash<int, QByteArray> KindBreakdownModel::roleNames() const {
  return {{KindColorRole, "kindColor"}, {WordRole, "word"}, {PercentTextRole, "percentText"}};
}

}  // namespace tessaly
