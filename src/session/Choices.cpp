#include "session/Choices.h"

#include <algorithm>
#include <optional>
#include <utility>

#include <QPointer>

#include "scan/PathName.h"
#include "session/ScanStore.h"

namespace tessaly {

Choices::Choices(SettingsStore& settings, FolderPanel& folderPanel, Flash flash)
    : settings_(settings),
      folderPanel_(folderPanel),
      flash_(std::move(flash)),
      filters_(ScanStore::applySavedFilters(BloatFilter::catalog(), settings)),
      excludes_(ScanStore::excludes(settings)),
      pins_(ScanStore::pins(settings)),
      recents_(ScanStore::recents(settings)) {}

void Choices::setFilters(std::vector<BloatFilter> filters) {
  setField(this, filters_, std::move(filters), &Choices::filtersChanged);
}

void Choices::setExcludes(std::vector<std::string> excludes) {
  setField(this, excludes_, std::move(excludes), &Choices::excludesChanged);
}

DiskScanner::Options Choices::scanOptions() const {
  BloatFilter::ScanExcludes skipped = BloatFilter::scanExcludes(filters_);
  DiskScanner::Options options;
  options.extraNames = std::move(skipped.names);
  options.extraSuffixes = std::move(skipped.suffixes);
  options.extraPrefixes = excludes_;
  return options;
}

void Choices::addExclude() {
  const QPointer<Choices> self(this);
  const std::optional<std::string> folder = folderPanel_.chooseFolder(
      {.prompt = "Exclude", .message = "This folder will be skipped on the next scan."});
  // The panel ran the event loop, so the object may be gone.
  if (!self || !folder) return;
  if (std::ranges::find(excludes_, *folder) != excludes_.end()) return;

  FieldChanges changes;
  excludes_.push_back(*folder);
  changes.note(this, &Choices::excludesChanged);
  settings_.setTexts(ScanStore::excludesKey, excludes_);
  flash_(changes, "Excluded " + std::string(lastPathComponent(*folder)));
  changes.announce();
}

void Choices::removeExclude(const std::string& path) {
  FieldChanges changes;
  if (std::erase(excludes_, path) != 0) changes.note(this, &Choices::excludesChanged);
  settings_.setTexts(ScanStore::excludesKey, excludes_);
  changes.announce();
}

void Choices::toggleFilter(const std::string& id) {
  toggle(id, &BloatFilter::enabled);
}

void Choices::toggleSkip(const std::string& id) {
  toggle(id, &BloatFilter::skipScan);
}

void Choices::toggle(const std::string& id, bool BloatFilter::*which) {
  const auto filter = std::ranges::find(filters_, id, &BloatFilter::id);
  if (filter == filters_.end()) return;
  (*filter).*which = !((*filter).*which);
  ScanStore::saveFilters(filters_, settings_);

  FieldChanges changes;
  changes.note(this, &Choices::filtersChanged);
  changes.announce();
}

void Choices::togglePin(const std::string& path) {
  setField(this, pins_, ScanStore::togglePin(path, settings_), &Choices::pinsChanged);
}

void Choices::pushRecent(FieldChanges& changes, const std::string& root) {
  ScanStore::pushRecent(root, settings_, ScanStore::recentsLimit);
  changes.set(this, recents_, ScanStore::recents(settings_), &Choices::recentsChanged);
}

}  // namespace tessaly
