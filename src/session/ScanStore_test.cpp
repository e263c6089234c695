#include "session/ScanStore.h"

#include <algorithm>
#include <cstdlib>
#include <filesystem>
#include <gmock/gmock.h>
#include <gtest/gtest.h>
#include <sys/resource.h>
#include <sys/stat.h>

#include "platform/SizeLimit.h"
#include "support/ForkedChild.h"
#include "support/MemorySettings.h"
#include "support/PlainFiles.h"
#include "support/TempTree.h"

namespace tessaly {
namespace {

namespace fs = std::filesystem;
using namespace std::string_literals;
using testing::ElementsAre;
using testing::IsEmpty;
using Texts = std::vector<std::string>;
using Points = std::vector<HistoryPoint>;

DiskNode sampleTree() {
  return DiskNode({"t", "/t", 3, true, FileKind::folder, 1700000000.5},
                  {DiskNode({"\xff", "/t/\xff", 2, false, FileKind::video, {}})});
}

// The store in a temporary folder.
class ScanStoreFiles : public ::testing::Test {
 protected:
  TempTree tree;
  const std::string folder = tree.path();
};

TEST_F(ScanStoreFiles, file_names_and_formats_do_not_change) {
  ScanStore::saveSizes({{"/Volumes/Data/Music", 7}, {"/Volumes/Data/Music/a", 5}},
                       "/Volumes/Data/Music", folder);
  ScanStore::appendHistory({1700000000, 7, 2}, "/Volumes/Data/Music", folder);
  ScanStore::appendHistory({1700000060.5, 8, 3}, "/Volumes/Data/Music", folder);
  ScanStore::saveSizes({}, "/", folder);
  ScanStore::appendHistory({1, 2, 3}, "/", folder);
  ScanStore::saveTree(sampleTree(), folder);
  EXPECT_THAT(entriesOf(folder),
              ElementsAre("history_.json", "history_Volumes_Data_Music.json", "last-tree.json",
                          "sizes_.json", "sizes_Volumes_Data_Music.json"));
  EXPECT_EQ(contentOf(tree.at("sizes_Volumes_Data_Music.json")),
            R"({"/Volumes/Data/Music":7,"/Volumes/Data/Music/a":5})");
  EXPECT_EQ(contentOf(tree.at("history_Volumes_Data_Music.json")),
            R"([{"at":1700000000,"bytes":7,"files":2},{"at":1700000060.5,"bytes":8,"files":3}])");
  EXPECT_EQ(contentOf(tree.at("sizes_.json")), "{}");
  EXPECT_EQ(contentOf(tree.at("last-tree.json")),
            "{\"name\":\"t\",\"path\":\"/t\",\"size\":3,\"isDir\":true,\"kind\":\"folder\","
            "\"children\":[{\"name\":\"\U0010FFFF\",\"path\":\"/t/\U0010FFFF\",\"size\":2,"
            "\"isDir\":false,\"kind\":\"video\",\"children\":[]}],\"mtime\":1700000000.5}");
}

TEST_F(ScanStoreFiles, data_above_the_limit_on_files_leaves_the_old_files) {
  ScanStore::saveTree(sampleTree(), folder);
  ScanStore::saveSizes({{"/t", 3}}, "/t", folder);
  EXPECT_EQ(
      inForkedChild([&]() -> std::string {
        SizeLimit::failWritesBeyond();
        const rlimit limit{500, 500};
        if (setrlimit(RLIMIT_FSIZE, &limit) != 0) return "no limit";
        const std::string name(2000, 'n');
        ScanStore::saveTree(DiskNode({name, "/" + name, 3, false, FileKind::other, {}}), folder);
        ScanStore::saveSizes({{"/" + name, 3}}, "/t", folder);
        return "";
      }),
      "");
  EXPECT_EQ(ScanStore::loadTree(folder), sampleTree());
  EXPECT_EQ(ScanStore::loadSizes("/t", folder), (PathSizes{{"/t", 3}}));
  EXPECT_THAT(entriesOf(folder), ElementsAre("last-tree.json", "sizes_t.json"));
}

TEST_F(ScanStoreFiles, saved_data_is_loaded_again) {
  const PathSizes sizes = {{"/r", 4096}, {"/r/\xe9", 0}};
  ScanStore::saveSizes(sizes, "/r", folder);
  EXPECT_EQ(ScanStore::loadSizes("/r", folder), sizes);
  ScanStore::saveTree(sampleTree(), folder);
  EXPECT_EQ(ScanStore::loadTree(folder), sampleTree());
  ScanStore::appendHistory({1.5, 2, 3}, "/r", folder);
  EXPECT_EQ(ScanStore::loadHistory("/r", folder), (Points{{1.5, 2, 3}}));
}

TEST_F(ScanStoreFiles, an_empty_folder_loads_as_empty) {
  EXPECT_THAT(ScanStore::loadSizes("/r", folder), IsEmpty());
  EXPECT_THAT(ScanStore::loadHistory("/r", folder), IsEmpty());
  EXPECT_EQ(ScanStore::loadTree(folder), std::nullopt);
  EXPECT_THAT(ScanStore::loadSizes("/r", tree.at("none")), IsEmpty());
}

TEST_F(ScanStoreFiles, each_root_has_its_own_files) {
  ScanStore::saveSizes({{"/a", 1}}, "/a", folder);
  ScanStore::appendHistory({1, 1, 1}, "/a", folder);
  EXPECT_THAT(ScanStore::loadSizes("/b", folder), IsEmpty());
  EXPECT_THAT(ScanStore::loadHistory("/b", folder), IsEmpty());
}

TEST_F(ScanStoreFiles, roots_that_differ_in_slash_and_underscore_only_share_their_files) {
  ScanStore::saveSizes({{"/a/b", 1}}, "/a/b", folder);
  ScanStore::appendHistory({1, 1, 1}, "/a/b", folder);
  ScanStore::appendHistory({2, 2, 2}, "/a_b", folder);
  EXPECT_EQ(ScanStore::loadSizes("/a_b", folder), (PathSizes{{"/a/b", 1}}));
  EXPECT_EQ(ScanStore::loadHistory("/a/b", folder), (Points{{1, 1, 1}, {2, 2, 2}}));
  EXPECT_THAT(entriesOf(folder), ElementsAre("history_a_b.json", "sizes_a_b.json"));
}

TEST_F(ScanStoreFiles, there_is_one_tree_for_all_roots) {
  ScanStore::saveTree(DiskNode({"a", "/a", 1, true, FileKind::folder, {}}), folder);
  ScanStore::saveTree(sampleTree(), folder);
  EXPECT_EQ(ScanStore::loadTree(folder)->path(), "/t");
}

TEST_F(ScanStoreFiles, the_sixty_first_point_drops_the_oldest) {
  for (int scan = 1; scan <= 60; ++scan)
    ScanStore::appendHistory({1.0 * scan, scan, 0}, "/r", folder);
  EXPECT_EQ(ScanStore::loadHistory("/r", folder).size(), 60U);
  EXPECT_EQ(ScanStore::loadHistory("/r", folder).front().at, 1);
  ScanStore::appendHistory({61, 61, 0}, "/r", folder);
  const Points points = ScanStore::loadHistory("/r", folder);
  ASSERT_EQ(points.size(), 60U);
  for (std::size_t k = 0; k < points.size(); ++k)
    EXPECT_EQ(points[k].at, 2.0 + static_cast<double>(k));
}

TEST_F(ScanStoreFiles, damaged_files_count_as_missing_and_are_overwritten) {
  const std::string deep(100000, '[');
  for (const std::string& damaged :
       {""s, "\0"s, "null"s, "{"s, "[1,"s, "[]x"s, "[{\"at\":1,\"bytes\":1.5,\"files\":1}]"s,
        "{\"/r\":-1}"s, "{\"/r\":1e3}"s, "\xff\xfe"s, "\xEF\xBB\xBF{}"s, deep,
        std::string(100000, '{'), deep + std::string(100000, ']')}) {
    for (const char* file : {"sizes_r.json", "history_r.json", "last-tree.json"}) {
      putFile(tree.at(file), damaged);
    }
    EXPECT_THAT(ScanStore::loadSizes("/r", folder), IsEmpty());
    EXPECT_THAT(ScanStore::loadHistory("/r", folder), IsEmpty());
    EXPECT_EQ(ScanStore::loadTree(folder), std::nullopt);
    ScanStore::appendHistory({1, 2, 3}, "/r", folder);
    EXPECT_EQ(ScanStore::loadHistory("/r", folder), (Points{{1, 2, 3}}));
    ScanStore::saveSizes({{"/r", 1}}, "/r", folder);
    EXPECT_EQ(ScanStore::loadSizes("/r", folder), (PathSizes{{"/r", 1}}));
    ScanStore::saveTree(sampleTree(), folder);
    EXPECT_EQ(ScanStore::loadTree(folder), sampleTree());
  }
}

TEST_F(ScanStoreFiles, folders_and_pipes_in_place_of_files_count_as_missing) {
  for (const char* planted : {"sizes_r.json/\nhistory_r.json/\nlast-tree.json/\n",
                              "sizes_r.json fifo\nhistory_r.json fifo\nlast-tree.json fifo\n"}) {
    const TempTree odd(planted);
    EXPECT_THAT(ScanStore::loadSizes("/r", odd.path()), IsEmpty());
    EXPECT_THAT(ScanStore::loadHistory("/r", odd.path()), IsEmpty());
    EXPECT_EQ(ScanStore::loadTree(odd.path()), std::nullopt);
    ScanStore::saveSizes({{"/r", 1}}, "/r", odd.path());
    ScanStore::appendHistory({1, 2, 3}, "/r", odd.path());
    ScanStore::saveTree(sampleTree(), odd.path());
    EXPECT_EQ(entriesOf(odd.path()).size(), 3U);
  }
}

TEST_F(ScanStoreFiles, a_failed_write_leaves_the_old_file) {
  ScanStore::saveSizes({{"/r", 1}}, "/r", folder);
  chmod(folder.c_str(), 0555);
  EXPECT_EQ(asOtherUser([&]() -> std::string {
              ScanStore::saveSizes({{"/r", 2}}, "/r", folder);
              ScanStore::saveTree(sampleTree(), folder);
              ScanStore::appendHistory({1, 2, 3}, "/r", folder);
              return "";
            }),
            "");
  chmod(folder.c_str(), 0755);
  EXPECT_EQ(ScanStore::loadSizes("/r", folder), (PathSizes{{"/r", 1}}));
  EXPECT_THAT(entriesOf(folder), ElementsAre("sizes_r.json"));
  ScanStore::saveSizes({{"/r", 2}}, "/r", tree.at("none"));
  EXPECT_FALSE(fs::exists(tree.at("none")));
}

TEST_F(ScanStoreFiles, a_root_whose_file_names_would_be_too_long_is_never_stored) {
  // "sizes" and ".json" leave 245 of 255 bytes, "history" two less.
  const std::string fits = "/" + std::string(242, 'r');
  const std::string tooLong = "/" + std::string(245, 'r');
  for (const std::string& root : {fits, tooLong}) {
    ScanStore::saveSizes({{root, 1}}, root, folder);
    ScanStore::appendHistory({1, 2, 3}, root, folder);
  }
  EXPECT_EQ(ScanStore::loadSizes(fits, folder).size(), 1U);
  EXPECT_EQ(ScanStore::loadHistory(fits, folder).size(), 1U);
  EXPECT_THAT(ScanStore::loadSizes(tooLong, folder), IsEmpty());
  EXPECT_THAT(ScanStore::loadHistory(tooLong, folder), IsEmpty());
  EXPECT_EQ(entriesOf(folder).size(), 2U);
}

TEST_F(ScanStoreFiles, a_root_may_be_any_bytes) {
  ScanStore::saveSizes({{"/\xff", 1}}, "/\xff", folder);
  EXPECT_EQ(ScanStore::loadSizes("/\xff", folder), (PathSizes{{"/\xff", 1}}));
  EXPECT_THAT(entriesOf(folder), ElementsAre("sizes_\xff.json"));
}

TEST_F(ScanStoreFiles, the_support_folder_is_the_default_and_is_created) {
  EXPECT_EQ(inForkedChild([&]() -> std::string {
              ::setenv("XDG_DATA_HOME", tree.at("data/home").c_str(), 1);
              if (!ScanStore::loadSizes("/r").empty()) return "sizes without a file";
              ScanStore::saveSizes({{"/r", 1}}, "/r");
              ScanStore::appendHistory({1, 2, 3}, "/r");
              ScanStore::saveTree(sampleTree());
              if (ScanStore::loadSizes("/r").size() != 1) return "no sizes";
              if (ScanStore::loadHistory("/r").size() != 1) return "no history";
              if (ScanStore::loadTree() != sampleTree()) return "no tree";
              return ScanStore::supportDir();
            }),
            tree.at("data/home/Marrow"));
  EXPECT_THAT(entriesOf(tree.at("data/home/Marrow")),
              ElementsAre("history_r.json", "last-tree.json", "sizes_r.json"));
}

TEST_F(ScanStoreFiles, a_support_folder_that_cannot_be_created_is_returned_anyway) {
  tree.plant("file\n");
  EXPECT_EQ(inForkedChild([&] {
              ::setenv("XDG_DATA_HOME", tree.at("file").c_str(), 1);
              ScanStore::saveTree(sampleTree());
              return ScanStore::supportDir() + (ScanStore::loadTree() ? " with a tree" : "");
            }),
            tree.at("file/Marrow"));
}

// The part of the store in the settings.
class ScanStoreSettings : public ::testing::Test {
 protected:
  MemorySettings settings;
};

BloatFilter filter(const std::string& id, bool enabled, bool skipScan) {
  return {id, "Name of " + id, {id}, "folder", enabled, skipScan};
}

TEST_F(ScanStoreSettings, keys_of_the_settings_do_not_change) {
  EXPECT_EQ(ScanStore::lastScanRootKey, "marrow.lastScanRoot");
  EXPECT_EQ(ScanStore::excludesKey, "marrow.excludes");
  ScanStore::togglePin("/p", settings);
  ScanStore::pushRecent("/r", settings, 5);
  ScanStore::saveFilters({filter("a", true, false)}, settings);
  EXPECT_EQ(settings.texts("marrow.pins"), Texts{"/p"});
  EXPECT_EQ(settings.texts("marrow.recents"), Texts{"/r"});
  EXPECT_EQ(settings.binary("marrow.filters"), R"([{"id":"a","enabled":true,"skipScan":false}])");
}

TEST_F(ScanStoreSettings, a_ninth_pin_drops_the_oldest) {
  for (int k = 1; k <= 8; ++k) ScanStore::togglePin("/" + std::to_string(k), settings);
  EXPECT_EQ(settings.texts("marrow.pins"), (Texts{"/8", "/7", "/6", "/5", "/4", "/3", "/2", "/1"}));
  const Texts pins = ScanStore::togglePin("/9", settings);
  EXPECT_EQ(pins, (Texts{"/9", "/8", "/7", "/6", "/5", "/4", "/3", "/2"}));
  EXPECT_EQ(settings.texts("marrow.pins"), pins);
}

TEST_F(ScanStoreSettings, toggling_a_pinned_path_removes_it_at_any_position) {
  for (const char* pinned : {"/first", "/middle", "/last"}) {
    settings.setTexts("marrow.pins", {"/first", "/middle", "/last"});
    const Texts pins = ScanStore::togglePin(pinned, settings);
    EXPECT_EQ(pins.size(), 2U);
    EXPECT_EQ(std::count(pins.begin(), pins.end(), pinned), 0);
    EXPECT_EQ(settings.texts("marrow.pins"), pins);
  }
  EXPECT_THAT(ScanStore::togglePin("/first", settings), ElementsAre("/middle"));
  EXPECT_THAT(ScanStore::togglePin("/middle", settings), IsEmpty());
  EXPECT_EQ(settings.texts("marrow.pins"), Texts{});
}

TEST_F(ScanStoreSettings, only_the_first_of_several_equal_pins_is_removed) {
  settings.setTexts("marrow.pins", {"/a", "/b", "/a"});
  EXPECT_EQ(ScanStore::togglePin("/a", settings), (Texts{"/b", "/a"}));
}

TEST_F(ScanStoreSettings, pins_of_another_type_count_as_missing) {
  settings.setText("marrow.pins", "/a");
  EXPECT_EQ(ScanStore::togglePin("/b", settings), Texts{"/b"});
}

TEST_F(ScanStoreSettings, pins_keep_bytes_that_are_not_utf8) {
  ScanStore::togglePin("/\xff", settings);
  EXPECT_EQ(settings.texts("marrow.pins"), Texts{"/\xff"});
  EXPECT_EQ(ScanStore::togglePin("/\xfe", settings), (Texts{"/\xfe", "/\xff"}));
}

TEST_F(ScanStoreSettings, the_same_root_is_recent_once_and_at_the_front) {
  ScanStore::pushRecent("/a", settings, 5);
  ScanStore::pushRecent("/a", settings, 5);
  EXPECT_EQ(settings.texts("marrow.recents"), Texts{"/a"});
  ScanStore::pushRecent("/b", settings, 5);
  ScanStore::pushRecent("/a", settings, 5);
  EXPECT_EQ(settings.texts("marrow.recents"), (Texts{"/a", "/b"}));
  settings.setTexts("marrow.recents", {"/a", "/b", "/a", "/c", "/a"});
  ScanStore::pushRecent("/a", settings, 5);
  EXPECT_EQ(settings.texts("marrow.recents"), (Texts{"/a", "/b", "/c"}));
}

TEST_F(ScanStoreSettings, the_limit_of_recent_roots_is_a_parameter) {
  for (int k = 1; k <= 6; ++k) ScanStore::pushRecent("/" + std::to_string(k), settings, 5);
  EXPECT_EQ(settings.texts("marrow.recents"), (Texts{"/6", "/5", "/4", "/3", "/2"}));
  ScanStore::pushRecent("/7", settings, 2);
  EXPECT_EQ(settings.texts("marrow.recents"), (Texts{"/7", "/6"}));
  ScanStore::pushRecent("/8", settings, 0);
  EXPECT_EQ(settings.texts("marrow.recents"), Texts{});
}

Texts numbered(int count) {
  Texts texts;
  for (int k = 1; k <= count; ++k) texts.push_back("/" + std::to_string(k));
  return texts;
}

TEST_F(ScanStoreSettings, only_the_newest_of_too_many_pins_and_recent_roots_are_read) {
  settings.setTexts("marrow.pins", numbered(100000));
  settings.setTexts("marrow.recents", numbered(100000));
  EXPECT_EQ(ScanStore::pins(settings), numbered(8));
  EXPECT_EQ(ScanStore::recents(settings), numbered(5));
}

TEST_F(ScanStoreSettings, toggling_a_pin_beyond_the_limit_pins_it) {
  settings.setTexts("marrow.pins", numbered(100));
  EXPECT_EQ(ScanStore::togglePin("/9", settings),
            (Texts{"/9", "/1", "/2", "/3", "/4", "/5", "/6", "/7"}));
  settings.setTexts("marrow.pins", numbered(100));
  EXPECT_EQ(ScanStore::togglePin("/1", settings),
            (Texts{"/2", "/3", "/4", "/5", "/6", "/7", "/8"}));
  EXPECT_EQ(ScanStore::pins(settings).size(), 7U);
}

TEST_F(ScanStoreSettings, a_root_beyond_the_limit_is_not_kept_as_recent) {
  settings.setTexts("marrow.recents", {"/3", "/1", "/3", "/2", "/3", "/4"});
  ScanStore::pushRecent("/3", settings, 5);
  EXPECT_EQ(settings.texts("marrow.recents"), (Texts{"/3", "/1", "/2"}));
}

TEST_F(ScanStoreSettings, all_excludes_are_read_without_a_limit) {
  settings.setTexts("marrow.excludes", numbered(10000));
  EXPECT_EQ(ScanStore::excludes(settings), numbered(10000));
}

TEST_F(ScanStoreSettings, saved_switches_override_the_catalogue) {
  const std::vector<BloatFilter>& catalog = BloatFilter::catalog();
  std::vector<BloatFilter> switched = catalog;
  switched[0].enabled = true;
  switched[3].skipScan = true;
  switched[11].enabled = switched[11].skipScan = true;
  ScanStore::saveFilters(switched, settings);
  EXPECT_EQ(ScanStore::applySavedFilters(catalog, settings), switched);
}

TEST_F(ScanStoreSettings, filters_without_a_saved_state_keep_their_defaults) {
  ScanStore::saveFilters({filter("b", true, false)}, settings);
  const std::vector<BloatFilter> catalog = {filter("a", true, true), filter("b", false, true),
                                            filter("c", false, false)};
  EXPECT_EQ(
      ScanStore::applySavedFilters(catalog, settings),
      (std::vector{filter("a", true, true), filter("b", true, false), filter("c", false, false)}));
}

TEST_F(ScanStoreSettings, a_saved_filter_that_the_catalogue_lacks_has_no_effect) {
  ScanStore::saveFilters({filter("gone", true, true), filter("a", true, false)}, settings);
  EXPECT_EQ(ScanStore::applySavedFilters({filter("a", false, false)}, settings),
            (std::vector{filter("a", true, false)}));
}

TEST_F(ScanStoreSettings, everything_but_the_switches_comes_from_the_catalogue) {
  BloatFilter old = filter("a", true, true);
  old.name = "Old name";
  old.patterns = {"old"};
  old.symbol = "old";
  ScanStore::saveFilters({old}, settings);
  EXPECT_EQ(ScanStore::applySavedFilters({filter("a", false, false)}, settings),
            (std::vector{filter("a", true, true)}));
}

TEST_F(ScanStoreSettings, damaged_filters_leave_the_catalogue_unchanged) {
  const std::vector<BloatFilter> catalog = {filter("a", false, true)};
  EXPECT_EQ(ScanStore::applySavedFilters(catalog, settings), catalog);
  for (const std::string& damaged :
       {""s, "null"s, "{}"s, "[{}]"s, "[{\"id\":\"a\",\"enabled\":true}]"s, "\xff"s,
        R"([{"id":"a","enabled":true,"skipScan":false})"s, std::string(100000, '[')}) {
    settings.setBinary("marrow.filters", damaged);
    EXPECT_EQ(ScanStore::applySavedFilters(catalog, settings), catalog) << damaged.substr(0, 100);
  }
  settings.setText("marrow.filters", R"([{"id":"a","enabled":true,"skipScan":false}])");
  EXPECT_EQ(ScanStore::applySavedFilters(catalog, settings), catalog);
}

TEST_F(ScanStoreSettings, the_last_of_several_saved_states_of_a_filter_counts) {
  settings.setBinary("marrow.filters", R"([{"id":"a","enabled":true,"skipScan":true},)"
                                       R"({"id":"a","enabled":false,"skipScan":true}])");
  EXPECT_EQ(ScanStore::applySavedFilters({filter("a", true, false)}, settings),
            (std::vector{filter("a", false, true)}));
}

}  // namespace
}  // namespace tessaly
