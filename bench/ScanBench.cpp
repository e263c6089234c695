// Measures DiskScanner::scan against `du -s` of the same folder and writes the rows of a table.
//
//     tessaly_scan_bench home DIR [--runs N] [--cold-runs N]   all figures of a large tree
//     tessaly_scan_bench flat DIR [--runs N]                   a folder of many files
//     tessaly_scan_bench once DIR [THREADS]                    one scan, for a profiler
//
// Runs of du and of the scanner alternate, and the fastest runs of both are compared: other load on
// the machine can only make a run slower.
#include <algorithm>
#include <cstdio>
#include <cstdlib>
#include <limits>
#include <string>
#include <string_view>
#include <vector>

#include "ScanSample.h"

namespace {

using tessaly::bench::DuSample;
using tessaly::bench::ScanSample;
using tessaly::bench::TreeCount;

constexpr int everyThread = 0;

struct Fastest {
  DuSample du{std::numeric_limits<double>::max(), 0};
  ScanSample scan;
  ScanSample single;
};

void keepFaster(ScanSample& best, const ScanSample& sample) {
  if (best.seconds == 0) {
    best = sample;
    return;
  }
  if (sample.treeHash != best.treeHash || sample.nodes != best.nodes) {
    std::fprintf(stderr, "scan_bench: two scans of one folder gave different trees\n");
    std::exit(1);
  }
  const double freeze = std::min(best.freezeSeconds, sample.freezeSeconds);
  const std::int64_t peak = std::max(best.peakBytes, sample.peakBytes);
  if (sample.seconds < best.seconds) {
    best = sample;
  }
  best.freezeSeconds = freeze;
  best.peakBytes = peak;
}

Fastest race(const std::string& folder, int runs, bool cold, bool alsoSingle) {
  Fastest fastest;
  const auto prepare = [cold] {
    if (cold) {
      tessaly::bench::dropDiskCaches();
    }
  };
  for (int run = 0; run < runs; ++run) {
    prepare();
    const DuSample du = tessaly::bench::sampleDu(folder);
    if (du.seconds < fastest.du.seconds) {
      fastest.du = du;
    }
    prepare();
    keepFaster(fastest.scan, tessaly::bench::sampleScan(folder, everyThread));
    if (alsoSingle) {
      prepare();
      keepFaster(fastest.single, tessaly::bench::sampleScan(folder, 1));
    }
    std::fprintf(stderr, "  run %d of %d: du %.3f s, scan %.3f s\n", run + 1, runs,
                 fastest.du.seconds, fastest.scan.seconds);
  }
  if (alsoSingle && fastest.single.treeHash != fastest.scan.treeHash) {
    std::fprintf(stderr, "scan_bench: one thread and many gave different trees\n");
    std::exit(1);
  }
  return fastest;
}

// One row; `bound` is the largest allowed value of `measured`.
void row(const char* figure, double bound, double measured, const std::string& detail) {
  std::printf("| %s | %.6g | %.4g | %s | %s |\n", figure, bound, measured,
              measured <= bound ? "met" : "**missed**", detail.c_str());
}

void rowNotMeasured(const char* figure, double bound, const char* reason) {
  std::printf("| %s | %.6g | - | not measured | %s |\n", figure, bound, reason);
}

std::string times(const DuSample& du, const ScanSample& scan) {
  char text[160];
  std::snprintf(text, sizeof text, "du %.3f s (CPU %.3f s), scan %.3f s (CPU %.3f s)", du.seconds,
                du.cpuSeconds, scan.seconds, scan.cpuSeconds);
  return text;
}

void memoryRow(const char* figure, const TreeCount& count, const ScanSample& scan) {
  const double bound =
      20.0 * static_cast<double>(count.files) + 150.0 * static_cast<double>(scan.nodes);
  char text[160];
  std::snprintf(text, sizeof text, "%lld files, %lld nodes; highest of all runs",
                static_cast<long long>(count.files), static_cast<long long>(scan.nodes));
  row(figure, bound / 1048576, static_cast<double>(scan.peakBytes) / 1048576, text);
}

void instructionRow(const TreeCount& count, const ScanSample& scan) {
  constexpr const char* figure = "user instructions an item";
  constexpr double bound = 1000;
  if (scan.instructions < 0) {
    rowNotMeasured(figure, bound, "no hardware counters on this machine; see the row of callgrind");
    return;
  }
  row(figure, bound, static_cast<double>(scan.instructions) / static_cast<double>(count.items()),
      "hardware counters");
}

void measureHome(const std::string& folder, int runs, int coldRuns) {
  const TreeCount count = tessaly::bench::countTree(folder);
  std::fprintf(stderr, "%lld files, %lld folders, %lld links\n",
               static_cast<long long>(count.files), static_cast<long long>(count.folders),
               static_cast<long long>(count.links));
  const Fastest warm = race(folder, runs, false, true);
  row("warm scan / du -s", 0.52, warm.scan.seconds / warm.du.seconds, times(warm.du, warm.scan));
  row("warm scan / du -s, one thread", 0.95, warm.single.seconds / warm.du.seconds,
      times(warm.du, warm.single));
  constexpr const char* coldFigure = "cold scan / du -s";
  if (coldRuns == 0) {
    rowNotMeasured(coldFigure, 0.70, "left out");
  } else if (!tessaly::bench::dropDiskCaches()) {
    rowNotMeasured(coldFigure, 0.70, "only root can empty the disk caches");
  } else {
    const Fastest cold = race(folder, coldRuns, true, false);
    row(coldFigure, 0.70, cold.scan.seconds / cold.du.seconds, times(cold.du, cold.scan));
  }
  row("freezing the tree, ms", 25, warm.scan.freezeSeconds * 1000,
      "from the line \"Building map…\" to the return");
  memoryRow("peak memory, MiB", count, warm.scan);
  instructionRow(count, warm.scan);
}

void measureFlat(const std::string& folder, int runs) {
  const TreeCount count = tessaly::bench::countTree(folder);
  const Fastest warm = race(folder, runs, false, true);
  row("flat folder, warm scan / du -s", 0.65, warm.scan.seconds / warm.du.seconds,
      times(warm.du, warm.scan));
  std::printf("| flat folder, one thread | | %.4g | | %s |\n",
              warm.single.seconds / warm.du.seconds, times(warm.du, warm.single).c_str());
  memoryRow("flat folder, peak memory, MiB", count, warm.scan);
}

int numberAfter(const std::vector<std::string_view>& words, std::string_view option,
                int otherwise) {
  const auto place = std::find(words.begin(), words.end(), option);
  return place == words.end() || place + 1 == words.end() ? otherwise
                                                          : std::atoi((place + 1)->data());
}

}  // namespace

int main(int argc, char** argv) {
  const std::vector<std::string_view> words(argv + 1, argv + argc);
  if (words.size() < 2) {
    std::fprintf(stderr,
                 "usage: tessaly_scan_bench home|flat|once DIR [--runs N] [--cold-runs N]\n");
    return 2;
  }
  const std::string folder(words[1]);
  const int runs = std::max(numberAfter(words, "--runs", 9), 1);
  if (words[0] == "home") {
    measureHome(folder, runs, numberAfter(words, "--cold-runs", 3));
  } else if (words[0] == "flat") {
    measureFlat(folder, runs);
  } else if (words[0] == "once") {
    const int threads = words.size() > 2 ? std::atoi(words[2].data()) : everyThread;
    const ScanSample sample = tessaly::bench::scanInThisProcess(folder, threads);
    std::printf("%lld nodes, %.3f s\n", static_cast<long long>(sample.nodes), sample.seconds);
  } else {
    std::fprintf(stderr, "tessaly_scan_bench: no such figure\n");
    return 2;
  }
  return 0;
}
