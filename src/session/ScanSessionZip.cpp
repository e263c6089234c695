// Items that go to the Trash once there is an archive of them.

#include <algorithm>
#include <optional>
#include <string>
#include <unordered_set>
#include <utility>
#include <vector>

#include <QPointer>

#include "platform/FileAccess.h"
#include "reclaim/CriticalPaths.h"
#include "reclaim/ZipEngine.h"
#include "scan/Format.h"
#include "scan/PathName.h"
#include "session/FieldChanges.h"
#include "session/ScanSession.h"

namespace tessaly {

void ScanSession::zipThenTrash(std::vector<DiskNode> nodes) {
  const auto critical = std::ranges::find_if(nodes, [this](const DiskNode& node) {
    return CriticalPaths::isCritical(node.path(), services_.homeDirectory);
  });
  if (critical != nodes.end()) {
    setCriticalWarning(*critical);
    return;
  }
  std::vector<std::string> paths;
  for (const DiskNode& node : nodes) {
    std::string path = node.path();
    if (FileAccess::ofMachine().kindOf(path) == FileAccess::Kind::nothing) continue;
    paths.push_back(std::move(path));
  }
  if (paths.empty()) return;

  const QPointer<ScanSession> session(this);
  std::optional<std::string> chosen =
      services_.savePanel.chooseFile({.fileName = ZipEngine::suggestedName(services_.date()),
                                      .extension = "zip",
                                      .canCreateDirectories = true});
  // The panel runs the event loop meanwhile.
  if (!session || !chosen) return;

  const std::string toast = "Zipping " + Format::counted(paths.size(), "item") + "…";
  Dispatch& dispatch = services_.dispatch;
  auto work = [&dispatch, session, paths = std::move(paths), to = *std::move(chosen),
               archive = services_.archive] {
    const bool isArchived = archive(paths, to);
    dispatch.async(Dispatch::Queue::main, [session, paths, to, isArchived] {
      if (!session) return;
      if (isArchived) {
        session->trashArchived(paths, to);
      } else {
        session->flash("Could not create zip");
      }
    });
  };
  dispatch.async(Dispatch::Queue::userInitiated, std::move(work));
  flash(toast);
}

void ScanSession::trashArchived(const std::vector<std::string>& paths, const std::string& archive) {
  Trash::Moved moved = Trash::moveManyRecording(paths, services_.trash);

  FieldChanges changes(*this);
  changes.set(lastTrashed_, std::move(moved.items), &ScanSession::lastTrashedChanged);
  // What refused to move leaves the queue as well.
  const std::unordered_set<std::string> archived(paths.begin(), paths.end());
  const auto left =
      std::erase_if(queue_, [&](const DiskNode& node) { return archived.contains(node.path()); });
  if (left != 0) changes.note(&ScanSession::queueChanged);
  if (queue_.empty()) changes.set(queueOpen_, false, &ScanSession::queueOpenChanged);
  clearSelection(changes);
  showToast(changes, "Archived to " + std::string(lastPathComponent(archive)));
  announceAndLookAgain(changes);
}

}  // namespace tessaly
