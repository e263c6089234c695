#include "session/ScanSession.h"

#include <utility>

#include <QPointer>

#include "scan/Remainder.h"
#include "session/FieldChanges.h"
#include "system/ToolFigures.h"

namespace tessaly {

namespace {

constexpr std::chrono::milliseconds toastTime(2800);

}  // namespace

ScanSession::ScanSession(Services services, QObject* parent)
    : QObject(parent),
      services_(std::move(services)),
      filters_(ScanStore::applySavedFilters(BloatFilter::catalog(), settings())) {
  if (!services_.walk) {
    services_.walk = [](const std::string& root, const DiskScanner::Callbacks& callbacks,
                        const DiskScanner::Options& options) {
      return DiskScanner::scan(root, callbacks, options);
    };
  }
  if (!services_.archive) {
    services_.archive = [](const ZipEngine::Request& request) {
      return ZipEngine::archive(request);
    };
  }
  if (!services_.snapshot) services_.snapshot = &FolderWatch::snapshot;
  if (services_.figures == nullptr) {
    ownFigures_ = std::make_unique<ToolFigures>(services_.run, services_.volumeUsage);
    services_.figures = ownFigures_.get();
  }
  if (!services_.now) services_.now = [] { return Clock::now(); };
  if (!services_.date) services_.date = [] { return std::chrono::system_clock::now(); };
  restore();
}

ScanSession::~ScanSession() {
  end();
}

void ScanSession::end() {
  sessionEnded_->set();
  giveUpZips();
  if (watchEnded_) watchEnded_->set();
  if (cancelFlag_) cancelFlag_->set();
}

void ScanSession::flash(const std::string& text) {
  FieldChanges changes(*this);
  showToast(changes, text);
  changes.announce();
}

void ScanSession::showToast(FieldChanges& changes, const std::string& text) {
  // By text alone: an equal message that is shown again goes with the first one's time.
  services_.dispatch.after(toastTime, Dispatch::Queue::main, [session = QPointer(this), text] {
    if (!session || session->toast_ != text) return;
    session->setField(session->toast_, {}, &ScanSession::toastChanged);
  });
  changes.set(toast_, std::optional(text), &ScanSession::toastChanged);
}

void ScanSession::tellFailure(const std::string& text) {
  FieldChanges changes(*this);
  addFailure(changes, text);
  changes.announce();
}

void ScanSession::addFailure(FieldChanges& changes, const std::string& text) {
  if (!failures_.empty() && failures_.back() == text) return;
  std::erase(failures_, text);
  failures_.push_back(text);
  if (failures_.size() > failuresLimit) failures_.erase(failures_.begin());
  changes.note(&ScanSession::failureChanged);
}

void ScanSession::addFailures(FieldChanges& changes, const std::vector<Trash::Failure>& failures,
                              FailureText::Act act) {
  if (!failures.empty()) addFailure(changes, FailureText::line(failures, act));
}

void ScanSession::dismissFailure() {
  if (failures_.empty()) return;
  FieldChanges changes(*this);
  failures_.pop_back();
  changes.note(&ScanSession::failureChanged);
  changes.announce();
}

std::optional<std::string> ScanSession::failure() const {
  return failures_.empty() ? std::nullopt : std::optional(failures_.back());
}

void ScanSession::setPane(MainPane pane) {
  setField(pane_, pane, &ScanSession::paneChanged);
}

void ScanSession::setVizMode(VizMode mode) {
  setField(vizMode_, mode, &ScanSession::vizModeChanged);
}

void ScanSession::setFilters(std::vector<BloatFilter> filters) {
  setField(filters_, std::move(filters), &ScanSession::filtersChanged);
}

void ScanSession::setExcludes(std::vector<std::string> excludes) {
  setField(excludes_, std::move(excludes), &ScanSession::excludesChanged);
}

void ScanSession::setQueueOpen(bool open) {
  setField(queueOpen_, open, &ScanSession::queueOpenChanged);
}

void ScanSession::setQueueMinimized(bool minimized) {
  setField(queueMinimized_, minimized, &ScanSession::queueMinimizedChanged);
}

void ScanSession::setSearchOpen(bool open) {
  setField(searchOpen_, open, &ScanSession::searchOpenChanged);
}

void ScanSession::setAiOpen(bool open) {
  setField(aiOpen_, open, &ScanSession::aiOpenChanged);
}

void ScanSession::setOcrOpen(bool open) {
  setField(ocrOpen_, open, &ScanSession::ocrOpenChanged);
}

void ScanSession::setHeatmap(bool on) {
  setField(heatmap_, on, &ScanSession::heatmapChanged);
}

void ScanSession::setMenuNode(std::optional<DiskNode> node) {
  if (node && isRemainder(*node)) return;
  setField(menuNode_, std::move(node), &ScanSession::menuNodeChanged);
}

void ScanSession::setCriticalWarning(std::optional<DiskNode> node) {
  setField(criticalWarning_, std::move(node), &ScanSession::criticalWarningChanged);
}

void ScanSession::setFocused(std::optional<DiskNode> node) {
  setField(focused_, std::move(node), &ScanSession::focusedChanged);
}

}  // namespace tessaly
