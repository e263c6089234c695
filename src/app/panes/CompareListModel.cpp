#include "app/panes/CompareListModel.h"

#include <cstdint>

#include "app/model/DisplayText.h"
#include "platform/CheckedArithmetic.h"
#include "scan/Format.h"

namespace tessaly {

namespace {

constexpr QChar minus(0x2212);

std::int64_t differenceOf(const FolderCompareRow& row) {
  return checkedAdd(row.right, checkedMul(row.left, -1));
}

QString sizeText(std::int64_t bytes) {
  return QString::fromStdString(Format::bytes(bytes));
}

}  // namespace

CompareListModel::CompareListModel(const Comparison& comparison, QObject* parent)
    : QAbstractListModel(parent), comparison_(comparison) {
  connect(&comparison_, &Comparison::compareRowsChanged, this, &CompareListModel::follow);
  follow();
}

QString CompareListModel::differenceText(const FolderCompareRow& row) {
  const std::int64_t difference = differenceOf(row);
  if (difference < 0) return minus + sizeText(checkedMul(difference, -1));
  return QLatin1Char('+') + sizeText(difference);
}

bool CompareListModel::shrinks(const FolderCompareRow& row) {
  return differenceOf(row) < 0;
}

void CompareListModel::follow() {
  if (rows_.set(comparison_.compareRows(), &FolderCompareRow::relative)) emit countChanged();
}

int CompareListModel::rowCount(const QModelIndex& parent) const {
  return parent.isValid() ? 0 : rows_.count();
}

QVariant CompareListModel::data(const QModelIndex& index, int role) const {
  if (!checkIndex(index, CheckIndexOption::IndexIsValid)) return {};
  const FolderCompareRow& row = rows_.at(index.row());
  switch (role) {
    case PlaceRole:
      return displayText(row.relative);
    case LeftRole:
      return sizeText(row.left);
    case RightRole:
      return sizeText(row.right);
    case DifferenceRole:
      return differenceText(row);
    case ShrinksRole:
      return shrinks(row);
    default:
      return {};
  }
}

QHash<int, QByteArray> CompareListModel::roleNames() const {
  return {{PlaceRole, "place"},
          {LeftRole, "leftText"},
          {RightRole, "rightText"},
          {DifferenceRole, "differenceText"},
          {ShrinksRole, "shrinks"}};
}

}  // namespace tessaly
