#include "platform/tools/LiveSearch.h"

#include <algorithm>
#include <atomic>
#include <filesystem>
#include <functional>
#include <gmock/gmock.h>
#include <gtest/gtest.h>
#include <sys/syscall.h>
#include <thread>
#include <unistd.h>

#include "platform/tools/SearchFixture_test.h"
#include "support/ForkedChild.h"
#include "support/OwnProcess.h"
#include "support/RefusedThreads.h"
#include "support/SystemCallTrace.h"

namespace tessaly::tools {
namespace {

using testing::ElementsAre;
using testing::IsEmpty;

class LiveSearchTest : public SearchFixture {
 protected:
  Result<LiveSearch::Answer> run(const SearchQuery& query,
                                 const StartThread& start = tessaly::startThread) const {
    return LiveSearch::run(query, settings_, start);
  }

  // The paths that are found below the top of the tree.
  std::vector<std::string> pathsOf(const Result<LiveSearch::Answer>& answer) const {
    if (!answer) return {answer.error().description()};
    std::vector<std::string> paths;
    for (const std::string& path : answer.value().paths) {
      EXPECT_TRUE(path.starts_with(tree_.path() + "/")) << path;
      paths.push_back(path.substr(std::min(tree_.path().size() + 1, path.size())));
    }
    return paths;
  }

  SearchQuery bySize(std::int64_t least, const std::string& below = ".") const {
    return {tree_.at(below), SearchQuery::BySize{least}};
  }
  SearchQuery byName(const std::string& text, const std::string& below = ".") const {
    return {tree_.at(below), SearchQuery::ByName{text}};
  }
  std::vector<std::string> ofSize(std::int64_t least, const std::string& below = ".") const {
    return pathsOf(run(bySize(least, below)));
  }
  std::vector<std::string> named(const std::string& text, const std::string& below = ".") const {
    return pathsOf(run(byName(text, below)));
  }
};

TEST_F(LiveSearchTest, files_of_the_length_and_more_are_found_those_with_most_blocks_first) {
  tree_.plant(R"(
    exact 8K
    shorter 8191
    .hidden 12K
    deep/
      .er/
        large 400K
    sparse sparse=1G
  )");
  EXPECT_THAT(ofSize(8192), ElementsAre("deep/.er/large", ".hidden", "exact", "sparse"));
  EXPECT_THAT(ofSize(8193), ElementsAre("deep/.er/large", ".hidden", "sparse"));
  EXPECT_THAT(ofSize(std::int64_t{1} << 30U), ElementsAre("sparse"));
  EXPECT_THAT(ofSize((std::int64_t{1} << 30U) + 1), IsEmpty());
}

TEST_F(LiveSearchTest, files_with_equally_many_blocks_are_in_the_order_of_their_paths) {
  tree_.plant("b 4K\na/\n  z 4K\na.b 4K\nB 4K\n\\xc3\\xa9 4K\n");
  EXPECT_THAT(ofSize(4096), ElementsAre("B", "a.b", "a/z", "b", "\u00e9"));
}

TEST_F(LiveSearchTest, only_regular_files_have_a_size) {
  tree_.plant("folder/\nfile\nlink -> file\nbroken -> gone\nloop -> loop\nup -> .\npipe fifo\n");
  EXPECT_THAT(ofSize(0), ElementsAre("file"));
}

TEST_F(LiveSearchTest, a_file_with_several_names_is_found_once) {
  tree_.plant("z/\n  first 8K\na/\n  second = z/first\nother 8K\n");
  EXPECT_THAT(ofSize(1), ElementsAre("a/second", "other"));
  EXPECT_THAT(ofSize(1, "z"), ElementsAre("z/first"));
  EXPECT_THAT(named("first"), ElementsAre("z/first"));
}

TEST_F(LiveSearchTest, a_folder_that_no_walk_enters_is_left_out) {
  tree_.plant(
      "Trash/\n  film 8K\n.Trashes/\n  film 8K\nhome/\n  film 8K\n  .Trash/\n    film 8K\n");
  settings_.places.skipPaths = {tree_.at("Trash")};
  EXPECT_THAT(ofSize(1), ElementsAre("home/film"));
  EXPECT_THAT(named("film"), ElementsAre("home/film"));
  EXPECT_THAT(named("trash"), IsEmpty());
  // The user can name one.
  EXPECT_THAT(named("film", "Trash"), ElementsAre("Trash/film"));
}

TEST_F(LiveSearchTest, a_search_by_size_leaves_out_folders_of_the_system) {
  tree_.plant("usr/\n  lib 8K\n  local/\n    film 8K\nhome/\n  film 8K\n");
  settings_.places.critical.prefixes = {tree_.at("usr")};
  settings_.places.critical.exempt = {tree_.at("usr/local")};
  EXPECT_THAT(ofSize(1), ElementsAre("home/film", "usr/local/film"));
  EXPECT_THAT(ofSize(1, "usr"), ElementsAre("usr/local/film"));
  EXPECT_THAT(named("lib"), ElementsAre("usr/lib"));
  settings_.places.critical.exempt = {};
  EXPECT_THAT(ofSize(1, "usr"), IsEmpty());
  EXPECT_THAT(ofSize(1), ElementsAre("home/film"));
}

TEST_F(LiveSearchTest, a_search_by_size_leaves_out_the_files_of_other_users) {
  tree_.plant("film 8K\n");
  settings_.owner = geteuid() + 1;
  EXPECT_THAT(ofSize(1), IsEmpty());
  EXPECT_THAT(named("film"), ElementsAre("film"));
}

TEST_F(LiveSearchTest, names_are_found_whatever_their_case_and_accents_are) {
  tree_.plant("R\xc3\xa9sum\xc3\xa9.pdf\nold/\n  RESUME\n  re\xcc\x81sume\xcc\x81\n  other\n");
  EXPECT_THAT(named("r\u00e9SUME"),
              ElementsAre("old/RESUME", "R\u00e9sum\u00e9.pdf", "old/re\u0301sume\u0301"));
}

TEST_F(LiveSearchTest, items_of_every_type_are_found_by_name) {
  tree_.plant("notes/\n  note fifo\nnote -> gone\nnoteback socket\n");
  EXPECT_THAT(named("note"), ElementsAre("note", "notes", "noteback", "notes/note"));
}

TEST_F(LiveSearchTest, names_that_begin_with_the_text_are_first_and_hidden_folders_last) {
  tree_.plant(R"(
    a-note
    note-with-a-long-name
    .note
    .config/
      note
      a-note
      notes/
        .note
    work/
      note
  )");
  EXPECT_THAT(named("note"),
              ElementsAre("work/note", "note-with-a-long-name", ".note", "a-note", ".config/note",
                          ".config/notes", ".config/a-note", ".config/notes/.note"));
  // Only folders below the scope count.
  EXPECT_THAT(named("note", ".config"), ElementsAre(".config/note", ".config/notes",
                                                    ".config/a-note", ".config/notes/.note"));
}

TEST_F(LiveSearchTest, paths_that_are_no_line_of_text_are_left_out) {
  tree_.plant(R"(
    good 8K
    bad\xFF 8K
    two\nlines 8K
    folder\xFF/
      good 8K
    other\nfolder/
      good 8K
    \xc3\xa9 8K
  )");
  EXPECT_THAT(ofSize(1), ElementsAre("good", "\u00e9"));
  EXPECT_THAT(named("o"), ElementsAre("good"));
  EXPECT_THAT(named("bad"), IsEmpty());
  for (const char* const below : {"folder\xFF", "other\nfolder"}) {
    EXPECT_FALSE(run(byName("good", below)).ok());
  }
}

TEST_F(LiveSearchTest, a_link_to_the_folder_is_followed_and_paths_have_no_link) {
  tree_.plant("real/\n  film 8K\nalias -> real\n");
  EXPECT_THAT(ofSize(1, "alias"), ElementsAre("real/film"));
  EXPECT_THAT(ofSize(1, "alias/../real/"), ElementsAre("real/film"));
}

TEST_F(LiveSearchTest, a_scope_that_is_no_folder_is_an_error) {
  tree_.plant("file 8K\nloop -> loop\n");
  const auto kindOf = [this](const std::string& below) {
    const Result<LiveSearch::Answer> answer = run(bySize(1, below));
    return answer ? std::nullopt : std::optional(answer.error().kind);
  };
  EXPECT_EQ(kindOf("file"), SystemError::Kind::notADirectory);
  EXPECT_EQ(kindOf("missing"), SystemError::Kind::notFound);
  EXPECT_EQ(kindOf("loop"), SystemError::Kind::linkOnTheWay);
  EXPECT_EQ(kindOf("file/below"), SystemError::Kind::notADirectory);
  settings_.places.critical.prefixes = {tree_.path()};
  EXPECT_EQ(kindOf("file"), SystemError::Kind::notADirectory);
  EXPECT_EQ(kindOf("missing"), SystemError::Kind::notFound);
  EXPECT_EQ(kindOf("."), std::nullopt);
}

TEST_F(LiveSearchTest, folders_that_cannot_be_read_are_counted) {
  tree_.plant("open/\n  film 8K\nlocked/ mode=0\nshut/ mode=0\n");
  std::filesystem::permissions(tree_.path(), std::filesystem::perms(0755));
  const std::string wrong = asOtherUser([this]() -> std::string {
    const Result<LiveSearch::Answer> answer = run(byName("film"));
    if (!answer || answer.value().paths.size() != 1) return "the film is not found";
    if (answer.value().unreadable != 2) return std::to_string(answer.value().unreadable);
    const std::string& first = answer.value().firstUnreadable;
    if (first.find("Permission denied") == std::string::npos) return first;
    return run(byName("film", "locked")).ok() ? "a locked scope gives an answer" : "";
  });
  EXPECT_EQ(wrong, "");
}

TEST_F(LiveSearchTest, a_file_whose_size_cannot_be_read_is_found_by_name_alone) {
  tree_.plant("names/ mode=0444\n  film 8K\n");
  std::filesystem::permissions(tree_.path(), std::filesystem::perms(0755));
  const std::string wrong = asOtherUser([this]() -> std::string {
    const Result<LiveSearch::Answer> sized = run(bySize(0));
    if (!sized || !sized.value().paths.empty()) return "it is found by size";
    const Result<LiveSearch::Answer> found = run(byName("film"));
    if (!found || found.value().paths.size() != 1) return "it is not found by name";
    return found.value().paths[0] == tree_.at("names/film") ? "" : found.value().paths[0];
  });
  EXPECT_EQ(wrong, "");
}

TEST_F(LiveSearchTest, of_more_paths_than_fit_the_best_are_found) {
  tree_.plant("part#### 4K x3000\nlarge 8K\n");
  settings_.bytes = 1000;
  const Result<LiveSearch::Answer> answer = run(bySize(1));
  ASSERT_TRUE(answer.ok());
  EXPECT_TRUE(answer.value().isCut);
  const std::vector<std::string> paths = pathsOf(answer);
  ASSERT_GE(paths.size(), 5U);
  EXPECT_LT(paths.size(), 100U);
  EXPECT_EQ(paths[0], "large");
  EXPECT_EQ(paths[1], "part0000");
  EXPECT_EQ(paths[4], "part0003");
}

TEST_F(LiveSearchTest, a_search_that_ends_in_time_is_complete) {
  tree_.plant("film 8K\n");
  settings_.deadline = Deadline::after(3600);
  const Result<LiveSearch::Answer> answer = run(bySize(1));
  ASSERT_TRUE(answer.ok());
  EXPECT_FALSE(answer.value().isLate || answer.value().isCut);
  EXPECT_EQ(answer.value().unreadable, 0);
}

// The walk waits until the call has returned, as at a file system that does not answer.
TEST_F(LiveSearchTest, a_search_whose_deadline_has_passed_returns_what_was_found) {
  tree_.plant("film 8K\n");
  settings_.deadline = Deadline::after(0);
  std::function<void()> walk;
  const StartThread late = [&](const std::function<void()>& body) {
    walk = body;
    return std::thread([] {});
  };
  const Result<LiveSearch::Answer> answer = run(bySize(1), late);
  ASSERT_TRUE(answer.ok());
  EXPECT_TRUE(answer.value().isLate);
  EXPECT_THAT(answer.value().paths, IsEmpty());
  // It needs nothing of the call.
  walk();
}

TEST_F(LiveSearchTest, a_search_without_a_second_thread_finds_the_same) {
  tree_.plant("film 8K\na/\n  film 12K\n");
  RefusedThreads none;
  EXPECT_THAT(pathsOf(run(bySize(1), none.startThread())), ElementsAre("a/film", "film"));
  settings_.deadline = Deadline::after(0);
  const Result<LiveSearch::Answer> answer = run(bySize(1), none.startThread());
  ASSERT_TRUE(answer.ok());
  EXPECT_TRUE(answer.value().isLate);
  EXPECT_THAT(answer.value().paths, IsEmpty());
}

// Such a walk may go on when the file system answers again.
TEST_F(LiveSearchTest, a_walk_that_goes_on_after_its_search_has_returned_takes_no_more_items) {
  if (const std::string obstacle = SystemCallTrace::obstacle(); !obstacle.empty())
    GTEST_SKIP() << obstacle;
  tree_.plant("film### 4K x200\n");
  settings_.deadline = Deadline::after(0);
  const TracedRun traced = SystemCallTrace::of([this]() -> std::string {
    std::function<void()> walk;
    const StartThread late = [&](const std::function<void()>& body) {
      walk = body;
      return std::thread([] {});
    };
    const bool isAnswered = run(bySize(1), late).ok();
    walk();
    return isAnswered ? "answered" : "failed";
  });
  ASSERT_EQ(traced.told, "answered");
  // Each file that the walk takes is looked at.
  EXPECT_LT(std::ranges::count(traced.calls, SYS_newfstatat), 50);
}

TEST_F(LiveSearchTest, a_file_that_vanishes_during_the_search_is_left_out) {
  if (const std::string obstacle = SystemCallTrace::obstacle(); !obstacle.empty())
    GTEST_SKIP() << obstacle;
  tree_.plant("film 8K\n");
  const auto body = [this]() -> std::string {
    RefusedThreads none;
    const Result<LiveSearch::Answer> answer = run(bySize(1), none.startThread());
    return answer ? std::to_string(answer.value().paths.size()) : answer.error().description();
  };
  const TracedRun whole = SystemCallTrace::of(body);
  ASSERT_EQ(whole.told, "1");
  // The last look is at the file that the walk has found.
  const auto looks = static_cast<std::size_t>(std::ranges::count(whole.calls, SYS_newfstatat));
  ASSERT_GT(looks, 0U);
  EXPECT_EQ(SystemCallTrace::failingNth(SYS_newfstatat, looks, ENOENT, body).told, "0");
  EXPECT_EQ(SystemCallTrace::failingNth(SYS_newfstatat, looks, ENOTDIR, body).told, "0");
  EXPECT_EQ(SystemCallTrace::failingNth(SYS_newfstatat, looks, EACCES, body).told, "1");
}

TEST_F(LiveSearchTest, a_search_leaves_no_thread_and_no_descriptor) {
  tree_.plant("folder-##/ x50\n  film 8K\n");
  const OwnProcess before = OwnProcess::now();
  EXPECT_EQ(ofSize(1).size(), 50U);
  EXPECT_EQ(named("film").size(), 50U);
  EXPECT_EQ(settled(before), before);
}

// Other programs create, rename and delete while the search walks.
TEST_F(LiveSearchTest, a_tree_that_changes_meanwhile_is_searched) {
  tree_.plant("stays/\n  film 8K\nchanges/\n");
  std::atomic<bool> isOver = false;
  std::thread other([&] {
    namespace fs = std::filesystem;
    const fs::path base = tree_.at("changes");
    for (int i = 0; !isOver; ++i) {
      std::error_code error;
      const fs::path folder = base / std::to_string(i % 7);
      fs::create_directories(folder / "inner", error);
      fs::copy_file(tree_.at("stays/film"), folder / "inner/film", error);
      fs::rename(folder / "inner", folder / "renamed", error);
      fs::remove_all(base / std::to_string((i + 3) % 7), error);
    }
  });
  for (int i = 0; i < 50; ++i) {
    EXPECT_THAT(ofSize(1), testing::Contains("stays/film"));
    EXPECT_THAT(named("film"), testing::Contains("stays/film"));
  }
  isOver = true;
  other.join();
}

}  // namespace
}  // namespace tessaly::tools
