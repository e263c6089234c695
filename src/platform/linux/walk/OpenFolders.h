// The descriptors of directories that have something left to be opened or read through them, and
// how many of them may stay open. When there are too many, the one opened longest ago is closed
// first: in a pre-order walk that is the one nearest the root, which is needed last.
//
// Not locked: the walk's mutex guards it.
#pragma once

#include <cstddef>

#include "platform/linux/walk/Batch.h"

namespace tessaly::walk {

class OpenFolders {
 public:
  // A budget from the process's own limit on descriptors.
  OpenFolders();

  // Takes over `folder.descriptor`, which is open.
  void add(Folder& folder);

  // Gives up the folder's descriptor; the caller closes what is returned (-1: there was none).
  int remove(Folder& folder);

  // Gives up the descriptor of a folder that no thread is using; the caller closes it. -1 if there
  // is none such.
  int evict();

  // The same, down to the root's, from which all others are opened again.
  int evictRootToo();

  // Descriptors have run out: from now on half as many as are open here have to do.
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
