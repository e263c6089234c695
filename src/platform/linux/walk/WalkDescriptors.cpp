// The part of a walk that opens and closes directories, with as many descriptors as it can get.

#include <algorithm>
#include <cerrno>
#include <chrono>
#include <fcntl.h>
#include <sys/stat.h>
#include <sys/statfs.h>
#include <thread>
#include <unistd.h>

#include "platform/linux/Uninterrupted.h"
#include "platform/linux/walk/OpenDirectory.h"
#include "platform/linux/walk/WalkEngine.h"

namespace tessaly::walk {

namespace {

// Interval between attempts while another part of the program holds the descriptors.
constexpr std::chrono::milliseconds waitForOthers(4);

bool isShortage(int error) {
  return error == EMFILE || error == ENFILE;
}

bool isPseudo(int descriptor) {
  struct statfs system;
  return uninterrupted([&] { return fstatfs(descriptor, &system); }) == 0 &&
         isPseudoFileSystem(static_cast<long>(system.f_type));
}

// Whether the directory open at `descriptor` is inside `parent`. Returns 0 or an errno.
int lookAbove(int descriptor, const Folder& parent, bool& isInParent) {
  struct stat above;
  if (uninterrupted([&] { return fstatat(descriptor, "..", &above, 0); }) != 0) return errno;
  isInParent = above.st_ino == parent.inode && above.st_dev == parent.device;
  return 0;
}

Folder* nearestOpen(Folder& folder) {
  Folder* at = &folder;
  while (at != nullptr && at->descriptor < 0) at = at->parent;
  return at;
}

}  // namespace

void WalkEngine::closeAll(Lock& lock, std::vector<int>& descriptors) {
  if (descriptors.empty()) return;
  std::vector<int> mine;
  mine.swap(descriptors);
  lock.unlock();
  for (const int descriptor : mine) close(descriptor);
  lock.lock();
}

// Keeps `descriptor` as the folder's, unless another thread was faster. Returns the one that is
// kept.
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

// Returns when no helper is reading or will read any more: then only the caller uses descriptors of
// the walk.
void WalkEngine::retireHelpers(Lock& lock) {
  helpersRetire_ = true;
  consumerWaits_ = true;
  ready_.wait(lock, [this] { return busyHelpers_ == 0; });
  consumerWaits_ = false;
}

// False if there is nothing left to close.
bool WalkEngine::giveUpAll(Lock& lock) {
  for (int spare = openFolders_.evictRootToo(); spare >= 0; spare = openFolders_.evictRootToo()) {
    toClose_.push_back(spare);
  }
  if (toClose_.empty()) return false;
  closeAll(lock, toClose_);
  return true;
}

// Opens a directory for the first time and reads its attributes. Returns its descriptor, or a
// negative value: -EMFILE when descriptors have run out, another negative errno, or nothingToRead.
int WalkEngine::openFolder(Lock& lock, Folder& folder, Role role) {
  folder.needs = 1;
  int descriptor = -EMFILE;
  if (nearestOpen(folder) != nullptr) descriptor = openInParent(lock, folder, role);
  if (descriptor == -EMFILE && role == Role::consumer) {
    descriptor = openFolderByPath(lock, folder);
  }
  if (descriptor < 0) return descriptor;

  lock.unlock();
  folder.first.failure = readFolderAttributes(descriptor, folder);
  if (folder.device != folder.parent->device && isPseudo(descriptor)) {
    close(descriptor);
    descriptor = nothingToRead;
  }
  lock.lock();
  return descriptor;
}

int WalkEngine::openInParent(Lock& lock, Folder& folder, Role role) {
  Folder& parent = *folder.parent;
  ++parent.pins;
  int directory = parent.descriptor;
  if (directory < 0) {
    directory = reopen(lock, parent, role);
    if (directory >= 0) directory = takeOver(parent, directory);
  }
  int descriptor = directory;
  if (directory >= 0) {
    descriptor = openRelative(lock, directory, folder, folder.name.data(), role);
  }
  unpin(parent);
  return descriptor;
}

// Opens the entry `name` of a directory. When descriptors run out, closes those kept for later,
// then those in `held` except the last, which is `directory`. For an entry that cannot be opened,
// stores its visible attributes in `seen`.
int WalkEngine::openRelative(Lock& lock, int directory, Folder& seen, const char* name, Role role,
                             std::vector<OpenedOnTheWay>* held) {
  for (;;) {
    if (stop_) return -EMFILE;  // only for a helper; must not be retried either
    lock.unlock();
    const int descriptor = uninterrupted(
        [&] { return openat(directory, name, O_RDONLY | O_DIRECTORY | O_NOFOLLOW | O_CLOEXEC); });
    const int error = descriptor < 0 ? errno : 0;
    const bool isGone =
        descriptor < 0 && !isShortage(error) && !readFolderAttributesByName(directory, name, seen);
    lock.lock();
    if (descriptor >= 0) return descriptor;
    if (isGone) return nothingToRead;
    if (!isShortage(error)) return -error;
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
    if (role == Role::helper || busyHelpers_ == 0) return -EMFILE;
    retireHelpers(lock);
  }
}

// Opens a directory whose descriptor was closed.
int WalkEngine::reopen(Lock& lock, Folder& folder, Role role) {
  const int descriptor = reopenFromAncestor(lock, folder, role);
  if (descriptor != -EMFILE || role == Role::helper) return descriptor;
  Folder seen;
  return keepIfSame(openByPath(lock, folder, seen), folder);
}

// Returns `descriptor` if it is open on the same folder as before; nothingToRead if another folder
// is there now.
int WalkEngine::keepIfSame(int descriptor, const Folder& folder) {
  if (descriptor < 0) return descriptor;
  Folder seen;
  const int error = readFolderAttributes(descriptor, seen);
  if (error == 0 && seen.inode == folder.inode && seen.device == folder.device) return descriptor;
  toClose_.push_back(descriptor);
  return error == 0 ? nothingToRead : -error;
}

// Reopens a directory from its nearest open ancestor, and leaves as many of the folders in between
// open as the budget allows, since the walk needs them on its way back.
int WalkEngine::reopenFromAncestor(Lock& lock, Folder& folder, Role role) {
  Folder* const base = nearestOpen(folder);
  if (base == nullptr) return -EMFILE;
  std::vector<Folder*> chain;
  for (Folder* at = &folder; at != base; at = at->parent) chain.push_back(at);
  ++base->pins;

  std::vector<OpenedOnTheWay> opened;
  int directory = base->descriptor;
  int result = 0;
  for (std::size_t left = chain.size(); left > 0; --left) {
    Folder& at = *chain[left - 1];
    // The names are in batches of ancestors, which exist until the consumer has left them.
    Folder seen;
    result = keepIfSame(openRelative(lock, directory, seen, at.name.data(), role, &opened), at);
    if (result < 0) break;
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

// Opens a directory by its whole path, which needs one descriptor instead of a parent's and its
// own. If none is available, the walk closes all its own, including the root's, and then waits for
// other parts of the program, for a limited time. Only for the consumer.
int WalkEngine::openByPath(Lock& lock, const Folder& folder, Folder& seen) {
  const std::string path = folderPath(root_, folder);
  for (;;) {
    lock.unlock();
    const int descriptor = openDirectory(path, O_NOFOLLOW);
    const int error = descriptor < 0 ? errno : 0;
    lock.lock();
    if (descriptor >= 0) return descriptor;
    if (isShortage(error)) {
      if (busyHelpers_ > 0) retireHelpers(lock);
      if (giveUpAll(lock)) continue;
      if (waitsLeft_ > 0) {
        --waitsLeft_;
        lock.unlock();
        std::this_thread::sleep_for(waitForOthers);
        lock.lock();
        continue;
      }
    }
    lock.unlock();
    const bool isThere = readFolderAttributesByName(AT_FDCWD, path.c_str(), seen);
    lock.lock();
    if (!isThere) return nothingToRead;
    return isShortage(error) ? -EMFILE : -error;
  }
}

int WalkEngine::openFolderByPath(Lock& lock, Folder& folder) {
  const int descriptor = openByPath(lock, folder, folder);
  if (descriptor < 0) return descriptor;
  // The path may lead to another folder by now.
  lock.unlock();
  bool isInParent = false;
  const int error = lookAbove(descriptor, *folder.parent, isInParent);
  if (error != 0 || !isInParent) close(descriptor);
  lock.lock();
  if (error != 0) return -error;
  return isInParent ? descriptor : nothingToRead;
}

}  // namespace tessaly::walk
