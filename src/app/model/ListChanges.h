// Tells the views of a list model what changes in it, for a class that is not the model itself.
// Each begin is called before the rows change, and its end after. Main thread only.
#pragma once

#include <vector>

#include <QAbstractListModel>

namespace tessaly {

class ListChanges {
 public:
  // `model` outlives this.
  explicit ListChanges(QAbstractListModel& model) : model_(model) {}

  void beginInsert(int first, int last);
  void endInsert();
  void beginRemove(int first, int last);
  void endRemove();
  // In front of row `to`, counted before the move.
  void beginMove(int first, int last, int to);
  void endMove();
  void beginOrder();
  // `order` has, for each row, the row that it was before.
  void endOrder(const std::vector<int>& order);
  void tellContent(int first, int last);

 private:
  QAbstractListModel& model_;
};

}  // namespace tessaly
