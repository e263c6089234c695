// A session that moves items to a Trash on disk. All other services of the machine are fakes.
#pragma once

#include <functional>
#include <string>
#include <utility>
#include <vector>

#include "platform/FileIdentity.h"
#include "session/ScanSession.h"
#include "support/FakeMachine.h"
#include "trash/TrashOnDisk.h"

namespace tessaly {

// Calls a function before each move to the Trash, which another mover does.
class WatchedMover final : public TrashMover {
 public:
  explicit WatchedMover(TrashMover& mover) : mover_(mover) {}

  // Runs on the thread that moves.
  std::function<void(const std::string& path)> before = [](const std::string&) {};

  Result<ItemInTrash> moveToTrash(const std::string& path) override {
    before(path);
    return mover_.moveToTrash(path);
  }
  Outcome putBack(const ItemInTrash& item, const std::string& original) override {
    return mover_.putBack(item, original);
  }

 private:
  TrashMover& mover_;
};

// An empty `run` means no tools.
inline ScanSession::Services servicesWith(FakeMachine& machine, TrashMover& trash,
                                          Dispatch& dispatch, Shell::Run run = {}) {
  return {.dispatch = dispatch,
          .folderPanel = machine.folderPanel,
          .savePanel = machine.savePanel,
          .workspace = machine.workspace,
          .pasteboard = machine.pasteboard,
          .icon = machine.icon,
          .notifications = machine.notifications,
          .trash = trash,
          .prefs = machine.prefs,
          .homeDirectory = "/nowhere",
          .supportDirectory = machine.support.path(),
          .run = run ? std::move(run) : Shell::Run(noTools)};
}

// The items at `paths` as a list shows them now.
inline std::vector<TrashBatch::Item> listed(const std::vector<std::string>& paths) {
  std::vector<TrashBatch::Item> items;
  for (const std::string& path : paths) {
    items.push_back({.location = Trash::locate(path), .listed = FileIdentity::of(path).value()});
  }
  return items;
}

}  // namespace tessaly
