// What is in the system's page cache before and after a file is read into a digest.

#include "platform/linux/CacheFootprint.h"

#include <algorithm>
#include <cerrno>
#include <cstdint>
#include <fcntl.h>
#include <gtest/gtest.h>
#include <string>
#include <sys/mman.h>
#include <sys/stat.h>
#include <sys/syscall.h>
#include <sys/uio.h>
#include <unistd.h>
#include <utility>
#include <vector>

#include "platform/FileDigest.h"
#include "support/Descriptor.h"
#include "support/ForkedChild.h"
#include "support/Needs.h"
#include "support/SystemCallTrace.h"
#include "support/TempTree.h"

namespace tessaly {
namespace {

constexpr std::int64_t MiB = 1048576;
constexpr long cachestatCall = 451;

// A file of eleven MiB and a bit in /var/tmp, all of it on the disk: what is in the cache can be
// dropped.
class CacheFootprintTest : public testing::Test {
 protected:
  void SetUp() override {
    ASSERT_NE(::mkdtemp(folder_.data()), nullptr);
    path_ = folder_ + "/file";
    file_ = Descriptor(::open(path_.c_str(), O_RDWR | O_CREAT | O_CLOEXEC, 0644));
    const std::string bytes(length, 'x');
    ASSERT_EQ(::write(file_.get(), bytes.data(), bytes.size()), length);
    ASSERT_EQ(::fsync(file_.get()), 0);
    drop();
    if (countOfCached() != 0)
      GTEST_SKIP() << needs(Need::pageCache, "what /var/tmp has stays in the cache");
  }

  void TearDown() override { removeTree(folder_); }

  void drop() { ::posix_fadvise(file_.get(), 0, 0, POSIX_FADV_DONTNEED); }

  // Whether each page of the file is in the cache.
  std::vector<bool> cached() const {
    void* const map = ::mmap(nullptr, length, PROT_READ, MAP_SHARED, file_.get(), 0);
    std::vector<unsigned char> pages((length + pageSize - 1) / pageSize);
    EXPECT_EQ(::mincore(map, length, pages.data()), 0);
    ::munmap(map, length);
    std::vector<bool> are;
    for (const unsigned char page : pages) are.push_back((page & 1U) != 0);
    return are;
  }
  std::size_t countOfCached() const {
    const std::vector<bool> are = cached();
    return static_cast<std::size_t>(std::count(are.begin(), are.end(), true));
  }

  // Brings exactly these pages into the cache, as another program would.
  void bring(const std::vector<std::pair<std::int64_t, std::int64_t>>& pages) {
    ::posix_fadvise(file_.get(), 0, 0, POSIX_FADV_RANDOM);
    for (const auto& [first, count] : pages) {
      for (std::int64_t page = first; page < first + count; ++page) {
        char byte = 0;
        ASSERT_EQ(::pread(file_.get(), &byte, 1, page * pageSize), 1);
      }
    }
  }

  static constexpr std::int64_t length = 11 * MiB + 4096 + 100;
  const std::int64_t pageSize = ::sysconf(_SC_PAGESIZE);
  std::string folder_ = "/var/tmp/tessaly-XXXXXX";
  std::string path_;
  Descriptor file_{-1};
};

TEST_F(CacheFootprintTest, what_reading_has_brought_into_the_cache_is_dropped) {
  ASSERT_TRUE(FileDigest::of(path_).ok());
  EXPECT_EQ(countOfCached(), 0U);
}

TEST_F(CacheFootprintTest, what_was_in_the_cache_stays) {
  std::string bytes(length, '\0');
  ASSERT_EQ(::pread(file_.get(), bytes.data(), bytes.size(), 0), length);
  const std::vector<bool> before = cached();
  ASSERT_GT(countOfCached(), before.size() / 2);
  ASSERT_TRUE(FileDigest::of(path_).ok());
  EXPECT_EQ(cached(), before);
}

// Single pages, the ends of parts and blocks, and the last page, which is not a whole one.
const std::vector<std::pair<std::int64_t, std::int64_t>> somePages = {
    {0, 1}, {3, 5}, {255, 2}, {700, 80}, {1023, 1}, {2030, 18}, {2817, 1}};

TEST_F(CacheFootprintTest, exactly_the_pages_that_were_there_before_are_there_afterwards) {
  bring(somePages);
  const std::vector<bool> before = cached();
  ASSERT_GT(countOfCached(), 100U);
  ASSERT_LT(countOfCached(), 300U);
  ASSERT_TRUE(FileDigest::of(path_).ok());
  EXPECT_EQ(cached(), before);
}

TEST_F(CacheFootprintTest, a_system_that_does_not_count_pages_is_asked_for_each) {
  if (const std::string obstacle = SystemCallTrace::obstacle(); !obstacle.empty())
    GTEST_SKIP() << needs(Need::tracing, obstacle);
  const auto read = [this] { return std::string(FileDigest::of(path_).ok() ? "read" : "failed"); };
  for (const int code : {ENOSYS, EPERM}) {
    drop();
    EXPECT_EQ(SystemCallTrace::refusing({{cachestatCall, code}}, read).told, "read");
    EXPECT_EQ(countOfCached(), 0U);
    bring(somePages);
    const std::vector<bool> before = cached();
    EXPECT_EQ(SystemCallTrace::refusing({{cachestatCall, code}}, read).told, "read");
    EXPECT_EQ(cached(), before);
  }
}

TEST_F(CacheFootprintTest, the_system_leaves_what_it_has_of_a_file_that_others_own_and_no_more) {
  if (::geteuid() != 0) GTEST_SKIP() << needs(Need::root, "only root reads as another user");
  char byte = 0;
  const iovec part{.iov_base = &byte, .iov_len = 1};
  if (::preadv2(file_.get(), &part, 1, 0, 0x80) < 0)
    GTEST_SKIP() << needs(Need::dropBehind, "the system cannot drop what it reads");
  drop();
  ASSERT_EQ(::chmod(folder_.c_str(), 0755), 0);
  const auto read = [this] { return std::string(FileDigest::of(path_).ok() ? "read" : "failed"); };
  EXPECT_EQ(asOtherUser(read), "read");
  EXPECT_EQ(countOfCached(), 0U);
  bring(somePages);
  const std::vector<bool> before = cached();
  EXPECT_EQ(asOtherUser(read), "read");
  EXPECT_EQ(cached(), before);
}

TEST_F(CacheFootprintTest, a_file_that_others_own_is_read_also_if_the_system_cannot_drop_it) {
  if (::geteuid() != 0) GTEST_SKIP() << needs(Need::root, "only root reads as another user");
  if (const std::string obstacle = SystemCallTrace::obstacle(); !obstacle.empty())
    GTEST_SKIP() << needs(Need::tracing, obstacle);
  ASSERT_EQ(::chmod(folder_.c_str(), 0755), 0);
  const std::string expected = FileDigest::of(path_).value().sha256;
  const auto read = [this]() -> std::string {
    if (::setresuid(65534, 65534, 65534) != 0) return "still root";
    const Result<FileDigest> digest = FileDigest::of(path_);
    return digest ? digest.value().sha256 : "failed";
  };
  EXPECT_EQ(SystemCallTrace::refusing({{SYS_preadv2, EOPNOTSUPP}}, read).told, expected);
}

TEST_F(CacheFootprintTest, holes_do_not_get_into_the_cache) {
  ASSERT_EQ(::fallocate(file_.get(), FALLOC_FL_PUNCH_HOLE | FALLOC_FL_KEEP_SIZE, MiB, 5 * MiB), 0);
  ASSERT_EQ(::fsync(file_.get()), 0);
  drop();
  bring({{20, 3}});
  const std::vector<bool> before = cached();
  ASSERT_TRUE(FileDigest::of(path_).ok());
  EXPECT_EQ(cached(), before);
}

TEST_F(CacheFootprintTest, a_reading_that_ends_early_leaves_what_was_there) {
  bring(somePages);
  const std::vector<bool> before = cached();
  EXPECT_FALSE(FileDigest::of(
                   path_, {.goOn = [](std::int64_t done, std::int64_t) { return done < 2 * MiB; }})
                   .ok());
  const std::vector<bool> after = cached();
  for (std::size_t page = 0; page < before.size(); ++page)
    EXPECT_TRUE(after[page] || !before[page]) << page;
}

}  // namespace
}  // namespace tessaly
