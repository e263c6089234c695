// Reads many files into digests, several at once on threads of its own, and keeps an eye on these:
// one that hangs in the system, as on a network folder whose server is gone, is left behind.
//
// Safe from any thread.
#pragma once

#include <chrono>
#include <cstddef>
#include <cstdint>
#include <functional>
#include <optional>
#include <string>
#include <vector>

#include "platform/FileDigest.h"
#include "platform/StartThread.h"

namespace tessaly::FileDigests {

struct File {
  std::string path;
  std::int64_t allocated = 0;  // bytes on disk that it must take
};

// How far a call is.
struct Progress {
  std::size_t files = 0;   // that have been read or given up
  std::int64_t bytes = 0;  // on disk, of these and of the parts of others

  friend bool operator==(const Progress&, const Progress&) = default;
};

// FileDigest::of(), whose `goOn` also tells that the reading is alive.
using Read =
    std::function<Result<FileDigest>(const std::string& path, const FileDigest::Reading& reading)>;

// An empty function is never called. All but `read` and `start` are called on the caller's thread.
struct Options {
  std::function<bool()> isCancelled = {};  // asked at least every 20 ms
  // Called at the beginning, then at most every 10 ms after a change, and at the end.
  std::function<void(const Progress& progress)> progress = {};
  // The mount points of the system, asked for when a file has hung.
  std::function<std::vector<std::string>()> mountPoints = {};
  // Two keep a disk busy while the processor computes, and leave other programs most of both.
  std::size_t atOnce = 2;
  // A file of which no part was read for so long is given up, with all other files on its mounted
  // volume. Time in which this process is stopped does not count.
  std::chrono::milliseconds patience = std::chrono::seconds(30);
  Read read = [](const std::string& path, const FileDigest::Reading& reading) {
    return FileDigest::of(path, reading);
  };
  StartThread start = &startThread;
};

// Blocks until each file has been read or given up. Returns a digest for each file in their order,
// absent where a file could not be read or does not take the expected blocks. Once cancelled, it
// returns nothing within 50 ms.
//
// A thread that was left behind ends when the system answers, and calls nothing but `read` by then.
std::vector<std::optional<FileDigest>> of(const std::vector<File>& files, const Options& options);

}  // namespace tessaly::FileDigests
