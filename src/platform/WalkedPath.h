// The path of the item at which a walk is.
#pragma once

#include <cstddef>
#include <string>
#include <vector>

#include "platform/DirectoryWalk.h"

namespace tessaly {

class WalkedPath {
 public:
  // `root` is the root of the walk.
  explicit WalkedPath(const std::string& root);

  // Must be called for each item that the walk returns, in their order.
  void moveTo(const DirectoryWalk::Item& item);

  const std::string& text() const { return text_; }

  // The path of the folder that contains the item.
  std::string folder() const;

  // Whether the name of a folder between the root and the item begins with a dot.
  bool isBelowDotFolder() const { return folders_.back().isBelowDot; }

 private:
  struct Folder {
    std::size_t length;  // of its path, with a "/" at the end
    bool isBelowDot;     // whether it or a folder above it begins with a dot
  };

  std::string text_;
  std::vector<Folder> folders_;  // the root, and those around the item
  bool isFolder_ = false;
};

}  // namespace tessaly
