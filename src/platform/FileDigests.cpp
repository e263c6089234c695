#include "platform/FileDigests.h"

#include <algorithm>
#include <condition_variable>
#include <cstddef>
#include <memory>
#include <mutex>
#include <string>
#include <string_view>
#include <thread>
#include <utility>

#include "platform/CheckedArithmetic.h"

namespace tessaly::FileDigests {

namespace {

constexpr std::chrono::milliseconds tick{10};
// How long a cancelled search waits for its threads, so that they seldom outlive it.
constexpr std::chrono::milliseconds timeToStop{20};

enum class State { waiting, reading, ended, givenUp };

using Digests = std::vector<std::optional<FileDigest>>;

struct Entry {
  File file;
  State state = State::waiting;
  std::int64_t bytes = 0;  // on disk, that have been read
  int idleTicks = 0;       // since it has advanced
  std::optional<FileDigest> digest = {};
};

// Shared with the threads, since one that hangs may outlive the options.
class Readings : public std::enable_shared_from_this<Readings> {
 public:
  Readings(const std::vector<File>& files, Read read) : read_(std::move(read)) {
    for (const File& file : files) entries_.push_back({.file = file});
  }

  // False if the system refuses a thread.
  bool startThread(const StartThread& start) {
    {
      const std::lock_guard lock(mutex_);
      ++threads_;
    }
    std::thread thread = start([self = shared_from_this()] {
      self->readAll({});
      self->leave();
    });
    if (thread.joinable()) {
      thread.detach();
      return true;
    }
    leave();
    return false;
  }

  // Reads the next file until none is left. `between` is called for each part.
  void readAll(const std::function<void()>& between) {
    std::unique_lock lock(mutex_);
    while (Entry* const entry = next()) {
      entry->state = State::reading;
      lock.unlock();
      // The file of an entry never changes.
      Result<FileDigest> read = read_(
          entry->file.path,
          {.allocated = entry->file.allocated, .goOn = [&](std::int64_t done, std::int64_t length) {
             if (between) between();
             return advance(*entry, done, length);
           }});
      lock.lock();
      if (entry->state == State::givenUp) {
        --hanging_;
        return;  // another thread has taken the place of this one
      }
      end(*entry);
      if (read) entry->digest = std::move(read).value();
    }
  }

  // Waits until all files are done, but no longer than a tick. Returns whether they are.
  bool wait() {
    std::unique_lock lock(mutex_);
    return changed_.wait_for(lock, tick, [this] { return all_.files == entries_.size(); });
  }

  // Waits for the threads that do not hang: they have nothing left to read.
  void waitForThreads() {
    std::unique_lock lock(mutex_);
    changed_.wait(lock, [this] { return threads_ == hanging_; });
  }

  // No file is read any more, and no further part of one.
  void stopNext() {
    const std::lock_guard lock(mutex_);
    isStopped_ = true;
  }

  // Tells the threads to stop, and waits a moment: one of them may hang.
  void stop() {
    std::unique_lock lock(mutex_);
    isStopped_ = true;
    changed_.wait_for(lock, timeToStop, [this] { return threads_ == hanging_; });
  }

  Progress progress() const {
    const std::lock_guard lock(mutex_);
    return all_;
  }

  Digests takeDigests() {
    const std::lock_guard lock(mutex_);
    Digests digests;
    for (Entry& entry : entries_) digests.push_back(std::exchange(entry.digest, std::nullopt));
    return digests;
  }

  // To be called once a tick. Gives up the files that have not advanced for `patience` ticks, and
  // returns their paths.
  std::vector<std::string> giveUpHanging(int patience) {
    const std::lock_guard lock(mutex_);
    std::vector<std::string> paths;
    for (Entry& entry : entries_) {
      if (entry.state != State::reading || ++entry.idleTicks <= patience) continue;
      giveUp(entry);
      ++hanging_;
      paths.push_back(entry.file.path);
    }
    return paths;
  }

  // Gives up the files that nobody reads yet.
  void giveUpWaiting(const std::function<bool(const std::string& path)>& isToGo) {
    const std::lock_guard lock(mutex_);
    for (Entry& entry : entries_) {
      if (entry.state == State::waiting && isToGo(entry.file.path)) giveUp(entry);
    }
  }

 private:
  // All need the lock.
  Entry* next() {
    if (isStopped_) return nullptr;
    while (next_ < entries_.size() && entries_[next_].state != State::waiting) ++next_;
    return next_ < entries_.size() ? &entries_[next_] : nullptr;
  }

  void end(Entry& entry) {
    entry.state = State::ended;
    count(entry, entry.file.allocated);
    ++all_.files;
    changed_.notify_all();
  }

  void giveUp(Entry& entry) {
    end(entry);
    entry.state = State::givenUp;
  }

  void count(Entry& entry, std::int64_t bytes) {
    all_.bytes = checkedAdd(all_.bytes, bytes - entry.bytes);
    entry.bytes = bytes;
  }

  void leave() {
    const std::lock_guard lock(mutex_);
    --threads_;
    changed_.notify_all();
  }

  // Takes the lock. The length of a file is not what it takes on disk.
  bool advance(Entry& entry, std::int64_t done, std::int64_t length) {
    const std::lock_guard lock(mutex_);
    if (entry.state == State::givenUp || isStopped_) return false;
    entry.idleTicks = 0;
    const double share = length > 0 ? static_cast<double>(done) / static_cast<double>(length) : 0;
    const auto all = static_cast<double>(entry.file.allocated);
    count(entry, std::clamp(static_cast<std::int64_t>(std::clamp(share, 0.0, 1.0) * all),
                            entry.bytes, entry.file.allocated));
    return true;
  }

  const Read read_;
  mutable std::mutex mutex_;
  std::condition_variable changed_;
  std::vector<Entry> entries_;  // of fixed length
  std::size_t next_ = 0;        // no entry before it waits
  Progress all_;
  std::size_t threads_ = 0;  // that run
  std::size_t hanging_ = 0;  // of them, whose file was given up
  bool isStopped_ = false;
};

// The mount point that is the nearest one above the path.
std::string_view mountOf(std::string_view path, const std::vector<std::string>& mountPoints) {
  std::string_view nearest;
  for (const std::string_view point : mountPoints) {
    const bool isAbove = point == "/" || (path.starts_with(point) && path.size() > point.size() &&
                                          path[point.size()] == '/');
    if (isAbove && point.size() > nearest.size()) nearest = point;
  }
  return nearest;
}

void giveUpNeighbours(Readings& readings, const std::vector<std::string>& hung,
                      const Options& options) {
  if (!options.mountPoints) return;
  const std::vector<std::string> points = options.mountPoints();
  for (const std::string& path : hung) {
    const std::string_view mount = mountOf(path, points);
    // The other files of the system disk are tried, since much of the disk may answer.
    if (mount.empty() || mount == "/") continue;
    readings.giveUpWaiting(
        [&](const std::string& other) { return mountOf(other, points) == mount; });
  }
}

// For one report a change.
class Report {
 public:
  explicit Report(const Options& options) : options_(options) {}

  void tell(const Progress& progress) {
    if (progress == told_ || !options_.progress) return;
    told_ = progress;
    options_.progress(progress);
  }

 private:
  const Options& options_;
  std::optional<Progress> told_;
};

bool isCancelled(const Options& options) {
  return options.isCancelled && options.isCancelled();
}

// Reads everything on this thread, since the system refuses others.
void readAlone(Readings& readings, const Options& options, Report& report) {
  readings.readAll([&] {
    if (isCancelled(options)) readings.stopNext();
    report.tell(readings.progress());
  });
}

}  // namespace

Digests of(const std::vector<File>& files, const Options& options) {
  if (isCancelled(options)) return {};
  const std::size_t wanted = std::min(std::max<std::size_t>(options.atOnce, 1), files.size());
  const auto readings = std::make_shared<Readings>(files, options.read);
  Report report(options);
  report.tell(readings->progress());

  std::size_t started = 0;
  while (started < wanted && readings->startThread(options.start)) ++started;
  if (started == 0 && wanted > 0) readAlone(*readings, options, report);

  const int patience = static_cast<int>(options.patience / tick);
  while (!readings->wait()) {
    if (isCancelled(options)) {
      readings->stop();
      return {};
    }
    report.tell(readings->progress());
    const std::vector<std::string> hung = readings->giveUpHanging(patience);
    if (hung.empty()) continue;
    giveUpNeighbours(*readings, hung, options);
    for (std::size_t i = 0; i < hung.size(); ++i) {
      if (!readings->startThread(options.start)) readAlone(*readings, options, report);
    }
  }
  readings->waitForThreads();
  report.tell(readings->progress());
  return readings->takeDigests();
}

}  // namespace tessaly::FileDigests
