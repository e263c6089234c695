#include "platform/linux/walk/WalkEngine.h"

#include <algorithm>
#include <cerrno>
#include <chrono>
#include <fcntl.h>
#include <sys/statfs.h>
#include <unistd.h>
#include <utility>

#include "platform/linux/MountSnapshotData.h"
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

// Asks `decide` about each folder on the way from `root` to `path`.
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

bool isPseudo(int descriptor) {
  struct statfs system;
  return fstatfs(descriptor, &system) == 0 && isPseudoFileSystem(static_cast<long>(system.f_type));
}

}  // namespace

WalkEngine::WalkEngine(const std::string& root, DirectoryWalk::Decide decide, int threads,
                       const MountSnapshot& mounts, const StartThread& startThread)
    : root_(root),
      decide_(std::move(decide)),
      closed_(closedPlacesBelow(
          root, mounts.mounts(),
          [this](const std::string& path) { return enters(decide_, root_, path); })),
      consumerReader_(decide_, root_, stop_) {
  rootDescriptor_ = openDirectory(root_);
  if (rootDescriptor_ < 0) return;

  auto* const top = new Folder;
  top->closed = &closed_;
  top->descriptor = rootDescriptor_;
  top->needs = 2;  // its stream, and the walk, which finds its way to closed folders from there
  top->first.folder = top;
  readFolderAttributes(rootDescriptor_, *top);
  openFolders_.add(*top);
  front_ = &top->first;

  for (int i = threadCount(threads, std::thread::hardware_concurrency()); i > 1; --i) {
    std::thread helper = startThread([this] { helperLoop(); });
    if (!helper.joinable()) break;  // those that there are read more
    helpers_.push_back(std::move(helper));
  }
  enter(*top);
}

WalkEngine::~WalkEngine() {
  {
    const Lock lock(mutex_);
    stop_ = true;
  }
  work_.notify_all();
  for (std::thread& helper : helpers_) helper.join();

  freeUnconsumed();
  for (const int descriptor : toClose_) close(descriptor);
  if (rootDescriptor_ >= 0) close(rootDescriptor_);
}

// Every folder hangs on a record that the consumer has not taken, or is one it stands in.
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
        if (record.type != DirectoryWalk::Type::directory || !record.hasAttributes) continue;
        folders.push_back(record.child);
        left.push_back({&record.child->first, 0});
      }
    }
    if (batch->next != nullptr) left.push_back({batch->next, 0});
    if (batch != &batch->folder->first) delete batch;
  }
  for (Folder* folder : folders) {
    if (folder->descriptor >= 0 && folder->parent != nullptr) close(folder->descriptor);
    delete folder;
  }
}

// --- The consumer -------------------------------------------------------------------------------

const DirectoryWalk::Item* WalkEngine::next() {
  if (entering_ != nullptr) enter(*std::exchange(entering_, nullptr));
  while (!frames_.empty()) {
    Frame& frame = frames_.back();
    if (frame.index == frame.batch->count) {
      leaveBatch();
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
  if (record.type != DirectoryWalk::Type::directory) {
    item_.hasAttributes = record.hasAttributes;
    item_.allocatedSize = record.allocatedSize;
    item_.mtime = record.mtime;
    return;
  }
  item_.hasAttributes = false;
  item_.allocatedSize = 0;
  item_.mtime = 0;
  if (!record.hasAttributes) return;
  Folder& folder = *record.child;
  ensureRead(folder.first);
  entering_ = &folder;
  item_.hasAttributes = folder.hasAttributes;
  item_.allocatedSize = folder.length;
  item_.mtime = folder.mtime;
}

void WalkEngine::enter(Folder& folder) {
  ensureRead(folder.first);
  frames_.push_back({&folder.first, 0});
}

// Goes on to the rest of the directory, or leaves it.
void WalkEngine::leaveBatch() {
  Batch* const batch = frames_.back().batch;
  Folder* const folder = batch->folder;
  Batch* const rest = batch->next;
  const std::size_t items = batch->count;
  if (rest != nullptr) {
    ensureRead(*rest);
    frames_.back() = {rest, 0};
  } else {
    frames_.pop_back();
  }
  batch->data.reset();
  if (batch != &folder->first) delete batch;
  if (rest == nullptr) delete folder;

  aheadItems_.fetch_sub(items);
  const std::size_t left = aheadBatches_.fetch_sub(1) - 1;
  if (helpersAtLimit_.load() > 0 && left <= mostBatchesAhead / 2) {
    const Lock lock(mutex_);
    work_.notify_all();
  }
}

// Returns once `batch` is read: reads it, or reads others while a helper is at it.
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
  FolderReader reader(decide_, root_, stop_);
  Lock lock(mutex_);
  while (!stop_) {
    Batch* const batch = mayReadAhead() ? firstPending() : nullptr;
    if (batch == nullptr) {
      waitForWork(lock);
      continue;
    }
    const Outcome outcome = claimAndRead(lock, *batch, reader, Role::helper);
    if (consumerWaits_) ready_.notify_one();
    if (outcome == Outcome::outOfDescriptors) return;  // the fewer that read, the fewer are needed
  }
}

// The consumer makes room without the mutex: it looks at helpersAtLimit_ after it has, and a helper
// looks for room once more after it has counted itself there, so one of them sees the other.
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
    if (descriptor == -EMFILE) {
      --folder.pins;
      giveBack(batch);
      return Outcome::outOfDescriptors;
    }
    if (descriptor >= 0) descriptor = takeOver(folder, descriptor);
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
  if (batch.position != 0) lseek(descriptor, batch.position, SEEK_SET);
  off_t resume = 0;
  if (reader.readEntries(descriptor, resume)) {
    auto* const rest = new Batch;
    rest->folder = batch.folder;
    rest->position = resume;
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

// Puts the batches of the directories found where the batch stood.
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

// --- Descriptors --------------------------------------------------------------------------------

void WalkEngine::closeAll(Lock& lock, std::vector<int>& descriptors) {
  if (descriptors.empty()) return;
  std::vector<int> mine;
  mine.swap(descriptors);
  lock.unlock();
  for (const int descriptor : mine) close(descriptor);
  lock.lock();
}

// Keeps `descriptor` as the folder's, unless another thread was faster. Returns the one in force.
int WalkEngine::takeOver(Folder& folder, int descriptor) {
  if (folder.descriptor < 0) {
    folder.descriptor = descriptor;
    openFolders_.add(folder);
  } else {
    toClose_.push_back(descriptor);
  }
  return folder.descriptor;
}

void WalkEngine::unpin(Folder& folder) {
  --folder.pins;
  closeIfUnused(folder);
}

void WalkEngine::needNoMore(Folder& folder) {
  --folder.needs;
  closeIfUnused(folder);
}

void WalkEngine::closeIfUnused(Folder& folder) {
  if (folder.needs > 0 || folder.pins > 0) return;
  const int descriptor = openFolders_.remove(folder);
  if (descriptor >= 0) toClose_.push_back(descriptor);
}

void WalkEngine::keepToBudget() {
  while (openFolders_.overBudget()) {
    const int spare = openFolders_.evict();
    if (spare < 0) return;
    toClose_.push_back(spare);
  }
}

// The descriptor of a directory opened for the first time, with its attributes read; a negative
// errno when it cannot be.
int WalkEngine::openFolder(Lock& lock, Folder& folder, Role role) {
  Folder& parent = *folder.parent;
  folder.needs = 1;
  ++parent.pins;
  int directory = parent.descriptor;
  if (directory < 0) {
    directory = reopen(lock, parent, role);
    if (directory >= 0) directory = takeOver(parent, directory);
  }
  if (directory < 0) {
    unpin(parent);
    return directory;
  }
  int descriptor = openRelative(lock, directory, folder.name.data(), role);
  lock.unlock();
  if (descriptor >= 0) {
    readFolderAttributes(descriptor, folder);
    if (folder.device != parent.device && isPseudo(descriptor)) {
      close(descriptor);
      descriptor = -EXDEV;
    }
  } else if (descriptor != -EMFILE) {
    readFolderAttributesByName(directory, folder.name.data(), folder);
  }
  lock.lock();
  unpin(parent);
  return descriptor;
}

// Opens an entry of a directory; a negative errno when it cannot be. When descriptors run out,
// closes those that are kept for later, then those in `held` but the last, which is `directory`.
int WalkEngine::openRelative(Lock& lock, int directory, const char* name, Role role,
                             std::vector<OpenedOnTheWay>* held) {
  // Other parts of the program may hold descriptors too, for a moment.
  constexpr int mostWaits = 500;
  constexpr auto wait = std::chrono::milliseconds(4);
  for (int waits = 0;;) {
    lock.unlock();
    const int descriptor = openat(directory, name, O_RDONLY | O_DIRECTORY | O_NOFOLLOW | O_CLOEXEC);
    const int error = descriptor < 0 ? errno : 0;
    lock.lock();
    if (descriptor >= 0) return descriptor;
    if (error != EMFILE && error != ENFILE) return -error;
    if (stop_) return -EMFILE;
    openFolders_.lowerBudget();
    int spare = openFolders_.evict();
    if (spare < 0 && held != nullptr && held->size() > 1) {
      spare = held->front().descriptor;
      held->erase(held->begin());
    }
    if (spare >= 0) {
      toClose_.push_back(spare);
      closeAll(lock, toClose_);
      continue;
    }
    if (role == Role::helper) return -EMFILE;
    if (++waits > mostWaits) return -ENFILE;
    lock.unlock();
    std::this_thread::sleep_for(wait);
    lock.lock();
  }
}

// Opens a directory whose descriptor was given up, from its nearest ancestor that is open, and
// leaves as many of those in between open as the budget allows: the way back up needs them.
int WalkEngine::reopen(Lock& lock, Folder& folder, Role role) {
  std::vector<Folder*> chain;
  Folder* base = &folder;
  for (; base->descriptor < 0; base = base->parent) chain.push_back(base);
  ++base->pins;

  std::vector<OpenedOnTheWay> opened;
  int directory = base->descriptor;
  int result = 0;
  for (std::size_t left = chain.size(); left > 0; --left) {
    Folder& at = *chain[left - 1];
    // The names lie in batches of ancestors, which stay until the consumer has left them.
    result = openRelative(lock, directory, at.name.data(), role, &opened);
    if (result < 0) break;
    Folder seen;
    readFolderAttributes(result, seen);
    if (seen.inode != at.inode || seen.device != at.device) {
      toClose_.push_back(result);
      result = -ENOENT;  // another directory stands there now
      break;
    }
    opened.push_back({&at, result});
    directory = result;
    if (opened.size() > std::max<std::size_t>(openFolders_.budget() / 2, 1)) {
      close(opened.front().descriptor);
      opened.erase(opened.begin());
    }
  }
  unpin(*base);

  if (!opened.empty() && result >= 0) opened.pop_back();
  for (const OpenedOnTheWay& each : opened) {
    if (result >= 0 && each.folder->descriptor < 0 && each.folder->needs > 0) {
      each.folder->descriptor = each.descriptor;
      openFolders_.add(*each.folder);
    } else {
      toClose_.push_back(each.descriptor);
    }
  }
  return result;
}

}  // namespace tessaly::walk
