// Where the content of a file is on its disk: a list of extents, each a part of the file that is
// stored in one piece.
#pragma once

#include <cstddef>
#include <cstdint>
#include <functional>
#include <linux/fiemap.h>
#include <optional>
#include <vector>

namespace tessaly {

// Reads the extents at and after the byte `start` of a file: the next few, in ascending order; none
// past the last one; absent if the file system does not tell.
using ReadExtents = std::function<std::optional<std::vector<fiemap_extent>>(std::uint64_t start)>;

// Those of an open file, 32 at a time. They are as the file system has recorded them: the call does
// not make it write what it has in memory.
ReadExtents extentsOf(int file);

// The most extents of a file with a clone id, since a file can have millions. So many take about a
// tenth of a second, and longer where many snapshots share them.
inline constexpr std::size_t mostExtents = 65536;

// A number that two files of a file system have in common if all their extents are the same: the
// same parts of the file, at the same places of the disk. `fileSystem` distinguishes it from
// others. 0 if there is an extent that no other file shares or whose place is unknown, if there are
// none or more than mostExtents, or if the list cannot be read to its end. `isGivenUp` is asked
// before each reading; once it is true, the result is 0.
std::uint64_t cloneIdFrom(std::uint64_t fileSystem, const ReadExtents& read,
                          const std::function<bool()>& isGivenUp);

}  // namespace tessaly
