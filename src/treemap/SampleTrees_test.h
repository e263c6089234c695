// Small trees for the tests of this room, written by hand or random.
#pragma once

#include <algorithm>
#include <array>
#include <cstddef>
#include <cstdint>
#include <optional>
#include <random>
#include <string>
#include <utility>
#include <vector>

#include "scan/DiskNode.h"

namespace tessaly::testing_trees {

inline std::string lastComponent(const std::string& path) {
  return path.substr(path.find_last_of('/') + 1);
}

inline DiskNode file(const std::string& path, std::int64_t size, FileKind kind = FileKind::other) {
  return DiskNode({lastComponent(path), path, size, false, kind, std::nullopt});
}

inline DiskNode folder(const std::string& path, std::int64_t size,
                       const std::vector<DiskNode>& children = {}) {
  return DiskNode({lastComponent(path), path, size, true, FileKind::folder, std::nullopt},
                  children);
}

// Files "/0", "/1", ... with these sizes.
inline std::vector<DiskNode> files(const std::vector<std::int64_t>& sizes,
                                   const std::string& parent = "") {
  std::vector<DiskNode> nodes;
  for (std::size_t k = 0; k < sizes.size(); ++k) {
    nodes.push_back(file(parent + "/" + std::to_string(k), sizes[k]));
  }
  return nodes;
}

// Gives the same numbers on every system, in contrast to the distributions of the standard library.
class Dice {
 public:
  explicit Dice(std::uint64_t seed) : engine_(seed) {}

  std::uint64_t below(std::uint64_t bound) { return engine_() % bound; }
  std::int64_t between(std::int64_t low, std::int64_t high) {
    return low + static_cast<std::int64_t>(below(static_cast<std::uint64_t>(high - low) + 1));
  }
  // From 0 to below 1, in steps of 2^-53.
  double fraction() { return static_cast<double>(engine_() >> 11U) * 0x1p-53; }
  bool chance(double probability) { return fraction() < probability; }
  // Any number below 2^bits, each bit length equally likely.
  std::int64_t magnitude(unsigned bits) {
    const std::uint64_t width = below(bits) + 1;
    return static_cast<std::int64_t>(engine_() >> (64 - width));
  }

 private:
  std::mt19937_64 engine_;
};

// Sizes of a random kind: ties, zeros and negatives, powers of two, very large ones, or any
// magnitude; their sum stays within 64 bits.
inline std::vector<std::int64_t> randomSizes(Dice& dice, std::size_t most) {
  const std::uint64_t character = dice.below(7);
  std::size_t count = dice.below(most + 1);
  if (character == 0) count = std::min<std::size_t>(count, 7);
  std::vector<std::int64_t> sizes;
  for (std::size_t k = 0; k < count; ++k) {
    switch (character) {
      case 0:
        sizes.push_back((std::int64_t{1} << 60) - dice.between(-3, 3));
        break;
      case 1:
        sizes.push_back(dice.between(1, 3));
        break;
      case 2:
        sizes.push_back(dice.between(-1, 2) * 4096);
        break;
      case 3:
        sizes.push_back(std::int64_t{1} << dice.below(50));
        break;
      case 4:
        sizes.push_back(1000);
        break;
      default:
        sizes.push_back(dice.magnitude(52));
    }
  }
  if (dice.chance(0.7)) std::sort(sizes.rbegin(), sizes.rend());
  return sizes;
}

// The shape of a node before it is built.
struct Plan {
  std::int64_t size = 0;
  bool isDir = false;
  std::vector<Plan> children;
};

inline Plan randomPlan(Dice& dice, int levels, std::size_t most) {
  Plan plan;
  plan.isDir = true;
  for (const std::int64_t size : randomSizes(dice, most)) {
    Plan child;
    if (levels > 0 && dice.chance(0.5)) {
      child = randomPlan(dice, levels - 1, std::max<std::size_t>(most / 2, 4));
    }
    const bool keepsOwnSize = child.isDir && child.size < std::int64_t{1} << 54 && dice.chance(0.7);
    if (!keepsOwnSize) child.size = size;
    plan.size += std::max<std::int64_t>(child.size, 0);
    plan.children.push_back(std::move(child));
  }
  if (dice.chance(0.1)) plan.size = dice.magnitude(40);
  return plan;
}

inline void build(const Plan& plan, DiskTreeBuilder& builder) {
  for (std::size_t k = 0; k < plan.children.size(); ++k) {
    const Plan& child = plan.children[k];
    builder.openBelow({std::to_string(k), child.size, child.isDir,
                       child.isDir ? FileKind::folder : FileKind::other, std::nullopt});
    build(child, builder);
    builder.close();
  }
}

// A folder with all kinds of children, down to `levels` below them. Children are mostly sorted.
// Some folders have the sum of their children's sizes, others an unrelated size.
inline DiskNode randomFolder(Dice& dice, const std::string& path, int levels, std::size_t most) {
  const Plan plan = randomPlan(dice, levels, most);
  DiskTreeBuilder builder;
  builder.open({lastComponent(path), plan.size, true, FileKind::folder, std::nullopt}, path);
  build(plan, builder);
  builder.close();
  return builder.finish();
}

}  // namespace tessaly::testing_trees
