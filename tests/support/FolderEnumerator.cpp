#include "support/FolderEnumerator.h"

#include <algorithm>
#include <fcntl.h>
#include <filesystem>
#include <sys/vfs.h>
#include <system_error>

namespace tessaly {
namespace {

namespace fs = std::filesystem;

// File systems without files of the user, which show data of the kernel.
bool isPseudoFileSystem(const std::string& folder) {
  struct statfs system {};
  if (statfs(folder.c_str(), &system) != 0) return false;
  constexpr long kinds[] = {0x9fa0 /* proc */,           0x62656572 /* sysfs */,
                            0x0187 /* autofs */,         0x1cd1 /* devpts */,
                            0x27e0eb /* cgroup */,       0x63677270 /* cgroup2 */,
                            0x64626720 /* debugfs */,    0x74726163 /* tracefs */,
                            0x73636673 /* securityfs */, 0xcafe4a11 /* bpf */};
  return std::find(std::begin(kinds), std::end(kinds), system.f_type) != std::end(kinds);
}

}  // namespace

std::optional<std::vector<std::string>> namesIn(const std::string& folder) {
  std::error_code error;
  fs::directory_iterator entry(folder, error);
  if (error) return std::nullopt;
  std::vector<std::string> names;
  for (; !error && entry != fs::directory_iterator(); entry.increment(error)) {
    names.push_back(entry->path().filename().native());
  }
  return names;
}

FolderEnumerator::FolderEnumerator(const std::string& folder, std::string path, SiblingOrder order)
    : order_(std::move(order)) {
  made_ = enter(folder, std::move(path));
}

FolderEnumerator::~FolderEnumerator() {
  while (!frames_.empty()) leave();
}

bool FolderEnumerator::enter(const std::string& folder, std::string path) {
  auto names = namesIn(folder);
  if (!names) return false;
  if (order_) order_(*names);
  Frame frame;
  frame.path = std::move(path);
  frame.names = std::move(*names);
  std::error_code error;
  fs::current_path(folder, error);
  frame.entered = !error;
  frames_.push_back(std::move(frame));
  return true;
}

void FolderEnumerator::leave() {
  if (frames_.back().entered) fs::current_path("..");
  frames_.pop_back();
}

std::optional<FolderEnumerator::Item> FolderEnumerator::nextObject() {
  if (last_ && descends_ && last_->values && S_ISDIR(last_->values->st_mode)) {
    struct stat parent {};
    const bool isMount = ::stat(".", &parent) == 0 && parent.st_dev != last_->values->st_dev;
    if (!isMount || !isPseudoFileSystem(last_->name)) enter(last_->name, last_->path);
  }
  while (!frames_.empty() && frames_.back().next == frames_.back().names.size()) leave();
  last_.reset();
  if (frames_.empty()) return std::nullopt;
  Frame& frame = frames_.back();
  Item item;
  item.name = frame.names[frame.next++];
  item.path = (frame.path == "/" ? "" : frame.path) + "/" + item.name;
  struct stat values {};
  if (frame.entered && lstat(item.name.c_str(), &values) == 0) item.values = values;
  last_ = item;
  descends_ = true;
  return item;
}

}  // namespace tessaly
