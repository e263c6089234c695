// The rows of a list model, each with a key. When they are replaced, the model announces which rows
// were removed, moved, inserted or changed, but never a reset. So views keep the state of rows that
// remain, above all the keyboard focus and the scroll position.
//
// Main thread only.
#pragma once

#include <algorithm>
#include <cstddef>
#include <functional>
#include <iterator>
#include <type_traits>
#include <unordered_map>
#include <utility>
#include <vector>

#include <QAbstractListModel>

#include "app/model/ListChanges.h"
#include "app/model/ListSteps.h"

namespace tessaly {

template <typename Row>
class KeyedRows {
 public:
  // More steps than this are announced as one change of the order, since a view needs time for each
  // step.
  static constexpr std::size_t mostSteps = 256;

  // `model` is the model with these rows. It must outlive them.
  explicit KeyedRows(QAbstractListModel& model) : changes_(model) {}

  int count() const { return static_cast<int>(rows_.size()); }
  const Row& at(int row) const { return rows_[static_cast<std::size_t>(row)]; }
  const std::vector<Row>& all() const { return rows_; }

  // Replaces the rows by `wanted`; true if their number has changed. `keyOf` returns the key of a
  // row, a hashable value; rows with the same key match in their order. Row needs ==, which says
  // whether a kept row is unchanged.
  template <typename KeyOf>
  bool set(std::vector<Row> wanted, KeyOf keyOf) {
    const std::vector<int> origins = originsOf(wanted, keyOf);
    const int before = count();
    const auto steps = ListSteps::between(before, origins);
    if (steps.size() <= mostSteps) {
      for (const ListSteps::Step& step : steps) take(step, wanted);
    } else {
      reorder(wanted, origins);
    }
    takeContent(wanted, origins);
    return count() != before;
  }

 private:
  template <typename KeyOf>
  std::vector<int> originsOf(const std::vector<Row>& wanted, KeyOf keyOf) const {
    using Key = std::decay_t<std::invoke_result_t<KeyOf, const Row&>>;
    std::unordered_map<Key, int> firstOf;
    firstOf.reserve(rows_.size());
    std::vector<int> nextOfSameKey(rows_.size(), -1);
    for (std::size_t row = rows_.size(); row-- > 0;) {
      const auto [first, isNew] =
          firstOf.try_emplace(std::invoke(keyOf, rows_[row]), static_cast<int>(row));
      if (!isNew) nextOfSameKey[row] = std::exchange(first->second, static_cast<int>(row));
    }
    std::vector<int> origins;
    origins.reserve(wanted.size());
    for (const Row& row : wanted) {
      const auto first = firstOf.find(std::invoke(keyOf, row));
      const int origin = first == firstOf.end() ? -1 : first->second;
      origins.push_back(origin);
      if (origin >= 0) first->second = nextOfSameKey[static_cast<std::size_t>(origin)];
    }
    return origins;
  }

  void take(const ListSteps::Step& step, std::vector<Row>& wanted) {
    const auto place = [this](int row) { return rows_.begin() + row; };
    switch (step.kind) {
      case ListSteps::Step::Kind::remove:
        changes_.beginRemove(step.first, step.last);
        rows_.erase(place(step.first), place(step.last + 1));
        changes_.endRemove();
        break;
      case ListSteps::Step::Kind::move:
        changes_.beginMove(step.first, step.last, step.to);
        if (step.to < step.first) {
          std::rotate(place(step.to), place(step.first), place(step.last + 1));
        } else {
          std::rotate(place(step.first), place(step.last + 1), place(step.to));
        }
        changes_.endMove();
        break;
      case ListSteps::Step::Kind::insert:
        changes_.beginInsert(step.first, step.last);
        rows_.insert(place(step.first), std::make_move_iterator(wanted.begin() + step.first),
                     std::make_move_iterator(wanted.begin() + step.last + 1));
        changes_.endInsert();
        break;
    }
  }

  // The same in at most three steps: new rows are appended, all rows are reordered with the
  // unwanted ones at the end, and these are removed.
  void reorder(std::vector<Row>& wanted, const std::vector<int>& origins) {
    std::vector<int> order;  // for each wanted row, its index after the insertion
    const int old = count();
    int end = old;
    for (const int origin : origins) order.push_back(origin >= 0 ? origin : end++);
    if (end > old) {
      changes_.beginInsert(old, end - 1);
      for (std::size_t row = 0; row < wanted.size(); ++row) {
        if (origins[row] < 0) rows_.push_back(std::move(wanted[row]));
      }
      changes_.endInsert();
    }
    std::vector<bool> isWanted(rows_.size());
    for (const int row : order) isWanted[static_cast<std::size_t>(row)] = true;
    for (int row = 0; row < end; ++row) {
      if (!isWanted[static_cast<std::size_t>(row)]) order.push_back(row);
    }
    changes_.beginOrder();
    std::vector<Row> ordered;
    ordered.reserve(rows_.size());
    for (const int row : order) ordered.push_back(std::move(rows_[static_cast<std::size_t>(row)]));
    rows_ = std::move(ordered);
    changes_.endOrder(order);
    if (rows_.size() == wanted.size()) return;
    changes_.beginRemove(static_cast<int>(wanted.size()), end - 1);
    rows_.erase(rows_.begin() + static_cast<std::ptrdiff_t>(wanted.size()), rows_.end());
    changes_.endRemove();
  }

  void takeContent(std::vector<Row>& wanted, const std::vector<int>& origins) {
    const auto takes = [&](std::size_t row) {
      if (row >= rows_.size() || origins[row] < 0 || rows_[row] == wanted[row]) return false;
      rows_[row] = std::move(wanted[row]);
      return true;
    };
    for (std::size_t row = 0; row < rows_.size(); ++row) {
      if (!takes(row)) continue;
      const int first = static_cast<int>(row);
      while (takes(row + 1)) ++row;
      changes_.tellContent(first, static_cast<int>(row));
    }
  }

  ListChanges changes_;
  std::vector<Row> rows_;
};

}  // namespace tessaly
