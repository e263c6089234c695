#include "scan/SkipRules.h"

#include <gtest/gtest.h>

namespace tessaly {
namespace {

struct Case {
  DiskScanner::Options options;
  Places places;
  std::string root = "/home/me";

  bool skips(const std::string& path) const {
    const std::string name = path.substr(path.rfind('/') + 1);
    return SkipRules(root, options, places).skips(name, [&] { return path; });
  }
};

TEST(SkipRules, nothing_is_left_out_without_a_rule) {
  EXPECT_FALSE(Case{}.skips("/home/me/.Trash"));
  EXPECT_FALSE(Case{}.skips("/home/me/a"));
}

TEST(SkipRules, names_are_compared_exactly) {
  Case c;
  c.places.skipNames = {".Trash"};
  c.options.extraNames = {"node_modules"};
  EXPECT_TRUE(c.skips("/home/me/.Trash"));
  EXPECT_FALSE(c.skips("/home/me/.trash"));
  EXPECT_TRUE(c.skips("/home/me/x/node_modules"));
  EXPECT_FALSE(c.skips("/home/me/x/node_modules2"));
}

TEST(SkipRules, suffixes_are_compared_with_the_lower_cased_name) {
  Case c;
  c.options.extraSuffixes = {".mp4", ".é"};
  EXPECT_TRUE(c.skips("/home/me/Film.MP4"));
  EXPECT_TRUE(c.skips("/home/me/NOT.É"));
  EXPECT_FALSE(c.skips("/home/me/film.mp4.part"));
}

TEST(SkipRules, an_excluded_folder_is_left_out_and_its_neighbours_stay) {
  Case c;
  c.options.extraPrefixes = {"/home/me/a/b/", "/home/me/big.iso"};
  EXPECT_TRUE(c.skips("/home/me/a/b"));
  EXPECT_FALSE(c.skips("/home/me/a/bc"));
  EXPECT_FALSE(c.skips("/home/me/b"));
  EXPECT_TRUE(c.skips("/home/me/big.iso"));
}

TEST(SkipRules, a_scan_inside_an_excluded_folder_leaves_out_everything) {
  for (const char* prefix : {"/home/me", "/home/me/", "/home", "/"}) {
    Case c;
    c.options.extraPrefixes = {prefix};
    EXPECT_TRUE(c.skips("/home/me/anything")) << prefix;
  }
  Case c;
  c.options.extraPrefixes = {""};
  EXPECT_FALSE(c.skips("/home/me/anything"));
}

TEST(SkipRules, a_path_that_no_walk_enters_is_left_out_by_the_whole_path) {
  Case c;
  c.places.skipPaths = {"/home/me/.local/share/Trash"};
  EXPECT_TRUE(c.skips("/home/me/.local/share/Trash"));
  EXPECT_FALSE(c.skips("/home/me/Projects/Trash"));
}

TEST(SkipRules, names_at_the_root_count_only_directly_under_slash) {
  Places places;
  places.skipRootNames = {"proc"};
  const SkipRules slash("/", {}, places);
  EXPECT_TRUE(slash.skipsAtRoot("proc", 1));
  EXPECT_FALSE(slash.skipsAtRoot("proc", 2));
  EXPECT_FALSE(slash.skipsAtRoot("usr", 1));
  EXPECT_FALSE(SkipRules("/srv", {}, places).skipsAtRoot("proc", 1));
}

}  // namespace
}  // namespace tessaly
