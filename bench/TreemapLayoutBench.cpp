// Measures one layout of a full treemap. The aim is at most 50 microseconds for 500 tiles, the
// minimum of seven repetitions.
//
// The trees are made from a fixed seed. Every benchmark prints its number of tiles, so that a map
// that is not full is not mistaken for a full one.

#include <algorithm>
#include <benchmark/benchmark.h>
#include <cmath>
#include <condition_variable>
#include <cstddef>
#include <cstdint>
#include <mutex>
#include <optional>
#include <random>
#include <set>
#include <stop_token>
#include <string>
#include <thread>
#include <vector>

#include "scan/DiskNode.h"
#include "treemap/BloatFilter.h"
#include "treemap/NodeTint.h"
#include "treemap/TreemapLayout.h"
#include "treemap/TreemapSelect.h"

namespace {

using namespace tessaly;

constexpr Rect canvas = {0, 0, 1280, 820};

// Folders of up to 81 children, as a scan leaves them, with sizes that fall off as in a home
// folder: child number k has the weight (k + 1)^-steepness, plus or minus a third.
class HomeLikeTree {
 public:
  HomeLikeTree(std::size_t topChildren, std::size_t children, double steepness)
      : children_(children), steepness_(steepness) {
    builder_.open({"home", total, true, FileKind::folder, std::nullopt}, "/home");
    fill(total, topChildren, 0);
    builder_.close();
    root_ = builder_.finish();
  }

  const DiskNode& root() const { return root_; }

 private:
  static constexpr std::int64_t total = std::int64_t{400} << 30;
  static constexpr int levels = 4;

  double fraction() { return static_cast<double>(engine_() >> 11U) * 0x1p-53; }

  void fill(std::int64_t size, std::size_t count, int depth) {
    std::vector<double> weights;
    double sum = 0;
    for (std::size_t k = 0; k < count; ++k) {
      const double weight = (0.67 + 0.67 * fraction()) / std::pow(k + 1.0, steepness_);
      weights.push_back(weight);
      sum += weight;
    }
    std::sort(weights.rbegin(), weights.rend());
    for (const double weight : weights) {
      const auto part = static_cast<std::int64_t>(static_cast<double>(size) * weight / sum);
      const bool isDir = depth < levels && part > 1 << 20 && fraction() < 0.6;
      const std::string name = (isDir ? "folder " : "file ") + std::to_string(made_++);
      builder_.openBelow(
          {name, part, isDir, isDir ? FileKind::folder : FileKind::other, 1'700'000'000.0});
      if (isDir) fill(part, children_ / 2 + engine_() % (children_ / 2), depth + 1);
      builder_.close();
    }
  }

  std::size_t children_;
  double steepness_;
  std::mt19937_64 engine_{20240229};
  std::uint64_t made_ = 0;
  DiskTreeBuilder builder_;
  DiskNode root_;
};

void layoutOf(benchmark::State& state, const DiskNode& root, const Rect& rect) {
  std::size_t tiles = 0;
  for (auto step : state) {
    std::vector<TreemapRect> rects = TreemapLayout::layout(root, rect);
    benchmark::DoNotOptimize(rects.data());
    tiles = rects.size();
  }
  state.counters["tiles"] = static_cast<double>(tiles);
}

// The map of the window at its usual size: full, most folders opened.
void homeFolder(benchmark::State& state) {
  static const HomeLikeTree tree(40, 60, 0.8);
  layoutOf(state, tree.root(), canvas);
}

// A folder on a large screen with the maximum number of equal children: the longest possible rows.
void equalChildren(benchmark::State& state) {
  static const HomeLikeTree tree(100, 100, 0);
  layoutOf(state, tree.root(), {0, 0, 2560, 1440});
}

// Sizes that fall off so steeply that most of the placed tiles are too small to show.
void steepSizes(benchmark::State& state) {
  static const HomeLikeTree tree(81, 80, 2);
  layoutOf(state, tree.root(), canvas);
}

// One folder of a hundred files.
void flatFolder(benchmark::State& state) {
  static const HomeLikeTree tree(100, 2, 0.3);
  layoutOf(state, tree.root(), canvas);
}

void rubberBandOverEverything(benchmark::State& state) {
  static const HomeLikeTree tree(40, 60, 0.8);
  const std::vector<TreemapRect> rects = TreemapLayout::layout(tree.root(), canvas);
  for (auto step : state) {
    std::vector<DiskNode> nodes = TreemapSelect::hits(rects, canvas);
    benchmark::DoNotOptimize(nodes.data());
  }
  state.counters["tiles"] = static_cast<double>(rects.size());
}

void tintOf(benchmark::State& state, bool filtersOn, bool heatmap) {
  static const HomeLikeTree tree(40, 60, 0.8);
  const std::vector<TreemapRect> rects = TreemapLayout::layout(tree.root(), canvas);
  std::vector<BloatFilter> filters = BloatFilter::catalog();
  for (BloatFilter& filter : filters) filter.enabled = filtersOn;
  const std::set<std::string> grew = {"/home/folder 1", "/home/folder 2"};
  for (auto step : state) {
    for (const TreemapRect& rect : rects) {
      benchmark::DoNotOptimize(NodeTint::color(rect.node, filters, grew, heatmap));
    }
  }
  state.counters["tiles"] = static_cast<double>(rects.size());
}

void tintByName(benchmark::State& state) {
  tintOf(state, false, false);
}
void tintWithAllFilters(benchmark::State& state) {
  tintOf(state, true, false);
}
void tintByAge(benchmark::State& state) {
  tintOf(state, false, true);
}

void sevenTimes(benchmark::internal::Benchmark* run) {
  run->Unit(benchmark::kMicrosecond)
      ->Repetitions(7)
      ->ReportAggregatesOnly(true)
      ->ComputeStatistics("min", [](const std::vector<double>& times) {
        return *std::min_element(times.begin(), times.end());
      });
}

BENCHMARK(homeFolder)->Apply(sevenTimes);
BENCHMARK(equalChildren)->Apply(sevenTimes);
BENCHMARK(steepSizes)->Apply(sevenTimes);
BENCHMARK(flatFolder)->Apply(sevenTimes);
BENCHMARK(rubberBandOverEverything)->Apply(sevenTimes);
BENCHMARK(tintByName)->Apply(sevenTimes);
BENCHMARK(tintWithAllFilters)->Apply(sevenTimes);
BENCHMARK(tintByAge)->Apply(sevenTimes);

}  // namespace

int main(int argc, char** argv) {
  // Shared pointers are cheaper in a process without threads; the program has threads.
  const std::jthread other([](const std::stop_token& stop) {
    std::mutex mutex;
    std::condition_variable_any never;
    std::unique_lock lock(mutex);
    never.wait(lock, stop, [] { return false; });
  });
  benchmark::Initialize(&argc, argv);
  if (benchmark::ReportUnrecognizedArguments(argc, argv)) return 1;
  benchmark::RunSpecifiedBenchmarks();
  benchmark::Shutdown();
  return 0;
}
