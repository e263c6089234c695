#include "platform/DirectoryWalk.h"

#include <algorithm>
#include <atomic>
#include <cerrno>
#include <climits>
#include <cstdlib>
#include <fcntl.h>
#include <filesystem>
#include <fstream>
#include <gtest/gtest.h>
#include <map>
#include <set>
#include <string>
#include <sys/stat.h>
#include <unistd.h>
#include <vector>

#include "platform/ResolvedPath.h"
#include "platform/linux/walk/OpenDirectory.h"
#include "support/ForkedChild.h"

namespace tessaly {
namespace {

namespace fs = std::filesystem;
using Type = DirectoryWalk::Type;

class DirectoryWalkTest : public testing::Test {
 protected:
  void SetUp() override {
    std::string pattern = (fs::temp_directory_path() / "walk-XXXXXX").string();
    ASSERT_NE(mkdtemp(pattern.data()), nullptr);
    root_ = fs::canonical(pattern);
  }
  void TearDown() override { fs::remove_all(root_); }

  void folder(const std::string& path) { fs::create_directories(root_ / path); }
  void file(const std::string& path, std::size_t bytes = 0) {
    fs::create_directories((root_ / path).parent_path());
    std::ofstream(root_ / path, std::ios::binary) << std::string(bytes, 'x');
  }

  // Items as paths below the root, in the order of the walk.
  std::vector<std::string> walk(const DirectoryWalk::Decide& decide = {}, int threads = 2) {
    DirectoryWalk walk(root_.string(), decide, threads);
    std::vector<std::string> at;
    std::vector<std::string> paths;
    while (const DirectoryWalk::Item* item = walk.next()) {
      at.resize(item->depth - 1);
      at.emplace_back(item->name);
      std::string path;
      for (const std::string& part : at) path += "/" + part;
      paths.push_back(path);
    }
    return paths;
  }

  fs::path root_;
};

TEST_F(DirectoryWalkTest, the_contents_of_a_directory_come_before_its_next_sibling) {
  for (int i = 0; i < 40; ++i) {
    for (int j = 0; j < 5; ++j) {
      file("d" + std::to_string(i) + "/e" + std::to_string(j) + "/file");
    }
  }
  for (const int threads : {1, 2, 4}) {
    const std::vector<std::string> paths = walk({}, threads);
    EXPECT_EQ(paths.size(), 40U + 40 * 5 + 40 * 5);
    std::map<std::string, std::size_t> place;
    for (std::size_t i = 0; i < paths.size(); ++i) place[paths[i]] = i;
    EXPECT_EQ(place.size(), paths.size());
    for (const auto& [path, index] : place) {
      std::size_t below = 0;
      for (const std::string& other : paths) below += other.starts_with(path + "/") ? 1U : 0U;
      for (std::size_t i = 1; i <= below; ++i) {
        EXPECT_TRUE(paths[index + i].starts_with(path + "/")) << paths[index + i];
      }
    }
  }
}

TEST_F(DirectoryWalkTest, each_item_has_its_type_size_time_and_depth) {
  file("dir/file", 10000);
  fs::create_symlink("file", root_ / "dir/link");
  ASSERT_EQ(mkfifo((root_ / "fifo").c_str(), 0600), 0);
  const timespec times[2] = {{5, 0}, {1234567, 500000000}};
  ASSERT_EQ(utimensat(AT_FDCWD, (root_ / "dir/file").c_str(), times, 0), 0);
  ASSERT_EQ(utimensat(AT_FDCWD, (root_ / "dir").c_str(), times, 0), 0);
  struct stat expected;
  ASSERT_EQ(stat((root_ / "dir/file").c_str(), &expected), 0);
  struct stat expectedDir;
  ASSERT_EQ(stat((root_ / "dir").c_str(), &expectedDir), 0);

  DirectoryWalk walk(root_.string(), {});
  std::map<std::string, DirectoryWalk::Item> items;
  while (const DirectoryWalk::Item* item = walk.next()) items[std::string(item->name)] = *item;
  ASSERT_EQ(items.size(), 4U);
  EXPECT_EQ(items["dir"].type, Type::directory);
  EXPECT_EQ(items["dir"].depth, 1U);
  EXPECT_EQ(items["dir"].allocatedSize, expectedDir.st_size);
  EXPECT_EQ(items["dir"].mtime, 1234567.5);
  EXPECT_EQ(items["file"].type, Type::file);
  EXPECT_EQ(items["file"].depth, 2U);
  EXPECT_EQ(items["file"].allocatedSize, expected.st_blocks * 512);
  EXPECT_EQ(items["file"].mtime, 1234567.5);
  EXPECT_EQ(items["link"].type, Type::link);
  EXPECT_FALSE(items["link"].hasAttributes);
  EXPECT_EQ(items["fifo"].type, Type::other);
  EXPECT_TRUE(items["fifo"].hasAttributes);
}

TEST_F(DirectoryWalkTest, a_walk_without_attributes_reports_names_and_types) {
  file("dir/file", 10000);
  fs::create_symlink("file", root_ / "dir/link");
  ASSERT_EQ(mkfifo((root_ / "fifo").c_str(), 0600), 0);
  DirectoryWalk walk(root_.string(), {}, 0, nullptr, {}, {.attributes = false});
  std::map<std::string, DirectoryWalk::Item> items;
  while (const DirectoryWalk::Item* item = walk.next()) items[std::string(item->name)] = *item;
  ASSERT_EQ(items.size(), 4U);
  EXPECT_EQ(items["dir"].type, Type::directory);
  EXPECT_TRUE(items["dir"].hasAttributes);
  EXPECT_EQ(items["file"].type, Type::file);
  EXPECT_FALSE(items["file"].hasAttributes);
  EXPECT_EQ(items["file"].allocatedSize, 0);
  EXPECT_EQ(items["link"].type, Type::link);
  EXPECT_EQ(items["fifo"].type, Type::other);
}

TEST_F(DirectoryWalkTest, only_items_that_are_kept_are_reported_and_all_directories) {
  file("large", 10000);
  file("dropped/small", 9999);
  file("dropped/large", 10000);
  fs::create_symlink("large", root_ / "large link");
  const DirectoryWalk::Keep keep = [](const DirectoryWalk::Entry& entry) {
    EXPECT_EQ(entry.hasAttributes, entry.type != Type::link);
    EXPECT_EQ(entry.owner, entry.hasAttributes ? geteuid() : 0);
    return entry.type == Type::file && entry.name != "dropped" && entry.length >= 10000;
  };
  DirectoryWalk walk(root_.string(), {}, 0, nullptr, {}, {.keep = keep});
  std::multiset<std::string> names;
  while (const DirectoryWalk::Item* item = walk.next()) {
    names.emplace(item->name);
    if (item->type == Type::file) {
      EXPECT_TRUE(item->hasAttributes);
      EXPECT_GE(item->allocatedSize, 10000);
    }
  }
  EXPECT_EQ(names, (std::multiset<std::string>{"dropped", "large", "large"}));
}

TEST_F(DirectoryWalkTest, a_walk_that_is_cancelled_between_two_portions_of_a_directory_ends) {
  const std::string longName(50, 'n');
  for (int i = 0; i < 3000; ++i) file(longName + std::to_string(i));
  for (const int mostAsked : {1, 2, 1000}) {
    int asked = 0;
    DirectoryWalk walk(root_.string(), {}, 2, nullptr, {},
                       {.attributes = false,
                        .keep = [](const DirectoryWalk::Entry&) { return false; },
                        .isCancelled = [&] { return ++asked == mostAsked; }});
    EXPECT_EQ(walk.next(), nullptr);
    EXPECT_EQ(walk.next(), nullptr);
    // A folder of this length is read in several portions.
    EXPECT_EQ(asked, mostAsked < 3 ? mostAsked : std::clamp(asked, 4, 100));
  }
}

// Most portions of the folder have no item that is reported.
TEST_F(DirectoryWalkTest, few_items_of_a_large_directory_are_kept) {
  const std::string longName(50, 'n');
  for (int i = 0; i < 3000; ++i) file("large/" + longName + std::to_string(i));
  for (const int threads : {1, 2, 4}) {
    DirectoryWalk walk(root_.string(), {}, threads, nullptr, {},
                       {.attributes = false, .keep = [](const DirectoryWalk::Entry& entry) {
                          return entry.name.ends_with("n77") || entry.name.ends_with("n2999");
                        }});
    std::size_t items = 0;
    while (walk.next() != nullptr) ++items;
    EXPECT_EQ(items, 3U) << threads;
  }
}

TEST_F(DirectoryWalkTest, an_item_whose_attributes_cannot_be_read_is_reported_whatever_is_kept) {
  file("listed/file");
  fs::permissions(root_, fs::perms(0755));
  fs::permissions(root_ / "listed", fs::perms(0444));
  const std::string wrong = asOtherUser([this]() -> std::string {
    int refused = 0;
    DirectoryWalk walk(
        (root_ / "listed").string(), {}, 1, nullptr,
        [&](const DirectoryWalk::Candidate&, int code) { refused += code == EACCES; },
        {.keep = [](const DirectoryWalk::Entry&) { return false; }});
    const DirectoryWalk::Item* const item = walk.next();
    if (item == nullptr || item->hasAttributes) return "it is not reported";
    return refused == 1 ? "" : "the refusal is not reported";
  });
  fs::permissions(root_ / "listed", fs::perms(0755));
  EXPECT_EQ(wrong, "");
}

// The system returns names in portions of 64 KiB: about 800 of these.
TEST_F(DirectoryWalkTest, only_items_of_a_later_portion_of_a_large_directory_may_come_twice) {
  const std::string longName(50, 'n');
  for (int i = 0; i < 2000; ++i) file("large/" + longName + std::to_string(i));
  for (int i = 0; i < 100; ++i) file("small/" + longName + std::to_string(i));
  for (const int threads : {1, 2, 4}) {
    DirectoryWalk walk(root_.string(), {}, threads);
    std::map<std::string, std::vector<bool>> mayComeTwice;
    std::string folder;
    while (const DirectoryWalk::Item* item = walk.next()) {
      if (item->depth == 1) folder = item->name;
      mayComeTwice[item->depth == 1 ? "" : folder].push_back(item->mayComeTwice);
    }
    EXPECT_EQ(mayComeTwice[""], std::vector(2, false));
    EXPECT_EQ(mayComeTwice["small"], std::vector(100, false));
    const std::vector<bool>& large = mayComeTwice["large"];
    ASSERT_EQ(large.size(), 2000U);
    EXPECT_TRUE(std::is_sorted(large.begin(), large.end()));
    EXPECT_FALSE(large[300]);
    EXPECT_TRUE(large[1500]);
  }
}

TEST_F(DirectoryWalkTest, a_directory_that_is_refused_is_reported_without_its_contents) {
  file("keep/file");
  file("skip/file");
  const std::vector<std::string> paths = walk([this](const DirectoryWalk::Candidate& candidate) {
    EXPECT_EQ(candidate.path(), (root_ / candidate.name).string());
    return DirectoryWalk::Descent{.enter = candidate.name != "skip"};
  });
  EXPECT_EQ(paths.size(), 3U);
  EXPECT_NE(std::find(paths.begin(), paths.end(), "/skip"), paths.end());
  EXPECT_NE(std::find(paths.begin(), paths.end(), "/keep/file"), paths.end());
}

TEST_F(DirectoryWalkTest, the_mark_of_a_directory_is_passed_to_its_items) {
  file("marked/file");
  file("plain/file");
  const DirectoryWalk::Decide decide = [](const DirectoryWalk::Candidate& candidate) {
    return DirectoryWalk::Descent{
        .mark = static_cast<std::uint8_t>(candidate.name == "marked" ? 7 : 0)};
  };
  DirectoryWalk walk(root_.string(), decide);
  std::set<std::pair<std::string, int>> marks;
  while (const DirectoryWalk::Item* item = walk.next()) marks.emplace(item->name, item->mark);
  EXPECT_EQ(marks, (std::set<std::pair<std::string, int>>{
                       {"file", 0}, {"file", 7}, {"marked", 0}, {"plain", 0}}));
}

TEST_F(DirectoryWalkTest, a_walk_may_be_ended_after_any_item) {
  for (int i = 0; i < 300; ++i) file("a" + std::to_string(i) + "/b/c/file");
  for (int taken = 0; taken < 1300; taken += 37) {
    DirectoryWalk walk(root_.string(), {}, 3);
    int got = 0;
    while (got < taken && walk.next() != nullptr) ++got;
    EXPECT_EQ(got, std::min(taken, 1200));
  }
}

TEST_F(DirectoryWalkTest, a_stopped_walk_returns_no_more_items_and_reads_no_more_folders) {
  for (int i = 0; i < 200; ++i) file("a" + std::to_string(i) + "/b/c/file");
  for (const int threads : {1, 3}) {
    std::atomic<int> asked = 0;
    DirectoryWalk walk(
        root_.string(),
        [&](const DirectoryWalk::Candidate&) {
          ++asked;
          return DirectoryWalk::Descent{};
        },
        threads);
    ASSERT_NE(walk.next(), nullptr);
    walk.stop();
    const int askedAtOnce = asked;
    EXPECT_EQ(walk.next(), nullptr);
    EXPECT_EQ(walk.next(), nullptr);
    // Each helper thread may already be reading a folder.
    EXPECT_LE(asked, askedAtOnce + threads - 1);
  }
}

TEST_F(DirectoryWalkTest, a_walk_of_a_path_that_is_no_directory_is_not_open) {
  file("file");
  EXPECT_FALSE(DirectoryWalk((root_ / "file").string(), {}).isOpen());
  DirectoryWalk missing((root_ / "missing").string(), {});
  EXPECT_FALSE(missing.isOpen());
  EXPECT_EQ(missing.next(), nullptr);
  EXPECT_EQ(DirectoryWalk::countEntries((root_ / "missing").string()), 0U);
}

TEST_F(DirectoryWalkTest, links_and_hidden_entries_are_counted) {
  file("one");
  file(".two");
  fs::create_symlink("nowhere", root_ / "three");
  folder("four");
  EXPECT_EQ(DirectoryWalk::countEntries(root_.string()), 4U);
}

TEST_F(DirectoryWalkTest, a_root_with_a_path_beyond_the_longest_is_opened) {
  const std::string component(200, 'n');
  std::string path = root_.string();
  ASSERT_EQ(chdir(path.c_str()), 0);
  for (int i = 0; i < 30; ++i) {
    ASSERT_EQ(mkdir(component.c_str(), 0700), 0);
    ASSERT_EQ(chdir(component.c_str()), 0);
    path += "/" + component;
  }
  std::ofstream("bottom") << "x";
  ASSERT_EQ(chdir("/"), 0);
  ASSERT_GT(path.size(), static_cast<std::size_t>(PATH_MAX));

  DirectoryWalk walk(path, {});
  ASSERT_TRUE(walk.isOpen());
  const DirectoryWalk::Item* const item = walk.next();
  ASSERT_NE(item, nullptr);
  EXPECT_EQ(item->name, "bottom");
  EXPECT_LT(walk::openDirectory(path + "/missing"), 0);
}

TEST_F(DirectoryWalkTest, resolving_a_path_follows_links_and_keeps_what_does_not_exist) {
  folder("real/inside");
  fs::create_directory_symlink("real", root_ / "alias");
  EXPECT_EQ(resolvedPath((root_ / "alias/inside/../inside//").string()),
            (root_ / "real/inside").string());
  EXPECT_EQ(resolvedPath((root_ / "alias/missing/x").string()),
            (root_ / "real/missing/x").string());
  EXPECT_EQ(resolvedPath("/"), "/");
}

}  // namespace
}  // namespace tessaly
