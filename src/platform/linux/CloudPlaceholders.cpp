#include "platform/CloudPlaceholders.h"

#include <algorithm>
#include <array>
#include <fcntl.h>
#include <sys/stat.h>

#include "platform/linux/Uninterrupted.h"
#include "platform/linux/links/FolderWithoutLinks.h"

namespace tessaly::CloudPlaceholders {

namespace {

// The clients replace a file by one with this suffix, under no other name, and back.
constexpr std::array<std::string_view, 2> suffixes = {".nextcloud", ".owncloud"};

// They write a single blank into it. A file with content of its own only has such a name.
constexpr off_t mostContent = 64;

}  // namespace

bool mayBe(std::string_view name) {
  return std::ranges::any_of(suffixes, [name](std::string_view suffix) {
    return name.size() > suffix.size() && name.ends_with(suffix);
  });
}

std::optional<std::int64_t> sizeOf(const std::string& folder, const std::string& name) {
  if (!mayBe(name)) return std::nullopt;
  const FileDescriptor parent = folderWithoutLinks(folder);
  struct stat status {};
  constexpr int flags = AT_SYMLINK_NOFOLLOW | AT_NO_AUTOMOUNT;
  if (!parent ||
      uninterrupted([&] { return ::fstatat(parent.get(), name.c_str(), &status, flags); }) != 0) {
    return std::nullopt;
  }
  if (!S_ISREG(status.st_mode) || status.st_size > mostContent) return std::nullopt;
  return 0;
}

}  // namespace tessaly::CloudPlaceholders
