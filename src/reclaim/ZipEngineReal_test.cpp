// Archives written by the system's zip and read by the system's unzip.
#include <cstdlib>
#include <filesystem>
#include <functional>
#include <gtest/gtest.h>
#include <map>
#include <sys/mount.h>
#include <utility>

#include "platform/Process.h"
#include "reclaim/ZipEngine.h"
#include "support/ForkedChild.h"
#include "support/PlainFiles.h"
#include "support/PrivateMounts.h"
#include "support/TempTree.h"
#include "support/TestTool.h"
#include "system/Shell.h"

namespace tessaly {
namespace {

namespace fs = std::filesystem;

class RealZip : public testing::Test {
 protected:
  // The contents of a folder by relative path: the content of each file, "/" for each folder.
  using Contents = std::map<std::string, std::string>;

  static Contents contentsOf(const std::string& folder) {
    Contents contents;
    for (const auto& entry : fs::recursive_directory_iterator(
             folder, fs::directory_options::follow_directory_symlink)) {
      const std::string name = entry.path().native().substr(folder.size() + 1);
      contents[name] = entry.is_directory() ? "/" : contentOf(entry.path());
    }
    return contents;
  }

  static Process::Exit unzip(std::vector<std::string> args) {
    Result<Process> process = Process::launch({.path = "/usr/bin/unzip", .args = std::move(args)});
    if (!process) return {.status = 255, .signal = 0};
    process.value().waitUntil(Deadline::never());
    return *process.value().exit();
  }

  static bool isSound(const std::string& archive) { return unzip({"-tqq", archive}).isSuccess(); }

  // unzip keeps control characters in names only with this option.
  Contents unpacked(const std::string& archive) const {
    const TempTree out;
    EXPECT_TRUE(unzip({"-qq", "-^", archive, "-d", out.path()}).isSuccess());
    return contentsOf(out.path());
  }

  static ZipEngine::Archived archived(const std::vector<std::string>& paths, const std::string& to,
                                      const ZipEngine::Services& services = {}) {
    const Result<FileIdentity> old = FileIdentity::of(to);
    return ZipEngine::archive(
        {.paths = paths, .to = to, .replaced = old ? std::optional(old.value()) : std::nullopt},
        services);
  }
  static bool archive(const std::vector<std::string>& paths, const std::string& to,
                      const ZipEngine::Services& services = {}) {
    return archived(paths, to, services).end == ZipEngine::Archived::End::made;
  }

  // Archives everything in "in" and expects the unpacked contents to be the same.
  void expectToComeBackWhole() {
    std::vector<std::string> paths;
    for (const std::string& name : entriesOf(tree_.at("in")))
      paths.push_back(tree_.at("in/" + name));
    ASSERT_FALSE(paths.empty());
    EXPECT_TRUE(archive(paths, to_));
    EXPECT_TRUE(isSound(to_));
    EXPECT_EQ(unpacked(to_), contentsOf(tree_.at("in")));
  }

  void put(const std::string& name, const std::string& content) {
    const std::string path = tree_.at("in/" + name);
    fs::create_directories(fs::path(path).parent_path());
    putFile(path, content);
  }

  // A machine on which `before` is called just before run number `number` of zip.
  static ZipEngine::Services servicesWhere(int number, std::function<void()> before) {
    return {.run =
                [number, before = std::move(before)](
                    const std::string& path, const std::vector<std::string>& args, double timeout,
                    const std::string& cwd, const std::function<bool()>& isCancelled) mutable {
                  if (--number == 0) before();
                  return Shell::runToEnd(path, args, timeout, cwd, isCancelled);
                },
            .now = {}};
  }

  TempTree tree_{
      "in/\n"
      "kept/\n"};
  std::string to_ = tree_.at("kept/out.zip");
};

TEST_F(RealZip, folders_below_the_common_parent_are_kept) {
  put("Code/deep/note", "note");
  put("Code/main.cpp", "main");
  put("Movies/film", std::string(300000, 'f'));
  put("Movies/unmarked", "u");
  fs::create_directories(tree_.at("in/Code/bare"));
  EXPECT_TRUE(archive({tree_.at("in/Movies/film"), tree_.at("in/Code")}, to_));
  EXPECT_TRUE(isSound(to_));
  EXPECT_EQ(unpacked(to_), (Contents{{"Code", "/"},
                                     {"Code/bare", "/"},
                                     {"Code/deep", "/"},
                                     {"Code/deep/note", "note"},
                                     {"Code/main.cpp", "main"},
                                     {"Movies", "/"},
                                     {"Movies/film", std::string(300000, 'f')}}));
}

TEST_F(RealZip, names_that_begin_with_a_dash_are_archived) {
  for (const char* name : {"-x", "-", "--", "-@", "-m", "-d/-y", "--help", "-r/z"}) put(name, name);
  expectToComeBackWhole();
}

TEST_F(RealZip, names_with_blanks_line_feeds_and_other_bytes_are_archived) {
  for (const char* name :
       {" two  blanks ", "line\nfeed", "\n", "caf\xc3\xa9", "caf\xe9", "\xff\xfe", "\x01\x1b[31m",
        "tab\t", "back\\slash", "'\"", "@", "$HOME", "a;b"}) {
    put(name, name);
  }
  expectToComeBackWhole();
}

TEST_F(RealZip, the_archive_keeps_bytes_of_a_name_that_unzip_would_change) {
  const std::string name = "rub\x7fout";
  put(name, "film");
  EXPECT_TRUE(archive({tree_.at("in/" + name)}, to_));
  EXPECT_TRUE(isSound(to_));
  EXPECT_NE(contentOf(to_).find(name), std::string::npos);
}

TEST_F(RealZip, names_that_look_like_patterns_are_taken_literally) {
  for (const char* name : {"a[b]*", "?", "*", "[x]", "\\[x]", "{a,b}"}) put(name, name);
  for (const char* name : {"ab", "abc", "x", "a"}) put(name, "unmarked");
  EXPECT_TRUE(archive({tree_.at("in/a[b]*"), tree_.at("in/?"), tree_.at("in/*"), tree_.at("in/[x]"),
                       tree_.at("in/\\[x]"), tree_.at("in/{a,b}")},
                      to_));
  EXPECT_EQ(unpacked(to_), (Contents{{"a[b]*", "a[b]*"},
                                     {"?", "?"},
                                     {"*", "*"},
                                     {"[x]", "[x]"},
                                     {"\\[x]", "\\[x]"},
                                     {"{a,b}", "{a,b}"}}));
}

TEST_F(RealZip, a_vanished_item_named_like_a_pattern_matches_no_other_item) {
  put("*", "pattern");
  put("film", "film");
  put("note", "note");
  const auto services = servicesWhere(1, [&] { fs::remove(tree_.at("in/*")); });
  EXPECT_EQ(archived({tree_.at("in/film"), tree_.at("in/*")}, to_, services).end,
            ZipEngine::Archived::End::incomplete);
  EXPECT_TRUE(entriesOf(tree_.at("kept")).empty());
}

TEST_F(RealZip, the_path_of_the_archive_may_have_an_odd_name) {
  put("film", "film");
  for (const char* name : {"-x.zip", "a[b]*.zip", "line\nfeed.zip", "caf\xe9.zip", " .zip"}) {
    const std::string to = tree_.at("kept/" + std::string(name));
    EXPECT_TRUE(archive({tree_.at("in/film")}, to)) << name;
    EXPECT_TRUE(fs::exists(to)) << name;
  }
}

TEST_F(RealZip, the_target_of_a_link_is_archived_under_the_name_of_the_link) {
  put("Code/main.cpp", "main");
  fs::create_directory_symlink("Code", tree_.at("in/link"));
  put("film", "film");
  EXPECT_TRUE(archive({tree_.at("in/link"), tree_.at("in/film")}, to_));
  EXPECT_EQ(unpacked(to_), (Contents{{"film", "film"}, {"link", "/"}, {"link/main.cpp", "main"}}));
}

TEST_F(RealZip, an_item_inside_another_item_is_archived_once) {
  put("Code/main.cpp", "main");
  EXPECT_TRUE(archive({tree_.at("in/Code/main.cpp"), tree_.at("in/Code")}, to_));
  EXPECT_TRUE(isSound(to_));
  EXPECT_EQ(unpacked(to_), (Contents{{"Code", "/"}, {"Code/main.cpp", "main"}}));
}

TEST_F(RealZip, thousands_of_items_are_archived_in_more_than_one_run) {
  const std::string deep = std::string(200, 'd') + "/" + std::string(200, 'e');
  tree_.plant("in", std::string(200, 'd') + "/\n  " + std::string(200, 'e') + "/\n    " +
                        std::string(150, 'f') + "#### x5000\n");
  std::vector<std::string> paths;
  for (const std::string& name : entriesOf(tree_.at("in/" + deep))) {
    paths.push_back(tree_.at("in/" + deep + "/" + name));
    putFile(paths.back(), name);
  }
  put("film", "film");
  paths.push_back(tree_.at("in/film"));
  int runs = 0;
  ZipEngine::Services services;
  services.run = [&runs](const std::string& path, const std::vector<std::string>& args,
                         double timeout, const std::string& cwd,
                         const std::function<bool()>& isCancelled) {
    ++runs;
    return Shell::runToEnd(path, args, timeout, cwd, isCancelled);
  };
  EXPECT_TRUE(archive(paths, to_, services));
  EXPECT_GE(runs, 3);
  EXPECT_TRUE(isSound(to_));
  EXPECT_TRUE(unpacked(to_) == contentsOf(tree_.at("in")));
}

TEST_F(RealZip, the_old_archive_is_replaced_and_not_extended) {
  put("old", "old");
  put("film", "film");
  ASSERT_TRUE(archive({tree_.at("in/old")}, to_));
  EXPECT_TRUE(archive({tree_.at("in/film")}, to_));
  EXPECT_EQ(unpacked(to_), (Contents{{"film", "film"}}));
}

TEST_F(RealZip, an_archive_that_zip_cannot_write_is_not_reported_as_made) {
  put("film", "film");
  putFile(to_, "old");
  fs::permissions(tree_.at("kept"), fs::perms::owner_read | fs::perms::owner_exec |
                                        fs::perms::others_read | fs::perms::others_exec);
  EXPECT_EQ(asOtherUser([&]() -> std::string {
              return archive({tree_.at("in/film")}, to_) ? "there is one" : "";
            }),
            "");
  EXPECT_EQ(contentOf(to_), "old");
  fs::permissions(tree_.at("kept"), fs::perms::owner_all);
}

TEST_F(RealZip, no_archive_is_made_in_a_missing_folder) {
  put("film", "film");
  EXPECT_FALSE(archive({tree_.at("in/film")}, tree_.at("nowhere/out.zip")));
}

TEST_F(RealZip, no_archive_is_made_after_the_time_limit) {
  put("film", "film");
  Hold hold(tree_.at("hold"));
  ZipEngine::Services services;
  // A tool that runs until it is stopped, with no time left.
  services.run = [&](const std::string&, const std::vector<std::string>& args, double,
                     const std::string& cwd, const std::function<bool()>& isCancelled) {
    putFile(args[2], "half");
    return Shell::runToEnd(testTool(), {"hold", hold.path()}, 0, cwd, isCancelled);
  };
  EXPECT_FALSE(archive({tree_.at("in/film")}, to_, services));
  EXPECT_TRUE(entriesOf(tree_.at("kept")).empty());
}

// The folder of the archive is a file system of 1 MiB.
class FullDisk : public RealZip {
 protected:
  void expectOnSmallDisk(const std::function<std::string()>& body) {
    const std::string told = inPrivateMounts([&]() -> std::string {
      if (::mount("tmpfs", tree_.at("kept").c_str(), "tmpfs", 0, "size=1M,mode=0755") != 0) {
        return refusal();
      }
      return body();
    });
    if (told.starts_with("refused")) GTEST_SKIP() << "no mounting here, " << told;
    EXPECT_EQ(told, "");
  }

  static std::string noise(std::size_t bytes) {
    std::string text(bytes, '\0');
    std::uint32_t state = 1;
    for (char& byte : text) {
      state = state * 1664525U + 1013904223U;
      byte = static_cast<char>(state >> 24U);
    }
    return text;
  }
};

TEST_F(FullDisk, a_full_disk_gives_no_archive_and_leaves_no_files) {
  put("film", noise(std::size_t{4} << 20));
  expectOnSmallDisk([&]() -> std::string {
    if (archive({tree_.at("in/film")}, to_)) return "there is an archive";
    return entriesOf(tree_.at("kept")).empty() ? "" : "something is left";
  });
}

TEST_F(FullDisk, an_archive_of_the_first_run_alone_is_not_complete) {
  const std::string deep = std::string(200, 'd') + "/" + std::string(200, 'e');
  tree_.plant("in", std::string(200, 'd') + "/\n  " + std::string(200, 'e') + "/\n    " +
                        std::string(20, 'f') + "#### x3000\n");
  std::vector<std::string> paths;
  for (const std::string& name : entriesOf(tree_.at("in/" + deep))) {
    paths.push_back(tree_.at("in/" + deep + "/" + name));
  }
  // Larger than the whole disk.
  put("film", noise(std::size_t{4} << 20));
  paths.push_back(tree_.at("in/film"));
  expectOnSmallDisk([&]() -> std::string {
    ZipEngine::Services services;
    int runs = 0;
    services.run = [&runs](const std::string& path, const std::vector<std::string>& args,
                           double timeout, const std::string& cwd,
                           const std::function<bool()>& isCancelled) {
      ++runs;
      // The first run packs one name only: the entries of so many long names would fill the disk by
      // themselves.
      const auto end = runs == 1 ? args.begin() + 4 : args.end();
      return Shell::runToEnd(path, {args.begin(), end}, timeout, cwd, isCancelled);
    };
    if (archive(paths, to_, services)) return "there is an archive";
    if (runs < 2) return "there was one run";
    return entriesOf(tree_.at("kept")).empty() ? "" : "something is left";
  });
}

}  // namespace
}  // namespace tessaly
