#include "platform/linux/ExtentMap.h"

#include <algorithm>
#include <array>
#include <cstring>
#include <linux/fs.h>
#include <sys/ioctl.h>

#include "platform/linux/Uninterrupted.h"

namespace tessaly {

namespace {

constexpr std::size_t extentsAtOnce = 32;

// Without a place on the disk, or in a block that holds more than this extent: such an extent does
// not show what the file shares.
//
// Compressed extents (FIEMAP_EXTENT_ENCODED) are no such. Their length is that of the content, so
// that they do not measure space, but their place is that of the blocks, and two files with the
// same list occupy the same blocks. That is all that a clone id says; the content may differ, if
// each file shows another part of one compressed extent.
constexpr std::uint32_t withoutPlace = FIEMAP_EXTENT_UNKNOWN | FIEMAP_EXTENT_DELALLOC |
                                       FIEMAP_EXTENT_NOT_ALIGNED | FIEMAP_EXTENT_DATA_INLINE |
                                       FIEMAP_EXTENT_DATA_TAIL;

bool isSharedPlace(const fiemap_extent& extent) {
  return (extent.fe_flags & FIEMAP_EXTENT_SHARED) != 0 && (extent.fe_flags & withoutPlace) == 0;
}

bool isLast(const fiemap_extent& extent) {
  return (extent.fe_flags & FIEMAP_EXTENT_LAST) != 0;
}

// A hash over a list of extents. Extents that continue each other count as one: how a file system
// splits a piece depends on how the file was written or cloned, and on where a reading ended.
class ExtentHash {
 public:
  explicit ExtentHash(std::uint64_t fileSystem) { mix(fileSystem); }

  void add(const fiemap_extent& extent) {
    if (length_ > 0 && continues(extent)) {
      length_ += extent.fe_length;
      return;
    }
    mixPiece();
    logical_ = extent.fe_logical;
    physical_ = extent.fe_physical;
    length_ = extent.fe_length;
    isEncoded_ = (extent.fe_flags & FIEMAP_EXTENT_ENCODED) != 0;
  }

  // Never 0, which means that there is no id.
  std::uint64_t value() {
    mixPiece();
    return hash_ != 0 ? hash_ : 1;
  }

 private:
  bool continues(const fiemap_extent& extent) const {
    // The length of a compressed extent is not the distance to the next one on the disk.
    return !isEncoded_ && (extent.fe_flags & FIEMAP_EXTENT_ENCODED) == 0 &&
           extent.fe_logical == logical_ + length_ && extent.fe_physical == physical_ + length_;
  }

  void mixPiece() {
    if (length_ == 0) return;
    mix(logical_);
    mix(physical_);
    mix(length_);
    length_ = 0;
  }

  void mix(std::uint64_t number) {
    hash_ += number + 0x9e3779b97f4a7c15U;
    hash_ ^= hash_ >> 32U;
    hash_ *= 0xd6e8feb86659fd93U;
    hash_ ^= hash_ >> 32U;
    hash_ *= 0xd6e8feb86659fd93U;
    hash_ ^= hash_ >> 32U;
  }

  std::uint64_t hash_ = 0;
  // The piece that the next extent may continue; none if it has no length.
  std::uint64_t logical_ = 0;
  std::uint64_t physical_ = 0;
  std::uint64_t length_ = 0;
  bool isEncoded_ = false;
};

}  // namespace

ReadExtents extentsOf(int file) {
  return [file](std::uint64_t start) -> std::optional<std::vector<fiemap_extent>> {
    fiemap head;
    std::memset(&head, 0, sizeof head);
    head.fm_start = start;
    head.fm_length = FIEMAP_MAX_OFFSET - start;
    head.fm_extent_count = extentsAtOnce;
    // The head and room for the extents behind it.
    alignas(fiemap) std::array<std::byte, sizeof head + extentsAtOnce * sizeof(fiemap_extent)> call;
    std::memcpy(call.data(), &head, sizeof head);
    if (uninterrupted([&] { return ::ioctl(file, FS_IOC_FIEMAP, call.data()); }) < 0) {
      return std::nullopt;
    }
    std::memcpy(&head, call.data(), sizeof head);
    std::vector<fiemap_extent> extents(
        std::min<std::size_t>(head.fm_mapped_extents, extentsAtOnce));
    if (!extents.empty()) {
      std::memcpy(extents.data(), call.data() + sizeof head, extents.size() * sizeof extents[0]);
    }
    return extents;
  };
}

std::uint64_t cloneIdFrom(std::uint64_t fileSystem, const ReadExtents& read,
                          const std::function<bool()>& isGivenUp) {
  ExtentHash hash(fileSystem);
  std::size_t count = 0;
  std::uint64_t start = 0;
  while (!isGivenUp()) {
    const auto extents = read(start);
    if (!extents) return 0;
    if (extents->empty()) return count > 0 ? hash.value() : 0;
    for (const fiemap_extent& extent : *extents) {
      if (++count > mostExtents || !isSharedPlace(extent)) return 0;
      hash.add(extent);
      if (isLast(extent)) return hash.value();
    }
    const std::uint64_t end = extents->back().fe_logical + extents->back().fe_length;
    if (end <= start) return 0;  // the list would never end
    start = end;
  }
  return 0;
}

}  // namespace tessaly
