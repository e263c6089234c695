// The descriptors of directories that the walk still needs for opening or reading, within a budget.
// Beyond it the one opened longest ago is closed first: in a pre-order walk that is the one nearest
// the root, which is needed last.
//
// Not locked: guarded by the walk's mutex.
#pragma once

#include <cstddef>

#include "platform/linux/walk/Batch.h"

namespace tessaly::walk {

class OpenFolders {
 public:
  // Derives the budget from the process's own limit on descriptors.
  OpenFolders();

  // Takes over `folder.descriptor`, which is open.
  void add(Folder& folder);

  // Removes the folder's descriptor; the caller closes the returned one (-1 if there was none).
  int remove(Folder& folder);

  // Removes the descriptor of a folder that no thread is using; the caller closes it. -1 if there
  // is none.
  int evict();

  // The same, including the root's, from which all others are reopened.
  int evictRootToo();

  // Called when descriptors have run out: halves the number of descriptors open here.
  void lowerBudget() { budget_ = count_ / 2; }

  bool overBudget() const { return count_ > budget_; }
  std::size_t budget() const { return budget_; }

 private:
  std::size_t budget_;
  std::size_t count_ = 0;
  Folder* oldest_ = nullptr;
  Folder* newest_ = nullptr;
};

}  // namespace tessaly::walk
