#include "platform/FileDigest.h"

#include <algorithm>
#include <cerrno>
#include <fcntl.h>
#include <memory>
#include <sys/stat.h>
#include <unistd.h>

#include "platform/Sha256.h"
#include "platform/linux/AllocatedBytes.h"
#include "platform/linux/CacheFootprint.h"
#include "platform/linux/FileDescriptor.h"
#include "platform/linux/IdentityFromStatus.h"
#include "platform/linux/OpenPath.h"
#include "platform/linux/Uninterrupted.h"

namespace tessaly {

namespace {

constexpr std::int64_t longestPart = std::int64_t{1} << 20U;

SystemError hasChanged(const std::string& path) {
  return {.kind = SystemError::Kind::changed, .path = path, .code = 0};
}

Result<struct statx> statusOf(const FileDescriptor& file, const std::string& path) {
  struct statx status {};
  if (::statx(file.get(), "", AT_EMPTY_PATH | AT_NO_AUTOMOUNT, identityMask, &status) != 0)
    return SystemError::fromErrno(errno, path);
  if (S_ISLNK(status.stx_mode)) return SystemError::fromErrno(ELOOP, path);
  if (!S_ISREG(status.stx_mode)) return SystemError::fromErrno(EINVAL, path);
  return status;
}

// The item is held before it is opened for reading, so that nothing but a regular file is, whatever
// is put at the path meanwhile. The descriptor's own name means this item.
Result<FileDescriptor> openFile(const std::string& path) {
  // The system would cut the path at the NUL.
  if (!path.starts_with('/') || path.find('\0') != std::string::npos)
    return SystemError::fromErrno(EINVAL, path);
  const FileDescriptor item = openPath(path, O_PATH | O_NOFOLLOW);
  if (!item) return SystemError::fromErrno(errno, path);
  if (const auto status = statusOf(item, path); !status) return status.error();
  const std::string name = "/proc/self/fd/" + std::to_string(item.get());
  FileDescriptor file = openPath(name, O_RDONLY | O_NONBLOCK | O_NOCTTY);
  if (!file) return SystemError::fromErrno(errno, path);
  return file;
}

// Reads a file from its beginning to its end into a digest.
class Reader {
 public:
  Reader(const FileDescriptor& file, const std::string& path, std::int64_t length,
         const FileDigest::Reading& reading)
      : file_(file), path_(path), length_(length), reading_(reading), cache_(file.get()) {}

  Outcome readAll() {
    while (at_ < length_) {
      const std::int64_t data = nextData();
      if (Outcome skipped = skipTo(data); !skipped) return skipped;
      if (at_ == length_) break;
      if (Outcome read = readTo(endOfData()); !read) return read;
    }
    return readRest();
  }

  std::optional<std::string> finish() { return hash_.finish(); }

 private:
  // Where the next data is; the end of the file if only a hole is left.
  std::int64_t nextData() const {
    const off_t data = ::lseek(file_.get(), at_, SEEK_DATA);
    if (data >= 0) return std::clamp<std::int64_t>(data, at_, length_);
    return errno == ENXIO ? length_ : at_;  // other errors: the file system knows no holes
  }

  std::int64_t endOfData() const {
    const off_t hole = ::lseek(file_.get(), at_, SEEK_HOLE);
    return hole > at_ ? std::min<std::int64_t>(hole, length_) : length_;
  }

  Outcome skipTo(std::int64_t end) {
    while (at_ < end) {
      if (!mayGoOn()) return SystemError::fromErrno(ECANCELED, path_);
      const std::int64_t part = std::min(end - at_, longestPart);
      hash_.addZeros(static_cast<std::size_t>(part));
      at_ += part;
    }
    return succeeded();
  }

  Outcome readTo(std::int64_t end) {
    while (at_ < end) {
      cache_.prepare(at_, end);
      const Result<std::int64_t> read = readPart(std::min(end - at_, longestPart));
      if (!read) return read.error();
      if (read.value() == 0) return hasChanged(path_);
      cache_.dropUpTo(at_);
    }
    return succeeded();
  }

  // What the file has beyond the length that it reports: nothing, but for files that the system
  // itself makes up. A file that grows faster than it is read must not be read for ever.
  Outcome readRest() {
    while (true) {
      const Result<std::int64_t> read = readPart(longestPart);
      if (!read) return read.error();
      if (read.value() == 0) return succeeded();
      const Result<struct statx> now = statusOf(file_, path_);
      if (!now) return now.error();
      if (length_ != 0 || now.value().stx_size != 0) return hasChanged(path_);
    }
  }

  Result<std::int64_t> readPart(std::int64_t most) {
    if (!mayGoOn()) return SystemError::fromErrno(ECANCELED, path_);
    const ssize_t count = uninterrupted(
        [&] { return cache_.read(part_.get(), static_cast<std::size_t>(most), at_); });
    if (count < 0) return SystemError::fromErrno(errno, path_);
    hash_.add({part_.get(), static_cast<std::size_t>(count)});
    at_ += count;
    return count;
  }

  bool mayGoOn() const { return !reading_.goOn || reading_.goOn(at_, length_); }

  const FileDescriptor& file_;
  const std::string& path_;
  const std::int64_t length_;
  const FileDigest::Reading& reading_;
  CacheFootprint cache_;
  Sha256 hash_;
  std::unique_ptr<char[]> part_ = std::make_unique_for_overwrite<char[]>(longestPart);
  std::int64_t at_ = 0;
};

}  // namespace

Result<FileDigest> FileDigest::of(const std::string& path, const Reading& reading) {
  const Result<FileDescriptor> opened = openFile(path);
  if (!opened) return opened.error();
  const FileDescriptor& file = opened.value();
  const Result<struct statx> before = statusOf(file, path);
  if (!before) return before.error();
  if (reading.allocated && bytesOfBlocks(before.value().stx_blocks) != *reading.allocated)
    return hasChanged(path);

  const FileIdentity identity = identityFrom(before.value());
  Reader reader(file, path, identity.size, reading);
  if (const Outcome read = reader.readAll(); !read) return read.error();

  const Result<struct statx> after = statusOf(file, path);
  if (!after) return after.error();
  if (!identityFrom(after.value()).isUntouchedSince(identity)) return hasChanged(path);
  if (reading.allocated && bytesOfBlocks(after.value().stx_blocks) != *reading.allocated)
    return hasChanged(path);
  std::optional<std::string> sha256 = reader.finish();
  if (!sha256) return SystemError::fromErrno(ENOMEM, path);
  return FileDigest{.sha256 = *std::move(sha256), .identity = identity};
}

}  // namespace tessaly
