// Measures the figures and lists of a finished tree of 200,000 nodes. The aim is at most 100
// milliseconds for each, the minimum of seven repetitions.
//
// The trees are made from a fixed seed. Every benchmark prints its number of entries, so that an
// empty answer is not mistaken for a full one.

#include <algorithm>
#include <benchmark/benchmark.h>
#include <cstddef>
#include <cstdint>
#include <cstdio>
#include <cstdlib>
#include <limits>
#include <random>
#include <string>
#include <vector>

#include "scan/DiskNode.h"
#include "scan/ScanDiff.h"
#include "scan/ScanInsights.h"

namespace {

using namespace tessaly;

constexpr std::size_t nodeCount = 200'000;
constexpr int sessionLevels = 2;
constexpr int allLevels = 64;
constexpr std::int64_t sessionDelta = 1048576;
constexpr std::int64_t noLimit = std::numeric_limits<std::int64_t>::max();

// Grows a tree of exactly `nodeCount` nodes below a home folder.
class TreeGrower {
 public:
  // `isEqual` gives every node the same size, so that the paths alone decide the order.
  TreeGrower(std::uint64_t seed, bool isEqual) : engine_(seed), isEqual_(isEqual) {
    open("somebody", true);
  }

  // Like a scanned home folder: at most 80 children and a remainder, 13 levels, more folders than
  // files, many folders without a node below.
  DiskNode scanShape() {
    for (int k = 0; made_ < nodeCount; ++k) {
      open("folder " + std::to_string(k), true);
      fill(nodeCount / 30, 2);
      builder_.close();
    }
    return finish();
  }

  // The largest possible first three levels: the root has as many folders as each of them has
  // files.
  DiskNode flatShape() {
    constexpr std::size_t folders = 446;
    for (std::size_t k = 0; k < folders; ++k) {
      open("folder number " + std::to_string(k), true);
      const std::size_t left = (nodeCount - made_) / (folders - k);
      for (std::size_t j = 0; j + 1 < left || (k + 1 == folders && made_ < nodeCount); ++j) {
        leaf("photograph " + std::to_string(j) + ".jpeg", false);
      }
      builder_.close();
    }
    return finish();
  }

  // Only folders without a node below.
  DiskNode emptyShape() {
    constexpr std::size_t folders = 446;
    for (std::size_t k = 0; k < folders; ++k) {
      open("folder number " + std::to_string(k), true);
      const std::size_t left = (nodeCount - made_) / (folders - k);
      for (std::size_t j = 0; j + 1 < left || (k + 1 == folders && made_ < nodeCount); ++j) {
        leaf("cache " + std::to_string(engine_() % 1'000'000'000), true);
      }
      builder_.close();
    }
    return finish();
  }

 private:
  static constexpr int deepest = 12;

  std::uint64_t below(std::uint64_t bound) { return engine_() % bound; }

  std::int64_t size() {
    if (isEqual_) return 8 * sessionDelta;
    return static_cast<std::int64_t>(262'144 + below(std::uint64_t{1} << (20 + below(14))));
  }

  void open(const std::string& name, bool isDir) {
    const DiskTreeItem item{name, size(), isDir, isDir ? FileKind::folder : FileKind::other,
                            1'700'000'000.0};
    if (made_ == 0) {
      builder_.open(item, "/home/somebody");
    } else {
      builder_.openBelow(item);
    }
    ++made_;
  }

  void leaf(const std::string& name, bool isDir) {
    open(name, isDir);
    builder_.close();
  }

  // Adds up to 80 children with at most `room` nodes in all, most of them in a few children.
  void fill(std::size_t room, int depth) {
    const std::size_t most = std::min<std::size_t>(80, room);
    const std::size_t count = below(8) == 0 ? most : 1 + below(std::min<std::size_t>(most, 16));
    std::size_t rest = room - count;
    for (std::size_t k = 0; k < count && made_ < nodeCount; ++k) {
      const bool isDir = below(10) < 6;
      open((isDir ? "some folder " : "some file ") + std::to_string(made_), isDir);
      const std::size_t share = rest / 2;
      if (isDir && depth < deepest && share > 0) {
        rest -= share;
        fill(share, depth + 1);
      }
      builder_.close();
    }
    if (count == 80 && made_ < nodeCount) leaf("+ 20 more", false);
  }

  DiskNode finish() {
    builder_.close();
    DiskNode root = builder_.finish();
    if (root.subtreeCount() != nodeCount) {
      std::fprintf(stderr, "the tree has %zu nodes\n", root.subtreeCount());
      std::abort();
    }
    return root;
  }

  std::mt19937_64 engine_;
  bool isEqual_;
  std::size_t made_ = 0;
  DiskTreeBuilder builder_;
};

const DiskNode& scanTree() {
  static const DiskNode tree = TreeGrower(1, false).scanShape();
  return tree;
}

const DiskNode& flatTree() {
  static const DiskNode tree = TreeGrower(1, false).flatShape();
  return tree;
}

// The same paths as flatTree(), with other sizes.
const DiskNode& laterFlatTree() {
  static const DiskNode tree = TreeGrower(2, false).flatShape();
  return tree;
}

const DiskNode& evenFlatTree() {
  static const DiskNode tree = TreeGrower(1, true).flatShape();
  return tree;
}

const DiskNode& emptyTree() {
  static const DiskNode tree = TreeGrower(1, false).emptyShape();
  return tree;
}

using Tree = const DiskNode& (*)();

// Runs `call` repeatedly. Destroying its result is part of the measured time.
template <class Call>
void measure(benchmark::State& state, const Call& call) {
  std::size_t entries = 0;
  for (auto step : state) {
    auto answer = call();
    benchmark::DoNotOptimize(answer);
    entries = answer.size();
  }
  state.counters["entries"] = static_cast<double>(entries);
}

void flatten(benchmark::State& state, Tree tree, int levels) {
  const DiskNode& root = tree();
  measure(state, [&] { return ScanDiff::flatten(root, 0, levels); });
}

void flattenRelative(benchmark::State& state, Tree tree, int levels) {
  const DiskNode& root = tree();
  const std::string path = root.path();
  measure(state, [&] { return ScanDiff::flattenRelative(root, path, 0, levels); });
}

void compare(benchmark::State& state, Tree older, Tree newer, int levels) {
  const PathSizes before = older != nullptr ? ScanDiff::flatten(older(), 0, levels) : PathSizes{};
  const PathSizes after = ScanDiff::flatten(newer(), 0, levels);
  measure(state, [&] { return ScanDiff::compare(before, after, sessionDelta); });
}

void compareFolders(benchmark::State& state, Tree left, Tree right, int levels) {
  const auto sizes = [levels](Tree tree) {
    if (tree == nullptr) return PathSizes{};
    return ScanDiff::flattenRelative(tree(), tree().path(), 0, levels);
  };
  const PathSizes l = sizes(left);
  const PathSizes r = sizes(right);
  measure(state, [&] { return ScanDiff::compareFolders(l, r, sessionDelta); });
}

void largestFiles(benchmark::State& state, Tree tree, std::int64_t limit) {
  const DiskNode& root = tree();
  measure(state, [&] { return ScanInsights::largestFiles(root, limit); });
}

void emptyFolders(benchmark::State& state, Tree tree, std::int64_t limit) {
  const DiskNode& root = tree();
  measure(state, [&] { return ScanInsights::emptyFolders(root, limit); });
}

// To the last node of the tree, past all others.
void chain(benchmark::State& state, Tree tree) {
  const DiskNode& root = tree();
  DiskNode last = root;
  while (!last.children().empty()) {
    const DiskNode::Children children = last.children();
    last = children[children.size() - 1];
  }
  const std::string path = last.path();
  measure(state, [&] { return ScanInsights::chain(root, path).value(); });
}

void stats(benchmark::State& state, Tree tree) {
  const DiskNode& root = tree();
  for (auto step : state) {
    ScanStats counts = ScanInsights::stats(root, 0);
    benchmark::DoNotOptimize(counts);
  }
  state.counters["entries"] = static_cast<double>(ScanInsights::stats(root, 0).nodes);
}

void sevenTimes(benchmark::internal::Benchmark* run) {
  run->Unit(benchmark::kMillisecond)
      ->Repetitions(7)
      ->ReportAggregatesOnly(true)
      ->ComputeStatistics("min", [](const std::vector<double>& times) {
        return *std::min_element(times.begin(), times.end());
      });
}

BENCHMARK_CAPTURE(flatten, scan, scanTree, sessionLevels)->Apply(sevenTimes);
BENCHMARK_CAPTURE(flatten, scanWhole, scanTree, allLevels)->Apply(sevenTimes);
BENCHMARK_CAPTURE(flatten, flat, flatTree, sessionLevels)->Apply(sevenTimes);
BENCHMARK_CAPTURE(flattenRelative, scan, scanTree, sessionLevels)->Apply(sevenTimes);
BENCHMARK_CAPTURE(flattenRelative, scanWhole, scanTree, allLevels)->Apply(sevenTimes);
BENCHMARK_CAPTURE(flattenRelative, flat, flatTree, sessionLevels)->Apply(sevenTimes);

BENCHMARK_CAPTURE(compare, firstScan, nullptr, flatTree, sessionLevels)->Apply(sevenTimes);
BENCHMARK_CAPTURE(compare, flat, flatTree, laterFlatTree, sessionLevels)->Apply(sevenTimes);
BENCHMARK_CAPTURE(compare, flatUnchanged, flatTree, flatTree, sessionLevels)->Apply(sevenTimes);
BENCHMARK_CAPTURE(compare, flatAlike, nullptr, evenFlatTree, sessionLevels)->Apply(sevenTimes);
BENCHMARK_CAPTURE(compareFolders, flat, flatTree, laterFlatTree, sessionLevels)->Apply(sevenTimes);
BENCHMARK_CAPTURE(compareFolders, flatAlike, evenFlatTree, nullptr, sessionLevels)
    ->Apply(sevenTimes);

BENCHMARK_CAPTURE(largestFiles, scan, scanTree, 200)->Apply(sevenTimes);
BENCHMARK_CAPTURE(largestFiles, scanAll, scanTree, noLimit)->Apply(sevenTimes);
BENCHMARK_CAPTURE(largestFiles, flatAll, flatTree, noLimit)->Apply(sevenTimes);
BENCHMARK_CAPTURE(emptyFolders, scan, scanTree, 200)->Apply(sevenTimes);
BENCHMARK_CAPTURE(emptyFolders, scanAll, scanTree, noLimit)->Apply(sevenTimes);
BENCHMARK_CAPTURE(emptyFolders, nothingElse, emptyTree, noLimit)->Apply(sevenTimes);
BENCHMARK_CAPTURE(chain, scan, scanTree)->Apply(sevenTimes);
BENCHMARK_CAPTURE(chain, flat, flatTree)->Apply(sevenTimes);
BENCHMARK_CAPTURE(stats, scan, scanTree)->Apply(sevenTimes);

}  // namespace

BENCHMARK_MAIN();
