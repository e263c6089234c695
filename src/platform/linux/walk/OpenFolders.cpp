#include "platform/linux/walk/OpenFolders.h"

#include <algorithm>
#include <sys/resource.h>
#include <utility>

namespace tessaly::walk {

namespace {

// A quarter of the process's limit: the rest of the program needs descriptors during a walk.
std::size_t descriptorBudget() {
  constexpr std::size_t least = 4;
  constexpr std::size_t most = 512;
  rlimit limit{};
  if (getrlimit(RLIMIT_NOFILE, &limit) != 0) return least;
  return std::clamp<std::size_t>(limit.rlim_cur / 4, least, most);
}

}  // namespace

OpenFolders::OpenFolders() : budget_(descriptorBudget()) {}

void OpenFolders::add(Folder& folder) {
  folder.listed = true;
  folder.older = newest_;
  folder.newer = nullptr;
  (newest_ != nullptr ? newest_->newer : oldest_) = &folder;
  newest_ = &folder;
  ++count_;
}

int OpenFolders::remove(Folder& folder) {
  if (!folder.listed) return -1;
  (folder.older != nullptr ? folder.older->newer : oldest_) = folder.newer;
  (folder.newer != nullptr ? folder.newer->older : newest_) = folder.older;
  folder.listed = false;
  --count_;
  return std::exchange(folder.descriptor, -1);
}

int OpenFolders::evict() {
  for (Folder* folder = oldest_; folder != nullptr; folder = folder->newer) {
    if (folder->pins == 0 && folder->parent != nullptr) return remove(*folder);
  }
  return -1;
}

int OpenFolders::evictRootToo() {
  const int spare = evict();
  if (spare >= 0) return spare;
  for (Folder* folder = oldest_; folder != nullptr; folder = folder->newer) {
    if (folder->pins == 0) return remove(*folder);
  }
  return -1;
}

}  // namespace tessaly::walk
