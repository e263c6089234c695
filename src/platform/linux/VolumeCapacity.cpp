#include "platform/VolumeCapacity.h"

#include <cerrno>

#include "platform/linux/StatvfsCapacity.h"

namespace tessaly {

namespace {

std::optional<std::int64_t> bytes(fsblkcnt_t blocks, unsigned long blockSize) {
  std::int64_t product = 0;
  if (__builtin_mul_overflow(blocks, blockSize, &product)) return std::nullopt;
  return product;
}

}  // namespace

VolumeCapacity capacityFrom(const struct statvfs& figures) {
  return {.total = bytes(figures.f_blocks, figures.f_frsize),
          .available = bytes(figures.f_bavail, figures.f_frsize),
          .availableForImportantUsage = std::nullopt,
          .availableForOpportunisticUsage = std::nullopt};
}

Result<VolumeCapacity> volumeCapacity(const std::string& path) {
  struct statvfs figures = {};
  int outcome = 0;
  do {
    outcome = ::statvfs(path.c_str(), &figures);
  } while (outcome != 0 && errno == EINTR);
  if (outcome != 0) return SystemError::fromErrno(errno, path);
  return capacityFrom(figures);
}

}  // namespace tessaly
