#include "app/map/TileNeighbour.h"

#include <gtest/gtest.h>
#include <optional>
#include <random>
#include <set>
#include <string>

#include "app/map/CanvasTiles.h"
#include "app/map/SampleTiles_test.h"
#include "treemap/TreemapLayout.h"

namespace tessaly {
namespace {

constexpr TileDirection directions[] = {TileDirection::left, TileDirection::right,
                                        TileDirection::up, TileDirection::down};

CanvasTile tileAt(const std::string& name, double x, double y, double width, double height,
                  bool nested = false) {
  TreemapRect rect{fileNode("/r/" + name, 1)};
  rect.x = x;
  rect.y = y;
  rect.width = width;
  rect.height = height;
  rect.nested = nested;
  return {.rect = rect, .tint = {}};
}

class TileNeighbourTest : public testing::Test {
 protected:
  // The name of the neighbour in `direction` of the tile named `from`; empty if there is none.
  std::string from(const std::string& name, TileDirection direction) const {
    for (std::size_t i = 0; i < tiles_.size(); ++i) {
      if (tiles_[i].rect.node.name() != name) continue;
      const auto next = TileNeighbour::of(tiles_, i, direction);
      return next ? std::string(tiles_[*next].rect.node.name()) : "";
    }
    return "no such tile";
  }

  std::vector<CanvasTile> tiles_;
};

TEST_F(TileNeighbourTest, the_neighbour_is_beside_the_middle_of_the_edge) {
  tiles_ = {tileAt("wide", 0, 0, 100, 300), tileAt("top", 102, 0, 100, 100),
            tileAt("middle", 102, 102, 100, 98), tileAt("bottom", 102, 202, 100, 98)};
  EXPECT_EQ(from("wide", TileDirection::right), "middle");
  EXPECT_EQ(from("middle", TileDirection::up), "top");
  EXPECT_EQ(from("middle", TileDirection::down), "bottom");
  EXPECT_EQ(from("bottom", TileDirection::left), "wide");
}

TEST_F(TileNeighbourTest, there_is_no_neighbour_at_the_border) {
  tiles_ = {tileAt("one", 0, 0, 100, 100), tileAt("two", 102, 0, 100, 100)};
  EXPECT_EQ(from("one", TileDirection::left), "");
  EXPECT_EQ(from("one", TileDirection::up), "");
  EXPECT_EQ(from("one", TileDirection::down), "");
  EXPECT_EQ(from("two", TileDirection::right), "");
}

TEST_F(TileNeighbourTest, an_empty_area_does_not_hide_the_neighbour) {
  tiles_ = {tileAt("one", 0, 0, 100, 100), tileAt("far", 300, 250, 100, 100)};
  EXPECT_EQ(from("one", TileDirection::right), "far");
  EXPECT_EQ(from("far", TileDirection::up), "one");
}

TEST_F(TileNeighbourTest, the_neighbour_below_a_header_is_the_tile_under_it) {
  tiles_ = {tileAt("folder", 0, 0, 200, 200, true), tileAt("next", 202, 0, 100, 200),
            tileAt("inside", 2, 21, 97, 176), tileAt("beside", 101, 21, 97, 176)};
  EXPECT_EQ(from("folder", TileDirection::down), "inside");
  EXPECT_EQ(from("inside", TileDirection::up), "folder");
  EXPECT_EQ(from("inside", TileDirection::right), "beside");
  EXPECT_EQ(from("beside", TileDirection::right), "next");
  EXPECT_EQ(from("next", TileDirection::left), "beside");
  EXPECT_EQ(from("folder", TileDirection::right), "next");
}

TEST_F(TileNeighbourTest, neighbours_may_overlap_by_rounding) {
  tiles_ = {tileAt("one", 0, 0, 100.0000001, 100), tileAt("two", 100, 0, 100, 100)};
  EXPECT_EQ(from("one", TileDirection::right), "two");
  EXPECT_EQ(from("two", TileDirection::left), "one");
}

TEST(TileFace, the_face_of_a_tile_with_children_is_its_header) {
  EXPECT_EQ(TileNeighbour::faceOf(tileAt("folder", 1, 2, 200, 100, true).rect),
            (Rect{1, 2, 200, 20}));
  EXPECT_EQ(TileNeighbour::faceOf(tileAt("file", 1, 2, 200, 100).rect), (Rect{1, 2, 200, 100}));
}

DiskNode randomFolder(std::mt19937& random, const std::string& path, int levels) {
  std::vector<DiskNode> children;
  std::int64_t size = 0;
  const int count = std::uniform_int_distribution(1, 9)(random);
  for (int i = 0; i < count; ++i) {
    const std::string child = path + "/" + std::to_string(i);
    const bool opens = levels > 0 && random() % 2 == 0;
    const auto weight = std::uniform_int_distribution<std::int64_t>(1, 1000)(random);
    children.push_back(opens ? randomFolder(random, child, levels - 1) : fileNode(child, weight));
    size += children.back().size();
  }
  return folderNode(path, size, children);
}

TEST(TileNeighbours, arrows_reach_every_tile_of_random_trees) {
  std::mt19937 random(7);
  for (int round = 0; round < 60; ++round) {
    const CanvasTiles tiles(randomFolder(random, "/r", 3), {900, 600}, {{}, {}, {}, false});
    std::set<std::size_t> reached = {0};
    std::vector<std::size_t> waiting = {0};
    while (!waiting.empty()) {
      const std::size_t at = waiting.back();
      waiting.pop_back();
      for (const TileDirection direction : directions) {
        const auto next = TileNeighbour::of(tiles.all(), at, direction);
        if (next && reached.insert(*next).second) waiting.push_back(*next);
      }
    }
    EXPECT_EQ(reached.size(), tiles.all().size()) << "round " << round;
  }
}

}  // namespace
}  // namespace tessaly
