#include "platform/DirectoryWalk.h"

#include <dirent.h>
#include <unistd.h>
#include <utility>

#include "platform/linux/walk/OpenDirectory.h"
#include "platform/linux/walk/WalkEngine.h"

namespace tessaly {

class DirectoryWalk::Impl : public walk::WalkEngine {
 public:
  using WalkEngine::WalkEngine;
};

DirectoryWalk::DirectoryWalk(const std::string& root, Decide decide, int threads,
                             const std::shared_ptr<const MountSnapshot>& mounts,
                             Unreadable unreadable, Reading reading)
    : impl_(std::make_unique<Impl>(root, std::move(decide), threads,
                                   mounts != nullptr ? *mounts : *mountsOfNow(),
                                   std::move(unreadable), std::move(reading))) {}

DirectoryWalk::~DirectoryWalk() = default;

bool DirectoryWalk::isOpen() const {
  return impl_->isOpen();
}

const DirectoryWalk::Item* DirectoryWalk::next() {
  return impl_->next();
}

void DirectoryWalk::stop() {
  impl_->stop();
}

std::size_t DirectoryWalk::countEntries(const std::string& root) {
  const int descriptor = walk::openDirectory(root);
  DIR* const directory = descriptor < 0 ? nullptr : fdopendir(descriptor);
  if (directory == nullptr) {
    if (descriptor >= 0) close(descriptor);
    return 0;
  }
  std::size_t count = 0;
  while (readdir(directory) != nullptr) ++count;
  closedir(directory);
  return count < 2 ? 0 : count - 2;  // "." and ".."
}

}  // namespace tessaly
