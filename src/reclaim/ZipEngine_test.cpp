// Names, folders and runs, with a zip that only writes down what it was asked for.
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
using testing::IsEmpty;
using testing::Le;
using testing::SizeIs;

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

TEST(ZipEngine, suggests_a_name_with_the_date_and_time) {
  const TimeZone zone("UTC0");
  EXPECT_EQ(ZipEngine::suggestedName(newYear), "Tessaly-2025-12-31-2359.zip");
  EXPECT_EQ(ZipEngine::suggestedName(newYear + seconds(1 + 86400 + 3600 * 7 + 300)),
            "Tessaly-2026-01-02-0705.zip");
}

TEST(ZipEngine, suggests_the_time_of_the_place) {
  const TimeZone zone("XST-5:30");
  EXPECT_EQ(ZipEngine::suggestedName(newYear), "Tessaly-2026-01-01-0529.zip");
}

TEST(ZipEngine, common_parent_is_the_deepest_folder_that_holds_all) {
  EXPECT_EQ(ZipEngine::commonParent({"/a/b/x", "/a/b/y"}), "/a/b");
  EXPECT_EQ(ZipEngine::commonParent({"/a/b/x", "/a/c/y"}), "/a");
  EXPECT_EQ(ZipEngine::commonParent({"/a/x", "/b/y"}), "/");
  EXPECT_EQ(ZipEngine::commonParent({"/a/b/c/x", "/a/y", "/a/b/z"}), "/a");
  EXPECT_EQ(ZipEngine::commonParent({"/a/y", "/a/b/c/x"}), "/a");
}

TEST(ZipEngine, common_parent_of_one_path_is_its_parent) {
  EXPECT_EQ(ZipEngine::commonParent({"/a/b/x"}), "/a/b");
  EXPECT_EQ(ZipEngine::commonParent({"/a/b/x/"}), "/a/b");
  EXPECT_EQ(ZipEngine::commonParent({"/x"}), "/");
  EXPECT_EQ(ZipEngine::commonParent({"/"}), "/");
}

TEST(ZipEngine, common_parent_of_nothing_is_the_root) {
  EXPECT_EQ(ZipEngine::commonParent({}), "/");
  EXPECT_EQ(ZipEngine::commonParent({"x"}), "/");
}

TEST(ZipEngine, common_parent_tells_folders_apart_by_component) {
  EXPECT_EQ(ZipEngine::commonParent({"/a/bc/x", "/a/b/y"}), "/a");
  EXPECT_EQ(ZipEngine::commonParent({"/a/b/y", "/a/bc/x"}), "/a");
}

TEST(ZipEngine, common_parent_of_an_item_and_what_lies_in_it_holds_both) {
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

  // Archives as if each run took `taken_`, and did what `during_` says.
  bool archive(const std::vector<std::string>& paths) { return archive(paths, to_); }
  bool archive(const std::vector<std::string>& paths, const std::string& to) {
    ZipEngine::Machine machine;
    machine.run = [this](const std::string& path, const std::vector<std::string>& args,
                         double timeout, const std::string& cwd) -> std::string {
      asked_.push_back({path, args, timeout, cwd});
      now_ += taken_;
      during_();
      return {};
    };
    machine.now = [this] { return now_; };
    return ZipEngine::archive(paths, to, machine);
  }

  // What stands behind "-r", "-q" and the archive in the first run.
  std::vector<std::string> names() const {
    const std::vector<std::string>& args = asked_.at(0).args;
    return {args.begin() + 3, args.end()};
  }

  // As zip does: a new file instead of the old one, and larger.
  void write() {
    putFile(to_ + ".new", contentOf(to_) + "x");
    fs::rename(to_ + ".new", to_);
  }

  std::vector<std::string> manyLongPaths() {
    tree_.plant(std::string(200, 'd') + "/\n  " + std::string(200, 'e') + "/\n    " +
                std::string(190, 'f') + "#### x5000\n");
    std::vector<std::string> paths;
    for (const std::string& name : entriesOf(longFolder())) {
      paths.push_back(longFolder() + "/" + name);
    }
    paths.push_back(tree_.at("film"));  // so that the common parent is the top
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
  std::function<void()> during_ = [this] { write(); };
};

TEST_F(ZipRuns, start_the_tool_where_the_items_have_their_parent) {
  EXPECT_TRUE(archive({tree_.at("film"), tree_.at("Code/deep/note")}));
  ASSERT_THAT(asked_, SizeIs(1));
  EXPECT_EQ(asked_[0].path, "/usr/bin/zip");
  EXPECT_THAT(asked_[0].args, ElementsAre("-r", "-q", to_, "film", "Code/deep/note"));
  EXPECT_EQ(asked_[0].cwd, tree_.path());
  EXPECT_EQ(asked_[0].timeout, 180);
}

TEST_F(ZipRuns, leave_out_what_is_not_there) {
  EXPECT_TRUE(archive({tree_.at("gone/film"), tree_.at("Code/main.cpp"), tree_.at("dangling")}));
  EXPECT_THAT(names(), ElementsAre("main.cpp"));
  EXPECT_EQ(asked_[0].cwd, tree_.at("Code"));
}

TEST_F(ZipRuns, are_none_without_items) {
  putFile(to_, "old");
  EXPECT_FALSE(archive({}));
  EXPECT_FALSE(archive({tree_.at("gone")}));
  EXPECT_THAT(asked_, IsEmpty());
  EXPECT_EQ(contentOf(to_), "old");
}

TEST_F(ZipRuns, are_none_for_an_archive_inside_an_item) {
  EXPECT_FALSE(archive({tree_.at("film"), tree_.at("Code")}, tree_.at("Code/out.zip")));
  EXPECT_FALSE(archive({tree_.at("Code")}, tree_.at("kept/../Code/deep/./out.zip")));
  EXPECT_FALSE(archive({tree_.at("kept/../Code/")}, tree_.at("Code/out.zip")));
  EXPECT_FALSE(archive({tree_.at("Code")}, tree_.at("link/out.zip")));
  EXPECT_FALSE(archive({tree_.at("link")}, tree_.at("Code/out.zip")));
  EXPECT_FALSE(archive({tree_.at("film"), "/"}, tree_.at("out.zip")));
  EXPECT_THAT(asked_, IsEmpty());
}

TEST_F(ZipRuns, are_none_for_an_archive_in_the_place_of_an_item) {
  EXPECT_FALSE(archive({tree_.at("film")}, tree_.at("film")));
  EXPECT_FALSE(archive({tree_.at("film")}, tree_.at("kept/../film")));
  EXPECT_FALSE(archive({tree_.at("Code/main.cpp")}, tree_.at("link/main.cpp")));
  EXPECT_FALSE(archive({tree_.at("link")}, tree_.at("link")));
  fs::create_symlink("../film", tree_.at("Code/alias"));
  EXPECT_FALSE(archive({tree_.at("link/alias")}, tree_.at("Code/alias")));
  EXPECT_THAT(asked_, IsEmpty());
  EXPECT_TRUE(fs::exists(tree_.at("film")));
  EXPECT_TRUE(fs::exists(tree_.at("Code/main.cpp")));
}

TEST_F(ZipRuns, are_made_for_an_archive_whose_path_only_begins_like_an_item) {
  to_ = tree_.at("Code.zip");
  EXPECT_TRUE(archive({tree_.at("Code")}));
}

TEST_F(ZipRuns, hand_over_a_dash_as_no_option) {
  EXPECT_TRUE(archive({tree_.at("-x"), tree_.at("-"), tree_.at("-x/-y"), tree_.at("@")}));
  EXPECT_THAT(names(), ElementsAre("./-x", "./-", "./-x/-y", "@"));
}

TEST_F(ZipRuns, call_a_link_by_its_own_name) {
  EXPECT_TRUE(archive({tree_.at("link"), tree_.at("film")}));
  EXPECT_THAT(names(), ElementsAre("link", "film"));
}

TEST_F(ZipRuns, know_items_by_way_of_a_link) {
  EXPECT_TRUE(archive({tree_.at("link/main.cpp"), tree_.at("link/deep")}));
  EXPECT_THAT(names(), ElementsAre("main.cpp", "deep"));
}

TEST_F(ZipRuns, leave_out_what_lies_elsewhere_than_its_path_tells) {
  const TempTree elsewhere("film 4K\n");
  fs::create_directory_symlink(elsewhere.path(), tree_.at("away"));
  EXPECT_TRUE(archive({tree_.at("away/film"), tree_.at("film")}));
  EXPECT_THAT(names(), ElementsAre("film"));
}

TEST_F(ZipRuns, are_none_when_all_lies_elsewhere) {
  const TempTree elsewhere("film 4K\nsong 4K\n");
  fs::create_directory_symlink(elsewhere.path(), tree_.at("away"));
  fs::create_directory_symlink(elsewhere.path(), tree_.at("yonder"));
  putFile(to_, "old");
  EXPECT_FALSE(archive({tree_.at("away/film"), tree_.at("yonder/song")}));
  EXPECT_THAT(asked_, IsEmpty());
  EXPECT_EQ(contentOf(to_), "old");
}

TEST_F(ZipRuns, never_name_what_lies_above_their_folder) {
  EXPECT_FALSE(archive({tree_.at("Code/deep/..")}));
  EXPECT_THAT(asked_, IsEmpty());
}

TEST_F(ZipRuns, begin_without_the_old_file) {
  putFile(to_, "old");
  bool wasThere = true;
  during_ = [&] {
    wasThere = fs::exists(to_);
    write();
  };
  EXPECT_TRUE(archive({tree_.at("film")}));
  EXPECT_FALSE(wasThere);
}

TEST_F(ZipRuns, that_write_nothing_give_no_archive_and_the_old_file_is_gone) {
  putFile(to_, "old");
  during_ = [] {};
  EXPECT_FALSE(archive({tree_.at("film")}));
  EXPECT_FALSE(fs::exists(to_));
}

TEST_F(ZipRuns, that_do_not_start_or_run_out_of_time_give_no_archive) {
  during_ = [] { throw ToolError("POSIX", 2, "there is no zip"); };
  EXPECT_FALSE(archive({tree_.at("film")}));
  during_ = [this] {
    write();
    throw ToolError("Marrow", 1, "timed out: /usr/bin/zip");
  };
  EXPECT_FALSE(archive({tree_.at("film")}));
  EXPECT_TRUE(fs::exists(to_));
}

TEST_F(ZipRuns, never_replace_a_folder) {
  fs::create_directories(to_ + "/inside");
  during_ = [] {};
  EXPECT_FALSE(archive({tree_.at("film")}));
  EXPECT_TRUE(fs::exists(to_ + "/inside"));
}

TEST_F(ZipRuns, are_one_as_long_as_the_arguments_fit) {
  tree_.plant("many/\n  file#### x5000\n");
  std::vector<std::string> paths;
  for (const std::string& name : entriesOf(tree_.at("many"))) {
    paths.push_back(tree_.at("many/" + name));
  }
  EXPECT_TRUE(archive(paths));
  ASSERT_THAT(asked_, SizeIs(1));
  EXPECT_THAT(names(), SizeIs(5000));
}

TEST_F(ZipRuns, follow_each_other_where_the_arguments_are_too_many) {
  const std::vector<std::string> paths = manyLongPaths();
  EXPECT_TRUE(archive(paths));
  ASSERT_GE(asked_.size(), 3U);
  std::vector<std::string> all;
  for (const Asked& asked : asked_) {
    EXPECT_THAT(std::vector(asked.args.begin(), asked.args.begin() + 3),
                ElementsAre("-r", "-q", to_));
    std::size_t bytes = 0;
    for (const std::string& arg : asked.args) bytes += arg.size() + 1;
    EXPECT_THAT(bytes, Le(std::size_t{1} << 20));
    for (auto name = asked.args.begin() + 3; name != asked.args.end(); ++name) {
      all.push_back(tree_.at(*name));
    }
  }
  EXPECT_EQ(all, paths);
}

TEST_F(ZipRuns, share_their_time) {
  taken_ = seconds(50);
  EXPECT_TRUE(archive(manyLongPaths()));
  ASSERT_GE(asked_.size(), 3U);
  EXPECT_THAT(asked_[0].timeout, DoubleNear(180, 1e-9));
  EXPECT_THAT(asked_[1].timeout, DoubleNear(130, 1e-9));
  EXPECT_THAT(asked_[2].timeout, DoubleNear(80, 1e-9));
}

TEST_F(ZipRuns, end_with_no_archive_when_the_time_is_over) {
  taken_ = seconds(90);
  EXPECT_FALSE(archive(manyLongPaths()));
  EXPECT_THAT(asked_, SizeIs(2));
}

TEST_F(ZipRuns, of_which_a_later_one_writes_nothing_give_no_archive) {
  during_ = [this] {
    if (asked_.size() == 1) write();
  };
  EXPECT_FALSE(archive(manyLongPaths()));
  EXPECT_THAT(asked_, SizeIs(2));
}

TEST_F(ZipRuns, of_which_one_finds_all_of_its_items_gone_give_an_archive) {
  during_ = [this] {
    if (asked_.size() != 2) {
      write();
      return;
    }
    for (auto name = asked_[1].args.begin() + 3; name != asked_[1].args.end(); ++name) {
      fs::remove(tree_.at(*name));
    }
  };
  EXPECT_TRUE(archive(manyLongPaths()));
  EXPECT_GE(asked_.size(), 3U);
}

TEST_F(ZipRuns, that_find_everything_gone_give_no_archive) {
  during_ = [this] { fs::remove(tree_.at("film")); };
  EXPECT_FALSE(archive({tree_.at("film")}));
}

}  // namespace
}  // namespace tessaly
