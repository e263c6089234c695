#include "reclaim/Trash.h"

#include <algorithm>
#include <array>
#include <cerrno>
#include <sys/stat.h>
#include <utility>

#include "platform/ResolvedPath.h"

namespace tessaly::Trash {

namespace {

constexpr std::array<const char*, 4> editors = {"Cursor", "Visual Studio Code", "Code", "TextEdit"};

bool isFolder(const std::string& path) {
  struct stat status {};
  return stat(path.c_str(), &status) == 0 && S_ISDIR(status.st_mode);
}

std::string withoutSlashesAtItsEnd(std::string path) {
  path.resize(path.find_last_not_of('/') + 1);
  return path;
}

std::string parentOf(const std::string& path) {
  std::string parent = withoutSlashesAtItsEnd(path);
  parent.resize(parent.rfind('/') + 1);
  parent = withoutSlashesAtItsEnd(std::move(parent));
  return parent.empty() ? "/" : parent;
}

}  // namespace

Location locate(const std::string& path) {
  return {.original = path, .place = resolvedAbove(path)};
}

Result<TrashedItem> moveRecording(const std::string& path, TrashMover& mover) {
  return moveRecording(Location{.original = path, .place = path}, mover);
}

Result<TrashedItem> moveRecording(const Location& location, TrashMover& mover) {
  Result<ItemInTrash> moved = mover.moveToTrash(location.place);
  if (!moved) return moved.error();
  return TrashedItem{.original = location.original,
                     .trashPath = std::move(moved.value().path),
                     .place = location.place,
                     .identity = std::move(moved.value().identity)};
}

Moved moveManyRecording(const std::vector<std::string>& paths, TrashMover& mover) {
  std::vector<Location> locations;
  locations.reserve(paths.size());
  for (const std::string& path : paths) locations.push_back({.original = path, .place = path});
  return moveManyRecording(std::span<const Location>(locations), mover);
}

Moved moveManyRecording(std::span<const Location> locations, TrashMover& mover) {
  Moved moved;
  for (const Location& location : locations) {
    if (Result<TrashedItem> item = moveRecording(location, mover)) {
      moved.items.push_back(std::move(item).value());
    } else {
      moved.errors.push_back({.path = location.original, .cause = item.error()});
    }
  }
  return moved;
}

Outcome putBack(const TrashedItem& item, TrashMover& mover) {
  if (item.trashPath.empty()) return SystemError::fromErrno(ENOENT, item.trashPath);
  return mover.putBack({.path = item.trashPath, .identity = item.identity}, item.place);
}

void openTerminal(const std::string& path, Workspace& workspace, const OpenTool& tool) {
  const std::string folder = isFolder(path) ? path : parentOf(path);
  workspace.open(folder);
  tool.start({"-a", "Terminal", folder});
}

void openInEditor(const std::string& path, Workspace& workspace, const OpenTool& tool) {
  const bool isOpen = std::any_of(editors.begin(), editors.end(), [&](const char* editor) {
    return tool.run({"-a", editor, path});
  });
  if (!isOpen) workspace.open(path);
}

}  // namespace tessaly::Trash

std::size_t std::hash<tessaly::TrashedItem>::operator()(
    const tessaly::TrashedItem& item) const noexcept {
  const std::hash<std::string> text;
  constexpr std::size_t spread = 1099511628211U;
  return text(item.original) * spread + text(item.trashPath);
}
