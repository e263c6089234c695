// One measured run of the scanner or of du, each in a process of its own, so that no run profits
// from what an earlier one left in memory.
#pragma once

#include <cstdint>
#include <string>

namespace tessaly::bench {

// What stands below a folder. The folder itself is not counted.
struct TreeCount {
  std::int64_t files = 0;  // everything that is neither a folder nor a link
  std::int64_t folders = 0;
  std::int64_t links = 0;

  std::int64_t items() const { return files + folders + links; }
};

TreeCount countTree(const std::string& folder);

struct ScanSample {
  double seconds = 0;        // of the call, by the monotonic clock
  double freezeSeconds = 0;  // from the line "Building map…" to the return
  double cpuSeconds = 0;     // user and system time of all threads, during the call
  std::int64_t instructions =
      -1;                      // user space, all threads, during the call; -1: cannot be counted
  std::int64_t peakBytes = 0;  // highest resident memory during the call, less that before it
  std::int64_t nodes = 0;
  std::uint64_t treeHash = 0;
};

// Scans in the calling process: for a profiler to watch.
ScanSample scanInThisProcess(const std::string& folder, int threads);

// Scans in a new process and waits for it; ends the program when the process fails.
ScanSample sampleScan(const std::string& folder, int threads);

struct DuSample {
  double seconds = 0;  // from fork to exit, by the monotonic clock
  double cpuSeconds = 0;
};

// Runs `du -s folder`; ends the program when that is not to be had.
DuSample sampleDu(const std::string& folder);

// Writes back and forgets everything the kernel has cached of the disk; false without the right.
bool dropDiskCaches();

}  // namespace tessaly::bench
