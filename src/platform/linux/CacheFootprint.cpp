#include "platform/linux/CacheFootprint.h"

#include <algorithm>
#include <cerrno>
#include <fcntl.h>
#include <string>
#include <sys/mman.h>
#include <sys/stat.h>
#include <sys/syscall.h>
#include <sys/uio.h>
#include <unistd.h>

namespace tessaly {

namespace {

// Looked at in one go. While one block is read, the next one is asked for.
constexpr std::int64_t block = std::int64_t{4} << 20U;

const std::int64_t pageSize = ::sysconf(_SC_PAGESIZE);

std::int64_t pageOf(std::int64_t offset) {
  return offset / pageSize * pageSize;
}

std::int64_t pagesBetween(std::int64_t from, std::int64_t to) {
  return (to - from + pageSize - 1) / pageSize;
}

// The number of pages of the range that are in the cache; below 0 if the system cannot tell. Much
// faster than looking at each, but only newer systems have it, and not all libraries know it.
std::int64_t countOfCached(int file, std::int64_t from, std::int64_t to) {
#ifdef SYS_cachestat
  constexpr long number = SYS_cachestat;
#else
  constexpr long number = 451;  // on all processors
#endif
  struct {
    std::uint64_t offset;
    std::uint64_t length;
  } range{static_cast<std::uint64_t>(from), static_cast<std::uint64_t>(to - from)};
  struct {
    std::uint64_t cached, dirty, writeback, evicted, recentlyEvicted;
  } counts{};
  if (::syscall(number, file, &range, &counts, 0U) != 0) return -1;
  return static_cast<std::int64_t>(counts.cached);
}

// Whether this user may change the file, or its attributes.
bool isChangeable(int file) {
  struct stat status {};
  const uid_t user = ::geteuid();
  if (user == 0 || (::fstat(file, &status) == 0 && status.st_uid == user)) return true;
  return ::access(("/proc/self/fd/" + std::to_string(file)).c_str(), W_OK) == 0;
}

}  // namespace

CacheFootprint::CacheFootprint(int file) : file_(file), isTold_(isChangeable(file)) {
  if (isTold_) ::posix_fadvise(file_, 0, 0, POSIX_FADV_RANDOM);
}

CacheFootprint::~CacheFootprint() {
  dropUpTo(looked_);
}

ssize_t CacheFootprint::read(char* to, std::size_t count, std::int64_t at) {
  if (!isTold_ && canLeaveNothing_) {
    constexpr int dropBehind = 0x80;  // RWF_DONTCACHE
    const iovec part{.iov_base = to, .iov_len = count};
    const ssize_t length = ::preadv2(file_, &part, 1, at, dropBehind);
    if (length >= 0 || (errno != EOPNOTSUPP && errno != EINVAL && errno != ENOSYS)) return length;
    canLeaveNothing_ = false;
  }
  return ::pread(file_, to, count, at);
}

void CacheFootprint::prepare(std::int64_t from, std::int64_t dataEnd) {
  if (!isTold_) return;
  looked_ = std::max(looked_, pageOf(from));
  while (looked_ < dataEnd && looked_ < from + block) {
    const std::int64_t end = std::min(looked_ + block, dataEnd);
    look(looked_, end);
    // A page that the data shares with a hole after it has been looked at, too.
    looked_ = std::max(end, pageOf(end + pageSize - 1));
  }
}

void CacheFootprint::look(std::int64_t from, std::int64_t to) {
  const std::int64_t cached = countOfCached(file_, from, to);
  if (cached == pagesBetween(from, to)) return;
  if (cached == 0) {
    askFor({from, to});
  } else {
    lookAtPages(from, to);
  }
}

void CacheFootprint::lookAtPages(std::int64_t from, std::int64_t to) {
  const auto length = static_cast<std::size_t>(to - from);
  void* const map = ::mmap(nullptr, length, PROT_READ, MAP_SHARED, file_, from);
  if (map == MAP_FAILED) return;
  const auto count = static_cast<std::size_t>(pagesBetween(from, to));
  pages_.resize(count);
  const bool isKnown = ::mincore(map, length, pages_.data()) == 0;
  ::munmap(map, length);
  if (!isKnown) return;
  const auto isCached = [](unsigned char page) { return (page & 1U) != 0; };
  for (auto at = pages_.begin(); at != pages_.end();) {
    const auto first = std::find_if_not(at, pages_.end(), isCached);
    at = std::find_if(first, pages_.end(), isCached);
    if (first != at)
      askFor({from + (first - pages_.begin()) * pageSize,
              std::min(from + (at - pages_.begin()) * pageSize, to)});
  }
}

void CacheFootprint::askFor(Range range) {
  ::posix_fadvise(file_, range.from, range.to - range.from, POSIX_FADV_WILLNEED);
  missing_.push_back(range);
}

void CacheFootprint::dropUpTo(std::int64_t to) {
  while (!missing_.empty() && missing_.front().from < to) {
    Range& range = missing_.front();
    // The system drops whole pages only, so the rest of a page at the end goes with it.
    const std::int64_t end = range.to <= to ? range.to : pageOf(to);
    if (end > range.from) {
      const std::int64_t wholePages = pageOf(end + pageSize - 1);
      ::posix_fadvise(file_, range.from, wholePages - range.from, POSIX_FADV_DONTNEED);
    }
    if (range.to > to) {
      range.from = std::max(range.from, end);
      return;
    }
    missing_.pop_front();
  }
}

}  // namespace tessaly
