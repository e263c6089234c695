#include "treemap/NodeTint.h"

#include <gtest/gtest.h>
#include <limits>
#include <optional>
#include <set>
#include <string>
#include <vector>

#include "look/MarrowTheme.h"
#include "treemap/SampleTrees_test.h"

namespace tessaly {
namespace {

using testing_trees::file;
using testing_trees::folder;

constexpr double now = 1'700'000'000;
constexpr double day = 86400;

DiskNode aged(std::optional<double> mtime) {
  return DiskNode({"f", "/f", 1, false, FileKind::other, mtime});
}

DiskNode app(const std::string& name) {
  return DiskNode({name, "/" + name, 1, true, FileKind::app, std::nullopt});
}

std::vector<BloatFilter> enabling(const std::string& id) {
  std::vector<BloatFilter> filters = BloatFilter::catalog();
  for (BloatFilter& filter : filters) filter.enabled = filter.id == id;
  return filters;
}

Color byAge(std::optional<double> mtime) {
  return NodeTint::color(aged(mtime), {}, {}, true, now);
}

Color tint(const DiskNode& node, const std::vector<BloatFilter>& filters = BloatFilter::catalog(),
           const std::set<std::string>& grew = {}) {
  return NodeTint::color(node, filters, grew, false, now);
}

TEST(NodeTintBase, package_folders_have_the_developer_colour) {
  EXPECT_EQ(NodeTint::base(folder("/node_modules", 1)), MarrowTheme::developer);
  EXPECT_EQ(NodeTint::base(folder("/NODE_Modules", 1)), MarrowTheme::developer);
  EXPECT_EQ(NodeTint::base(folder("/.npm", 1)), MarrowTheme::developer);
  EXPECT_EQ(NodeTint::base(folder("/my.npmrc-backup", 1)), MarrowTheme::developer);
  EXPECT_EQ(NodeTint::base(folder("/my_node_modules", 1)),
            MarrowTheme::folderColor("my_node_modules"));
}

TEST(NodeTintBase, a_plain_file_is_coloured_by_its_kind) {
  EXPECT_EQ(NodeTint::base(file("/my.npmrc-backup", 1)), MarrowTheme::other);
  EXPECT_EQ(NodeTint::base(file("/xcode", 1, FileKind::image)), MarrowTheme::image);
  EXPECT_EQ(NodeTint::base(file("/build", 1, FileKind::folder)), MarrowTheme::folderPalette[0]);
  EXPECT_EQ(NodeTint::base(file("/disk.dmg", 1, FileKind::disk)), Color::fromRgb(0xA855F7));
  EXPECT_EQ(NodeTint::base(file("/a.app", 1, FileKind::app)), MarrowTheme::accent);
}

TEST(NodeTintBase, xcode_is_found_anywhere_in_the_name) {
  EXPECT_EQ(NodeTint::base(folder("/Xcode Projects", 1)), MarrowTheme::folderPalette[3]);
  EXPECT_EQ(NodeTint::base(folder("/my-XCODE", 1)), MarrowTheme::folderPalette[3]);
  EXPECT_EQ(NodeTint::base(folder("/DerivedData", 1)), MarrowTheme::folderPalette[3]);
  EXPECT_EQ(NodeTint::base(folder("/DerivedData2", 1)), MarrowTheme::folderColor("DerivedData2"));
}

TEST(NodeTintBase, build_folders_match_by_their_whole_name) {
  for (const char* path : {"/build", "/Build", "/dist", "/out", "/.next"}) {
    EXPECT_EQ(NodeTint::base(folder(path, 1)), MarrowTheme::folderPalette[7]) << path;
  }
  for (const char* name : {"builds", "distribution", "layout", ".nextcloud"}) {
    EXPECT_EQ(NodeTint::base(folder(std::string("/") + name, 1)), MarrowTheme::folderColor(name));
  }
  EXPECT_NE(MarrowTheme::folderColor("builds"), MarrowTheme::folderPalette[7]);
}

TEST(NodeTintBase, the_name_decides_before_the_kind) {
  EXPECT_EQ(NodeTint::base(app("Build.app")), MarrowTheme::accent);
  EXPECT_EQ(NodeTint::base(app("Xcode.app")), MarrowTheme::folderPalette[3]);
}

TEST(NodeTintBase, other_folders_are_coloured_by_their_name) {
  EXPECT_EQ(NodeTint::base(folder("/home/Z", 1)), MarrowTheme::folderPalette[0]);
  EXPECT_EQ(NodeTint::base(folder("/a/listen", 1)), NodeTint::base(folder("/b/silent", 9)));
  EXPECT_EQ(NodeTint::base(folder("/a", 1)), MarrowTheme::folderPalette[97 % 15]);
  EXPECT_EQ(NodeTint::base(folder("/A", 1)), MarrowTheme::folderPalette[65 % 15]);
}

TEST(NodeTint, a_node_has_its_base_colour_without_filters_and_growth) {
  EXPECT_EQ(tint(folder("/src", 1)), NodeTint::base(folder("/src", 1)));
  EXPECT_EQ(tint(folder("/src", 1), {}), NodeTint::base(folder("/src", 1)));
}

TEST(NodeTint, grown_paths_have_the_warning_colour) {
  EXPECT_EQ(tint(folder("/src", 1), BloatFilter::catalog(), {"/src"}), MarrowTheme::warning);
  EXPECT_EQ(tint(folder("/src", 1), {}, {"/src"}), MarrowTheme::warning);
  EXPECT_EQ(tint(folder("/src", 1), {}, {"/src/a", "/sr", "/SRC"}),
            NodeTint::base(folder("/src", 1)));
}

TEST(NodeTint, an_enabled_filter_highlights_matching_names) {
  EXPECT_EQ(tint(file("/a/film.MP4", 1, FileKind::video), enabling("videos")),
            MarrowTheme::highlight);
  EXPECT_EQ(tint(file("/a/film.mp4.part", 1), enabling("videos")), MarrowTheme::highlight);
  EXPECT_EQ(tint(folder("/a/deriveddata", 1), enabling("xcode")), MarrowTheme::highlight);
}

TEST(NodeTint, a_filter_highlights_everything_in_a_matching_folder) {
  EXPECT_EQ(tint(file("/a/node_modules/b/c.js", 1, FileKind::code), enabling("node_modules")),
            MarrowTheme::highlight);
  EXPECT_EQ(tint(file("/Library/Application Support/mobilesync/x", 1), enabling("ios_backups")),
            MarrowTheme::highlight);
}

TEST(NodeTint, a_filter_matches_the_name_even_if_the_path_does_not_contain_it) {
  const DiskNode root({"Parallels", "/", 1, true, FileKind::folder, std::nullopt});
  EXPECT_EQ(tint(root, enabling("virtual_machines")), MarrowTheme::highlight);
}

TEST(NodeTint, patterns_match_any_part_of_a_path) {
  EXPECT_EQ(tint(folder("/Layouts", 1), enabling("build")), MarrowTheme::highlight);
}

TEST(NodeTint, nodes_without_a_matching_filter_are_faint) {
  const Color faint = tint(folder("/src", 1), enabling("videos"));
  Color expected = NodeTint::base(folder("/src", 1));
  EXPECT_EQ(expected.opacity, 1);
  expected.opacity = 0.28;
  EXPECT_EQ(faint, expected);
}

TEST(NodeTint, growth_is_not_shown_while_a_filter_is_enabled) {
  EXPECT_EQ(tint(folder("/src", 1), enabling("videos"), {"/src"}),
            NodeTint::base(folder("/src", 1)).atOpacity(0.28));
  EXPECT_EQ(tint(folder("/x.mp4", 1), enabling("videos"), {"/x.mp4"}), MarrowTheme::highlight);
}

TEST(NodeTint, an_enabled_filter_without_patterns_makes_all_nodes_faint) {
  const std::vector<BloatFilter> filters = {{"id", "Name", {}, "symbol", true, false}};
  EXPECT_EQ(tint(folder("/src", 1), filters, {"/src"}).opacity, 0.28);
}

TEST(NodeTint, disabled_filters_do_not_match) {
  std::vector<BloatFilter> filters = BloatFilter::catalog();
  for (BloatFilter& filter : filters) filter.skipScan = true;
  EXPECT_EQ(tint(file("/a.mp4", 1, FileKind::video), filters), MarrowTheme::video);
}

TEST(NodeTint, the_heat_map_ignores_filters_and_growth) {
  const DiskNode node({"a.mp4", "/a.mp4", 1, false, FileKind::video, now - 10 * day});
  EXPECT_EQ(NodeTint::color(node, enabling("videos"), {"/a.mp4"}, true, now), MarrowTheme::accent);
}

TEST(NodeTintByAge, the_colour_by_age_changes_at_7_30_and_180_days) {
  EXPECT_EQ(byAge(now), MarrowTheme::success);
  EXPECT_EQ(byAge(now - 7 * day + 1), MarrowTheme::success);
  EXPECT_EQ(byAge(now - 7 * day), MarrowTheme::accent);
  EXPECT_EQ(byAge(now - 30 * day + 1), MarrowTheme::accent);
  EXPECT_EQ(byAge(now - 30 * day), MarrowTheme::warning);
  EXPECT_EQ(byAge(now - 179.9 * day), MarrowTheme::warning);
  EXPECT_EQ(byAge(now - 180 * day), MarrowTheme::other);
  EXPECT_EQ(byAge(1), MarrowTheme::other);
}

TEST(NodeTintByAge, a_time_in_the_future_counts_as_new) {
  EXPECT_EQ(byAge(now + 1000 * day), MarrowTheme::success);
}

TEST(NodeTintByAge, an_unknown_time_has_the_colour_of_other) {
  EXPECT_EQ(byAge(std::nullopt), MarrowTheme::other);
  EXPECT_EQ(byAge(0), MarrowTheme::other);
  EXPECT_EQ(byAge(-day), MarrowTheme::other);
  // The same when `now` is near 1970.
  EXPECT_EQ(NodeTint::color(aged(0), {}, {}, true, 5 * day), MarrowTheme::other);
  EXPECT_EQ(NodeTint::color(aged(1), {}, {}, true, 5 * day), MarrowTheme::success);
}

TEST(NodeTintByAge, the_present_time_is_used_if_none_is_given) {
  EXPECT_EQ(NodeTint::color(aged(NodeTint::presentTime() - 10 * day), {}, {}, true),
            MarrowTheme::accent);
  EXPECT_EQ(NodeTint::ageLabel(NodeTint::presentTime() - 10.5 * day), "10 days ago");
}

TEST(AgeLabel, a_missing_or_invalid_time_is_an_unknown_date) {
  EXPECT_EQ(NodeTint::ageLabel(std::nullopt, now), "Unknown date");
  EXPECT_EQ(NodeTint::ageLabel(0, now), "Unknown date");
  EXPECT_EQ(NodeTint::ageLabel(-1, now), "Unknown date");
  EXPECT_EQ(NodeTint::ageLabel(std::numeric_limits<double>::quiet_NaN(), now), "Unknown date");
}

TEST(AgeLabel, days_are_counted_as_whole_days) {
  EXPECT_EQ(NodeTint::ageLabel(now, now), "Today");
  EXPECT_EQ(NodeTint::ageLabel(now - day + 1, now), "Today");
  EXPECT_EQ(NodeTint::ageLabel(now - day, now), "1 day ago");
  EXPECT_EQ(NodeTint::ageLabel(now - 2 * day + 1, now), "1 day ago");
  EXPECT_EQ(NodeTint::ageLabel(now - 2 * day, now), "2 days ago");
  EXPECT_EQ(NodeTint::ageLabel(now - 29 * day, now), "29 days ago");
}

TEST(AgeLabel, months_have_thirty_days) {
  EXPECT_EQ(NodeTint::ageLabel(now - 30 * day, now), "1 mo ago");
  EXPECT_EQ(NodeTint::ageLabel(now - 59 * day, now), "1 mo ago");
  EXPECT_EQ(NodeTint::ageLabel(now - 60 * day, now), "2 mo ago");
  EXPECT_EQ(NodeTint::ageLabel(now - 359 * day, now), "11 mo ago");
  EXPECT_EQ(NodeTint::ageLabel(now - 364 * day, now), "12 mo ago");
}

TEST(AgeLabel, years_have_three_hundred_and_sixty_five_days) {
  EXPECT_EQ(NodeTint::ageLabel(now - 365 * day, now), "1+ yr ago");
  EXPECT_EQ(NodeTint::ageLabel(now - 729 * day, now), "1+ yr ago");
  EXPECT_EQ(NodeTint::ageLabel(now - 730 * day, now), "2+ yr ago");
}

TEST(AgeLabel, a_time_in_the_future_is_today) {
  EXPECT_EQ(NodeTint::ageLabel(now + 5, now), "Today");
  EXPECT_EQ(NodeTint::ageLabel(now + 500 * day, now), "Today");
  EXPECT_EQ(NodeTint::ageLabel(std::numeric_limits<double>::infinity(), now), "Today");
}

}  // namespace
}  // namespace tessaly
