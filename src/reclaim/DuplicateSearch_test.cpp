// The search for duplicates with several threads: what it finds, while files change and volumes
// hang.

#include <atomic>
#include <condition_variable>
#include <fcntl.h>
#include <filesystem>
#include <gmock/gmock.h>
#include <gtest/gtest.h>
#include <memory>
#include <mutex>
#include <set>
#include <sys/stat.h>
#include <thread>
#include <unistd.h>

#include "reclaim/DuplicateEngine.h"
#include "support/DeadVolume.h"
#include "support/Descriptor.h"
#include "support/Eventually.h"
#include "support/ForkedChild.h"
#include "support/Needs.h"
#include "support/RefusedThreads.h"
#include "support/TempTree.h"

namespace tessaly {
namespace {

using DuplicateEngine::Search;
using testing::ElementsAre;
using testing::IsEmpty;
using testing::SizeIs;

constexpr std::int64_t size = 65536;

DiskNode treeOf(const std::vector<std::string>& paths, std::int64_t bytes = size) {
  std::vector<DiskNode> children;
  for (const std::string& path : paths)
    children.push_back(
        DiskNode({.name = path.substr(path.rfind('/') + 1), .path = path, .size = bytes}));
  return DiskNode({.name = "d", .path = "/d", .size = 1, .isDir = true, .kind = FileKind::folder},
                  children);
}

std::vector<std::vector<std::string>> pathsOf(const std::vector<DuplicateGroup>& groups) {
  std::vector<std::vector<std::string>> paths;
  for (const DuplicateGroup& group : groups) {
    paths.emplace_back();
    for (const PathSize& file : group.files) paths.back().push_back(file.path);
  }
  return paths;
}

// Files on disk, of equal size on it.
class DuplicateSearch : public testing::Test {
 protected:
  std::string plant(const std::string& name, char content) const {
    std::string path = disk_.at(name);
    const std::string bytes(size, content);
    const Descriptor file(::open(path.c_str(), O_WRONLY | O_CREAT | O_TRUNC | O_CLOEXEC, 0644));
    EXPECT_EQ(::write(file.get(), bytes.data(), bytes.size()), size);
    return path;
  }

  TempTree disk_;
};

// Readings that wait until they are let go, also beyond the end of the search.
class Gate {
 public:
  // Lets all go, and waits until they have come through.
  void open() {
    std::unique_lock lock(mutex_);
    isOpen_ = true;
    changed_.notify_all();
    changed_.wait(lock, [this] { return inside_ == 0; });
  }
  // Calls `then` when it is let go.
  void pass(const std::function<void()>& then) {
    std::unique_lock lock(mutex_);
    ++inside_;
    changed_.wait(lock, [this] { return isOpen_; });
    then();
    --inside_;
    changed_.notify_all();
  }

 private:
  std::mutex mutex_;
  std::condition_variable changed_;
  bool isOpen_ = false;
  int inside_ = 0;
};

TEST_F(DuplicateSearch, it_finds_the_same_as_one_file_after_the_other) {
  std::vector<std::string> paths;
  for (int k = 0; k < 60; ++k)
    paths.push_back(plant(std::to_string(k), static_cast<char>('a' + (k * 7) % 13)));
  paths.push_back(disk_.at("missing"));
  const DiskNode tree = treeOf(paths);
  const std::vector<DuplicateGroup> expected = DuplicateEngine::groups(tree, 1);
  ASSERT_THAT(expected, SizeIs(13));
  for (const std::size_t atOnce : {1, 2, 3, 8, 100})
    EXPECT_EQ(DuplicateEngine::find(tree, 1, {.atOnce = atOnce}), expected) << atOnce;
}

// As on a disk where one copy is in more pieces than the other, or has holes.
TEST_F(DuplicateSearch, copies_are_found_though_one_takes_more_space_than_the_other) {
  const std::string whole = plant("whole", '\0');
  const std::string hollow = disk_.at("hollow");
  const std::string longer = plant("longer", '\0');
  std::filesystem::resize_file(longer, size + 1);
  { const Descriptor file(::open(hollow.c_str(), O_WRONLY | O_CREAT | O_CLOEXEC, 0644)); }
  std::filesystem::resize_file(hollow, size);
  const auto onDisk = [](const std::string& path) {
    struct stat status {};
    EXPECT_EQ(::stat(path.c_str(), &status), 0);
    return static_cast<std::int64_t>(status.st_blocks) * 512;
  };
  ASSERT_NE(onDisk(whole), onDisk(hollow));
  std::vector<DiskNode> children;
  for (const std::string& path : {whole, longer, hollow})
    children.push_back(DiskNode({.name = "f", .path = path, .size = onDisk(path)}));
  const DiskNode tree(
      {.name = "d", .path = "/d", .size = 1, .isDir = true, .kind = FileKind::folder}, children);
  const std::vector<DuplicateGroup> found = DuplicateEngine::find(tree, 0, {});
  EXPECT_THAT(pathsOf(found), ElementsAre(ElementsAre(whole, hollow)));
  ASSERT_THAT(found, SizeIs(1));
  EXPECT_EQ(found.front().bytes, onDisk(whole));
}

TEST_F(DuplicateSearch, files_are_read_at_once) {
  const auto both = std::make_shared<std::atomic<int>>(0);
  const auto read = [both](const std::string&, const FileDigest::Reading&) {
    ++*both;
    while (*both < 2) std::this_thread::yield();
    return Result<FileDigest>(FileDigest{.sha256 = "same", .identity = {}});
  };
  EXPECT_THAT(DuplicateEngine::find(treeOf({"/d/a", "/d/b"}), 1, {.read = read}), SizeIs(1));
}

TEST_F(DuplicateSearch, a_file_with_other_blocks_than_in_the_tree_drops_out) {
  const std::vector<std::string> paths = {plant("a", 'x'), plant("b", 'x'), plant("c", 'x')};
  // The same content on more space.
  const Descriptor larger(::open(paths[1].c_str(), O_WRONLY | O_CLOEXEC));
  ASSERT_EQ(::fallocate(larger.get(), FALLOC_FL_KEEP_SIZE, size, size), 0);
  ASSERT_GT(disk_.allocated("b"), size);
  ASSERT_EQ(DuplicateEngine::hashFile(paths[1]), DuplicateEngine::hashFile(paths[0]));
  EXPECT_THAT(pathsOf(DuplicateEngine::find(treeOf(paths), 1, {})),
              ElementsAre(ElementsAre(paths[0], paths[2])));
  ASSERT_EQ(::truncate(paths[0].c_str(), 0), 0);
  EXPECT_THAT(DuplicateEngine::find(treeOf(paths), 1, {}), IsEmpty());
}

TEST_F(DuplicateSearch, files_that_became_something_else_since_the_scan_drop_out) {
  std::vector<std::string> paths;
  for (const char* name : {"a", "b", "pipe", "folder", "link", "gone", "locked"})
    paths.push_back(plant(name, 'x'));
  for (const int k : {2, 3, 4, 5}) ASSERT_EQ(::unlink(paths[k].c_str()), 0);
  ASSERT_EQ(::mkfifo(paths[2].c_str(), 0600), 0);
  ASSERT_EQ(::mkdir(paths[3].c_str(), 0700), 0);
  ASSERT_EQ(::symlink(paths[0].c_str(), paths[4].c_str()), 0);
  ASSERT_EQ(::chmod(paths[6].c_str(), 0), 0);
  EXPECT_EQ(asOtherUser([&]() -> std::string {
              const auto found = pathsOf(DuplicateEngine::find(treeOf(paths), 1, {}));
              const std::vector<std::vector<std::string>> expected = {{paths[0], paths[1]}};
              return found == expected ? "" : "found others";
            }),
            "");
}

// Another program rewrites the files over and over while they are compared. Whatever is found is
// true of some moment: a file is never in a group by a mixture of two contents.
TEST_F(DuplicateSearch, nothing_is_paired_wrongly_while_files_change) {
  const std::vector<std::string> paths = {plant("a", 'a'), plant("b", 'b'), plant("c", 'a')};
  const auto digestOfAll = [&](char content) {
    return *DuplicateEngine::hashFile(plant("sample", content));
  };
  const std::set<std::string> possible = {digestOfAll('a'), digestOfAll('b')};
  std::atomic<bool> isDone = false;
  std::thread other([&] {
    const std::string contents = "ab";
    for (int k = 0; !isDone; ++k) {
      const Descriptor file(::open(paths[1].c_str(), O_WRONLY | O_CLOEXEC));
      const std::string bytes(size, contents[static_cast<std::size_t>(k) % 2]);
      for (std::int64_t at = 0; at < size; at += 4096)
        EXPECT_EQ(::pwrite(file.get(), bytes.data() + at, 4096, at), 4096);
    }
  });
  for (int k = 0; k < 200; ++k) {
    for (const DuplicateGroup& group : DuplicateEngine::find(treeOf(paths), 1, {}))
      EXPECT_TRUE(possible.contains(group.digest)) << group.digest;
  }
  isDone = true;
  other.join();
}

TEST_F(DuplicateSearch, the_identities_of_the_listed_files_are_told) {
  const std::vector<std::string> paths = {plant("a", 'x'), plant("b", 'y'), plant("c", 'x')};
  std::vector<std::pair<std::string, FileIdentity>> told;
  const auto compared = [&](const std::string& path, const FileIdentity& identity) {
    told.emplace_back(path, identity);
  };
  EXPECT_THAT(DuplicateEngine::find(treeOf(paths), 1, {.compared = compared}), SizeIs(1));
  ASSERT_THAT(told, SizeIs(2));
  for (const auto& [path, identity] : told) {
    EXPECT_TRUE(FileIdentity::of(path).value().isUntouchedSince(identity)) << path;
    EXPECT_NE(identity.changed, 0U);
  }
  EXPECT_EQ(told[0].first, paths[0]);
  EXPECT_EQ(told[1].first, paths[2]);
}

TEST_F(DuplicateSearch, progress_runs_from_nothing_to_everything) {
  const std::vector<std::string> paths = {plant("a", 'x'), plant("b", 'y'), disk_.at("missing")};
  std::vector<DuplicateProgress> reports;
  const auto progress = [&](const DuplicateProgress& report) { reports.push_back(report); };
  DuplicateEngine::find(treeOf(paths), 1, {.progress = progress});
  ASSERT_FALSE(reports.empty());
  EXPECT_EQ(reports.front(), (DuplicateProgress{.fileCount = 3, .byteCount = 3 * size}));
  EXPECT_EQ(
      reports.back(),
      (DuplicateProgress{.files = 3, .fileCount = 3, .bytes = 3 * size, .byteCount = 3 * size}));
}

TEST_F(DuplicateSearch, progress_counts_the_part_of_a_file_by_its_size_on_disk) {
  RefusedThreads none;
  const auto read = [](const std::string&, const FileDigest::Reading& reading) {
    EXPECT_EQ(reading.allocated, size);
    EXPECT_TRUE(reading.goOn(0, 10 * size));
    EXPECT_TRUE(reading.goOn(5 * size, 10 * size));
    EXPECT_TRUE(reading.goOn(4 * size, 10 * size));
    EXPECT_TRUE(reading.goOn(20 * size, 10 * size));
    EXPECT_TRUE(reading.goOn(20 * size, 0));
    return Result<FileDigest>(SystemError{});
  };
  std::vector<std::int64_t> bytes;
  DuplicateEngine::find(
      treeOf({"/d/a", "/d/b"}), 1,
      {.progress = [&](const DuplicateProgress& told) { bytes.push_back(told.bytes); },
       .read = read,
       .start = none.startThread()});
  // The end of a file is a report of its own.
  EXPECT_THAT(bytes, ElementsAre(0, size / 2, size, size, size + size / 2, 2 * size, 2 * size));
}

TEST_F(DuplicateSearch, nothing_is_reported_without_a_file_to_read) {
  const auto progress = [](const DuplicateProgress&) { ADD_FAILURE(); };
  EXPECT_THAT(DuplicateEngine::find(treeOf({"/d/a"}), 1, {.progress = progress}), IsEmpty());
}

TEST_F(DuplicateSearch, a_system_that_refuses_threads_gets_the_files_read_all_the_same) {
  const std::vector<std::string> paths = {plant("a", 'x'), plant("b", 'y'), plant("c", 'x')};
  for (const int granted : {0, 1}) {
    RefusedThreads few;
    few.refuseAfter(granted);
    EXPECT_THAT(pathsOf(DuplicateEngine::find(treeOf(paths), 1, {.start = few.startThread()})),
                ElementsAre(ElementsAre(paths[0], paths[2])));
    // One for the looks at the lengths, and one for the readings.
    EXPECT_EQ(few.refused(), 2);
  }
}

TEST_F(DuplicateSearch, a_cancelled_search_reads_no_further_part) {
  const auto parts = std::make_shared<std::atomic<int>>(0);
  const auto inside = std::make_shared<std::atomic<int>>(0);
  const auto isCancelled = std::make_shared<std::atomic<bool>>(false);
  const auto read = [=](const std::string&, const FileDigest::Reading& reading) {
    ++*inside;
    while (reading.goOn(0, size)) {
      if (++*parts == 1000) *isCancelled = true;
    }
    --*inside;
    return Result<FileDigest>(SystemError{});
  };
  EXPECT_THAT(
      DuplicateEngine::find(treeOf({"/d/a", "/d/b", "/d/c"}), 1,
                            {.isCancelled = [=] { return isCancelled->load(); }, .read = read}),
      IsEmpty());
  EXPECT_GE(*parts, 1000);
  EXPECT_TRUE(eventually([&] { return *inside == 0; }, "the readings of endless files end"));
}

TEST_F(DuplicateSearch, a_search_without_threads_can_be_cancelled) {
  RefusedThreads none;
  int looks = 0;
  const auto read = [](const std::string&, const FileDigest::Reading& reading) {
    while (reading.goOn(0, size)) {
    }
    return Result<FileDigest>(SystemError{});
  };
  EXPECT_THAT(
      DuplicateEngine::find(
          treeOf({"/d/a", "/d/b", "/d/c"}), 1,
          {.isCancelled = [&] { return ++looks > 5; }, .read = read, .start = none.startThread()}),
      IsEmpty());
  EXPECT_GT(looks, 5);
}

TEST_F(DuplicateSearch, a_cancelled_search_does_not_wait_for_a_file_that_hangs) {
  const auto gate = std::make_shared<Gate>();
  const auto read = [gate](const std::string&, const FileDigest::Reading&) {
    gate->pass([] {});
    return Result<FileDigest>(SystemError{});
  };
  int looks = 0;
  EXPECT_THAT(DuplicateEngine::find(treeOf({"/d/a", "/d/b"}), 1,
                                    {.isCancelled = [&] { return ++looks > 2; }, .read = read}),
              IsEmpty());
  gate->open();
}

// Reads files below /net/dead never, and gives all others the same digest.
Search searchBesideDeadVolume(const std::shared_ptr<Gate>& gate) {
  return {.mountPoints =
              [] {
                return std::vector<std::string>{"/", "/net", "/net/dead"};
              },
          .patience = std::chrono::milliseconds(50),
          .read =
              [gate](const std::string& path, const FileDigest::Reading& reading) {
                if (path.starts_with("/net/dead/")) {
                  gate->pass([&] { EXPECT_FALSE(reading.goOn(0, size)); });
                }
                return Result<FileDigest>(FileDigest{.sha256 = "same", .identity = {}});
              }};
}

TEST_F(DuplicateSearch, files_on_a_volume_that_hangs_drop_out_and_the_others_are_compared) {
  const auto gate = std::make_shared<Gate>();
  std::vector<std::string> paths;
  for (int k = 0; k < 100; ++k) paths.push_back("/net/dead/" + std::to_string(k));
  for (const char* path : {"/d/a", "/net/deadly/b", "/net/c"}) paths.emplace_back(path);
  std::atomic<int> started = 0;
  Search search = searchBesideDeadVolume(gate);
  DuplicateProgress last;
  search.progress = [&](const DuplicateProgress& progress) { last = progress; };
  search.start = [&started](const std::function<void()>& body) {
    ++started;
    return startThread(body);
  };
  EXPECT_THAT(pathsOf(DuplicateEngine::find(treeOf(paths), 1, search)),
              ElementsAre(ElementsAre("/d/a", "/net/deadly/b", "/net/c")));
  EXPECT_EQ(last.files, 103U);
  EXPECT_EQ(last.bytes, 103 * size);
  // Two look at the lengths, two hang, and two have taken their places.
  EXPECT_LE(started, 6);
  gate->open();
}

TEST_F(DuplicateSearch, a_volume_that_hangs_costs_one_file_at_a_time_if_its_mount_is_unknown) {
  const auto gate = std::make_shared<Gate>();
  Search search = searchBesideDeadVolume(gate);
  search.mountPoints = {};
  EXPECT_THAT(
      pathsOf(DuplicateEngine::find(
          treeOf({"/net/dead/1", "/net/dead/2", "/net/dead/3", "/d/a", "/d/b"}), 1, search)),
      ElementsAre(ElementsAre("/d/a", "/d/b")));
  gate->open();
}

TEST_F(DuplicateSearch, a_slow_file_that_advances_is_read_to_its_end) {
  const auto read = [](const std::string&, const FileDigest::Reading& reading) {
    // Longer than the patience of the search.
    for (int part = 0; part < 20; ++part) {
      EXPECT_TRUE(reading.goOn(part, 20));
      std::this_thread::sleep_for(std::chrono::milliseconds(20));
    }
    return Result<FileDigest>(FileDigest{.sha256 = "same", .identity = {}});
  };
  EXPECT_THAT(DuplicateEngine::find(treeOf({"/d/a", "/d/b"}), 1,
                                    {.patience = std::chrono::milliseconds(300), .read = read}),
              SizeIs(1));
}

TEST_F(DuplicateSearch, a_mounted_volume_that_never_answers_does_not_hold_it_up) {
  const std::vector<std::string> paths = {plant("a", 'x'), "/media/dead/1", plant("b", 'x'),
                                          "/media/dead/2"};
  const DeadVolume volume;
  const std::string told = inForkedChild([&]() -> std::string {
    if (!volume.mountInChild()) return "refused";
    const Search patient = {.mountPoints =
                                [] {
                                  return std::vector<std::string>{"/", "/media/dead"};
                                },
                            .patience = std::chrono::milliseconds(100)};
    const auto found = pathsOf(DuplicateEngine::find(treeOf(paths), 1, patient));
    const std::vector<std::vector<std::string>> expected = {{paths[0], paths[2]}};
    if (found != expected) return "found others";
    int looks = 0;
    DuplicateEngine::find(treeOf({paths[1], paths[3]}), 1,
                          {.isCancelled = [&] { return ++looks > 3; }});
    return looks > 3 ? "" : "not asked";
  });
  if (told == "refused") GTEST_SKIP() << needs(Need::fuse, "no volume can be mounted");
  EXPECT_EQ(told, "");
}

}  // namespace
}  // namespace tessaly
