#include "platform/AtomicFile.h"

#include <algorithm>
#include <atomic>
#include <cerrno>
#include <climits>
#include <cstdio>
#include <fcntl.h>
#include <sys/stat.h>
#include <sys/types.h>
#include <unistd.h>
#include <utility>

#include "platform/linux/FileDescriptor.h"
#include "platform/linux/Uninterrupted.h"

namespace tessaly::AtomicFile {

namespace {

SystemError lastError(std::string_view path) {
  return SystemError::fromErrno(errno, path);
}

// Where a file is, or is to be: an open folder and a name in it.
struct Place {
  FileDescriptor folder;
  std::string folderPath;  // ends in "/" unless it is empty
  std::string name;

  std::string path() const { return folderPath + name; }
};

// The path at the end of the links that start at `path`; what it names need not be there.
Result<std::string> endOfLinks(const std::string& path) {
  constexpr int mostLinks = 40;  // as the kernel follows on its own
  std::string end = path;
  for (int links = 0; links < mostLinks; ++links) {
    char target[PATH_MAX];
    const ssize_t length = ::readlink(end.c_str(), target, sizeof target);
    if (length < 0) {
      if (errno == EINVAL || errno == ENOENT) return end;
      return lastError(path);
    }
    const std::string_view leadsTo(target, static_cast<std::size_t>(length));
    if (!leadsTo.starts_with('/')) {
      end.resize(end.rfind('/') + 1);  // nothing is left of a path without "/"
      end += leadsTo;
    } else {
      end = leadsTo;
    }
  }
  return SystemError::fromErrno(ELOOP, path);
}

Result<Place> placeOf(const std::string& path, int folderFlags) {
  Result<std::string> end = endOfLinks(path);
  if (!end) return end.error();
  Place place;
  place.folderPath = end.value().substr(0, end.value().rfind('/') + 1);
  place.name = end.value().substr(place.folderPath.size());
  if (place.name.empty()) return SystemError::fromErrno(path.empty() ? ENOENT : EISDIR, path);
  const std::string folder = place.folderPath.empty() ? "." : place.folderPath;
  place.folder = FileDescriptor(
      uninterrupted([&] { return ::open(folder.c_str(), folderFlags | O_DIRECTORY | O_CLOEXEC); }));
  if (!place.folder) return lastError(path);
  return place;
}

// 0 for a regular file, else why it is not to be read or replaced.
int objectionTo(const struct stat& status) {
  if (S_ISDIR(status.st_mode)) return EISDIR;
  return S_ISREG(status.st_mode) ? 0 : EOPNOTSUPP;
}

// Whether a file may take the place: 0, or the errno that says why not.
int objectionToReplacing(const Place& place) {
  struct stat status {};
  if (::fstatat(place.folder.get(), place.name.c_str(), &status, AT_SYMLINK_NOFOLLOW) != 0) {
    return errno == ENOENT ? 0 : errno;
  }
  return objectionTo(status);
}

// A new file in a folder, taken away again unless it is moved into place.
class Temporary {
 public:
  Temporary(int folder, mode_t mode) : folder_(folder) {
    // Names of this process are never used twice. One left behind by a process that was killed, and
    // whose number this one has now, is stepped over.
    static std::atomic<unsigned> counter = 0;
    constexpr int tries = 1000;
    for (int attempt = 0; attempt < tries; ++attempt) {
      name_ = ".tessaly-" + std::to_string(::getpid()) + "-" + std::to_string(++counter);
      file_ = FileDescriptor(uninterrupted([&] {
        return ::openat(folder_, name_.c_str(), O_WRONLY | O_CREAT | O_EXCL | O_CLOEXEC, mode);
      }));
      if (file_ || errno != EEXIST) break;
    }
    isThere_ = static_cast<bool>(file_);
  }
  Temporary(const Temporary&) = delete;
  Temporary& operator=(const Temporary&) = delete;
  ~Temporary() {
    if (isThere_) ::unlinkat(folder_, name_.c_str(), 0);
  }

  // All of these give false with errno set.
  bool isThere() const { return isThere_; }

  bool write(std::string_view content) {
    constexpr std::size_t mostAtOnce = std::size_t{1} << 30U;
    while (!content.empty()) {
      const std::size_t length = std::min(content.size(), mostAtOnce);
      const ssize_t written =
          uninterrupted([&] { return ::write(file_.get(), content.data(), length); });
      if (written <= 0) {
        if (written == 0) errno = EIO;
        return false;
      }
      content.remove_prefix(static_cast<std::size_t>(written));
    }
    return true;
  }

  bool sync() {
    return uninterrupted([&] { return ::fsync(file_.get()); }) == 0;
  }

  // An interrupted close has closed all the same.
  bool close() { return file_.close() == 0 || errno == EINTR; }

  bool moveTo(const std::string& name) {
    if (::renameat(folder_, name_.c_str(), folder_, name.c_str()) != 0) return false;
    isThere_ = false;
    return true;
  }

 private:
  int folder_;
  std::string name_;
  FileDescriptor file_;
  bool isThere_ = false;
};

// A file system that cannot sync a folder says EINVAL; there is nothing more to be had then.
bool syncFolder(int folder) {
  return uninterrupted([&] { return ::fsync(folder); }) == 0 || errno == EINVAL;
}

// Without the flag, where the file system does not know it, by a second name for the file.
bool moveWithoutReplacing(int folder, const std::string& from, const std::string& to) {
  if (::renameat2(folder, from.c_str(), folder, to.c_str(), RENAME_NOREPLACE) == 0) return true;
  if (errno != EINVAL && errno != ENOSYS) return false;
  return ::linkat(folder, from.c_str(), folder, to.c_str(), 0) == 0 &&
         ::unlinkat(folder, from.c_str(), 0) == 0;
}

}  // namespace

Outcome replace(const std::string& path, std::string_view content, Durability durability,
                Access access) {
  const bool isSynced = durability == Durability::synced;
  const Result<Place> place = placeOf(path, isSynced ? O_RDONLY : O_PATH);
  if (!place) return place.error();
  const int folder = place.value().folder.get();
  if (const int objection = objectionToReplacing(place.value()); objection != 0) {
    return SystemError::fromErrno(objection, path);
  }
  Temporary temporary(folder, access == Access::owner ? 0600 : 0666);
  if (!temporary.isThere() || !temporary.write(content) || (isSynced && !temporary.sync()) ||
      !temporary.close() || !temporary.moveTo(place.value().name) ||
      (isSynced && !syncFolder(folder))) {
    return lastError(path);
  }
  return succeeded();
}

Result<std::string> read(const std::string& path, std::size_t limit) {
  const FileDescriptor file(uninterrupted(
      [&] { return ::open(path.c_str(), O_RDONLY | O_NONBLOCK | O_NOCTTY | O_CLOEXEC); }));
  struct stat status {};
  if (!file || ::fstat(file.get(), &status) != 0) return lastError(path);
  if (const int objection = objectionTo(status); objection != 0) {
    return SystemError::fromErrno(objection, path);
  }
  // One byte more than is expected tells the end of a file that did not grow meanwhile.
  std::string content;
  std::size_t length = 0;
  auto expected = static_cast<std::size_t>(status.st_size);
  while (expected <= limit) {
    content.resize(expected + 1);
    const ssize_t count = uninterrupted(
        [&] { return ::read(file.get(), content.data() + length, content.size() - length); });
    if (count < 0) return lastError(path);
    if (count == 0) {
      content.resize(length);
      return content;
    }
    length += static_cast<std::size_t>(count);
    expected = std::max(expected, length);
  }
  return SystemError::fromErrno(EFBIG, path);
}

Result<std::string> setAside(const std::string& path, std::string_view ending) {
  Result<Place> found = placeOf(path, O_PATH);
  if (!found) return found.error();
  const Place& place = found.value();
  constexpr int tries = 10000;
  for (int number = 1; number <= tries; ++number) {
    std::string name = place.name + std::string(ending);
    if (number > 1) name += "-" + std::to_string(number);
    if (moveWithoutReplacing(place.folder.get(), place.name, name)) return place.folderPath + name;
    if (errno != EEXIST) break;
  }
  return lastError(path);
}

}  // namespace tessaly::AtomicFile
