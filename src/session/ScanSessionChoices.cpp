// What the user chooses once and for all: excluded folders, filters, pins; and the report that he
// takes away.

#include <algorithm>
#include <string>
#include <utility>

#include <QPointer>

#include "platform/AtomicFile.h"
#include "platform/WriteNote.h"
#include "scan/ExportReport.h"
#include "scan/PathName.h"
#include "session/FieldChanges.h"
#include "session/ScanSession.h"

namespace tessaly {

void ScanSession::addExclude() {
  const QPointer<ScanSession> session(this);
  const std::optional<std::string> folder = services_.folderPanel.chooseFolder(
      {.prompt = "Exclude", .message = "This folder will be skipped on the next scan."});
  // The panel runs the event loop meanwhile.
  if (!session || !folder) return;
  if (std::ranges::find(excludes_, *folder) != excludes_.end()) return;
  FieldChanges changes(*this);
  excludes_.push_back(*folder);
  changes.note(&ScanSession::excludesChanged);
  settings().setTexts(ScanStore::excludesKey, excludes_);
  showToast(changes, "Excluded " + std::string(lastPathComponent(*folder)));
  changes.announce();
}

void ScanSession::removeExclude(const std::string& path) {
  FieldChanges changes(*this);
  if (std::erase(excludes_, path) != 0) changes.note(&ScanSession::excludesChanged);
  settings().setTexts(ScanStore::excludesKey, excludes_);
  changes.announce();
}

void ScanSession::toggleFilter(const std::string& id) {
  toggle(id, &BloatFilter::enabled);
}

void ScanSession::toggleSkip(const std::string& id) {
  toggle(id, &BloatFilter::skipScan);
}

void ScanSession::toggle(const std::string& id, bool BloatFilter::*which) {
  const auto filter = std::ranges::find(filters_, id, &BloatFilter::id);
  if (filter == filters_.end()) return;
  (*filter).*which = !((*filter).*which);
  ScanStore::saveFilters(filters_, settings());
  FieldChanges changes(*this);
  changes.note(&ScanSession::filtersChanged);
  changes.announce();
}

void ScanSession::togglePin(const std::string& path) {
  setField(pins_, ScanStore::togglePin(path, settings()), &ScanSession::pinsChanged);
}

void ScanSession::exportJSON() {
  const std::optional<DiskNode> node = current();
  if (!node) return;
  const QPointer<ScanSession> session(this);
  const std::optional<std::string> path =
      services_.savePanel.chooseFile({.fileName = "marrow-" + std::string(node->name()) + ".json",
                                      .extension = "json",
                                      .canCreateDirectories = true});
  // The tree on screen may be another by now, and it is the one that the user sees.
  if (!session || !path || stack_.empty()) return;
  const WriteNote place = WriteNote::of(
      *path, services_.supportDirectory ? *services_.supportDirectory : ScanStore::supportDir());
  // A failure is not told; the file that was there stays.
  static_cast<void>(AtomicFile::replace(*path, ExportReport::json(stack_.back()),
                                        AtomicFile::Durability::synced, AtomicFile::Access::usual));
}

}  // namespace tessaly
