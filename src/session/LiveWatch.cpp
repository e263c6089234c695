#include "session/LiveWatch.h"

#include <chrono>
#include <cstdint>
#include <utility>

#include "scan/Format.h"
#include "scan/ScanDiff.h"

namespace tessaly {

namespace {

constexpr std::chrono::seconds betweenLooks(20);
// Smaller growth is not reported.
constexpr std::int64_t leastGrowth = 1048576;

}  // namespace

LiveWatch::LiveWatch(const SessionServices& services, Flash flash)
    : services_(services), flash_(std::move(flash)), jobs_(services.dispatch) {}

void LiveWatch::startWatch(const std::string& path, const std::string& name) {
  forget();
  first_ = jobs_.start(
      Dispatch::Queue::utility,
      [path, look = services_.snapshot](const Job& job) {
        return std::make_shared<const FolderSnapshot>(look(path, job.cancelTest()));
      },
      [this, name](std::shared_ptr<const FolderSnapshot> baseline) {
        begin(std::move(baseline), name);
      });
  FieldChanges changes;
  changes.set(this, watching_, true, &LiveWatch::watchingChanged);
  changes.set(this, watchPath_, path, &LiveWatch::watchPathChanged);
  changes.set(this, watchGrew_, std::vector<ScanDelta>(), &LiveWatch::watchGrewChanged);
  changes.announce();
}

void LiveWatch::stopWatch() {
  forget();
  FieldChanges changes;
  changes.set(this, watching_, false, &LiveWatch::watchingChanged);
  changes.set(this, watchPath_, std::string(), &LiveWatch::watchPathChanged);
  changes.set(this, watchGrew_, std::vector<ScanDelta>(), &LiveWatch::watchGrewChanged);
  changes.announce();
}

// Resets the private state. A later watch of the same folder has the same path, and must neither
// take this baseline nor tick twice.
void LiveWatch::forget() {
  first_.cancel();
  look_.cancel();
  baseline_ = nullptr;
  isLooking_ = false;
}

void LiveWatch::begin(std::shared_ptr<const FolderSnapshot> baseline, const std::string& name) {
  baseline_ = std::move(baseline);
  tickLater();
  FieldChanges changes;
  flash_(changes, "Watching " + name);
  changes.announce();
}

void LiveWatch::tickLater() {
  services_.dispatch.after(betweenLooks, Dispatch::Queue::main, [this, watch = first_] {
    if (watch.isCancelled()) return;
    // The next tick comes 20 seconds after this one, however long the look takes.
    tickLater();
    pollWatch();
  });
}

void LiveWatch::pollWatch() {
  if (!watching_ || watchPath_.empty() || !baseline_) return;
  // On a slow disk, looks that overlap would slow each other down and use a thread each.
  if (std::exchange(isLooking_, true)) return;
  look_ = jobs_.start(
      Dispatch::Queue::utility,
      [baseline = baseline_, path = watchPath_, look = services_.snapshot](const Job& job) {
        const FolderSnapshot now = look(path, job.cancelTest());
        return ScanDiff::compare(baseline->sizes, now.sizes, leastGrowth);
      },
      [this](std::vector<ScanDelta> grown) { takeGrowth(std::move(grown)); });
}

void LiveWatch::takeGrowth(std::vector<ScanDelta> grown) {
  isLooking_ = false;
  FieldChanges changes;
  changes.set(this, watchGrew_, std::move(grown), &LiveWatch::watchGrewChanged);
  if (!watchGrew_.empty()) {
    const ScanDelta& most = watchGrew_.front();
    flash_(changes, most.name + " grew by " + Format::bytes(most.after - most.before));
  }
  changes.announce();
}

}  // namespace tessaly
