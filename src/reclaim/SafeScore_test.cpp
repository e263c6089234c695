#include "reclaim/SafeScore.h"

#include <cmath>
#include <cstdlib>
#include <ctime>
#include <gmock/gmock.h>
#include <gtest/gtest.h>
#include <limits>

#include "support/PlainFiles.h"
#include "support/TempTree.h"

namespace tessaly {
namespace {

using testing::ElementsAre;
using testing::HasSubstr;
using testing::IsEmpty;

constexpr double day = 86400;
constexpr double now = 1700000000;

// The two systems, each without folders of the user's.
class SafeScoreOn : public testing::TestWithParam<bool> {
 protected:
  SafeScore::Rules rules() const {
    return {.places = GetParam() ? Places::forLinux() : Places::forMacos(),
            .personalFolders = {},
            .now = now};
  }
  SafeItem idle(const std::string& path, const std::string& kind, double days) const {
    return SafeScore::evaluate(path, 5, kind, now - days * day, rules());
  }
  SafeItem undated(const std::string& path, const std::string& kind) const {
    return SafeScore::evaluate(path, 5, kind, std::nullopt, rules());
  }
};

INSTANTIATE_TEST_SUITE_P(BothSystems, SafeScoreOn, testing::Bool(),
                         [](const auto& system) { return system.param ? "Linux" : "Macos"; });

TEST_P(SafeScoreOn, an_item_has_the_name_path_and_size_of_its_file) {
  const SafeItem item = undated("/data/a b/caf\xe9.bin", "code");
  EXPECT_EQ(item.name, "caf\xe9.bin");
  EXPECT_EQ(item.path, "/data/a b/caf\xe9.bin");
  EXPECT_EQ(item.bytes, 5);
}

TEST_P(SafeScoreOn, an_old_cache_of_no_kind_is_capped_at_a_hundred) {
  const SafeItem item = idle("/Users/ada/Library/Caches/x/blob", "other", 200);
  EXPECT_EQ(item.score, 100);
  EXPECT_EQ(item.label, "Safe to remove");
  EXPECT_FALSE(item.caution);
  EXPECT_EQ(item.reason, "developer or cache path · idle 6+ months");
}

TEST_P(SafeScoreOn, a_video_in_a_personal_folder_is_kept) {
  const SafeItem item = idle("/Users/ada/Movies/film.mp4", "video", 40);
  EXPECT_EQ(item.score, 11);
  EXPECT_EQ(item.label, "Keep / caution");
  EXPECT_TRUE(item.caution);
  EXPECT_EQ(item.reason, "personal folder · video · idle 30+ days");
}

TEST_P(SafeScoreOn, an_archive_directly_in_downloads_is_kept_despite_its_score) {
  const SafeItem item = idle("/Users/ada/Downloads/a.zip", "archive", 200);
  EXPECT_EQ(item.score, 53);
  EXPECT_EQ(item.label, "Keep / caution");
  EXPECT_TRUE(item.caution);
  EXPECT_EQ(item.reason, "Downloads · personal folder · idle 6+ months");
}

TEST_P(SafeScoreOn, the_word_of_downloads_also_matches_other_folders) {
  const SafeItem item = undated("/data/downloads-old/a.rs", "code");
  EXPECT_EQ(item.score, 60);
  EXPECT_EQ(item.reason, "Downloads");
  EXPECT_FALSE(item.caution);
}

TEST_P(SafeScoreOn, old_code_in_any_folder_is_to_be_reviewed) {
  const SafeItem item = idle("/data/project/main.c", "code", 200);
  EXPECT_EQ(item.score, 70);
  EXPECT_EQ(item.label, "Review");
  EXPECT_FALSE(item.caution);
}

TEST_P(SafeScoreOn, without_a_date_the_age_does_not_count) {
  for (const double date : {0.0, -1.0, -62135596800.0, std::nan("")}) {
    const SafeItem item = SafeScore::evaluate("/data/project/main.c", 5, "code", date, rules());
    EXPECT_EQ(item, undated("/data/project/main.c", "code")) << date;
  }
  const SafeItem item = undated("/data/project/main.c", "code");
  EXPECT_EQ(item.score, 50);
  EXPECT_EQ(item.label, "Review");
  EXPECT_EQ(item.reason, "Neutral");
  EXPECT_EQ(undated("/data/.cache/node_modules/x", "other").score, 93);
}

TEST_P(SafeScoreOn, a_score_without_a_date_is_capped_too) {
  EXPECT_EQ(undated("/data/.cache/downloads-old/x", "other").score, 100);
}

TEST_P(SafeScoreOn, a_kind_that_is_hard_to_replace_is_kept_despite_a_high_score) {
  for (const char* kind : {"video", "image", "document"}) {
    const SafeItem item = idle("/data/.cache/x", kind, 200);
    EXPECT_EQ(item.score, 93) << kind;
    EXPECT_EQ(item.label, "Keep / caution") << kind;
    EXPECT_TRUE(item.caution) << kind;
  }
}

TEST_P(SafeScoreOn, a_file_that_was_used_this_week_is_kept) {
  const SafeItem item = idle("/data/project/main.c", "code", 3);
  EXPECT_EQ(item.score, 30);
  EXPECT_EQ(item.label, "Keep / caution");
  EXPECT_TRUE(item.caution);
  EXPECT_EQ(item.reason, "used this week");
}

TEST_P(SafeScoreOn, use_this_week_never_lowers_a_score_below_zero) {
  const SafeItem item = idle("/Users/ada/Movies/film.mp4", "video", 0);
  EXPECT_EQ(item.score, 0);
  EXPECT_EQ(item.reason, "personal folder · video · used this week");
  const double never = std::numeric_limits<double>::infinity();
  EXPECT_EQ(SafeScore::evaluate("/data/main.c", 5, "code", never, rules()).score, 30);
}

TEST_P(SafeScoreOn, use_this_week_is_final_before_the_cap) {
  const SafeItem item = idle("/data/.cache/downloads-old/a.zip", "archive", 1);
  EXPECT_EQ(item.score, 83);
  EXPECT_EQ(item.label, "Keep / caution");
}

TEST_P(SafeScoreOn, the_borders_of_the_ages_belong_to_the_younger_side) {
  const struct {
    double days;
    int score;
  } rows[] = {{180, 58}, {180.001, 70}, {30, 50}, {30.001, 58}, {7, 50}, {6.999, 30}};
  for (const auto& row : rows) EXPECT_EQ(idle("/data/a.c", "code", row.days).score, row.score);
}

TEST_P(SafeScoreOn, a_label_changes_at_40_and_at_75) {
  // Each score is made of other parts.
  EXPECT_EQ(idle("/data/film.mp4", "video", 20).score, 38);
  EXPECT_EQ(idle("/data/film.mp4", "video", 20).label, "Keep / caution");
  EXPECT_EQ(idle("/data/blob", "other", 200).score, 78);
  EXPECT_EQ(idle("/data/blob", "other", 200).label, "Safe to remove");
  EXPECT_EQ(idle("/data/downloads-old/blob", "other", 100).score, 76);
  EXPECT_EQ(idle("/data/downloads-old/blob", "other", 100).label, "Safe to remove");
  EXPECT_EQ(idle("/data/a.c", "code", 200).label, "Review");
}

TEST_P(SafeScoreOn, words_of_a_path_are_found_in_any_case) {
  for (const char* path : {"/w/DerivedData/x", "/w/Library/CACHES/x", "/w/NODE_MODULES/x",
                           "/w/Logs/x", "/w/.Cache/x", "/w/.cache-of-x/y", "/w/my/Logs"}) {
    EXPECT_EQ(undated(path, "code").score, 85) << path;
    EXPECT_EQ(undated(path, "code").reason, "developer or cache path") << path;
  }
  for (const char* path : {"/w/deriveddat/x", "/w/catalogs/x", "/w/Logs.txt", "/w/cache/x"})
    EXPECT_EQ(undated(path, "code").score, 50) << path;
}

TEST_P(SafeScoreOn, personal_folders_are_found_in_any_case_by_whole_names) {
  for (const char* name :
       {"Desktop", "DOCUMENTS", "Pictures", "movies", "Music", "Mobile Documents"}) {
    const std::string path = std::string("/w/") + name + "/in/a.c";
    EXPECT_EQ(undated(path, "code").score, 15) << path;
    EXPECT_EQ(undated(path, "code").reason, "personal folder") << path;
    EXPECT_TRUE(undated(path, "code").caution);
  }
  for (const char* path : {"/w/Desktops/x", "/w/Music", "/w/MyMusic/x", "Music/x"})
    EXPECT_EQ(undated(path, "code").score, 50) << path;
}

TEST_P(SafeScoreOn, every_kind_counts_by_the_words_in_its_name) {
  const struct {
    const char* kind;
    int score;
    const char* reason;
  } rows[] = {{"folder", 50, "Neutral"},    {"app", 50, "Neutral"},
              {"code", 50, "Neutral"},      {"archive", 58, "Neutral"},
              {"disk", 58, "Neutral"},      {"other", 58, "Neutral"},
              {"video", 38, "video"},       {"image", 38, "image"},
              {"document", 38, "document"}, {"Disk Image", 46, "Disk Image"}};
  for (const auto& row : rows) {
    EXPECT_EQ(undated("/data/x", row.kind).score, row.score) << row.kind;
    EXPECT_EQ(undated("/data/x", row.kind).reason, row.reason) << row.kind;
  }
}

TEST_P(SafeScoreOn, the_lowest_score_of_an_unused_file_is_three) {
  EXPECT_EQ(undated("/Users/ada/Movies/film.mp4", "video").score, 3);
}

TEST_P(SafeScoreOn, ranking_puts_the_highest_score_first_and_keeps_the_order_of_equal_ones) {
  const auto at = [](const std::string& path, std::int64_t bytes, double days) {
    return LargeOldFile{.name = path,
                        .path = path,
                        .bytes = bytes,
                        .kind = "code",
                        .mtimeMs = static_cast<std::int64_t>((now - days * day) * 1000)};
  };
  const std::vector<SafeItem> items = SafeScore::rank(
      {at("/a", 9, 40), at("/b", 8, 200), at("/c", 7, 40), at("/d", 6, 300)}, rules());
  std::vector<std::string> paths;
  for (const SafeItem& item : items) paths.push_back(item.path);
  EXPECT_THAT(paths, ElementsAre("/b", "/d", "/a", "/c"));
  EXPECT_EQ(items[0].bytes, 8);
  EXPECT_EQ(items[0].reason, "idle 6+ months");
}

TEST_P(SafeScoreOn, milliseconds_count_when_ranking) {
  const auto changed = static_cast<std::int64_t>((now - 180 * day) * 1000);
  EXPECT_EQ(SafeScore::rank({{.path = "/a", .kind = "code", .mtimeMs = changed}}, rules())[0].score,
            58);
  EXPECT_EQ(
      SafeScore::rank({{.path = "/a", .kind = "code", .mtimeMs = changed - 1}}, rules())[0].score,
      70);
  const auto used = static_cast<std::int64_t>((now - 7 * day) * 1000);
  EXPECT_EQ(SafeScore::rank({{.path = "/a", .kind = "code", .mtimeMs = used}}, rules())[0].score,
            50);
  EXPECT_EQ(
      SafeScore::rank({{.path = "/a", .kind = "code", .mtimeMs = used + 1}}, rules())[0].score, 30);
}

TEST_P(SafeScoreOn, ranking_nothing_gives_nothing) {
  EXPECT_THAT(SafeScore::rank({}, rules()), IsEmpty());
}

TEST(SafeScoreOfSystem, linux_has_more_words_than_macos) {
  const SafeScore::Rules linux = {.places = Places::forLinux(), .personalFolders = {}, .now = now};
  const SafeScore::Rules macos = {.places = Places::forMacos(), .personalFolders = {}, .now = now};
  for (const char* path : {"/var/log/journal/x", "/var/tmp/x"}) {
    EXPECT_EQ(SafeScore::evaluate(path, 5, "code", {}, linux).score, 85) << path;
    EXPECT_EQ(SafeScore::evaluate(path, 5, "code", {}, macos).score, 50) << path;
  }
  for (const char* path : {"/home/ada/Videos/x", "/home/ada/.local/share/x"}) {
    EXPECT_TRUE(SafeScore::evaluate(path, 5, "code", {}, linux).caution) << path;
    EXPECT_FALSE(SafeScore::evaluate(path, 5, "code", {}, macos).caution) << path;
  }
}

TEST(SafeScoreOfSystem, an_idle_virtual_disk_is_not_safe_to_remove_on_linux) {
  const SafeItem disk = SafeScore::evaluate(
      "/home/ada/.local/share/libvirt/images/win.qcow2", 5, "other", now - 200 * day,
      {.places = Places::forLinux(), .personalFolders = {}, .now = now});
  EXPECT_EQ(disk.score, 43);
  EXPECT_EQ(disk.label, "Keep / caution");
}

TEST(SafeScoreOfSystem, folders_that_the_user_has_named_are_personal) {
  const SafeScore::Rules rules = {.places = Places::forLinux(),
                                  .personalFolders = {"/home/ada/Bilder", "/data/\xc3\x9c"},
                                  .now = now};
  for (const char* path :
       {"/home/ada/Bilder/vm.qcow2", "/home/ada/bilder/in/x", "/data/\xc3\xbc/x"}) {
    const SafeItem item = SafeScore::evaluate(path, 5, "other", now - 200 * day, rules);
    EXPECT_EQ(item.label, "Keep / caution") << path;
    EXPECT_THAT(item.reason, HasSubstr("personal folder")) << path;
  }
  for (const char* path : {"/home/ada/Bilder2/x", "/x/home/ada/Bilder/x"})
    EXPECT_FALSE(SafeScore::evaluate(path, 5, "other", now - 200 * day, rules).caution) << path;
}

TEST(SafeScoreOfSystem, by_default_the_users_folders_are_those_of_the_desktop) {
  const TempTree config;
  putFile(config.at("user-dirs.dirs"), "XDG_PICTURES_DIR=\"/data/Bilder\"\n");
  const char* const set = std::getenv("XDG_CONFIG_HOME");
  const std::string before = set != nullptr ? set : "";
  setenv("XDG_CONFIG_HOME", config.path().c_str(), 1);
  const SafeItem item = SafeScore::evaluate("/data/Bilder/vm.qcow2", 5, "code", {});
  if (set != nullptr) {
    setenv("XDG_CONFIG_HOME", before.c_str(), 1);
  } else {
    unsetenv("XDG_CONFIG_HOME");
  }
  EXPECT_EQ(item.reason, "personal folder");
}

TEST(SafeScoreOfSystem, by_default_the_clock_is_that_of_the_system) {
  const std::time_t before = std::time(nullptr);
  const double here = SafeScore::presentTime();
  // std::time() may lag behind by a clock tick.
  EXPECT_GE(here, static_cast<double>(before));
  EXPECT_LE(here, static_cast<double>(std::time(nullptr)) + 2);
  EXPECT_EQ(SafeScore::evaluate("/data/a.c", 5, "code", here).reason, "used this week");
  EXPECT_EQ(SafeScore::evaluate("/data/a.c", 5, "code", here - 181 * day).reason, "idle 6+ months");
}

}  // namespace
}  // namespace tessaly
