// Comparing the tree on screen with another folder.

#include <cstdint>
#include <optional>
#include <string>
#include <string_view>
#include <utility>
#include <vector>

#include <QPointer>

#include "scan/PathName.h"
#include "scan/ScanDiff.h"
#include "session/FieldChanges.h"
#include "session/ScanSession.h"

namespace tessaly {

namespace {

// Down to the children of the children.
constexpr int comparedLevels = 2;
// What both sides have is listed where it differs by this many bytes.
constexpr std::int64_t smallestDifference = 1048576;

}  // namespace

void ScanSession::compareWithFolder() {
  const QPointer<ScanSession> session(this);
  const std::optional<std::string> folder = services_.folderPanel.chooseFolder(
      {.prompt = "Compare", .message = "Choose a folder to compare with the current map."});
  // The panel runs the event loop meanwhile: the session may be gone, and another tree may be here.
  if (!session || !folder || stack_.empty()) return;
  const DiskNode left = stack_.front();

  // Neither a scan nor a later comparison makes this one void: whichever comes home last is shown.
  Dispatch& dispatch = services_.dispatch;
  auto work = [&dispatch, session, left, folder = *folder, walk = services_.walk,
               ended = sessionEnded_] {
    DiskScanner::Callbacks callbacks;
    // The user has no way to stop this walk; only the end of the session does.
    callbacks.isCancelled = [&ended = *ended] { return ended.isSet(); };
    const DiskNode right = walk(folder, callbacks, {});
    std::vector<FolderCompareRow> rows = ScanDiff::compareFolders(
        ScanDiff::flattenRelative(left, left.path(), 0, comparedLevels),
        // Relative to where the walk has been, which is not what was chosen if that is a link.
        ScanDiff::flattenRelative(right, right.path(), 0, comparedLevels), smallestDifference);
    dispatch.async(Dispatch::Queue::main, [session, rows = std::move(rows)]() mutable {
      if (!session) return;
      session->setField(session->compareRows_, std::move(rows), &ScanSession::compareRowsChanged);
    });
  };
  dispatch.async(Dispatch::Queue::userInitiated, std::move(work));

  FieldChanges changes(*this);
  changes.set(vizMode_, VizMode::compare, &ScanSession::vizModeChanged);
  const std::string_view rightName = lastPathComponent(*folder);
  if (compareLeftName_ != left.name() || compareRightName_ != rightName) {
    compareLeftName_ = left.name();
    compareRightName_ = rightName;
    changes.note(&ScanSession::compareNamesChanged);
  }
  changes.announce();
}

}  // namespace tessaly
