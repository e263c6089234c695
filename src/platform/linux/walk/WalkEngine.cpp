#include "platform/linux/walk/WalkEngine.h"

#include <algorithm>
#include <cerrno>
#include <unistd.h>
#include <utility>

#include "platform/linux/MountSnapshotData.h"
#include "platform/linux/Uninterrupted.h"
#include "platform/linux/walk/FolderCandidate.h"
#include "platform/linux/walk/OpenDirectory.h"
#include "platform/linux/walk/ThreadCount.h"

namespace tessaly::walk {

namespace {

constexpr std::size_t mostBatchesAhead = 4096;
constexpr std::size_t mostItemsAhead = 32 * 1024;

class WayCandidate final : public DirectoryWalk::Candidate {
 public:
  std::string path() const override { return whole; }

  std::string whole;
};

// Asks `decide` about each folder from `root` to `path`.
bool enters(const DirectoryWalk::Decide& decide, const std::string& root, const std::string& path) {
  if (!decide) return true;
  WayCandidate folder;
  for (std::size_t start = root == "/" ? 1 : root.size() + 1; start < path.size();) {
    const std::size_t end = std::min(path.find('/', start), path.size());
    folder.whole = path.substr(0, end);
    folder.name = std::string_view(path).substr(start, end - start);
    ++folder.depth;
    const DirectoryWalk::Descent descent = decide(folder);
    if (!descent.enter) return false;
    folder.mark = descent.mark;
    start = end + 1;
  }
  return true;
}

}  // namespace

WalkEngine::WalkEngine(const std::string& root, DirectoryWalk::Decide decide, int threads,
                       const MountSnapshot& mounts, DirectoryWalk::Unreadable unreadable,
                       DirectoryWalk::Reading reading, const StartThread& startThread)
    : root_(root),
      decide_(std::move(decide)),
      unreadable_(std::move(unreadable)),
      reading_(std::move(reading)),
      closed_(closedMountsBelow(
          root, mounts.mounts(),
          [this](const std::string& path) { return enters(decide_, root_, path); },
          reading_.entersRemote)),
      consumerReader_(decide_, reading_, root_, stop_) {
  const int descriptor = openDirectory(root_);
  if (descriptor < 0) {
    tell(FolderCandidate(root_, Folder()), errno);
    return;
  }
  isOpen_ = true;

  auto* const top = new Folder;
  top->closed = &closed_;
  top->descriptor = descriptor;
  top->needs = 2;  // one for its stream, one for the walk, which reopens closed folders from here
  top->first.folder = top;
  top->first.failure = readFolderAttributes(descriptor, *top);
  openFolders_.add(*top);
  front_ = &top->first;

  // hardware_concurrency() reads a file, a cost that matters for thousands of walks.
  const unsigned cores = threads > 0 ? 0 : std::thread::hardware_concurrency();
  for (int i = threadCount(threads, cores); i > 1; --i) {
    std::thread helper = startThread([this] { helperLoop(); });
    if (!helper.joinable()) break;  // the others read its share
    helpers_.push_back(std::move(helper));
  }
  enter(*top);
}

WalkEngine::~WalkEngine() {
  stop();
  for (std::thread& helper : helpers_) helper.join();

  freeUnconsumed();
  for (const int descriptor : toClose_) close(descriptor);
}

void WalkEngine::stop() {
  {
    const Lock lock(mutex_);
    stop_ = true;
  }
  work_.notify_all();
}

// Every folder belongs to a record that the consumer has not taken, or is one that it has entered.
void WalkEngine::freeUnconsumed() {
  std::vector<Folder*> folders;
  std::vector<Frame> left = frames_;
  for (const Frame& frame : frames_) folders.push_back(frame.batch->folder);
  if (entering_ != nullptr) {
    folders.push_back(entering_);
    left.push_back({&entering_->first, 0});
  }
  while (!left.empty()) {
    const auto [batch, start] = left.back();
    left.pop_back();
    if (batch->state == Batch::State::done) {
      for (std::uint32_t i = start; i < batch->count; ++i) {
        const Record& record = batch->records()[i];
        if (record.holds != Record::Holds::child) continue;
        folders.push_back(record.child);
        left.push_back({&record.child->first, 0});
      }
    }
    if (batch->next != nullptr) left.push_back({batch->next, 0});
    if (batch != &batch->folder->first) delete batch;
  }
  for (Folder* folder : folders) {
    if (folder->descriptor >= 0) close(folder->descriptor);
    delete folder;
  }
}

// --- The consumer -------------------------------------------------------------------------------

const DirectoryWalk::Item* WalkEngine::next() {
  if (stop_) return nullptr;
  if (entering_ != nullptr) enter(*std::exchange(entering_, nullptr));
  while (!frames_.empty()) {
    Frame& frame = frames_.back();
    if (frame.index == frame.batch->count) {
      leaveBatch();
      if (reading_.isCancelled && reading_.isCancelled()) {
        stop();
        return nullptr;
      }
      continue;
    }
    const Record& record = frame.batch->records()[frame.index++];
    fillItem(*frame.batch, record);
    return &item_;
  }
  return nullptr;
}

void WalkEngine::fillItem(const Batch& batch, const Record& record) {
  item_.name = batch.name(record);
  item_.type = record.type;
  item_.depth = batch.folder->depth + 1;
  item_.mark = batch.folder->mark;
  item_.mayComeTwice = &batch != &batch.folder->first;
  item_.hasAttributes = false;
  item_.allocatedSize = 0;
  item_.mtime = 0;
  if (record.holds == Record::Holds::failure) {
    if (record.failure != 0) {
      tell(FolderCandidate(root_, *batch.folder, item_.name), static_cast<int>(record.failure));
    }
    return;
  }
  if (record.holds == Record::Holds::attributes) {
    item_.hasAttributes = true;
    item_.allocatedSize = record.allocatedSize;
    item_.mtime = record.mtime;
    return;
  }
  Folder& folder = *record.child;
  ensureRead(folder.first);
  entering_ = &folder;
  item_.hasAttributes = folder.hasAttributes;
  item_.allocatedSize = folder.length;
  item_.mtime = folder.mtime;
}

void WalkEngine::enter(Folder& folder) {
  ensureRead(folder.first);
  tellOfFailure(folder.first);
  frames_.push_back({&folder.first, 0});
}

// Reports once per folder: a failure at its beginning covers the rest.
void WalkEngine::tellOfFailure(const Batch& batch) const {
  const Batch& first = batch.folder->first;
  if (batch.failure == 0 || (&batch != &first && first.failure != 0)) return;
  tell(FolderCandidate(root_, *batch.folder), batch.failure);
}

void WalkEngine::tell(const DirectoryWalk::Candidate& item, int code) const {
  if (unreadable_) unreadable_(item, code);
}

// Continues with the rest of the directory, or leaves it.
void WalkEngine::leaveBatch() {
  Batch* const batch = frames_.back().batch;
  Folder* const folder = batch->folder;
  Batch* const rest = batch->next;
  const std::size_t items = batch->count;
  if (rest != nullptr) {
    ensureRead(*rest);
    tellOfFailure(*rest);
    frames_.back() = {rest, 0};
  } else {
    frames_.pop_back();
  }
  batch->data.reset();
  if (batch != &folder->first) delete batch;
  if (rest == nullptr) {
    if (folder->parent == nullptr) leaveRoot(*folder);
    delete folder;
  }

  aheadItems_.fetch_sub(items);
  const std::size_t left = aheadBatches_.fetch_sub(1) - 1;
  if (helpersAtLimit_.load() > 0 && left <= mostBatchesAhead / 2) {
    const Lock lock(mutex_);
    work_.notify_all();
  }
}

// The walk no longer needs to reopen folders from there.
void WalkEngine::leaveRoot(Folder& root) {
  const Lock lock(mutex_);
  needNoMore(root);
}

// Returns when `batch` is read: reads it, or reads other batches while a helper reads it.
void WalkEngine::ensureRead(Batch& batch) {
  if (batch.state.load(std::memory_order_acquire) == Batch::State::done) return;
  Lock lock(mutex_);
  for (;;) {
    const Batch::State state = batch.state.load(std::memory_order_acquire);
    if (state == Batch::State::done) return;
    if (state == Batch::State::pending) {
      claimAndRead(lock, batch, consumerReader_, Role::consumer);
      continue;
    }
    Batch* const other = mayReadAhead() ? firstPending() : nullptr;
    if (other != nullptr &&
        claimAndRead(lock, *other, consumerReader_, Role::consumer) == Outcome::read) {
      continue;
    }
    if (batch.state.load(std::memory_order_acquire) != Batch::State::claimed) continue;
    consumerWaits_ = true;
    ready_.wait(lock);
    consumerWaits_ = false;
  }
}

// --- Reading ------------------------------------------------------------------------------------

void WalkEngine::helperLoop() {
  FolderReader reader(decide_, reading_, root_, stop_);
  Lock lock(mutex_);
  while (!stop_ && !helpersRetire_) {
    Batch* const batch = mayReadAhead() ? firstPending() : nullptr;
    if (batch == nullptr) {
      waitForWork(lock);
      continue;
    }
    ++busyHelpers_;
    const Outcome outcome = claimAndRead(lock, *batch, reader, Role::helper);
    --busyHelpers_;
    if (consumerWaits_) ready_.notify_one();
    if (outcome == Outcome::outOfDescriptors) return;  // fewer threads need fewer descriptors
  }
}

// The consumer makes room without the mutex: it reads helpersAtLimit_ afterwards, and a helper
// checks for room again after it has counted itself there, so at least one of them sees the other's
// change.
void WalkEngine::waitForWork(Lock& lock) {
  const bool atLimit = !mayReadAhead();
  if (atLimit) helpersAtLimit_.fetch_add(1);
  ++idleHelpers_;
  if (!atLimit || !mayReadAhead()) work_.wait(lock);
  --idleHelpers_;
  if (atLimit) helpersAtLimit_.fetch_sub(1);
}

Batch* WalkEngine::firstPending() {
  for (Batch* batch = front_; batch != nullptr; batch = batch->after) {
    if (batch->state.load(std::memory_order_relaxed) == Batch::State::pending) return batch;
  }
  return nullptr;
}

bool WalkEngine::mayReadAhead() const {
  return aheadBatches_.load() < mostBatchesAhead && aheadItems_.load() < mostItemsAhead;
}

WalkEngine::Outcome WalkEngine::claimAndRead(Lock& lock, Batch& batch, FolderReader& reader,
                                             Role role) {
  batch.state.store(Batch::State::claimed, std::memory_order_relaxed);
  const Outcome outcome = readFolder(lock, batch, reader, role);
  closeAll(lock, toClose_);
  return outcome;
}

WalkEngine::Outcome WalkEngine::readFolder(Lock& lock, Batch& batch, FolderReader& reader,
                                           Role role) {
  Folder& folder = *batch.folder;
  const bool first = &batch == &folder.first;
  ++folder.pins;
  int descriptor = folder.descriptor;
  if (descriptor < 0) {
    descriptor = first ? openFolder(lock, folder, role) : reopen(lock, folder, role);
    if (descriptor == -EMFILE && role == Role::helper) {
      --folder.pins;
      giveBack(batch);
      return Outcome::outOfDescriptors;
    }
    if (descriptor >= 0) {
      descriptor = takeOver(folder, descriptor);
    } else if (descriptor != nothingToRead) {
      batch.failure = -descriptor;
    }
  }
  if (first && folder.parent != nullptr) needNoMore(*folder.parent);

  reader.children().clear();
  if (descriptor >= 0) readRun(lock, descriptor, batch, reader);
  folder.needs += static_cast<int>(reader.children().size());
  --folder.pins;
  needNoMore(folder);
  keepToBudget();
  publish(batch, reader.children());  // from here on the consumer may free both
  return Outcome::read;
}

void WalkEngine::readRun(Lock& lock, int descriptor, Batch& batch, FolderReader& reader) {
  lock.unlock();
  if (batch.position != 0 &&
      uninterrupted([&] { return lseek(descriptor, batch.position, SEEK_SET); }) < 0) {
    batch.failure = errno;
    lock.lock();
    return;
  }
  const FolderReader::Run run = reader.readEntries(descriptor);
  if (batch.failure == 0) batch.failure = run.failure;
  if (run.hasRest) {
    auto* const rest = new Batch;
    rest->folder = batch.folder;
    rest->position = run.resume;
    lock.lock();
    ++batch.folder->needs;
    batch.next = rest;
    rest->before = &batch;
    rest->after = batch.after;
    if (rest->after != nullptr) rest->after->before = rest;
    batch.after = rest;
    if (idleHelpers_ > 0) work_.notify_one();
    lock.unlock();
  }
  reader.readAttributes(descriptor, batch);
  lock.lock();
}

// Replaces the batch in the list by the batches of the directories found.
void WalkEngine::publish(Batch& batch, const std::vector<Folder*>& children) {
  Batch* before = batch.before;
  Batch* const after = batch.after;
  for (Folder* child : children) {
    child->first.before = before;
    (before != nullptr ? before->after : front_) = &child->first;
    before = &child->first;
  }
  (before != nullptr ? before->after : front_) = after;
  if (after != nullptr) after->before = before;

  aheadItems_.fetch_add(batch.count);
  aheadBatches_.fetch_add(1);
  batch.state.store(Batch::State::done, std::memory_order_release);
  if (!children.empty() && idleHelpers_ > 0) work_.notify_all();
}

void WalkEngine::giveBack(Batch& batch) {
  batch.state.store(Batch::State::pending, std::memory_order_relaxed);
}

}  // namespace tessaly::walk
