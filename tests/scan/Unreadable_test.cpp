// Which unreadable items a scan reports. Some machines run the tests as root, to whom nothing is
// refused, so most scans run in a child as another user.
#include <cerrno>
#include <filesystem>
#include <set>
#include <sys/stat.h>
#include <thread>

#include "scan/ScanFacts.h"
#include "support/TreeDifference.h"

namespace tessaly {
namespace {

namespace fs = std::filesystem;

// One line for each reported item: its errno and its path below the root.
class Told {
 public:
  explicit Told(std::string root) : root_(std::move(root)) {}

  void add(const SystemError& failure) {
    if (std::this_thread::get_id() != thread_) lines_.insert("on another thread");
    const std::string line =
        strerrorname_np(failure.code) + (" " + failure.path.substr(root_.size()));
    if (!lines_.insert(line).second) lines_.insert(line + " twice");
  }

  std::string text() const {
    std::string all;
    for (const std::string& line : lines_) all += line + "\n";
    return all;
  }

 private:
  std::string root_;
  std::thread::id thread_ = std::this_thread::get_id();
  std::set<std::string> lines_;
};

class Unreadable : public testing::TestWithParam<int> {
 protected:
  // The reports of a scan of `root`.
  static std::string told(const std::string& root, DiskScanner::Options options = {},
                          DiskScanner::Callbacks callbacks = {}) {
    Told told(root);
    callbacks.unreadable = [&](const SystemError& failure) { told.add(failure); };
    options.threads = GetParam();
    DiskScanner::scan(root, callbacks, options, Places::forLinux());
    return told.text();
  }

  static std::string toldAsOther(const std::string& root,
                                 const DiskScanner::Options& options = {}) {
    return asOtherUser([&] { return told(root, options); });
  }
};
INSTANTIATE_TEST_SUITE_P(by, Unreadable, testing::Values(1, 4), [](const auto& instance) {
  return std::to_string(instance.param) + "_threads";
});

TEST_P(Unreadable, nothing_is_reported_if_everything_can_be_read) {
  const TempTree tree(R"(
    folder/
      film 1M
      pipe fifo
      dead -> nowhere
    empty/
    secret 1M mode=0
  )");
  EXPECT_EQ(toldAsOther(tree.path()), "");
}

TEST_P(Unreadable, a_folder_that_cannot_be_opened_is_reported) {
  const TempTree tree(R"(
    a/
      locked/ mode=0
        film 1M
    unlisted/ mode=0311
      film 1M
    open/
      film 1M
  )");
  EXPECT_EQ(toldAsOther(tree.path()), "EACCES /a/locked\nEACCES /unlisted\n");
}

TEST_P(Unreadable, each_name_without_attributes_is_reported_and_links_are_not) {
  const TempTree tree(R"(
    listed/ mode=0444
      film 1M
      folder/
        film 1M
      link -> film
    film 1M
  )");
  EXPECT_EQ(toldAsOther(tree.path()), "EACCES /listed/film\nEACCES /listed/folder\n");
}

TEST_P(Unreadable, items_in_a_package_are_reported) {
  const TempTree tree(R"(
    Tool.app/
      .Trash/ mode=0
        film 1M
      binary 1M
    Locked.app/ mode=0
  )");
  EXPECT_EQ(toldAsOther(tree.path()), "EACCES /Locked.app\nEACCES /Tool.app/.Trash\n");
}

TEST_P(Unreadable, items_that_the_scan_leaves_out_are_not_reported) {
  const TempTree tree(R"(
    .Trash/ mode=0
    excluded/ mode=0
    build/ mode=0
    listed/ mode=0444
      old.log 4K
      build 4K
      excluded 4K
      film 4K
  )");
  DiskScanner::Options options;
  options.extraNames = {"build"};
  options.extraSuffixes = {".log"};
  options.extraPrefixes = {tree.at("excluded"), tree.at("listed/excluded")};
  EXPECT_EQ(toldAsOther(tree.path(), options), "EACCES /listed/film\n");
}

TEST_P(Unreadable, an_unreadable_root_is_reported) {
  const TempTree tree("locked/ mode=0\n");
  EXPECT_EQ(toldAsOther(tree.at("locked")), "EACCES \n");
  EXPECT_EQ(told(tree.at("missing")), "ENOENT \n");
}

TEST_P(Unreadable, items_that_vanish_meanwhile_are_not_reported) {
  const TempTree tree(R"(
    folder-##/ x20
      inner-#/ x5
        film-# 4K x2
  )");
  ScanRecord record;
  record.during(1, [&] {
    for (const auto& entry : fs::directory_iterator(tree.path())) removeTree(entry.path().native());
  });
  EXPECT_EQ(told(tree.path(), {}, record.callbacks()), "");
}

TEST_P(Unreadable, a_folder_that_becomes_something_else_meanwhile_is_not_reported) {
  const TempTree tree(R"(
    folder/
      inner-##/ x60
        film 4K
  )");
  ScanRecord record;
  record.during(2, [&] {
    int number = 0;
    std::vector<std::string> paths;
    for (const auto& entry : fs::directory_iterator(tree.at("folder"))) {
      paths.push_back(entry.path().native());
    }
    for (const std::string& path : paths) {
      removeTree(path);
      if (++number % 2 == 0) {
        ASSERT_EQ(mknod(path.c_str(), S_IFREG | 0600, 0), 0);
      } else {
        fs::create_directory_symlink(tree.path(), path);
      }
    }
  });
  EXPECT_EQ(told(tree.path(), {}, record.callbacks()), "");
}

}  // namespace
}  // namespace tessaly
