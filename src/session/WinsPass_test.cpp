#include "session/WinsPass.h"

#include <filesystem>
#include <gmock/gmock.h>
#include <gtest/gtest.h>
#include <string>
#include <vector>

#include "support/TempTree.h"

namespace tessaly {
namespace {

using testing::IsEmpty;
using testing::UnorderedElementsAre;

bool never() {
  return false;
}

class WinsPassTest : public testing::Test {
 protected:
  static WinsPass::Engines engines(const std::vector<std::string>& caches,
                                   const std::vector<std::string>& wins,
                                   const std::vector<std::string>& files = {}) {
    ReclaimAnalysis::Finds finds;
    for (const std::string& path : caches) finds.probes.push_back({.id = path, .path = path});
    for (const std::string& path : wins) finds.treeWins.push_back({.path = path});
    for (const std::string& path : files) finds.largeOld.push_back({.path = path});
    return {.analyse = [finds](const std::string&, const std::optional<DiskNode>&,
                               const WinsPass::IsCancelled&) { return finds; }};
  }

  TempTree disk_{
      "data/\n"
      "  pip/\n"
      "home/\n"
      "  node_modules/\n"
      "  empty/\n"
      "  film 64K\n"};
};

TEST_F(WinsPassTest, a_folder_that_is_empty_only_in_the_tree_is_told) {
  const WinsPass::Found found = WinsPass::run(
      {}, {.home = disk_.at("home"), .emptyFolders = {disk_.at("home/empty"), disk_.at("data")}},
      never);
  EXPECT_THAT(found.filled, UnorderedElementsAre(disk_.at("data")));
  EXPECT_TRUE(found.sightings.contains(disk_.at("home/empty")));
  EXPECT_FALSE(found.sightings.contains(disk_.at("data")));
}

TEST_F(WinsPassTest, without_engines_nothing_is_found) {
  const WinsPass::Found found = WinsPass::run({}, {.home = "/h"}, never);
  EXPECT_EQ(found.finds, ReclaimAnalysis::Finds());
  EXPECT_THAT(found.sightings, IsEmpty());
}

TEST_F(WinsPassTest, every_item_is_seen_as_it_is_now) {
  const WinsPass::Found found =
      WinsPass::run(engines({}, {disk_.at("home/node_modules")}, {disk_.at("home/film")}),
                    {.home = disk_.at("home"), .emptyFolders = {disk_.at("home/empty")}}, never);
  for (const char* below : {"home/node_modules", "home/film", "home/empty"}) {
    const auto seen = found.sightings.find(disk_.at(below));
    ASSERT_NE(seen, found.sightings.end()) << below;
    EXPECT_EQ(seen->second.identity, FileIdentity::of(disk_.at(below)).value()) << below;
    EXPECT_EQ(seen->second.location.place, disk_.at(below));
  }
  EXPECT_THAT(found.gone, IsEmpty());
}

TEST_F(WinsPassTest, items_of_the_tree_that_no_longer_exist_are_gone) {
  const WinsPass::Found found = WinsPass::run(
      engines({disk_.at("home/missing")}, {disk_.at("home/node_modules"), disk_.at("x")}),
      {.home = disk_.at("home"), .emptyFolders = {disk_.at("home/empty"), disk_.at("y")}}, never);
  EXPECT_THAT(found.gone, UnorderedElementsAre(disk_.at("x"), disk_.at("y")));
}

TEST_F(WinsPassTest, a_link_above_a_cache_is_resolved_and_one_above_an_item_of_the_tree_is_not) {
  disk_.plant("home", ".cache -> ../data\n");
  const std::string cache = disk_.at("home/.cache/pip");
  const WinsPass::Found found = WinsPass::run(engines({cache}, {}), {.home = "/h"}, never);
  EXPECT_EQ(found.sightings.at(cache).location.place, disk_.at("data/pip"));
  const WinsPass::Found ofTree = WinsPass::run(engines({}, {cache}), {.home = "/h"}, never);
  EXPECT_EQ(ofTree.sightings.at(cache).location.place, cache);
}

TEST_F(WinsPassTest, a_cancelled_pass_looks_at_no_item) {
  const WinsPass::Found found =
      WinsPass::run(engines({}, {disk_.at("home/node_modules")}),
                    {.home = "/h", .emptyFolders = {disk_.at("home/empty")}}, [] { return true; });
  EXPECT_THAT(found.sightings, IsEmpty());
  EXPECT_THAT(found.gone, IsEmpty());
}

}  // namespace
}  // namespace tessaly
