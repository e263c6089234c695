#include "platform/WalkedPath.h"

namespace tessaly {

WalkedPath::WalkedPath(const std::string& root) : text_(root) {
  if (!text_.ends_with('/')) text_ += '/';
  folders_.push_back({text_.size(), false});
}

void WalkedPath::moveTo(const DirectoryWalk::Item& item) {
  // The item before this one, if this one is in it.
  if (isFolder_ && item.depth == folders_.size() + 1) {
    const bool isDot = text_[folders_.back().length] == '.';
    const bool isBelowDot = folders_.back().isBelowDot || isDot;
    text_ += '/';
    folders_.push_back({text_.size(), isBelowDot});
  }
  folders_.resize(item.depth, folders_.front());
  text_.resize(folders_.back().length);
  text_ += item.name;
  isFolder_ = item.type == DirectoryWalk::Type::directory;
}

std::string WalkedPath::folder() const {
  const std::size_t length = folders_.back().length;
  return text_.substr(0, length == 1 ? 1 : length - 1);
}

}  // namespace tessaly
