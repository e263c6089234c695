#include "platform/tools/linux/SmallFiles.h"

#include <dirent.h>
#include <fcntl.h>
#include <string_view>
#include <sys/stat.h>
#include <unistd.h>

#include "platform/linux/Uninterrupted.h"

namespace tessaly::tools {

namespace {

constexpr int always = O_RDONLY | O_CLOEXEC | O_NONBLOCK | O_NOCTTY;

FileDescriptor opened(int parent, const std::string& path, int flags) {
  return FileDescriptor(
      uninterrupted([&] { return openat(parent, path.c_str(), always | flags); }));
}

}  // namespace

FileDescriptor folderIn(int parent, const std::string& name) {
  return opened(parent, name, O_DIRECTORY | O_NOFOLLOW);
}

FileDescriptor folderAt(const std::string& path) {
  return opened(AT_FDCWD, path, O_DIRECTORY);
}

std::vector<std::string> namesIn(const FileDescriptor& folder, std::size_t most) {
  std::vector<std::string> names;
  const int own = folder ? openat(folder.get(), ".", always | O_DIRECTORY) : -1;
  DIR* const stream = own < 0 ? nullptr : fdopendir(own);
  if (stream == nullptr) {
    if (own >= 0) close(own);
    return names;
  }
  while (names.size() < most) {
    const dirent* const entry = readdir(stream);
    if (entry == nullptr) break;
    const std::string_view name = entry->d_name;
    if (name != "." && name != "..") names.emplace_back(name);
  }
  closedir(stream);
  return names;
}

std::optional<std::string> smallFile(int parent, const std::string& path, std::size_t most,
                                     bool followsLink) {
  const FileDescriptor file = opened(parent, path, followsLink ? 0 : O_NOFOLLOW);
  struct stat status {};
  if (!file || fstat(file.get(), &status) != 0 || !S_ISREG(status.st_mode)) return std::nullopt;
  // One byte more than allowed: files of the kernel do not tell their length.
  std::string text(most + 1, '\0');
  std::size_t length = 0;
  while (length < text.size()) {
    const ssize_t got =
        uninterrupted([&] { return read(file.get(), text.data() + length, text.size() - length); });
    if (got < 0) return std::nullopt;
    if (got == 0) break;
    length += static_cast<std::size_t>(got);
  }
  if (length > most) return std::nullopt;
  text.resize(length);
  return text;
}

}  // namespace tessaly::tools
