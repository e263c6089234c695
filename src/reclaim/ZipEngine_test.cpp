// Names, folders and runs, with a stand-in for zip that records its arguments and then runs the
// real one.
#include "reclaim/ZipEngine.h"

#include <chrono>
#include <cstdlib>
#include <ctime>
#include <filesystem>
#include <gmock/gmock.h>
#include <gtest/gtest.h>
#include <optional>

#include "support/PlainFiles.h"
#include "support/TempTree.h"
#include "system/Shell.h"

namespace tessaly {
namespace {

namespace fs = std::filesystem;
using std::chrono::seconds;
using testing::DoubleNear;
using testing::ElementsAre;
using testing::HasSubstr;
using testing::IsEmpty;
using testing::Le;
using testing::SizeIs;
using End = ZipEngine::Archived::End;

class TimeZone {
 public:
  explicit TimeZone(const char* zone) {
    if (const char* old = std::getenv("TZ")) old_ = old;
    set(zone);
  }
  ~TimeZone() { set(old_ ? old_->c_str() : nullptr); }
  TimeZone(const TimeZone&) = delete;
  TimeZone& operator=(const TimeZone&) = delete;

 private:
  static void set(const char* zone) {
    if (zone != nullptr) {
      setenv("TZ", zone, 1);
    } else {
      unsetenv("TZ");
    }
    tzset();
  }

  std::optional<std::string> old_;
};

constexpr std::chrono::system_clock::time_point newYear{seconds(1767225599)};  // 23:59:59 UTC

TEST(ZipEngine, the_suggested_name_contains_the_date_and_the_time) {
  const TimeZone zone("UTC0");
  EXPECT_EQ(ZipEngine::suggestedName(newYear), "Tessaly-2025-12-31-2359.zip");
  EXPECT_EQ(ZipEngine::suggestedName(newYear + seconds(1 + 86400 + 3600 * 7 + 300)),
            "Tessaly-2026-01-02-0705.zip");
}

TEST(ZipEngine, the_suggested_name_contains_the_local_time) {
  const TimeZone zone("XST-5:30");
  EXPECT_EQ(ZipEngine::suggestedName(newYear), "Tessaly-2026-01-01-0529.zip");
}

TEST(ZipEngine, the_common_parent_is_the_deepest_folder_that_contains_all_paths) {
  EXPECT_EQ(ZipEngine::commonParent({"/a/b/x", "/a/b/y"}), "/a/b");
  EXPECT_EQ(ZipEngine::commonParent({"/a/b/x", "/a/c/y"}), "/a");
  EXPECT_EQ(ZipEngine::commonParent({"/a/x", "/b/y"}), "/");
  EXPECT_EQ(ZipEngine::commonParent({"/a/b/c/x", "/a/y", "/a/b/z"}), "/a");
  EXPECT_EQ(ZipEngine::commonParent({"/a/y", "/a/b/c/x"}), "/a");
}

TEST(ZipEngine, the_common_parent_of_one_path_is_its_parent) {
  EXPECT_EQ(ZipEngine::commonParent({"/a/b/x"}), "/a/b");
  EXPECT_EQ(ZipEngine::commonParent({"/a/b/x/"}), "/a/b");
  EXPECT_EQ(ZipEngine::commonParent({"/x"}), "/");
  EXPECT_EQ(ZipEngine::commonParent({"/"}), "/");
}

TEST(ZipEngine, the_common_parent_of_no_path_is_the_root) {
  EXPECT_EQ(ZipEngine::commonParent({}), "/");
  EXPECT_EQ(ZipEngine::commonParent({"x"}), "/");
}

TEST(ZipEngine, the_common_parent_consists_of_whole_components) {
  EXPECT_EQ(ZipEngine::commonParent({"/a/bc/x", "/a/b/y"}), "/a");
  EXPECT_EQ(ZipEngine::commonParent({"/a/b/y", "/a/bc/x"}), "/a");
}

TEST(ZipEngine, the_common_parent_of_an_item_and_its_contents_contains_both) {
  EXPECT_EQ(ZipEngine::commonParent({"/a/b/x", "/a/b"}), "/a");
  EXPECT_EQ(ZipEngine::commonParent({"/x", "/a/y"}), "/");
}

class ZipRuns : public testing::Test {
 protected:
  struct Asked {
    std::string path;
    std::vector<std::string> args;
    double timeout = 0;
    std::string cwd;
  };

  // Archives with a clock that advances by `taken_` in each run; each run calls `during_`.
  ZipEngine::Archived archive(const std::vector<std::string>& paths) { return archive(paths, to_); }
  ZipEngine::Archived archive(const std::vector<std::string>& paths, const std::string& to,
                              const std::function<bool()>& isGivenUp = {}) {
    ZipEngine::Services services;
    services.run = [this](const std::string& path, const std::vector<std::string>& args,
                          double timeout, const std::string& cwd, const std::function<bool()>&) {
      asked_.push_back({path, args, timeout, cwd});
      now_ += taken_;
      return during_();
    };
    services.now = [this] { return now_; };
    const Result<FileIdentity> old = FileIdentity::of(to);
    return ZipEngine::archive({.paths = paths,
                               .to = to,
                               .replaced = old ? std::optional(old.value()) : std::nullopt,
                               .isGivenUp = isGivenUp},
                              services);
  }
  bool isMade(const std::vector<std::string>& paths) { return archive(paths).end == End::made; }
  End endFor(const std::vector<std::string>& paths, const std::string& to) {
    return archive(paths, to).end;
  }

  // The arguments after "-r", "-q" and the archive in the first run.
  std::vector<std::string> names() const {
    const std::vector<std::string>& args = asked_.at(0).args;
    return {args.begin() + 3, args.end()};
  }

  // Runs the system's zip with the arguments of the last run.
  Shell::Ending zip() const {
    const Asked& asked = asked_.back();
    return Shell::runToEnd(asked.path, asked.args, 600, asked.cwd);
  }
  static Shell::Ending withStatus(int status, const std::string& words = "") {
    return {.exit = {.status = status, .signal = 0}, .words = words};
  }

  std::vector<std::string> kept() const { return entriesOf(tree_.at("kept")); }

  std::vector<std::string> manyLongPaths() {
    tree_.plant(std::string(200, 'd') + "/\n  " + std::string(200, 'e') + "/\n    " +
                std::string(190, 'f') + "#### x5000\n");
    std::vector<std::string> paths;
    for (const std::string& name : entriesOf(longFolder())) {
      paths.push_back(longFolder() + "/" + name);
    }
    paths.push_back(tree_.at("film"));  // so that the common parent is the top folder
    return paths;
  }
  std::string longFolder() const {
    return tree_.at(std::string(200, 'd') + "/" + std::string(200, 'e'));
  }

  TempTree tree_{
      "film 4K\n"
      "Code/\n"
      "  main.cpp 4K\n"
      "  deep/\n"
      "    note 4K\n"
      "-x/\n"
      "  -y\n"
      "-\n"
      "@\n"
      "link -> Code\n"
      "dangling -> nowhere\n"
      "kept/\n"};
  std::string to_ = tree_.at("kept/out.zip");
  std::vector<Asked> asked_;
  std::chrono::steady_clock::time_point now_{seconds(1000)};
  seconds taken_{0};
  std::function<Shell::Ending()> during_ = [this] { return zip(); };
};

TEST_F(ZipRuns, zip_runs_in_the_common_parent_of_the_items) {
  EXPECT_TRUE(isMade({tree_.at("film"), tree_.at("Code/deep/note")}));
  ASSERT_THAT(asked_, SizeIs(1));
  EXPECT_EQ(asked_[0].path, "/usr/bin/zip");
  ASSERT_GE(asked_[0].args.size(), 3U);
  EXPECT_EQ(asked_[0].args[0], "-r");
  EXPECT_EQ(asked_[0].args[1], "-q");
  EXPECT_THAT(names(), ElementsAre("film", "Code/deep/note"));
  EXPECT_EQ(asked_[0].cwd, tree_.path());
  EXPECT_EQ(asked_[0].timeout, 180);
}

TEST_F(ZipRuns, zip_writes_to_a_private_name_beside_the_archive) {
  std::vector<std::string> during;
  during_ = [&] {
    Shell::Ending ending = zip();
    during = kept();
    return ending;
  };
  EXPECT_TRUE(isMade({tree_.at("film")}));
  EXPECT_TRUE(asked_[0].args[2].starts_with(tree_.at("kept/.tessaly-")));
  ASSERT_THAT(during, SizeIs(1));
  EXPECT_TRUE(during[0].starts_with(".tessaly-"));
  EXPECT_THAT(kept(), ElementsAre("out.zip"));
}

TEST_F(ZipRuns, the_result_has_the_archive_and_its_originals) {
  const ZipEngine::Archived archived = archive({tree_.at("Code"), tree_.at("film")});
  ASSERT_EQ(archived.end, End::made);
  EXPECT_EQ(archived.path, to_);
  EXPECT_EQ(archived.identity, FileIdentity::of(to_).value());
  ASSERT_THAT(archived.originals, SizeIs(2));
  EXPECT_EQ(archived.originals[0].path, tree_.at("Code"));
  EXPECT_EQ(archived.originals[0].identity, FileIdentity::of(tree_.at("Code")).value());
  EXPECT_EQ(archived.originals[1].path, tree_.at("film"));
  EXPECT_EQ(archived.cause, "");
}

TEST_F(ZipRuns, zip_is_not_run_if_an_item_is_missing) {
  putFile(to_, "old");
  for (const char* name : {"gone/film", "gone", "dangling"}) {
    const ZipEngine::Archived archived = archive({tree_.at("film"), tree_.at(name)});
    EXPECT_EQ(archived.end, End::incomplete) << name;
    EXPECT_THAT(archived.cause, HasSubstr(name));
  }
  EXPECT_THAT(asked_, IsEmpty());
  EXPECT_EQ(contentOf(to_), "old");
  EXPECT_THAT(kept(), ElementsAre("out.zip"));
}

TEST_F(ZipRuns, zip_is_not_run_without_items) {
  putFile(to_, "old");
  EXPECT_EQ(archive({}).end, End::notMade);
  EXPECT_EQ(archive({tree_.at("gone")}).end, End::notMade);
  EXPECT_THAT(asked_, IsEmpty());
  EXPECT_EQ(contentOf(to_), "old");
}

TEST_F(ZipRuns, zip_is_not_run_for_an_archive_inside_an_item) {
  EXPECT_EQ(endFor({tree_.at("film"), tree_.at("Code")}, tree_.at("Code/out.zip")), End::notMade);
  EXPECT_EQ(endFor({tree_.at("Code")}, tree_.at("kept/../Code/deep/./out.zip")), End::notMade);
  EXPECT_EQ(endFor({tree_.at("kept/../Code/")}, tree_.at("Code/out.zip")), End::notMade);
  EXPECT_EQ(endFor({tree_.at("Code")}, tree_.at("link/out.zip")), End::notMade);
  EXPECT_EQ(endFor({tree_.at("link")}, tree_.at("Code/out.zip")), End::notMade);
  EXPECT_EQ(endFor({tree_.at("film"), "/"}, tree_.at("out.zip")), End::notMade);
  EXPECT_THAT(asked_, IsEmpty());
}

TEST_F(ZipRuns, zip_is_not_run_for_an_archive_at_the_path_of_an_item) {
  EXPECT_EQ(endFor({tree_.at("film")}, tree_.at("film")), End::notMade);
  EXPECT_EQ(endFor({tree_.at("film")}, tree_.at("kept/../film")), End::notMade);
  EXPECT_EQ(endFor({tree_.at("Code/main.cpp")}, tree_.at("link/main.cpp")), End::notMade);
  EXPECT_EQ(endFor({tree_.at("link")}, tree_.at("link")), End::notMade);
  fs::create_symlink("../film", tree_.at("Code/alias"));
  EXPECT_EQ(endFor({tree_.at("link/alias")}, tree_.at("Code/alias")), End::notMade);
  EXPECT_THAT(asked_, IsEmpty());
  EXPECT_TRUE(fs::exists(tree_.at("film")));
  EXPECT_TRUE(fs::exists(tree_.at("Code/main.cpp")));
}

TEST_F(ZipRuns, an_archive_path_may_begin_with_the_name_of_an_item) {
  EXPECT_EQ(endFor({tree_.at("Code")}, tree_.at("Code.zip")), End::made);
}

TEST_F(ZipRuns, names_with_a_dash_are_not_passed_as_options) {
  EXPECT_TRUE(isMade({tree_.at("-x"), tree_.at("-"), tree_.at("-x/-y"), tree_.at("@")}));
  EXPECT_THAT(names(), ElementsAre("./-x", "./-", "./-x/-y", "@"));
}

TEST_F(ZipRuns, a_link_is_archived_under_its_own_name) {
  EXPECT_TRUE(isMade({tree_.at("link"), tree_.at("film")}));
  EXPECT_THAT(names(), ElementsAre("link", "film"));
}

TEST_F(ZipRuns, items_behind_a_link_to_their_parent_are_archived) {
  EXPECT_TRUE(isMade({tree_.at("link/main.cpp"), tree_.at("link/deep")}));
  EXPECT_THAT(names(), ElementsAre("main.cpp", "deep"));
}

TEST_F(ZipRuns, zip_is_not_run_if_an_item_is_elsewhere_behind_a_link) {
  const TempTree elsewhere("film 4K\n");
  fs::create_directory_symlink(elsewhere.path(), tree_.at("away"));
  const ZipEngine::Archived archived = archive({tree_.at("away/film"), tree_.at("film")});
  EXPECT_EQ(archived.end, End::incomplete);
  EXPECT_THAT(archived.cause, HasSubstr("away/film"));
  EXPECT_THAT(asked_, IsEmpty());
}

TEST_F(ZipRuns, zip_is_not_run_if_all_items_are_elsewhere_behind_links) {
  const TempTree elsewhere("film 4K\nsong 4K\n");
  fs::create_directory_symlink(elsewhere.path(), tree_.at("away"));
  fs::create_directory_symlink(elsewhere.path(), tree_.at("yonder"));
  putFile(to_, "old");
  EXPECT_FALSE(isMade({tree_.at("away/film"), tree_.at("yonder/song")}));
  EXPECT_THAT(asked_, IsEmpty());
  EXPECT_EQ(contentOf(to_), "old");
}

TEST_F(ZipRuns, items_above_the_common_parent_are_never_archived) {
  EXPECT_FALSE(isMade({tree_.at("Code/deep/..")}));
  EXPECT_THAT(asked_, IsEmpty());
}

TEST_F(ZipRuns, the_old_file_stays_until_the_archive_is_complete) {
  putFile(to_, "old");
  std::string during;
  during_ = [&] {
    during = contentOf(to_);
    return zip();
  };
  EXPECT_TRUE(isMade({tree_.at("film")}));
  EXPECT_EQ(during, "old");
  EXPECT_NE(contentOf(to_), "old");
  EXPECT_THAT(kept(), ElementsAre("out.zip"));
}

TEST_F(ZipRuns, no_archive_is_made_if_zip_writes_nothing) {
  putFile(to_, "old");
  during_ = [] { return withStatus(0); };
  EXPECT_EQ(archive({tree_.at("film")}).end, End::notMade);
  EXPECT_EQ(contentOf(to_), "old");
  EXPECT_THAT(kept(), ElementsAre("out.zip"));
}

TEST_F(ZipRuns, no_archive_is_made_if_zip_does_not_start_or_times_out) {
  putFile(to_, "old");
  during_ = []() -> Shell::Ending { throw ToolError("POSIX", 2, "there is no zip"); };
  EXPECT_EQ(archive({tree_.at("film")}).cause, "there is no zip");
  during_ = [this]() -> Shell::Ending {
    zip();
    throw ToolError("Marrow", 1, "timed out: /usr/bin/zip");
  };
  const ZipEngine::Archived archived = archive({tree_.at("film")});
  EXPECT_EQ(archived.end, End::notMade);
  EXPECT_EQ(archived.cause, "it takes too long");
  EXPECT_EQ(contentOf(to_), "old");
  EXPECT_THAT(kept(), ElementsAre("out.zip"));
}

TEST_F(ZipRuns, no_archive_is_made_if_zip_fails_and_its_message_is_the_cause) {
  during_ = [this] {
    zip();
    return withStatus(14, "\nzip I/O error: No space left on device\nzip error: and so on\n");
  };
  const ZipEngine::Archived archived = archive({tree_.at("film")});
  EXPECT_EQ(archived.end, End::notMade);
  EXPECT_EQ(archived.cause, "zip I/O error: No space left on device");
  EXPECT_THAT(kept(), IsEmpty());
}

TEST_F(ZipRuns, the_archive_is_incomplete_if_zip_could_not_read_a_file) {
  during_ = [this] {
    zip();
    return withStatus(18, "zip warning: Input/output error\n");
  };
  EXPECT_EQ(archive({tree_.at("film")}).end, End::incomplete);
  EXPECT_THAT(kept(), IsEmpty());
}

TEST_F(ZipRuns, no_archive_is_made_if_zip_is_killed) {
  during_ = [this] {
    zip();
    return Shell::Ending{.exit = {.status = 0, .signal = 9}, .words = ""};
  };
  EXPECT_EQ(archive({tree_.at("film")}).end, End::notMade);
}

TEST_F(ZipRuns, a_folder_is_never_replaced) {
  fs::create_directories(to_ + "/inside");
  const ZipEngine::Archived archived = archive({tree_.at("film")});
  EXPECT_EQ(archived.path, tree_.at("kept/out 2.zip"));
  EXPECT_TRUE(fs::exists(to_ + "/inside"));
}

TEST_F(ZipRuns, a_file_that_replaced_the_old_one_meanwhile_is_kept) {
  putFile(to_, "old");
  during_ = [this] {
    putFile(to_ + ".new", "of another");
    fs::rename(to_ + ".new", to_);
    return zip();
  };
  const ZipEngine::Archived archived = archive({tree_.at("film")});
  EXPECT_EQ(archived.end, End::made);
  EXPECT_EQ(archived.path, tree_.at("kept/out 2.zip"));
  EXPECT_EQ(contentOf(to_), "of another");
  EXPECT_THAT(kept(), ElementsAre("out 2.zip", "out.zip"));
}

TEST_F(ZipRuns, two_runs_with_one_target_make_two_archives) {
  ZipEngine::Archived inner;
  during_ = [&] {
    if (asked_.size() > 1) return zip();
    const Asked outer = asked_.back();
    inner = archive({tree_.at("Code")});
    return Shell::runToEnd(outer.path, outer.args, 600, outer.cwd);
  };
  const ZipEngine::Archived outer = archive({tree_.at("film")});
  EXPECT_EQ(inner.end, End::made);
  EXPECT_EQ(outer.end, End::made);
  EXPECT_EQ(inner.path, to_);
  EXPECT_EQ(outer.path, tree_.at("kept/out 2.zip"));
  EXPECT_EQ(FileIdentity::of(inner.path).value(), inner.identity);
  EXPECT_EQ(FileIdentity::of(outer.path).value(), outer.identity);
  EXPECT_THAT(kept(), ElementsAre("out 2.zip", "out.zip"));
}

TEST_F(ZipRuns, zip_is_not_run_after_cancellation) {
  EXPECT_EQ(archive({tree_.at("Code")}, to_, [] { return true; }).end, End::givenUp);
  EXPECT_THAT(asked_, IsEmpty());
  EXPECT_THAT(kept(), IsEmpty());
}

TEST_F(ZipRuns, cancelling_at_any_moment_leaves_no_files) {
  // Called for each item before and after the run, and during it.
  int questions = 0;
  ASSERT_EQ(archive({tree_.at("Code")}, to_, [&] { return ++questions < 0; }).end, End::made);
  fs::remove(to_);
  for (int allowed = 0; allowed < questions; ++allowed) {
    int asked = 0;
    EXPECT_EQ(archive({tree_.at("Code")}, to_, [&] { return ++asked > allowed; }).end,
              End::givenUp);
    EXPECT_THAT(kept(), IsEmpty());
  }
}

TEST_F(ZipRuns, zip_runs_once_if_the_arguments_fit) {
  tree_.plant("many/\n  file#### x5000\n");
  std::vector<std::string> paths;
  for (const std::string& name : entriesOf(tree_.at("many"))) {
    paths.push_back(tree_.at("many/" + name));
  }
  EXPECT_TRUE(isMade(paths));
  ASSERT_THAT(asked_, SizeIs(1));
  EXPECT_THAT(names(), SizeIs(5000));
}

TEST_F(ZipRuns, zip_runs_several_times_if_the_arguments_do_not_fit) {
  const std::vector<std::string> paths = manyLongPaths();
  EXPECT_TRUE(isMade(paths));
  ASSERT_GE(asked_.size(), 3U);
  std::vector<std::string> all;
  for (const Asked& asked : asked_) {
    EXPECT_THAT(std::vector(asked.args.begin(), asked.args.begin() + 3),
                ElementsAre("-r", "-q", asked_[0].args[2]));
    std::size_t bytes = 0;
    for (const std::string& arg : asked.args) bytes += arg.size() + 1;
    EXPECT_THAT(bytes, Le(std::size_t{1} << 20));
    for (auto name = asked.args.begin() + 3; name != asked.args.end(); ++name) {
      all.push_back(tree_.at(*name));
    }
  }
  EXPECT_EQ(all, paths);
}

TEST_F(ZipRuns, all_runs_share_one_time_limit) {
  taken_ = seconds(50);
  EXPECT_TRUE(isMade(manyLongPaths()));
  ASSERT_GE(asked_.size(), 3U);
  EXPECT_THAT(asked_[0].timeout, DoubleNear(180, 1e-9));
  EXPECT_THAT(asked_[1].timeout, DoubleNear(130, 1e-9));
  EXPECT_THAT(asked_[2].timeout, DoubleNear(80, 1e-9));
}

TEST_F(ZipRuns, no_archive_is_made_if_the_time_is_over_between_runs) {
  taken_ = seconds(90);
  EXPECT_EQ(archive(manyLongPaths()).end, End::notMade);
  EXPECT_THAT(asked_, SizeIs(2));
}

TEST_F(ZipRuns, the_archive_is_incomplete_if_a_later_run_writes_nothing) {
  during_ = [this] { return asked_.size() == 1 ? zip() : withStatus(0); };
  const ZipEngine::Archived archived = archive(manyLongPaths());
  EXPECT_EQ(archived.end, End::incomplete);
  EXPECT_LE(archived.cause.size(), 1000U);
  EXPECT_THAT(archived.cause, HasSubstr(" more"));
}

TEST_F(ZipRuns, no_archive_is_made_if_all_items_of_one_run_have_disappeared) {
  during_ = [this] {
    if (asked_.size() == 2) {
      for (auto name = asked_[1].args.begin() + 3; name != asked_[1].args.end(); ++name) {
        fs::remove(tree_.at(*name));
      }
    }
    return zip();
  };
  // zip 3.0 crashes while it prints this message.
  EXPECT_NE(archive(manyLongPaths()).end, End::made);
  EXPECT_THAT(kept(), IsEmpty());
}

TEST_F(ZipRuns, the_archive_is_incomplete_if_all_items_have_disappeared) {
  during_ = [this] {
    fs::remove(tree_.at("film"));
    return zip();
  };
  EXPECT_EQ(archive({tree_.at("film")}).end, End::incomplete);
}

}  // namespace
}  // namespace tessaly
