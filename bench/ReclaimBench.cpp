// Measures the analysis of what can be won back, and writes rows of a table.
//
//     tessaly_reclaim_bench tree [--runs N]       the artifact folders of a tree of 200,000 nodes
//     tessaly_reclaim_bench pass DIR [--runs N]   the whole analysis of the home DIR, against a
//     scan
//
// The runs of the scan and of the analysis take turns, and the fastest of both are compared. The
// disk caches are warm after the first of them, which does not count.
#include <algorithm>
#include <chrono>
#include <cstdio>
#include <cstdlib>
#include <limits>
#include <memory>
#include <random>
#include <string>
#include <string_view>
#include <sys/resource.h>
#include <vector>

#include "ScanSample.h"
#include "platform/PlatformServices.h"
#include "reclaim/ReclaimAnalysis.h"
#include "reclaim/ReclaimMeasure.h"
#include "scan/DiskScanner.h"

namespace {

using namespace tessaly;

template <class Call>
double secondsOf(const Call& call) {
  const auto begin = std::chrono::steady_clock::now();
  call();
  return std::chrono::duration<double>(std::chrono::steady_clock::now() - begin).count();
}

void row(const char* figure, double bound, double measured, const std::string& detail) {
  std::printf("| %s | %.6g | %.4g | %s | %s |\n", figure, bound, measured,
              measured <= bound ? "met" : "**missed**", detail.c_str());
}

// Of this process and of those that it has waited for.
double cpuSeconds() {
  double sum = 0;
  for (const int whose : {RUSAGE_SELF, RUSAGE_CHILDREN}) {
    struct rusage usage {};
    ::getrusage(whose, &usage);
    for (const timeval& time : {usage.ru_utime, usage.ru_stime}) {
      sum += static_cast<double>(time.tv_sec) + static_cast<double>(time.tv_usec) / 1e6;
    }
  }
  return sum;
}

// A tree of the shape that a scan gives, 13 levels and at most 80 children, mostly of folders,
// since only they cost anything. A folder in 50 has the name of an artifact folder.
class Grower {
 public:
  DiskNode grow() {
    builder_.open(item("somebody"), "/home/somebody");
    while (made_ < nodes) add(1, 12);
    builder_.close();
    return builder_.finish();
  }

 private:
  static constexpr std::size_t nodes = 200'000;

  DiskTreeItem item(std::string_view name, bool isDir = true) {
    ++made_;
    return {.name = name,
            .size = static_cast<std::int64_t>(engine_() % (1 << 24)),
            .isDir = isDir,
            .kind = isDir ? FileKind::folder : FileKind::other,
            .mtime = 1'700'000'000.0};
  }

  void add(int depth, std::uint64_t mostChildren) {
    static constexpr const char* artifacts[] = {"node_modules", ".venv", "__pycache__", "Pods"};
    const bool isArtifact = depth > 3 && engine_() % 50 == 0;
    const std::string name =
        isArtifact ? artifacts[engine_() % 4] : "folder " + std::to_string(made_);
    builder_.openBelow(item(name, isArtifact || engine_() % 5 != 0));
    const std::uint64_t count = depth < 12 && !isArtifact ? engine_() % mostChildren : 0;
    for (std::uint64_t i = 0; i < count && made_ < nodes; ++i) {
      add(depth + 1, std::max<std::uint64_t>(mostChildren / 2, 4));
    }
    builder_.close();
  }

  std::mt19937_64 engine_{7};
  std::size_t made_ = 0;
  DiskTreeBuilder builder_;
};

void measureTree(int runs) {
  const DiskNode tree = Grower().grow();
  double best = std::numeric_limits<double>::max();
  std::size_t found = 0;
  for (int run = 0; run < runs; ++run) {
    best = std::min(best, secondsOf([&] { found = BigWinsEngine::findTreeWins(tree).size(); }));
  }
  row("artifact folders of a tree, ms", 10, best * 1000,
      std::to_string(tree.subtreeCount()) + " nodes, " + std::to_string(found) + " found");
}

// The fastest time of each step.
struct Fastest {
  double scan = std::numeric_limits<double>::max();
  double pass = std::numeric_limits<double>::max();
  double probe = std::numeric_limits<double>::max();
  double search = std::numeric_limits<double>::max();
  double scanCpu = std::numeric_limits<double>::max();
  double passCpu = std::numeric_limits<double>::max();
};

bool isInstalled(const char* tool, const std::vector<std::string>& args) {
  try {
    Shell::run(tool, args, 20);
    return true;
  } catch (const ToolError& error) {
    std::fprintf(stderr, "reclaim_bench: %s: %s\n", tool, error.what());
    return false;
  }
}

void measurePass(const std::string& home, int runs) {
  const std::unique_ptr<MountedVolumes> volumes = platformServices().makeMountedVolumes();
  const FileAccess& files = FileAccess::ofMachine();
  const DiskNode tree = DiskScanner::scan(home);
  const bool hasSearch =
      isInstalled("/usr/bin/mdfind", {"-onlyin", home, "kMDItemFSSize >= 52428800"});
  const auto never = [] { return false; };

  Fastest fastest;
  ReclaimAnalysis::Finds finds;
  for (int run = 0; run < runs; ++run) {
    const bench::ScanSample scan = bench::sampleScan(home, 0);
    fastest.scan = std::min(fastest.scan, scan.seconds);
    fastest.scanCpu = std::min(fastest.scanCpu, scan.cpuSeconds);
    const double cpuBefore = cpuSeconds();
    fastest.pass = std::min(fastest.pass, secondsOf([&] {
                              finds = ReclaimAnalysis::run(
                                  home, tree, {.files = files, .volumes = *volumes}, never);
                            }));
    fastest.passCpu = std::min(fastest.passCpu, cpuSeconds() - cpuBefore);
    const Shell::Run tools = Shell::cancellable(never);
    fastest.probe = std::min(
        fastest.probe, secondsOf([&] {
          ReclaimEngine::probe(
              home,
              ReclaimMeasure::onMachine(home, {.files = files, .volumes = *volumes, .run = tools}));
        }));
    fastest.search =
        std::min(fastest.search, secondsOf([&] { BigWinsEngine::largeOld(home, tools); }));
    std::fprintf(stderr, "  run %d of %d: scan %.3f s, analysis %.3f s\n", run + 1, runs,
                 fastest.scan, fastest.pass);
  }
  char detail[320];
  std::snprintf(
      detail, sizeof detail,
      "scan %.3f s (CPU %.3f s), analysis %.3f s (CPU %.3f s; locations %.3f s, search %.3f s); "
      "%zu locations, "
      "%zu artifact folders, %zu idle files%s",
      fastest.scan, fastest.scanCpu, fastest.pass, fastest.passCpu, fastest.probe, fastest.search,
      finds.probes.size(), finds.treeWins.size(), finds.largeOld.size(),
      hasSearch ? "" : "; **without a search**, which is not installed");
  row("warm analysis / scan", 2.5, fastest.pass / fastest.scan, detail);
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
  const int runs = std::max(numberAfter(words, "--runs", 7), 1);
  if (!words.empty() && words[0] == "tree") {
    measureTree(runs);
  } else if (words.size() > 1 && words[0] == "pass") {
    measurePass(std::string(words[1]), runs);
  } else {
    std::fprintf(stderr, "usage: tessaly_reclaim_bench tree|pass DIR [--runs N]\n");
    return 2;
  }
}
