#include "reclaim/BigWinsEngine.h"

#include <gmock/gmock.h>
#include <unordered_set>

#include "support/FakeFileAccess.h"
#include "support/NoTools.h"
#include "support/PlainFiles.h"

namespace tessaly {
namespace {

using testing::ElementsAre;
using testing::IsEmpty;

constexpr std::int64_t mebibyte = 1048576;

DiskNode folder(const std::string& path, std::int64_t size,
                const std::vector<DiskNode>& children = {}) {
  return DiskNode({.name = path.substr(path.rfind('/') + 1),
                   .path = path,
                   .size = size,
                   .isDir = true,
                   .kind = FileKind::folder},
                  children);
}

DiskNode file(const std::string& path, std::int64_t size) {
  return DiskNode({.name = path.substr(path.rfind('/') + 1), .path = path, .size = size});
}

std::vector<std::string> pathsOf(const std::vector<TreeWin>& wins) {
  std::vector<std::string> paths;
  for (const TreeWin& win : wins) paths.push_back(win.path);
  return paths;
}

TEST(BigWinsEngine, nineteen_names_mark_a_folder_that_tools_make_again) {
  const std::unordered_map<std::string_view, BigWinsEngine::ArtifactDir> expected = {
      {"node_modules", {"node_modules", "Restored by npm/yarn/pnpm install"}},
      {"__pycache__", {"Python bytecode", "Regenerated automatically by Python"}},
      {".venv", {"Python virtualenvs", "Recreated with pip/uv/poetry install"}},
      {"venv", {"Python virtualenvs", "Recreated with pip/uv/poetry install"}},
      {".next", {"Framework build caches", "Rebuilt on next dev/build run"}},
      {".nuxt", {"Framework build caches", "Rebuilt on next dev/build run"}},
      {".output", {"Framework build caches", "Rebuilt on next dev/build run"}},
      {".turbo", {"Framework build caches", "Rebuilt on next dev/build run"}},
      {".angular", {"Framework build caches", "Rebuilt on next dev/build run"}},
      {".parcel-cache", {"Framework build caches", "Rebuilt on next dev/build run"}},
      {".dart_tool", {"Dart/Flutter artifacts", "Rebuilt by flutter/dart tooling"}},
      {".gradle", {"Gradle project caches", "Rebuilt on next Gradle build"}},
      {".stack-work", {"Haskell artifacts", "Rebuilt by stack"}},
      {"zig-cache", {"Zig artifacts", "Rebuilt by zig"}},
      {"zig-out", {"Zig artifacts", "Rebuilt by zig"}},
      {".terraform", {"Terraform providers", "Restored by terraform init"}},
      {".pytest_cache", {"Python bytecode", "Regenerated automatically"}},
      {"Pods", {"CocoaPods (in projects)", "Restored by pod install"}},
      {"DerivedData", {"Xcode DerivedData (in projects)", "Rebuilt automatically by Xcode"}},
  };
  EXPECT_EQ(expected.size(), 19U);
  EXPECT_EQ(BigWinsEngine::artifactDirs(), expected);
}

TEST(BigWinsEngine, an_artifact_folder_is_listed_from_one_mebibyte_on) {
  const DiskNode root =
      folder("/p", 3 * mebibyte,
             {folder("/p/a", mebibyte, {folder("/p/a/node_modules", mebibyte)}),
              folder("/p/b", mebibyte, {folder("/p/b/node_modules", mebibyte - 1)})});
  EXPECT_THAT(BigWinsEngine::findTreeWins(root),
              ElementsAre(TreeWin{.path = "/p/a/node_modules",
                                  .name = "node_modules",
                                  .bytes = mebibyte,
                                  .category = "node_modules",
                                  .note = "Restored by npm/yarn/pnpm install"}));
}

TEST(BigWinsEngine, nothing_inside_an_artifact_folder_is_listed) {
  const DiskNode root =
      folder("/p", 9 * mebibyte,
             {folder("/p/node_modules", 5 * mebibyte,
                     {folder("/p/node_modules/x", 4 * mebibyte,
                             {folder("/p/node_modules/x/node_modules", 4 * mebibyte)})}),
              // Below the limit itself: a scan that counts sizes in another way may say so.
              folder("/p/venv", mebibyte - 1, {folder("/p/venv/node_modules", 2 * mebibyte)})});
  EXPECT_THAT(pathsOf(BigWinsEngine::findTreeWins(root)), ElementsAre("/p/node_modules"));
}

TEST(BigWinsEngine, a_file_is_no_artifact_folder) {
  const DiskNode root = folder("/p", 2 * mebibyte, {file("/p/node_modules", 2 * mebibyte)});
  EXPECT_THAT(BigWinsEngine::findTreeWins(root), IsEmpty());
}

TEST(BigWinsEngine, names_are_compared_exactly) {
  const DiskNode root = folder("/p", 9 * mebibyte,
                               {folder("/p/pods", 2 * mebibyte), folder("/p/VENV", 2 * mebibyte),
                                folder("/p/Pods", mebibyte), folder("/p/venv2", mebibyte)});
  EXPECT_THAT(pathsOf(BigWinsEngine::findTreeWins(root)), ElementsAre("/p/Pods"));
}

TEST(BigWinsEngine, the_root_itself_is_not_listed) {
  const DiskNode root =
      folder("/p/node_modules", 9 * mebibyte, {folder("/p/node_modules/.next", 2 * mebibyte)});
  EXPECT_THAT(pathsOf(BigWinsEngine::findTreeWins(root)), ElementsAre("/p/node_modules/.next"));
  EXPECT_THAT(BigWinsEngine::findTreeWins(DiskNode()), IsEmpty());
}

TEST(BigWinsEngine, artifact_folders_are_sorted_by_size_and_equal_ones_keep_the_order_of_the_tree) {
  const DiskNode root =
      folder("/p", 20 * mebibyte,
             {folder("/p/a", 9 * mebibyte,
                     {folder("/p/a/venv", 2 * mebibyte), folder("/p/a/.next", 2 * mebibyte)}),
              folder("/p/Pods", 3 * mebibyte), folder("/p/zig-out", 2 * mebibyte)});
  EXPECT_THAT(pathsOf(BigWinsEngine::findTreeWins(root)),
              ElementsAre("/p/Pods", "/p/a/venv", "/p/a/.next", "/p/zig-out"));
}

TEST(BigWinsEngine, a_walk_appends_in_the_order_of_the_tree) {
  const DiskNode root =
      folder("/p", 20 * mebibyte, {folder("/p/venv", mebibyte), folder("/p/Pods", 3 * mebibyte)});
  std::vector<TreeWin> wins = {{.path = "/before"}};
  BigWinsEngine::walk(root, wins);
  EXPECT_THAT(pathsOf(wins), ElementsAre("/before", "/p/venv", "/p/Pods"));
}

TEST(BigWinsEngine, paths_of_artifact_folders_need_not_be_utf_8) {
  const DiskNode root =
      folder("/p", 2 * mebibyte, {folder("/p/\xFF", mebibyte, {folder("/p/\xFF/venv", mebibyte)})});
  EXPECT_THAT(pathsOf(BigWinsEngine::findTreeWins(root)), ElementsAre("/p/\xFF/venv"));
}

// A search tool with a fixed output.
class IdleFiles : public testing::Test {
 protected:
  static constexpr double now = 1'800'000'000;
  static constexpr double cutOff = now - 2592000;

  // Adds a file that was last modified at `modified`.
  void have(const std::string& path, double modified, std::int64_t allocated = 4096) {
    files_.files[path].values = {.modified = modified, .allocated = allocated, .size = 1};
  }

  std::vector<LargeOldFile> found(const std::string& output) {
    return BigWinsEngine::largeOld(
        "/home/ada",
        [&](const std::string& path, const std::vector<std::string>& args, double timeout) {
          tool_ = path;
          args_ = args;
          timeout_ = timeout;
          return output;
        },
        {.files = files_, .now = [] { return now; }});
  }

  std::vector<std::string> pathsFound(const std::string& output) {
    std::vector<std::string> paths;
    for (const LargeOldFile& each : found(output)) paths.push_back(each.path);
    return paths;
  }

  static std::string recorded(const std::string& name) {
    std::string text = contentOf(TESSALY_RECLAIM_TESTDATA "/mdfind/" + name);
    EXPECT_FALSE(text.empty()) << name;
    return text;
  }

  FakeFileAccess files_;
  std::string tool_;
  std::vector<std::string> args_;
  double timeout_ = 0;
};

TEST_F(IdleFiles, the_search_is_asked_for_files_of_50_mebibytes_in_the_folder) {
  EXPECT_THAT(found(""), IsEmpty());
  EXPECT_EQ(tool_, "/usr/bin/mdfind");
  EXPECT_THAT(args_, ElementsAre("-onlyin", "/home/ada", "kMDItemFSSize >= 52428800"));
  EXPECT_EQ(timeout_, 20);
}

TEST_F(IdleFiles, a_file_is_idle_after_more_than_30_days) {
  have("/just", cutOff);
  have("/longer", cutOff - 1);
  have("/little", cutOff - 0.25);
  have("/new", now);
  have("/future", now + 1e9);
  EXPECT_THAT(pathsFound("/just\n/longer\n/little\n/new\n/future\n"),
              ElementsAre("/longer", "/little"));
}

TEST_F(IdleFiles, a_row_tells_name_kind_size_and_time_of_the_file) {
  have("/home/ada/Film One.MKV", 1'600'000'000.9999, 60 * mebibyte);
  EXPECT_THAT(found("/home/ada/Film One.MKV\n"),
              ElementsAre(LargeOldFile{.name = "Film One.MKV",
                                       .path = "/home/ada/Film One.MKV",
                                       .bytes = 60 * mebibyte,
                                       .kind = "video",
                                       .mtimeMs = 1'600'000'000'999}));
}

TEST_F(IdleFiles, the_kind_comes_from_the_name_of_a_file_alone) {
  std::vector<std::string> kinds;
  for (const LargeOldFile& each : found("/a.app\n/b.iso\n/c.tar.gz\n/d.py\n/e.pdf\n/f.heic\n/g\n"))
    kinds.push_back(each.kind);
  EXPECT_THAT(kinds, ElementsAre("app", "disk", "archive", "code", "document", "image", "other"));
}

TEST_F(IdleFiles, a_file_that_cannot_be_examined_is_idle_since_the_distant_past) {
  EXPECT_THAT(found("/gone/model.bin\n"), ElementsAre(LargeOldFile{.name = "model.bin",
                                                                   .path = "/gone/model.bin",
                                                                   .bytes = 0,
                                                                   .kind = "other",
                                                                   .mtimeMs = -62135769600000}));
}

TEST_F(IdleFiles, the_length_counts_where_the_size_on_disk_is_unknown) {
  files_.files["/length"].values = {.modified = 0, .allocated = {}, .size = 70};
  files_.files["/both"].values = {.modified = 0, .allocated = 0, .size = 70};
  files_.files["/date"].values = {.modified = 0, .allocated = {}, .size = {}};
  std::vector<std::int64_t> sizes;
  for (const LargeOldFile& each : found("/date\n/both\n/length\n")) sizes.push_back(each.bytes);
  EXPECT_THAT(sizes, ElementsAre(70, 0, 0));
}

TEST_F(IdleFiles, times_before_1970_and_beyond_all_clocks_are_times) {
  have("/before", -1.5);
  have("/ages", -1e30);
  std::vector<std::int64_t> times;
  for (const LargeOldFile& each : found("/before\n/ages\n")) times.push_back(each.mtimeMs);
  ASSERT_EQ(times.size(), 2U);
  EXPECT_EQ(times[0], -1500);
  EXPECT_LT(times[1], -62135769600000);
}

TEST_F(IdleFiles, only_the_first_80_lines_are_looked_at) {
  std::string output;
  for (int i = 0; i < 100; ++i) {
    const std::string path = "/" + std::to_string(i);
    output += path + "\n\n";  // empty lines do not count
    // The limit comes before the choice: the first ten are not idle.
    have(path, i < 10 ? now : 0);
  }
  const std::vector<LargeOldFile> rows = found(output);
  EXPECT_EQ(rows.size(), 70U);
  EXPECT_EQ(files_.examined.size(), 80U);
  EXPECT_EQ(files_.examined.back(), "/79");
}

TEST_F(IdleFiles, the_largest_comes_first_and_equal_ones_keep_the_order_of_the_search) {
  have("/a", 0, 10);
  have("/b", 0, 30);
  have("/c", 0, 10);
  have("/d", 0, 20);
  EXPECT_THAT(pathsFound("/a\n/b\n/c\n/d\n"), ElementsAre("/b", "/d", "/a", "/c"));
}

TEST_F(IdleFiles, only_a_line_feed_ends_a_path) {
  EXPECT_THAT(pathsFound("\n\n/a\r\n/b c\td\n\n/e\xE2\x80\xA8"
                         "f\x0B/g"),
              ElementsAre("/a\r", "/b c\td",
                          "/e\xE2\x80\xA8"
                          "f\x0B/g"));
}

TEST_F(IdleFiles, a_search_that_fails_finds_nothing) {
  EXPECT_THAT(BigWinsEngine::largeOld("/", noTools), IsEmpty());
  const auto odd = [](const std::string&, const std::vector<std::string>&, double) -> std::string {
    throw 1;
  };
  EXPECT_THAT(BigWinsEngine::largeOld("/", odd), IsEmpty());
}

TEST_F(IdleFiles, a_recorded_search_is_read) {
  have("/home/ada/film.mkv", 0, 300);
  have("/home/ada/Müll und mehr/alt.iso", 0, 500);
  have("/home/ada/projects/model.bin", now, 400);
  have("/home/ada/backup.tar.gz", 0, 200);
  have("/home/ada/Bilder/scan.jpg", 0, 100);
  EXPECT_THAT(pathsFound(recorded("files.txt")),
              ElementsAre("/home/ada/Müll und mehr/alt.iso", "/home/ada/film.mkv",
                          "/home/ada/backup.tar.gz", "/home/ada/Bilder/scan.jpg"));
  // The last path of an output that was cut is another one, of which nothing is known.
  EXPECT_THAT(pathsFound(recorded("cut.txt")),
              ElementsAre("/home/ada/Müll und mehr/alt.iso", "/home/ada/film.mkv",
                          "/home/ada/backup.tar.gz", "/home/ada/Bild"));
}

TEST_F(IdleFiles, lines_that_are_no_paths_of_files_take_nothing) {
  for (const char* name : {"error.txt", "garbage.bin"}) {
    for (const LargeOldFile& each : found(recorded(name))) EXPECT_EQ(each.bytes, 0) << name;
  }
}

TEST_F(IdleFiles, rows_can_be_members_of_a_hash_table) {
  const LargeOldFile one{.path = "/a", .bytes = 1};
  LargeOldFile later = one;
  later.mtimeMs = 2;
  EXPECT_EQ((std::unordered_set<LargeOldFile>{one, one, later}.size()), 2U);
  const TreeWin win{.path = "/a", .bytes = 1};
  EXPECT_EQ((std::unordered_set<TreeWin>{win, win}.size()), 1U);
}

class Snapshots : public testing::Test {
 protected:
  std::int64_t countIn(const std::string& output) {
    return BigWinsEngine::localSnapshotCount(answer(output));
  }

  Shell::Run answer(const std::string& output) {
    return [this, output](const std::string& path, const std::vector<std::string>& args,
                          double timeout) {
      call_ = {path};
      call_.insert(call_.end(), args.begin(), args.end());
      timeout_ = timeout;
      return output;
    };
  }

  static std::string recorded(const std::string& name) {
    std::string text = contentOf(TESSALY_RECLAIM_TESTDATA "/tmutil/" + name);
    EXPECT_FALSE(text.empty()) << name;
    return text;
  }

  std::vector<std::string> call_;
  double timeout_ = 0;
};

TEST_F(Snapshots, the_tool_is_asked_for_those_of_the_root) {
  EXPECT_EQ(countIn(""), 0);
  EXPECT_THAT(call_, ElementsAre("/usr/bin/tmutil", "listlocalsnapshots", "/"));
  EXPECT_EQ(timeout_, 8);
}

TEST_F(Snapshots, each_line_with_the_mark_counts_once) {
  EXPECT_EQ(countIn("Snapshots for disk /:\ncom.apple.TimeMachine.2026-11-01-092004.local\n"), 1);
  EXPECT_EQ(countIn("com.apple.TimeMachine com.apple.TimeMachine"), 1);
  EXPECT_EQ(countIn("com.apple.TimeMachine\r\n\n\n  com.apple.TimeMachine"), 2);
  EXPECT_EQ(countIn("com.apple.timemachine\ncom.apple.Time\nMachine\n"), 0);
}

TEST_F(Snapshots, recorded_answers_are_counted) {
  EXPECT_EQ(countIn(recorded("snapshots.txt")), 3);
  EXPECT_EQ(countIn(recorded("german.txt")), 2);
  EXPECT_EQ(countIn(recorded("none.txt")), 0);
  EXPECT_EQ(countIn(recorded("cut.txt")), 2);
  EXPECT_EQ(countIn(recorded("garbage.bin")), 0);
}

TEST_F(Snapshots, a_tool_that_fails_counts_none) {
  EXPECT_EQ(BigWinsEngine::localSnapshotCount(noTools), 0);
}

TEST_F(Snapshots, thinning_asks_for_20_gibibytes_and_returns_what_the_tool_says) {
  EXPECT_THAT(BigWinsEngine::thinArguments(),
              ElementsAre("thinlocalsnapshots", "/", "21474836480", "4"));
  EXPECT_EQ(BigWinsEngine::thinLocalSnapshots(answer("Thinned local snapshots:\n")),
            "Thinned local snapshots:\n");
  EXPECT_THAT(call_, ElementsAre("/usr/bin/tmutil", "thinlocalsnapshots", "/", "21474836480", "4"));
  EXPECT_EQ(timeout_, 60);
  EXPECT_EQ(BigWinsEngine::thinLocalSnapshots(noTools), "");
}

}  // namespace
}  // namespace tessaly
