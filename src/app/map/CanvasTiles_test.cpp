#include "app/map/CanvasTiles.h"

#include <gtest/gtest.h>

#include "app/map/SampleTiles_test.h"
#include "look/MarrowTheme.h"
#include "treemap/NodeTint.h"

namespace tessaly {
namespace {

const std::vector<BloatFilter> noFilters;
const std::set<std::string> noPaths;

DiskNode twoFolders() {
  return folderNode("/r", 200,
                    {folderNode("/r/a", 100, {fileNode("/r/a/1", 60), fileNode("/r/a/2", 40)}),
                     folderNode("/r/b", 100, {fileNode("/r/b/3", 100)})});
}

CanvasTiles tilesOf(const DiskNode& node, const std::set<std::string>& selected = noPaths) {
  return CanvasTiles(node, {400, 200}, {noFilters, noPaths, selected, false});
}

std::vector<std::string> pathsOf(const CanvasTiles& tiles) {
  std::vector<std::string> paths;
  for (const CanvasTile& tile : tiles.all()) paths.push_back(tile.rect.node.path());
  return paths;
}

TEST(CanvasTiles, folders_come_before_their_contents_and_siblings_keep_their_order) {
  EXPECT_EQ(pathsOf(tilesOf(twoFolders())),
            (std::vector<std::string>{"/r/a", "/r/b", "/r/a/1", "/r/a/2", "/r/b/3"}));
}

TEST(CanvasTiles, the_topmost_tile_is_hit) {
  const CanvasTiles tiles = tilesOf(twoFolders());
  const TreemapRect& folder = tiles[0].rect;
  const TreemapRect& inside = tiles[2].rect;
  EXPECT_EQ(tiles.at({inside.x + 5, inside.y + 5}), 2U);
  EXPECT_EQ(tiles.at({folder.x + 5, folder.y + 5}), 0U);
}

TEST(CanvasTiles, nothing_is_hit_between_and_outside_tiles) {
  const CanvasTiles tiles = tilesOf(twoFolders());
  const TreemapRect& first = tiles[0].rect;
  EXPECT_EQ(tiles.at({1, 1}), std::nullopt);
  EXPECT_EQ(tiles.at({first.x + first.width + 1, first.y + 50}), std::nullopt);
  EXPECT_EQ(CanvasTiles().at({1, 1}), std::nullopt);
}

TEST(CanvasTiles, tiles_are_found_by_path) {
  const CanvasTiles tiles = tilesOf(twoFolders());
  EXPECT_EQ(tiles.find("/r/a/2"), 3U);
  EXPECT_EQ(tiles.find("/r/a/"), std::nullopt);
}

TEST(CanvasTiles, the_tile_of_an_item_precedes_that_of_a_remainder_with_its_path) {
  const DiskNode remainder = remainderNode("/r", "+ 6 more", 10);
  const CanvasTiles both =
      tilesOf(folderNode("/r", 90, {fileNode("/r/__rest__", 80), remainder}), {"/r/__rest__"});
  EXPECT_EQ(both.find("/r/__rest__"), 0U);
  EXPECT_TRUE(both[0].selected);
  EXPECT_FALSE(both[1].selected);
  const CanvasTiles alone = tilesOf(folderNode("/r", 90, {fileNode("/r/a", 80), remainder}));
  EXPECT_EQ(alone.find("/r/__rest__"), 1U);
}

TEST(CanvasTiles, selected_tiles_are_marked) {
  const CanvasTiles tiles = tilesOf(twoFolders(), {"/r/b", "/r/a/1"});
  EXPECT_FALSE(tiles[0].selected);
  EXPECT_TRUE(tiles[1].selected);
  EXPECT_TRUE(tiles[2].selected);
  EXPECT_FALSE(tiles[3].selected);
}

TEST(CanvasTiles, tiles_have_the_tint_of_filters_growth_and_heat_map) {
  const DiskNode node = twoFolders();
  std::vector<BloatFilter> filters = {BloatFilter::catalog().front()};
  const std::set<std::string> grown = {"/r/a"};
  const auto tint = [&](bool heatmap) {
    return CanvasTiles(node, {400, 200}, {filters, grown, noPaths, heatmap})[0].tint;
  };
  EXPECT_EQ(tint(false), MarrowTheme::warning);
  EXPECT_EQ(tint(true), MarrowTheme::other);
  filters.front().enabled = true;
  EXPECT_EQ(tint(false), NodeTint::base(node.children()[0]).atOpacity(0.28));
}

TEST(CanvasTiles, tiles_of_the_top_level_have_larger_corners) {
  const CanvasTiles tiles = tilesOf(twoFolders());
  EXPECT_EQ(tiles[0].radius(), 8);
  EXPECT_EQ(tiles[2].radius(), 5);
}

}  // namespace
}  // namespace tessaly
