#include "reclaim/Trash.h"

#include <utility>

namespace tessaly::Trash {

std::optional<TrashedItem> moveRecording(const std::string& path, TrashMover& mover) {
  Result<std::string> moved = mover.moveToTrash(path);
  if (!moved) return std::nullopt;
  return TrashedItem{.original = path, .trashPath = std::move(moved).value()};
}

Moved moveManyRecording(const std::vector<std::string>& paths, TrashMover& mover) {
  Moved moved;
  for (const std::string& path : paths) {
    if (std::optional<TrashedItem> item = moveRecording(path, mover)) {
      moved.items.push_back(*std::move(item));
    } else {
      moved.errors.push_back(path);
    }
  }
  return moved;
}

bool putBack(const TrashedItem& item, TrashMover& mover) {
  if (item.trashPath.empty()) return false;
  return mover.putBack(item.trashPath, item.original).ok();
}

}  // namespace tessaly::Trash

std::size_t std::hash<tessaly::TrashedItem>::operator()(
    const tessaly::TrashedItem& item) const noexcept {
  const std::hash<std::string> text;
  constexpr std::size_t spread = 1099511628211U;
  return text(item.original) * spread + text(item.trashPath);
}
