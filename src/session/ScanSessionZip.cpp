// Items that go to the Trash once there is an archive of them.

#include <algorithm>
#include <optional>
#include <string>
#include <unordered_set>
#include <utility>
#include <vector>

#include <QPointer>

#include "platform/FileAccess.h"
#include "platform/FileIdentity.h"
#include "platform/NumberedName.h"
#include "platform/ResolvedPath.h"
#include "platform/WriteNote.h"
#include "reclaim/CriticalPaths.h"
#include "reclaim/ZipEngine.h"
#include "scan/Format.h"
#include "scan/PathName.h"
#include "scan/Remainder.h"
#include "session/FieldChanges.h"
#include "session/ScanSession.h"

namespace tessaly {

namespace {

// For items that are not what was archived any more.
std::string wordsForOthers(const std::vector<std::string>& paths) {
  std::string words =
      Format::counted(paths.size(), "item") +
      " changed after archiving and did not move: " + std::string(lastPathComponent(paths.front()));
  if (paths.size() > 1) words += " and " + std::to_string(paths.size() - 1) + " more";
  return words;
}

}  // namespace

void ScanSession::zipThenTrash(std::vector<DiskNode> nodes) {
  std::erase_if(nodes, isRemainder);
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
  const std::vector<std::string> inWork = zips_->paths();
  std::optional<std::string> chosen = services_.savePanel.chooseFile({.fileName = nameForZip(),
                                                                      .extension = "zip",
                                                                      .canCreateDirectories = true,
                                                                      .isForNewFile = true});
  // The panel runs the event loop meanwhile.
  if (!session || !chosen) return;

  const std::string toast = "Zipping " + Format::counted(paths.size(), "item") + "…";
  ZipEngine::Request request{.paths = std::move(paths),
                             .to = *std::move(chosen),
                             .isGivenUp = [zips = zips_] { return zips->isGivenUp(); }};
  const std::string place = resolvedAbove(request.to);
  // What the user has agreed to replace is what stands there now. Not so where it is an archive
  // that was finished only while the panel was up: what went into that is in the Trash by now.
  if (std::ranges::find(inWork, place) == inWork.end()) {
    if (const auto old = FileIdentity::of(request.to)) request.replaced = old.value();
  }
  Dispatch& dispatch = services_.dispatch;
  zips_->begin(place);
  std::string notes =
      services_.supportDirectory ? *services_.supportDirectory : ScanStore::supportDir();
  auto work = [&dispatch, session, zips = zips_, place, request = std::move(request),
               archive = services_.archive, notes = std::move(notes)] {
    ZipEngine::Archived archived = [&] {
      const WriteNote noted = WriteNote::of(request.to, notes);
      return archive(request);
    }();
    zips->end(place);
    dispatch.async(Dispatch::Queue::main, [session, archived = std::move(archived)] {
      if (session) session->takeArchive(archived);
    });
  };
  dispatch.async(Dispatch::Queue::userInitiated, std::move(work));
  flash(toast);
}

// Two archives of one minute are not to be suggested the same name.
std::string ScanSession::nameForZip() const {
  const std::string name = ZipEngine::suggestedName(services_.date());
  int number = 1;
  while (zips_->hasName(numberedName(name, number))) ++number;
  return numberedName(name, number);
}

void ScanSession::giveUpZips() {
  zips_->giveUp();
}

void ScanSession::takeArchive(const ZipEngine::Archived& archived) {
  using End = ZipEngine::Archived::End;
  const QPointer<ScanSession> session(this);
  switch (archived.end) {
    case End::made:
      trashArchived(archived);
      break;
    case End::notMade:
      flash("Could not create zip");
      if (session && !archived.cause.empty())
        tellFailure("Could not create zip: " + archived.cause);
      break;
    case End::incomplete:
      flash("Archive would be incomplete; nothing was moved");
      if (session) tellFailure("Nothing was moved. Not to be archived: " + archived.cause);
      break;
    case End::givenUp:
      break;
  }
}

void ScanSession::trashArchived(const ZipEngine::Archived& archived) {
  const Result<FileIdentity> archive = FileIdentity::of(archived.path);
  const std::string name(lastPathComponent(archived.path));
  if (!archive || archive.value() != archived.identity) {
    const QPointer<ScanSession> session(this);
    flash("Archive is gone or changed; nothing was moved");
    if (session) tellFailure("Nothing was moved. The archive is gone or changed: " + name);
    return;
  }
  std::vector<std::string> unchanged;
  std::vector<std::string> others;
  std::unordered_set<std::string> all;
  for (const ZipEngine::Original& original : archived.originals) {
    const Result<FileIdentity> now = FileIdentity::of(original.path);
    const bool isSame = now && now.value() == original.identity;
    (isSame ? unchanged : others).push_back(original.path);
    all.insert(original.path);
  }
  Trash::Moved moved = Trash::moveManyRecording(unchanged, services_.trash);

  FieldChanges changes(*this);
  changes.set(lastTrashed_, std::move(moved.items), &ScanSession::lastTrashedChanged);
  // What refused to move leaves the queue as well.
  const auto left =
      std::erase_if(queue_, [&](const DiskNode& node) { return all.contains(node.path()); });
  if (left != 0) changes.note(&ScanSession::queueChanged);
  if (queue_.empty()) changes.set(queueOpen_, false, &ScanSession::queueOpenChanged);
  clearSelection(changes);
  addFailures(changes, moved.errors, FailureText::Act::moveToTrash);
  if (!others.empty()) addFailure(changes, wordsForOthers(others));
  showToast(changes, "Archived to " + name);
  announceAndLookAgain(changes);
}

}  // namespace tessaly
