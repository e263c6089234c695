// Announces the changes of a list model to its views, on behalf of a class that is not the model
// itself. Each begin must be called before the rows change, and its end after. Main thread only.
#pragma once

#include <vector>

#include <QAbstractListModel>

namespace tessaly {

class ListChanges {
 public:
  // `model` must outlive it.
  explicit ListChanges(QAbstractListModel& model) : model_(model) {}

  void beginInsert(int first, int last);
  void endInsert();
  void beginRemove(int first, int last);
  void endRemove();
  // `to` is the row before which they are inserted, counted before the move.
  void beginMove(int first, int last, int to);
  void endMove();
  void beginOrder();
  // `order` has, for each row, its previous index.
  void endOrder(const std::vector<int>& order);
  void tellContent(int first, int last);

 private:
  QAbstractListModel& model_;
};

}  // namespace tessaly
