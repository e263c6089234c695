// The live watch of a folder.

#include <chrono>
#include <cstdint>
#include <memory>
#include <optional>
#include <string>
#include <utility>
#include <vector>

#include <QPointer>

#include "scan/Format.h"
#include "scan/ScanDiff.h"
#include "session/FieldChanges.h"
#include "session/ScanSession.h"

namespace tessaly {

namespace {

constexpr std::chrono::seconds betweenLooks(20);
// What has grown by fewer bytes is not told of.
constexpr std::int64_t leastGrowth = 1048576;

}  // namespace

void ScanSession::startWatch() {
  const std::optional<DiskNode> node = current();
  if (!node) return;
  endWatch();
  watchEnded_ = std::make_shared<CancelFlag>();

  Dispatch& dispatch = services_.dispatch;
  auto work = [&dispatch, session = QPointer(this), ended = watchEnded_, path = node->path(),
               name = std::string(node->name()), look = services_.snapshot] {
    auto baseline =
        std::make_shared<const FolderSnapshot>(look(path, [&ended] { return ended->isSet(); }));
    dispatch.async(Dispatch::Queue::main, [session, ended, baseline = std::move(baseline), name] {
      if (session && !ended->isSet()) session->beginWatch(baseline, name);
    });
  };
  dispatch.async(Dispatch::Queue::utility, std::move(work));

  FieldChanges changes(*this);
  changes.set(watching_, true, &ScanSession::watchingChanged);
  changes.set(watchPath_, node->path(), &ScanSession::watchPathChanged);
  changes.set(watchGrew_, std::vector<ScanDelta>(), &ScanSession::watchGrewChanged);
  changes.announce();
}

void ScanSession::stopWatch() {
  endWatch();
  FieldChanges changes(*this);
  changes.set(watching_, false, &ScanSession::watchingChanged);
  changes.set(watchPath_, std::string(), &ScanSession::watchPathChanged);
  changes.set(watchGrew_, std::vector<ScanDelta>(), &ScanSession::watchGrewChanged);
  changes.announce();
}

// What nobody sees of a watch. Its path alone does not tell it from a later one of the same folder,
// which must neither take its baseline nor tick twice.
void ScanSession::endWatch() {
  if (watchEnded_) watchEnded_->set();
  watchEnded_ = nullptr;
  watchBaseline_ = nullptr;
  isLooking_ = false;
}

void ScanSession::beginWatch(std::shared_ptr<const FolderSnapshot> baseline,
                             const std::string& name) {
  watchBaseline_ = std::move(baseline);
  tickWatchLater();
  flash("Watching " + name);
}

void ScanSession::tickWatchLater() {
  services_.dispatch.after(betweenLooks, Dispatch::Queue::main,
                           [session = QPointer(this), ended = watchEnded_] {
                             if (!session || ended->isSet()) return;
                             // However long the look takes, the next tick is 20 seconds away.
                             session->tickWatchLater();
                             session->pollWatch();
                           });
}

void ScanSession::pollWatch() {
  if (!watching_ || watchPath_.empty() || !watchBaseline_) return;
  // Looks at a slow disk would take ever more of it from each other, and each a thread.
  if (std::exchange(isLooking_, true)) return;
  Dispatch& dispatch = services_.dispatch;
  auto work = [&dispatch, session = QPointer(this), ended = watchEnded_, baseline = watchBaseline_,
               path = watchPath_, look = services_.snapshot] {
    const FolderSnapshot now = look(path, [&ended] { return ended->isSet(); });
    std::vector<ScanDelta> grown = ScanDiff::compare(baseline->sizes, now.sizes, leastGrowth);
    dispatch.async(Dispatch::Queue::main, [session, ended, grown = std::move(grown)]() mutable {
      if (session && !ended->isSet()) session->takeWatchGrowth(std::move(grown));
    });
  };
  dispatch.async(Dispatch::Queue::utility, std::move(work));
}

void ScanSession::takeWatchGrowth(std::vector<ScanDelta> grown) {
  isLooking_ = false;
  FieldChanges changes(*this);
  changes.set(watchGrew_, std::move(grown), &ScanSession::watchGrewChanged);
  if (!watchGrew_.empty()) {
    const ScanDelta& most = watchGrew_.front();
    showToast(changes, most.name + " grew by " + Format::bytes(most.after - most.before));
  }
  changes.announce();
}

}  // namespace tessaly
