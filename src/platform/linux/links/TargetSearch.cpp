#include "platform/linux/links/TargetSearch.h"

#include <algorithm>
#include <cerrno>
#include <climits>
#include <fcntl.h>
#include <sys/stat.h>
#include <unistd.h>
#include <utility>

#include "platform/linux/Uninterrupted.h"
#include "platform/linux/links/FolderWithoutLinks.h"

namespace tessaly {

namespace {

using Target = LinkTargets::Target;

constexpr int mostLinks = 40;

// Everything else than these says nothing about the target: a folder that must not be searched, a
// device that is gone, a lack of memory.
Target targetAfter(int code) {
  const bool isMissing = code == ENOENT || code == ENOTDIR || code == ELOOP;
  return isMissing ? Target::missing : Target::unknown;
}

// The path of the item `name` in the folder `path`, or of the folder above it.
void step(std::string& path, std::string_view name) {
  if (name == "..") {
    path.resize(std::max<std::size_t>(path.rfind('/'), 1));
    return;
  }
  if (!path.ends_with('/')) path += '/';
  path += name;
}

// Takes the first component off `rest`, which has none if the result is empty.
std::string_view takeComponent(std::string_view& rest) {
  rest.remove_prefix(std::min(rest.find_first_not_of('/'), rest.size()));
  const std::string_view component = rest.substr(0, rest.find('/'));
  rest.remove_prefix(component.size());
  return component;
}

}  // namespace

std::string linkText(int folder, const char* name) {
  std::string text(PATH_MAX, '\0');
  while (true) {
    const ssize_t length =
        uninterrupted([&] { return ::readlinkat(folder, name, text.data(), text.size()); });
    if (length < 0) return {};
    if (static_cast<std::size_t>(length) < text.size()) {
      text.resize(static_cast<std::size_t>(length));
      return text;
    }
    text.resize(text.size() * 2);
  }
}

TargetSearch::TargetSearch(const VisibleMounts& mounts, std::function<bool()> isCancelled)
    : mounts_(mounts),
      avoided_(mounts),
      isCancelled_(std::move(isCancelled)),
      root_(uninterrupted([] { return ::open("/", O_PATH | O_DIRECTORY | O_CLOEXEC); })) {}

Target TargetSearch::find(int folder, const std::string& folderPath, std::string_view text,
                          int links) {
  if (text.empty() || text.find('\0') != std::string_view::npos) return Target::missing;
  if (leadsToAvoided(folderPath, text)) return Target::unknown;
  // Most paths have no link in them and need one call.
  if (text.size() < PATH_MAX) {
    if (itemWithoutLinks(folder, text)) return Target::exists;
    if (errno != ELOOP && errno != ENOSYS) return targetAfter(errno);
  }
  return follow(folder, folderPath, text, links);
}

// Whether the path comes to an avoided mount if no link is in it.
bool TargetSearch::leadsToAvoided(const std::string& folderPath, std::string_view text) const {
  if (avoided_.empty()) return false;
  const bool isAbsolute = text.starts_with('/');
  if (!isAbsolute && avoided_.contains(folderPath)) return true;
  std::string path = isAbsolute ? "/" : folderPath;
  while (true) {
    const std::string_view component = takeComponent(text);
    if (component.empty()) return false;
    if (component == ".") continue;
    step(path, component);
    if (avoided_.isPoint(path)) return true;
  }
}

// The descriptors in /proc/PID may lead anywhere, also to what has no path.
bool TargetSearch::isProcessLink(std::string_view folderPath) const {
  const std::optional<VisibleMounts::Index> mount = mounts_.at(folderPath);
  return mount && mounts_.all()[*mount].type == "proc" && mounts_.all()[*mount].point != folderPath;
}

Target TargetSearch::follow(int folder, const std::string& folderPath, std::string_view text,
                            int links) {
  std::string whole(text);
  std::string_view rest = whole;
  std::string path = folderPath;  // of the item that `at` is
  FileDescriptor held;
  int at = folder;
  bool isFolder = true;
  const auto startAtRoot = [&] {
    path = "/";
    at = root_.get();
  };
  if (rest.starts_with('/')) startAtRoot();

  while (true) {
    if (isCancelled_ && isCancelled_()) return Target::unknown;
    const bool hadSlash = rest.starts_with('/');
    const std::string_view component = takeComponent(rest);
    if (component.empty()) return hadSlash && !isFolder ? Target::missing : Target::exists;
    if (!isFolder) return Target::missing;
    if (component == "." || (component == ".." && path == "/")) continue;

    std::string next = path;
    step(next, component);
    if (avoided_.isPoint(next)) return Target::unknown;
    const std::string name(component);
    FileDescriptor item(
        uninterrupted([&] { return ::openat(at, name.c_str(), O_PATH | O_NOFOLLOW | O_CLOEXEC); }));
    if (!item) return targetAfter(errno);
    struct stat status {};
    if (::fstat(item.get(), &status) != 0) return Target::unknown;
    if (!S_ISLNK(status.st_mode)) {
      isFolder = S_ISDIR(status.st_mode);
      path = std::move(next);
      held = std::move(item);
      at = held.get();
      continue;
    }

    if (++links > mostLinks) return Target::missing;
    if (isProcessLink(path)) return rest.empty() ? Target::exists : Target::unknown;
    std::string link = linkText(item.get(), "");
    if (link.empty()) return Target::unknown;
    whole = std::move(link.append(rest));
    rest = whole;
    if (rest.starts_with('/')) startAtRoot();
  }
}

}  // namespace tessaly
