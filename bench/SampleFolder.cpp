#include "SampleFolder.h"

#include <algorithm>
#include <array>
#include <cmath>
#include <cstdint>
#include <functional>
#include <numeric>
#include <random>
#include <string>
#include <vector>

namespace tessaly::bench {

namespace {

constexpr int allLevels = 4;
constexpr std::int64_t sampleBytes = std::int64_t{500} << 30;

class SampleFolder {
 public:
  SampleFolder(unsigned seed, int children) : children_(children), random_(seed) {}

  DiskNode make(int levels, const std::string& path, std::int64_t size) {
    std::vector<DiskNode> children;
    if (levels > 0) children = makeChildren(levels, path, size);
    return DiskNode({.name = path.substr(path.rfind('/') + 1),
                     .path = path,
                     .size = size,
                     .isDir = true,
                     .kind = FileKind::folder,
                     .mtime = {}},
                    children);
  }

 private:
  static constexpr std::array names = {
      "Library",        "Documents",   "node_modules",
      "photos-2023",    "build",       "مستندات العائلة",
      "文档和照片存档", "holiday.mp4", "IMG_2041.HEIC",
      "🎉 party pics",   "main.cpp",    "a-very-long-file-name-that-goes-on-and-on.txt",
      "caf\xE9.txt"};

  std::vector<DiskNode> makeChildren(int levels, const std::string& path, std::int64_t size) {
    std::vector<double> weights;
    for (int i = 0; i < children_; ++i) {
      weights.push_back(std::pow(0.05 + 0.95 * static_cast<double>(random_() % 1000) / 1000, 3));
    }
    std::ranges::sort(weights, std::greater<>());
    const double sum = std::accumulate(weights.begin(), weights.end(), 0.0);
    std::vector<DiskNode> children;
    for (int i = 0; i < children_; ++i) {
      const std::string name =
          std::string(names[random_() % names.size()]) + " " + std::to_string(random_() % 100000);
      const double share = weights[static_cast<std::size_t>(i)] / sum;
      const auto part = static_cast<std::int64_t>(static_cast<double>(size) * share);
      const std::string childPath = path + "/" + name;
      if (random_() % 3 != 0) {
        children.push_back(make(levels - 1, childPath, part));
      } else {
        const FileKind kind = allFileKinds[1 + random_() % 8];
        children.push_back(
            DiskNode({.name = name, .path = childPath, .size = part, .kind = kind, .mtime = {}}));
      }
    }
    return children;
  }

  int children_;
  std::mt19937 random_;
};

}  // namespace

DiskNode sampleFolder(unsigned seed, int children) {
  return SampleFolder(seed, children).make(allLevels, "/home", sampleBytes);
}

std::size_t nodeCount(const DiskNode& node) {
  std::size_t count = 1;
  for (const DiskNode& child : node.children()) count += nodeCount(child);
  return count;
}

}  // namespace tessaly::bench
