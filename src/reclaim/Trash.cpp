#include "reclaim/Trash.h"

#include <algorithm>
#include <array>
#include <cerrno>
#include <sys/stat.h>
#include <utility>

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

Result<TrashedItem> moveRecording(const std::string& path, TrashMover& mover) {
  Result<std::string> moved = mover.moveToTrash(path);
  if (!moved) return moved.error();
  return TrashedItem{.original = path, .trashPath = std::move(moved).value()};
}

Moved moveManyRecording(const std::vector<std::string>& paths, TrashMover& mover) {
  Moved moved;
  for (const std::string& path : paths) {
    if (Result<TrashedItem> item = moveRecording(path, mover)) {
      moved.items.push_back(std::move(item).value());
    } else {
      moved.errors.push_back({.path = path, .cause = item.error()});
    }
  }
  return moved;
}

Outcome putBack(const TrashedItem& item, TrashMover& mover) {
  if (item.trashPath.empty()) return SystemError::fromErrno(ENOENT, item.original);
  return mover.putBack(item.trashPath, item.original);
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
