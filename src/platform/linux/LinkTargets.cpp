#include "platform/LinkTargets.h"

#include <cerrno>
#include <cstdlib>
#include <fcntl.h>
#include <sys/stat.h>
#include <unistd.h>
#include <utility>

#include "platform/HomeDirectory.h"
#include "platform/linux/FileDescriptor.h"
#include "platform/linux/MountSnapshotData.h"
#include "platform/linux/Uninterrupted.h"
#include "platform/linux/links/FolderWithoutLinks.h"
#include "platform/linux/links/LinkEntry.h"
#include "platform/linux/links/TargetSearch.h"

namespace tessaly {

namespace {

constexpr std::string_view entrySuffix = ".desktop";

// Longer ones are not made by desktops.
constexpr std::size_t longestEntry = std::size_t{64} * 1024;

// The whole content of a regular file; absent for anything else, a longer file, or a failure.
std::optional<std::string> contentOf(int folder, const std::string& name) {
  constexpr int flags = O_RDONLY | O_NOFOLLOW | O_NONBLOCK | O_NOCTTY | O_CLOEXEC;
  const FileDescriptor file(uninterrupted([&] { return ::openat(folder, name.c_str(), flags); }));
  struct stat status {};
  if (!file || ::fstat(file.get(), &status) != 0 || !S_ISREG(status.st_mode)) return std::nullopt;
  std::string content(longestEntry + 1, '\0');
  std::size_t filled = 0;
  while (filled < content.size()) {
    const ssize_t count = uninterrupted(
        [&] { return ::read(file.get(), content.data() + filled, content.size() - filled); });
    if (count < 0) return std::nullopt;
    if (count == 0) {
      content.resize(filled);
      return content;
    }
    filled += static_cast<std::size_t>(count);
  }
  return std::nullopt;
}

std::optional<std::string> variable(const std::string& name) {
  if (name == "HOME") return homeDirectory();
  const char* const value = std::getenv(name.c_str());
  return value == nullptr ? std::nullopt : std::optional<std::string>(value);
}

}  // namespace

class LinkTargets::Impl {
 public:
  Impl(const std::shared_ptr<const MountSnapshot>& mounts, std::function<bool()> isCancelled)
      : mounts_(mounts != nullptr ? mounts : mountsOfNow()),
        search_(mounts_->mounts(), std::move(isCancelled)) {}

  std::optional<Link> ofLink(const std::string& folder, const std::string& name) {
    if (!enter(folder)) return std::nullopt;
    Link link{.destination = linkText(folder_.get(), name.c_str())};
    if (link.destination.empty()) return std::nullopt;
    link.target = search_.find(folder_.get(), folder, link.destination, 1);
    return link;
  }

  std::optional<Link> ofAlias(const std::string& folder, const std::string& name) {
    if (!enter(folder)) return std::nullopt;
    const std::optional<std::string> content = contentOf(folder_.get(), name);
    std::optional<std::string> path =
        content ? LinkEntry::destinationIn(*content, hostName(), variable) : std::nullopt;
    if (!path) return std::nullopt;
    Link link{.destination = *std::move(path), .target = Target::missing};
    if (!link.destination.empty()) {
      link.target = search_.find(folder_.get(), folder, link.destination, 0);
    }
    return link;
  }

 private:
  // Links are found folder by folder.
  bool enter(const std::string& folder) {
    if (folder_ && folder == folderPath_) return true;
    folder_ = folderWithoutLinks(folder);
    folderPath_ = folder;
    return static_cast<bool>(folder_);
  }

  const std::string& hostName() {
    if (hostName_.empty()) {
      constexpr std::size_t longest = 256;
      hostName_.resize(longest);
      if (::gethostname(hostName_.data(), longest - 1) != 0) hostName_.front() = '\0';
      hostName_.resize(hostName_.find('\0'));
    }
    return hostName_;
  }

  const std::shared_ptr<const MountSnapshot> mounts_;
  TargetSearch search_;
  std::string folderPath_;
  FileDescriptor folder_;
  std::string hostName_;
};

LinkTargets::LinkTargets(const std::shared_ptr<const MountSnapshot>& mounts,
                         std::function<bool()> isCancelled)
    : impl_(std::make_unique<Impl>(mounts, std::move(isCancelled))) {}

LinkTargets::~LinkTargets() = default;

std::optional<LinkTargets::Link> LinkTargets::ofLink(const std::string& folder,
                                                     const std::string& name) {
  return impl_->ofLink(folder, name);
}

std::optional<LinkTargets::Link> LinkTargets::ofAlias(const std::string& folder,
                                                      const std::string& name) {
  return impl_->ofAlias(folder, name);
}

bool LinkTargets::mayBeAlias(std::string_view name) {
  return name.ends_with(entrySuffix);
}

}  // namespace tessaly
