#include "app/model/ListChanges.h"

#include <cstddef>

namespace tessaly {

namespace {

// Gives access to the protected functions of a model.
struct Access : QAbstractListModel {
  static constexpr auto beginInsert = &Access::beginInsertRows;
  static constexpr auto endInsert = &Access::endInsertRows;
  static constexpr auto beginRemove = &Access::beginRemoveRows;
  static constexpr auto endRemove = &Access::endRemoveRows;
  static constexpr auto beginMove = &Access::beginMoveRows;
  static constexpr auto endMove = &Access::endMoveRows;
  static constexpr auto persistentIndexes = &Access::persistentIndexList;
  static constexpr auto changeIndexes = &Access::changePersistentIndexList;
};

}  // namespace

void ListChanges::beginInsert(int first, int last) {
  (model_.*Access::beginInsert)({}, first, last);
}

void ListChanges::endInsert() {
  (model_.*Access::endInsert)();
}

void ListChanges::beginRemove(int first, int last) {
  (model_.*Access::beginRemove)({}, first, last);
}

void ListChanges::endRemove() {
  (model_.*Access::endRemove)();
}

void ListChanges::beginMove(int first, int last, int to) {
  (model_.*Access::beginMove)({}, first, last, {}, to);
}

void ListChanges::endMove() {
  (model_.*Access::endMove)();
}

void ListChanges::beginOrder() {
  emit model_.layoutAboutToBeChanged({}, QAbstractItemModel::VerticalSortHint);
}

void ListChanges::endOrder(const std::vector<int>& order) {
  std::vector<int> rowNow(order.size());
  for (std::size_t row = 0; row < order.size(); ++row)
    rowNow[static_cast<std::size_t>(order[row])] = static_cast<int>(row);
  const QModelIndexList before = (model_.*Access::persistentIndexes)();
  QModelIndexList now;
  now.reserve(before.size());
  for (const QModelIndex& old : before)
    now.append(model_.index(rowNow[static_cast<std::size_t>(old.row())], old.column()));
  (model_.*Access::changeIndexes)(before, now);
  emit model_.layoutChanged({}, QAbstractItemModel::VerticalSortHint);
}

void ListChanges::tellContent(int first, int last) {
  emit model_.dataChanged(model_.index(first), model_.index(last));
}

}  // namespace tessaly
