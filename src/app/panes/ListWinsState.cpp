#include "app/panes/ListWinsState.h"

#include <algorithm>
#include <map>
#include <unordered_set>
#include <utility>

#include <QPointer>

#include "app/model/DisplayText.h"
#include "look/Wording.h"
#include "platform/CheckedArithmetic.h"
#include "platform/UnicodeText.h"
#include "scan/Format.h"

namespace tessaly {

namespace {

using Row = ListWinsModel::Row;

QString bytesText(std::int64_t bytes) {
  return QString::fromStdString(Format::bytes(bytes));
}

// Calls `use(path, bytes)` for each row with a size.
template <class Use>
void forEachSized(const ReclaimAnalysis::Finds& finds, const Use& use) {
  for (const ReclaimItem& item : finds.probes) use(item.path, item.bytes);
  for (const TreeWin& win : finds.treeWins) use(win.path, win.bytes);
  for (const LargeOldFile& file : finds.largeOld) use(file.path, file.bytes);
}

std::vector<Row> rowsOfProbes(const ReclaimAnalysis::Finds& finds) {
  std::vector<Row> rows;
  for (const ReclaimItem& item : finds.probes) {
    rows.push_back({.key = "cache:" + item.id,
                    .section = "Caches & developer junk",
                    .title = item.label,
                    .note = item.note,
                    .path = item.path,
                    .bytes = item.bytes,
                    .caution = item.caution});
  }
  return rows;
}

// By category, and in a category in their order.
std::vector<Row> rowsOfTreeWins(const ReclaimAnalysis::Finds& finds) {
  std::map<std::string, std::vector<Row>> byCategory;
  for (const TreeWin& win : finds.treeWins) {
    byCategory[win.category].push_back({.key = "tree:" + win.path,
                                        .section = "In this scan",
                                        .category = win.category,
                                        .title = win.name,
                                        .note = win.note,
                                        .path = win.path,
                                        .bytes = win.bytes});
  }
  std::vector<Row> rows;
  for (auto& [category, ofCategory] : byCategory)
    std::move(ofCategory.begin(), ofCategory.end(), std::back_inserter(rows));
  return rows;
}

std::vector<Row> rowsOfLargeOld(const ReclaimAnalysis::Finds& finds) {
  std::vector<Row> rows;
  for (const LargeOldFile& file : finds.largeOld) {
    rows.push_back({.key = "file:" + file.path,
                    .section = "Large files unused 30+ days",
                    .title = file.name,
                    .note = file.path,
                    .path = file.path,
                    .bytes = file.bytes});
  }
  return rows;
}

std::vector<Row> rowsOfEmptyFolders(const std::vector<DiskNode>& folders) {
  std::vector<Row> rows;
  const std::size_t count = std::min(folders.size(), ListWinsState::mostEmptyFolders);
  for (std::size_t i = 0; i < count; ++i) {
    const std::string path = folders[i].path();
    rows.push_back({.key = "empty:" + path,
                    .section = "Empty folders",
                    .title = std::string(folders[i].name()),
                    .note = path,
                    .path = path,
                    .bytes = folders[i].size()});
  }
  return rows;
}

// Only the first row of a section, and of a category, keeps its heading.
void keepFirstHeadings(std::vector<Row>& rows) {
  std::string section;
  std::string category;
  for (Row& row : rows) {
    const bool isNewSection = row.section != section;
    const bool isNewCategory = row.category != category;
    section = row.section;
    category = row.category;
    if (!isNewSection) row.section.clear();
    if (!isNewCategory) row.category.clear();
  }
}

// The first characters of what a tool has said, without the end of its last line.
QString answerText(std::string_view answer) {
  answer = answer.substr(0, answer.find_last_not_of(" \t\r\n") + 1);
  return displayText(UnicodeText::firstGraphemes(answer, ListWinsState::longestAnswer));
}

}  // namespace

ListWinsState::ListWinsState(ScanSession& session, QObject* parent)
    : QObject(parent), session_(session), rows_(session.navigation()), jobs_(session.dispatch()) {
  observe();
  load();
}

void ListWinsState::observe() {
  connect(&session_, &ScanSession::ended, this, [this] { jobs_.end(); });
  connect(&session_.run(), &ScanRun::scanRootChanged, this, &ListWinsState::load);
  // A finished scan has another tree, and other empty folders.
  connect(&session_.run(), &ScanRun::statusChanged, this, [this] {
    if (session_.run().status() == ScanStatus::complete) load();
  });
  const Removal& removal = session_.removal();
  // The last move was put back.
  connect(&removal, &Removal::lastTrashedChanged, this, [this] {
    if (session_.removal().lastTrashed().empty() && !movesOwnBatch_) load();
  });
  connect(&removal, &Removal::progressChanged, this, [this] {
    emit movingChanged();
    emit moveTextChanged();
  });
  // The end of a batch that an earlier page has started.
  connect(&removal, &Removal::movingChanged, this, [this] {
    if (!isMoving() && !movesOwnBatch_) load();
  });
  connect(this, &ListWinsState::pickedChanged, this, &ListWinsState::moveTextChanged);
  connect(this, &ListWinsState::findsChanged, this, &ListWinsState::moveTextChanged);
}

void ListWinsState::load() {
  WinsPass::Request request{.home = session_.homeDirectory()};
  if (!session_.navigation().stack().empty()) request.tree = session_.navigation().stack().front();
  for (const DiskNode& folder : session_.result().emptyFolders())
    request.emptyFolders.push_back(folder.path());
  jobs_.start(
      Dispatch::Queue::userInitiated,
      [engines = session_.winsEngines(), request = std::move(request)](const Job& job) {
        return WinsPass::run(engines, request, job.cancelTest());
      },
      [this](WinsPass::Found found) { take(std::move(found)); });
  if (!std::exchange(isLoading_, true)) emit loadingChanged();
}

void ListWinsState::take(WinsPass::Found found) {
  found_ = std::move(found);
  for (const auto& [path, sighting] : found_.sightings) seen_.insert_or_assign(path, sighting);
  showRows();
  emit findsChanged();
  if (std::exchange(isLoading_, false)) emit loadingChanged();
}

bool ListWinsState::isTrash(const ReclaimItem& item) const {
  const auto& isTrashAction = session_.winsEngines().isTrashAction;
  return isTrashAction && isTrashAction(item.id);
}

bool ListWinsState::isGone(const std::string& path) const {
  return found_.gone.contains(path);
}

std::vector<DiskNode> ListWinsState::emptyFolders() const {
  std::vector<DiskNode> folders;
  for (const DiskNode& folder : session_.result().emptyFolders()) {
    if (!found_.filled.contains(folder.path())) folders.push_back(folder);
  }
  return folders;
}

void ListWinsState::showRows() {
  std::vector<Row> rows = rowsOfProbes(found_.finds);
  for (std::size_t i = 0; i < rows.size(); ++i) rows[i].isTrash = isTrash(found_.finds.probes[i]);
  for (auto more : {rowsOfTreeWins(found_.finds), rowsOfLargeOld(found_.finds),
                    rowsOfEmptyFolders(emptyFolders())}) {
    std::move(more.begin(), more.end(), std::back_inserter(rows));
  }
  keepFirstHeadings(rows);
  for (Row& row : rows) {
    row.isPicked = picked_.contains(row.path);
    row.isGone = isGone(row.path);
  }
  rows_.set(std::move(rows));
}

std::int64_t ListWinsState::totalBytes() const {
  std::int64_t total = 0;
  forEachSized(found_.finds, [&](const std::string& path, std::int64_t bytes) {
    // What is gone is no longer to be won.
    if (!isGone(path)) total = checkedAdd(total, bytes);
  });
  return total;
}

ListWinsState::BytesOf ListWinsState::bytesOfPicked() const {
  BytesOf bytesOf;
  for (const std::string& path : picked_) bytesOf.emplace(path, 0);
  forEachSized(found_.finds, [&](const std::string& path, std::int64_t bytes) {
    const auto picked = bytesOf.find(path);
    if (picked != bytesOf.end()) picked->second = checkedAdd(picked->second, bytes);
  });
  return bytesOf;
}

QString ListWinsState::titleText() const {
  return QStringLiteral("Up to ~%1 reclaimable").arg(bytesText(totalBytes()));
}

QString ListWinsState::snapshotText() const {
  const std::int64_t count = found_.finds.snapshots;
  if (count < 1) return {};
  const QString words = QString::fromStdString(Wording::current().localSnapshot);
  return QStringLiteral("%1 %2%3").arg(QString::number(count), words,
                                       count == 1 ? QString() : QStringLiteral("s"));
}

QString ListWinsState::pickText() const {
  return hasPicked() ? QStringLiteral("Deselect") : QStringLiteral("Select All");
}

bool ListWinsState::isStopping() const {
  const auto& progress = session_.removal().progress();
  return progress && progress->isStopping;
}

QString ListWinsState::moveText() const {
  if (const auto& progress = session_.removal().progress())
    return QStringLiteral("Moving… %1 of %2").arg(progress->done).arg(progress->all);
  std::int64_t selected = 0;
  for (const auto& [path, bytes] : bytesOfPicked()) selected = checkedAdd(selected, bytes);
  return QStringLiteral("Move %1 to Trash · %2").arg(picked_.size()).arg(bytesText(selected));
}

void ListWinsState::setPicked(std::set<std::string> picked) {
  picked_ = std::move(picked);
  showRows();
  emit pickedChanged();
}

void ListWinsState::toggle(const PathHandle& path) {
  if (!path.isValid() || isMoving()) return;
  std::set<std::string> picked = picked_;
  if (picked.erase(path.path()) == 0) {
    if (isGone(path.path())) return;
    picked.insert(path.path());
  }
  setPicked(std::move(picked));
}

void ListWinsState::toggleAll() {
  if (isMoving()) return;
  std::set<std::string> picked;
  if (picked_.empty()) {
    const auto pick = [&](const std::string& path) {
      if (!isGone(path)) picked.insert(path);
    };
    for (const ReclaimItem& item : found_.finds.probes) {
      if (!isTrash(item)) pick(item.path);
    }
    for (const TreeWin& win : found_.finds.treeWins) pick(win.path);
    for (const LargeOldFile& file : found_.finds.largeOld) pick(file.path);
    for (const DiskNode& folder : emptyFolders()) pick(folder.path());
  }
  setPicked(std::move(picked));
}

void ListWinsState::trashSelected() {
  if (picked_.empty() || isMoving()) return;
  std::unordered_set<std::string> empty;
  for (const DiskNode& folder : session_.result().emptyFolders()) empty.insert(folder.path());
  std::vector<TrashBatch::Item> items;
  for (const std::string& path : picked_) {
    const auto seen = seen_.find(path);
    TrashBatch::Item item{.location = {.original = path, .place = path},
                          .mustBeEmpty = empty.contains(path)};
    if (seen != seen_.end()) {
      item.location = seen->second.location;
      item.listed = seen->second.identity;
    }
    items.push_back(std::move(item));
  }
  movesOwnBatch_ = true;
  session_.moveBatch(std::move(items), [state = QPointer(this),
                                        bytesOf = bytesOfPicked()](const TrashBatch::Moved& moved) {
    if (state) state->takeMoved(moved, bytesOf);
  });
}

void ListWinsState::takeMoved(const TrashBatch::Moved& moved, const BytesOf& bytesOf) {
  movesOwnBatch_ = false;
  const std::set<std::string> untried(moved.untried.begin(), moved.untried.end());
  std::int64_t freed = 0;
  std::set<std::string> picked = picked_;
  for (const auto& [path, bytes] : bytesOf) {
    if (untried.contains(path)) continue;
    freed = checkedAdd(freed, bytes);
    picked.erase(path);
  }
  freedText_ = QStringLiteral("Moved %1 item(s) to Trash — freed ~%2.")
                   .arg(moved.items.size())
                   .arg(bytesText(freed));
  if (!moved.errors.empty()) {
    errorText_ = QStringLiteral("%1 item(s) couldn't be moved to Trash.").arg(moved.errors.size());
  }
  emit bannersChanged();
  setPicked(std::move(picked));
  load();
}

void ListWinsState::stop() {
  session_.removal().stopBatch();
}

void ListWinsState::showOnMap(const PathHandle& path) {
  if (path.isValid()) session_.focusPath(path.path());
}

void ListWinsState::reveal(const PathHandle& path) {
  if (path.isValid()) session_.navigation().reveal(path.path());
}

void ListWinsState::thin() {
  if (isThinning_) return;
  isThinning_ = true;
  emit workChanged();
  jobs_.start(
      Dispatch::Queue::userInitiated,
      [engines = session_.winsEngines()](const Job& job) {
        return engines.thin ? engines.thin(job.cancelTest()) : std::string();
      },
      [this](const std::string& answer) {
        isThinning_ = false;
        freedText_ = answerText(answer);
        if (freedText_.isEmpty())
          freedText_ = QString::fromStdString(Wording::current().thinningAsked);
        emit workChanged();
        emit bannersChanged();
        load();
      });
}

void ListWinsState::emptyTrash() {
  if (isEmptying_ || isMoving()) return;
  const auto& probes = found_.finds.probes;
  const auto row = std::find_if(probes.begin(), probes.end(),
                                [this](const ReclaimItem& item) { return isTrash(item); });
  if (row == probes.end()) return;
  isEmptying_ = true;
  emit workChanged();
  session_.emptyTrash([state = QPointer(this), bytes = row->bytes] {
    if (!state) return;
    state->isEmptying_ = false;
    state->freedText_ = QStringLiteral("Emptied Trash — freed ~%1.").arg(bytesText(bytes));
    emit state->workChanged();
    emit state->bannersChanged();
    state->load();
  });
}

}  // namespace tessaly
