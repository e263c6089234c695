#include "platform/Places.h"

#include <cstdlib>
#include <gtest/gtest.h>
#include <unistd.h>

#include "support/TempTree.h"

namespace tessaly {
namespace {

using Names = std::unordered_set<std::string>;
using Prefixes = std::vector<std::string>;
using NamedMounts = std::unordered_map<std::string, std::string>;

TEST(Places, macos_skips_eight_names_anywhere) {
  EXPECT_EQ(Places::forMacos().skipNames,
            (Names{".Trash", ".Trashes", ".Spotlight-V100", ".fseventsd", ".DocumentRevisions-V100",
                   ".TemporaryItems", ".vol", "Backups.backupdb"}));
  EXPECT_TRUE(Places::forMacos().skipPaths.empty());
}

TEST(Places, linux_skips_the_same_names_and_the_trash_of_this_user) {
  Names expected = Places::forMacos().skipNames;
  expected.insert(".Trash-" + std::to_string(getuid()));
  EXPECT_EQ(Places::forLinux().skipNames, expected);
  ASSERT_EQ(Places::forLinux().skipPaths.size(), 1U);
  EXPECT_TRUE(Places::forLinux().skipPaths.front().ends_with("/Trash"));
  EXPECT_TRUE(Places::forLinux().skipPaths.front().starts_with("/"));
}

TEST(Places, the_trash_of_the_home_is_found_by_any_path_to_it) {
  const TempTree tree(R"(
    real/
      share/
        Trash/
    elsewhere/
      share/
        Trash -> ../junk
      junk/
    link -> real/share
    home/
      .local -> ../real
  )");
  const std::string trash = tree.at("real/share/Trash");
  for (const char* way : {"real/share", "real/share/", "real/share//", "link", "link/",
                          "real/../real/./share", "link/../share"}) {
    EXPECT_EQ(trashInDataHome(tree.at(way).c_str(), "/nowhere"), trash) << way;
  }
  EXPECT_EQ(trashInDataHome(tree.at("elsewhere/share").c_str(), ""), tree.at("elsewhere/junk"));
  for (const char* none : {static_cast<const char*>(nullptr), "", "share", "./share"}) {
    EXPECT_EQ(trashInDataHome(none, tree.at("home")), trash);
  }
}

TEST(Places, the_trash_of_the_home_has_a_path_before_it_exists) {
  const TempTree tree("share/\nlink -> share");
  EXPECT_EQ(trashInDataHome(tree.at("link/new/").c_str(), ""), tree.at("share/new/Trash"));
  EXPECT_EQ(trashInDataHome(nullptr, "/"), "/.local/share/Trash");
}

// Places are determined once per process.
TEST(PlacesOfProcess, linux_skips_the_trash_behind_a_link_in_the_environment) {
  GTEST_FLAG_SET(death_test_style, "threadsafe");
  EXPECT_EXIT(
      {
        const TempTree tree("data/\nlink -> data");
        setenv("XDG_DATA_HOME", (tree.at("link") + "/").c_str(), 1);
        const std::string skipped = Places::forLinux().skipPaths.front();
        std::exit(skipped == tree.at("data/Trash") ? 0 : 1);
      },
      testing::ExitedWithCode(0), "");
}

TEST(PlacesOfProcess, linux_measures_the_trash_that_the_environment_names) {
  GTEST_FLAG_SET(death_test_style, "threadsafe");
  const auto trashPlace = [] { return Places::forLinux().reclaimPlaces.back().elsewhere; };
  EXPECT_EXIT(
      {
        const TempTree tree("data/\nlink -> data");
        setenv("XDG_DATA_HOME", tree.at("link").c_str(), 1);
        std::exit(trashPlace() == tree.at("data/Trash") ? 0 : 1);
      },
      testing::ExitedWithCode(0), "");
  for (const char* none : {"", "data"}) {
    EXPECT_EXIT(
        {
          setenv("XDG_DATA_HOME", none, 1);
          std::exit(trashPlace().empty() ? 0 : 1);
        },
        testing::ExitedWithCode(0), "")
        << none;
  }
}

TEST(Places, each_system_has_its_own_names_directly_under_the_root) {
  EXPECT_EQ(Places::forMacos().skipRootNames,
            (Names{"dev", "proc", "cores", "Network", "Volumes", "private", "tmp", "sbin", "bin",
                   "etc", "var", "home"}));
  EXPECT_EQ(Places::forLinux().skipRootNames,
            (Names{"dev", "proc", "sys", "run", "tmp", "mnt", "media", "snap", "lost+found"}));
}

TEST(Places, videos_is_an_important_folder_on_linux_alone) {
  const Names six = {"Desktop", "Downloads", "Documents", "Pictures", "Movies", "Music"};
  EXPECT_EQ(Places::forMacos().importantFolders, six);
  Names seven = six;
  seven.insert("Videos");
  EXPECT_EQ(Places::forLinux().importantFolders, seven);
}

TEST(Places, macos_never_lists_nine_mounts) {
  EXPECT_EQ(Places::forMacos().volumes.skipMounts,
            (Names{"/dev", "/private/var/vm", "/System/Volumes/Preboot", "/System/Volumes/VM",
                   "/System/Volumes/Update", "/System/Volumes/xarts", "/System/Volumes/iSCPreboot",
                   "/System/Volumes/Hardware", "/System/Volumes/Update/mnt1"}));
}

TEST(Places, macos_volumes_are_the_root_its_data_and_all_mounts_below_volumes) {
  const VolumeRules& volumes = Places::forMacos().volumes;
  EXPECT_EQ(volumes.keptMounts,
            (NamedMounts{{"/", "Macintosh HD"}, {"/System/Volumes/Data", "Macintosh HD — Data"}}));
  EXPECT_EQ(volumes.keptPrefixes, Prefixes{"/Volumes/"});
  EXPECT_EQ(volumes.skipPrefixes, Prefixes{"/System/Volumes/"});
}

TEST(Places, linux_volumes_are_the_root_the_home_and_removable_or_manual_mounts) {
  const VolumeRules& volumes = Places::forLinux().volumes;
  EXPECT_EQ(volumes.keptMounts, (NamedMounts{{"/", "System Disk"}, {"/home", ""}}));
  EXPECT_EQ(volumes.keptPrefixes, (Prefixes{"/media/", "/run/media/", "/mnt/"}));
  EXPECT_TRUE(volumes.skipMounts.empty());
  EXPECT_TRUE(volumes.skipPrefixes.empty());
}

TEST(Places, macos_scores_a_path_by_the_given_words) {
  const ScoreWords& score = Places::forMacos().score;
  EXPECT_EQ(score.caches,
            (Prefixes{"/library/caches", "/deriveddata", "node_modules", "/logs/", "/.cache"}));
  EXPECT_EQ(score.cacheEnds, Prefixes{"/logs"});
  EXPECT_EQ(score.downloads, Prefixes{"/downloads"});
  EXPECT_EQ(score.personal,
            (Prefixes{"/pictures/", "/movies/", "/desktop/", "/documents/", "/mobile documents/"}));
}

TEST(Places, linux_scores_a_path_by_three_more_words) {
  ScoreWords expected = Places::forMacos().score;
  expected.caches.insert(expected.caches.end(), {"/log/", "/var/tmp/"});
  expected.personal.emplace_back("/.local/share/");
  const ScoreWords& score = Places::forLinux().score;
  EXPECT_EQ(score.caches, expected.caches);
  EXPECT_EQ(score.cacheEnds, expected.cacheEnds);
  EXPECT_EQ(score.downloads, expected.downloads);
  EXPECT_EQ(score.personal, expected.personal);
}

// "~" means the home.
std::vector<std::string> probesOf(const Places& places) {
  std::vector<std::string> paths;
  for (const AccessProbe& probe : places.accessProbes)
    paths.push_back((probe.isInHome ? "~" : "") + probe.path);
  return paths;
}

TEST(Places, macos_probes_five_places_for_access_to_the_whole_disk) {
  EXPECT_EQ(probesOf(Places::forMacos()),
            (std::vector<std::string>{"~/Library/Application Support/com.apple.TCC/TCC.db",
                                      "/Library/Application Support/com.apple.TCC/TCC.db",
                                      "~/Library/Mail", "~/Library/Messages",
                                      "~/Library/Safari/CloudTabs.db"}));
}

TEST(Places, linux_probes_the_root_for_access_to_the_whole_disk) {
  EXPECT_EQ(probesOf(Places::forLinux()), std::vector<std::string>{"/"});
}

}  // namespace
}  // namespace tessaly
