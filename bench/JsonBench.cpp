// Measures saving and restoring the tree of a scan, in memory. The aim for 40,000 nodes is at most
// 15 ms to write them as JSON and 20 ms to read them back, the minimum of seven repetitions.
//
// The trees are made from a fixed seed, and every benchmark prints its number of nodes.

#include <algorithm>
#include <benchmark/benchmark.h>
#include <cstddef>
#include <cstdint>
#include <optional>
#include <string>
#include <vector>

#include "SampleTree.h"
#include "scan/DiskNode.h"
#include "scan/DiskNodeJson.h"
#include "scan/PathSizes.h"
#include "scan/PathSizesJson.h"

namespace {

using namespace tessaly;
using bench::mostChildren;
using bench::sampleTree;

const DiskNode& plainTree() {
  static const DiskNode tree = sampleTree("abcdefghijklmnopqrstuvwxyz-_ ");
  return tree;
}

// Nearly every name has bytes that are not UTF-8, or that JSON escapes.
const DiskNode& oddTree() {
  static const DiskNode tree = sampleTree("abcdefghijklmnopqrst\xe9\xff\"\\\n");
  return tree;
}

void report(benchmark::State& state, std::size_t nodes, std::size_t bytes) {
  state.counters["nodes"] = static_cast<double>(nodes);
  state.counters["MB"] = static_cast<double>(bytes) / 1e6;
}

void encode(benchmark::State& state, const DiskNode& tree) {
  for (auto _ : state) benchmark::DoNotOptimize(DiskNodeJson::encode(tree));
  report(state, tree.subtreeCount(), DiskNodeJson::encode(tree).size());
}

void decode(benchmark::State& state, const DiskNode& tree) {
  const std::string json = DiskNodeJson::encode(tree);
  for (auto _ : state) benchmark::DoNotOptimize(DiskNodeJson::decode(json));
  const std::optional<DiskNode> back = DiskNodeJson::decode(json);
  if (back != tree) state.SkipWithError("the tree that was read is another one");
  report(state, back ? back->subtreeCount() : 0, json.size());
}

void encodeTree(benchmark::State& state) {
  encode(state, plainTree());
}

void decodeTree(benchmark::State& state) {
  decode(state, plainTree());
}

void encodeOddNames(benchmark::State& state) {
  encode(state, oddTree());
}

void decodeOddNames(benchmark::State& state) {
  decode(state, oddTree());
}

// Three levels with as many entries as a scan leaves.
PathSizes sampleSizes() {
  PathSizes sizes = {{"/home/somebody", 1}};
  for (int k = 0; k < mostChildren; ++k) {
    const std::string folder = "/home/somebody/folder number " + std::to_string(k);
    sizes[folder] = k;
    for (int l = 0; l < mostChildren; ++l) sizes[folder + "/item " + std::to_string(l)] = l;
  }
  return sizes;
}

void encodeSizes(benchmark::State& state) {
  const PathSizes sizes = sampleSizes();
  for (auto _ : state) benchmark::DoNotOptimize(PathSizesJson::encode(sizes));
  report(state, sizes.size(), PathSizesJson::encode(sizes).size());
}

void decodeSizes(benchmark::State& state) {
  const PathSizes sizes = sampleSizes();
  const std::string json = PathSizesJson::encode(sizes);
  for (auto _ : state) benchmark::DoNotOptimize(PathSizesJson::decode(json));
  report(state, PathSizesJson::decode(json)->size(), json.size());
}

void sevenTimes(benchmark::internal::Benchmark* run) {
  run->Unit(benchmark::kMillisecond)
      ->Repetitions(7)
      ->ReportAggregatesOnly(true)
      ->ComputeStatistics("min", [](const std::vector<double>& times) {
        return *std::min_element(times.begin(), times.end());
      });
}

BENCHMARK(encodeTree)->Apply(sevenTimes);
BENCHMARK(decodeTree)->Apply(sevenTimes);
BENCHMARK(encodeOddNames)->Apply(sevenTimes);
BENCHMARK(decodeOddNames)->Apply(sevenTimes);
BENCHMARK(encodeSizes)->Apply(sevenTimes);
BENCHMARK(decodeSizes)->Apply(sevenTimes);

}  // namespace

BENCHMARK_MAIN();
