// One measured run of the scanner or of du, each in a process of its own, so that no run profits
// from the memory of an earlier one.
#pragma once

#include <cstdint>
#include <string>

namespace tessaly::bench {

// The items below a folder, not counting the folder itself.
struct TreeCount {
  std::int64_t files = 0;  // everything that is neither a folder nor a link
  std::int64_t folders = 0;
  std::int64_t links = 0;

  std::int64_t items() const { return files + folders + links; }
};

TreeCount countTree(const std::string& folder);

struct ScanSample {
  double seconds = 0;              // duration of the call, by the monotonic clock
  double freezeSeconds = 0;        // from the line "Building map…" to the return
  double cpuSeconds = 0;           // user and system time of all threads, during the call
  std::int64_t instructions = -1;  // user space, all threads, during the call; -1 if they cannot be
                                   // counted
  std::int64_t peakBytes = 0;      // peak of the resident memory during the call, minus its value
                                   // before
  std::int64_t nodes = 0;
  std::uint64_t treeHash = 0;
};

// Scans in the calling process, for a profiler.
ScanSample scanInThisProcess(const std::string& folder, int threads);

// Scans in a new process and waits for it; ends the program when the process fails.
ScanSample sampleScan(const std::string& folder, int threads);

struct DuSample {
  double seconds = 0;  // from fork to exit, by the monotonic clock
  double cpuSeconds = 0;
};

// Runs `du -s folder`; ends the program if that fails.
DuSample sampleDu(const std::string& folder);

// Writes back and drops the kernel's disk caches; false without the permission.
bool dropDiskCaches();

}  // namespace tessaly::bench
