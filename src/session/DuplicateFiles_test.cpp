#include "session/DuplicateFiles.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>
#include <string>
#include <unordered_map>
#include <vector>

#include "scan/DiskScanner.h"
#include "support/TempTree.h"

namespace tessaly {
namespace {

using testing::IsEmpty;
using testing::SizeIs;

// A scanned folder with two equal files, and one of another size.
class DuplicateFilesTest : public testing::Test {
 protected:
  static PostScanAnalysis::Lists analyse(const DiskNode& scanned, std::int64_t minBytes,
                                         bool isCancelled = false) {
    return PostScanAnalysis::run({.duplicates = DuplicateFiles::engine({}, minBytes)},
                                 {.tree = scanned, .root = scanned.path(), .idleScope = ""},
                                 [=] { return isCancelled; });
  }

  TempTree disk_{"film.mkv 512K\nbackup/\n  film.mkv 512K\n  other.mkv 516K\n"};
  DiskNode scanned_ = DiskScanner::scan(disk_.path(), {}, {});
};

TEST_F(DuplicateFilesTest, files_from_50_MiB_on_are_compared) {
  EXPECT_EQ(DuplicateFiles::leastBytes, 50 * 1024 * 1024);
  EXPECT_THAT(analyse(scanned_, DuplicateFiles::leastBytes).duplicates, IsEmpty());
}

TEST_F(DuplicateFilesTest, the_copies_of_a_scan_are_found_with_their_identities) {
  const PostScanAnalysis::Lists lists = analyse(scanned_, 524288);
  ASSERT_THAT(lists.duplicates, SizeIs(1));
  EXPECT_EQ(lists.duplicates.front().bytes, 524288);
  EXPECT_THAT(lists.duplicates.front().files, SizeIs(2));
  ASSERT_THAT(lists.copies, SizeIs(2));
  for (const auto& [path, identity] : lists.copies)
    EXPECT_TRUE(FileIdentity::of(path).value().isUntouchedSince(identity)) << path;
}

TEST_F(DuplicateFilesTest, a_cancelled_search_finds_nothing) {
  EXPECT_THAT(analyse(scanned_, 524288, true).duplicates, IsEmpty());
}

TEST_F(DuplicateFilesTest, the_search_reports_how_far_it_is) {
  std::vector<DuplicateProgress> reports;
  DuplicateFiles::engine({}, 524288)(
      {.tree = scanned_,
       .root = scanned_.path(),
       .idleScope = "",
       .duplicates = {.progress = [&](const auto& progress) { reports.push_back(progress); }}},
      [] { return false; });
  ASSERT_FALSE(reports.empty());
  EXPECT_EQ(
      reports.back(),
      (DuplicateProgress{.files = 2, .fileCount = 2, .bytes = 1048576, .byteCount = 1048576}));
}

}  // namespace
}  // namespace tessaly
