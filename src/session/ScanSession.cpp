#include "session/ScanSession.h"

#include <utility>

#include "system/ToolFigures.h"

namespace tessaly {

namespace {

SessionServices complete(SessionServices services) {
  if (!services.walk) {
    services.walk = [](const std::string& root, const DiskScanner::Callbacks& callbacks,
                       const DiskScanner::Options& options) {
      return DiskScanner::scan(root, callbacks, options);
    };
  }
  if (!services.archive) {
    services.archive = [](const ZipEngine::Request& request) {
      return ZipEngine::archive(request);
    };
  }
  if (!services.snapshot) services.snapshot = &FolderWatch::snapshot;
  if (!services.now) services.now = [] { return SessionServices::Clock::now(); };
  if (!services.date) services.date = [] { return std::chrono::system_clock::now(); };
  return services;
}

}  // namespace

ScanSession::ScanSession(Services services, QObject* parent)
    : QObject(parent), services_(complete(std::move(services))), expansions_(services_.dispatch) {
  if (services_.figures == nullptr) {
    ownFigures_ = std::make_unique<ToolFigures>(services_.run, services_.volumeUsage);
    services_.figures = ownFigures_.get();
  }
  const Flash flash = [this](FieldChanges& changes, const std::string& text) {
    messages_->flash(changes, text);
  };
  run_ = std::make_unique<ScanRun>(services_);
  navigation_ = std::make_unique<Navigation>(services_.workspace);
  shown_ = std::make_unique<Shown>();
  messages_ = std::make_unique<Messages>(services_.dispatch);
  selection_ = std::make_unique<Selection>(services_.pasteboard, flash);
  cleanupQueue_ = std::make_unique<CleanupQueue>();
  removal_ = std::make_unique<Removal>(services_);
  result_ = std::make_unique<ScanResult>(services_.supportDirectory);
  comparison_ = std::make_unique<Comparison>(services_);
  watch_ = std::make_unique<LiveWatch>(services_, flash);
  findings_ = std::make_unique<Findings>(services_.dispatch, services_.analysis);
  choices_ = std::make_unique<Choices>(services_.prefs.defaults(), services_.folderPanel, flash);
  machine_ = std::make_unique<MachineState>(
      MachineState::Services{.figures = *services_.figures,
                             .icon = services_.icon,
                             .prefs = services_.prefs,
                             .notifications = services_.notifications,
                             .date = services_.date});
  connect(findings_.get(), &Findings::copiesListed, this,
          [this] { copies_.take(findings_->copies()); });
  connect(cleanupQueue_.get(), &CleanupQueue::queueChanged, this,
          [this] { copies_.follow(cleanupQueue_->queue()); });
  restore();
}

ScanSession::~ScanSession() {
  end();
}

void ScanSession::end() {
  run_->end();
  removal_->end();
  comparison_->end();
  watch_->end();
  findings_->end();
  expansions_.end();
  emit ended();
}

}  // namespace tessaly
