// Files that are read into a digest, also while something else changes them.

#include "platform/FileDigest.h"

#include <cerrno>
#include <cstdint>
#include <cstdlib>
#include <fcntl.h>
#include <filesystem>
#include <fstream>
#include <functional>
#include <gtest/gtest.h>
#include <iterator>
#include <string>
#include <string_view>
#include <sys/inotify.h>
#include <sys/resource.h>
#include <sys/stat.h>
#include <sys/syscall.h>
#include <unistd.h>
#include <vector>

#include "platform/Sha256.h"
#include "support/Descriptor.h"
#include "support/ForkedChild.h"
#include "support/Needs.h"
#include "support/PrivateMounts.h"
#include "support/SystemCallTrace.h"
#include "support/TempTree.h"

namespace tessaly {
namespace {

using Kind = SystemError::Kind;

constexpr std::int64_t MiB = 1048576;
constexpr const char* digestOfAbc =
    "ba7816bf8f01cfea414140de5dae2223b00361a396177a9cb410ff61f20015ad";

std::string digestOf(std::string_view bytes) {
  Sha256 hash;
  hash.add(bytes);
  return *hash.finish();
}

// Bytes without a pattern that could hide a part read twice or left out.
std::string noise(std::int64_t length) {
  std::string bytes(static_cast<std::size_t>(length), '\0');
  std::uint32_t state = 1;
  for (char& byte : bytes) {
    state = state * 1664525U + 1013904223U;
    byte = static_cast<char>(state >> 24U);
  }
  return bytes;
}

void writeAt(const std::string& path, std::int64_t offset, std::string_view bytes) {
  const Descriptor file(::open(path.c_str(), O_WRONLY | O_CREAT | O_CLOEXEC, 0644));
  ASSERT_EQ(::pwrite(file.get(), bytes.data(), bytes.size(), offset),
            static_cast<ssize_t>(bytes.size()));
}

class FileDigestTest : public testing::Test {
 protected:
  std::string plant(const std::string& name, std::string_view bytes) const {
    std::string path = tree_.at(name);
    writeAt(path, 0, bytes);
    return path;
  }

  // Reads the file, and calls `act` before the part that begins at `position` is read.
  static Result<FileDigest> readWith(const std::string& path, std::int64_t position,
                                     const std::function<void()>& act) {
    bool hasActed = false;
    Result<FileDigest> read =
        FileDigest::of(path, {.goOn = [&](std::int64_t done, std::int64_t) {
                         if (done == position && !std::exchange(hasActed, true)) act();
                         return true;
                       }});
    EXPECT_TRUE(hasActed);
    return read;
  }

  static Kind failureOf(const Result<FileDigest>& read) {
    EXPECT_FALSE(read.ok());
    return read ? Kind::other : read.error().kind;
  }

  TempTree tree_;
};

// What a traced body returns: the digest or the code of the error.
std::string told(const Result<FileDigest>& read) {
  return read ? read.value().sha256 : "error " + std::to_string(read.error().code);
}

TEST_F(FileDigestTest, a_file_has_the_digest_of_its_content) {
  const Result<FileDigest> read = FileDigest::of(plant("file", "abc"));
  ASSERT_TRUE(read.ok());
  EXPECT_EQ(read.value().sha256, digestOfAbc);
  EXPECT_EQ(read.value().identity, FileIdentity::of(tree_.at("file")).value());
  EXPECT_TRUE(FileIdentity::of(tree_.at("file")).value().isUntouchedSince(read.value().identity));
}

TEST_F(FileDigestTest, a_file_of_several_parts_is_read_from_its_beginning_to_its_end) {
  for (const std::int64_t length : {std::int64_t{0}, MiB - 1, MiB, MiB + 1, 11 * MiB + 4097}) {
    const std::string bytes = noise(length);
    const Result<FileDigest> read = FileDigest::of(plant(std::to_string(length), bytes));
    ASSERT_TRUE(read.ok());
    EXPECT_EQ(read.value().sha256, digestOf(bytes)) << length;
  }
}

TEST_F(FileDigestTest, each_part_is_announced_with_the_bytes_so_far) {
  plant("file", noise(2 * MiB + 5));
  std::vector<std::int64_t> positions;
  const auto read =
      FileDigest::of(tree_.at("file"), {.goOn = [&](std::int64_t done, std::int64_t length) {
                       EXPECT_EQ(length, 2 * MiB + 5);
                       positions.push_back(done);
                       return true;
                     }});
  ASSERT_TRUE(read.ok());
  EXPECT_EQ(positions, (std::vector<std::int64_t>{0, MiB, 2 * MiB, 2 * MiB + 5}));
}

TEST_F(FileDigestTest, holes_count_as_zeros) {
  std::string bytes(9 * MiB + 77, '\0');
  const std::string data = noise(MiB + 9);
  bytes.replace(3 * MiB, data.size(), data);
  bytes.replace(6 * MiB + 5, 3, "abc");
  const std::string path = tree_.at("sparse");
  writeAt(path, 3 * MiB, data);
  writeAt(path, 6 * MiB + 5, "abc");
  ASSERT_EQ(::truncate(path.c_str(), static_cast<off_t>(bytes.size())), 0);
  ASSERT_LT(tree_.allocated("sparse"), 4 * MiB);
  EXPECT_EQ(told(FileDigest::of(path)), digestOf(bytes));
  EXPECT_EQ(told(FileDigest::of(plant("dense", bytes))), digestOf(bytes));
}

TEST_F(FileDigestTest, holes_are_not_read) {
  if (const std::string obstacle = SystemCallTrace::obstacle(); !obstacle.empty())
    GTEST_SKIP() << needs(Need::tracing, obstacle);
  tree_.plant("hole sparse=64M\n");
  const std::string path = tree_.at("hole");
  const TracedRun run = SystemCallTrace::of([&] { return told(FileDigest::of(path)); });
  EXPECT_EQ(run.told, digestOf(std::string(64 * MiB, '\0')));
  // One that finds the end.
  EXPECT_EQ(std::count(run.calls.begin(), run.calls.end(), SYS_pread64), 1);
}

TEST_F(FileDigestTest, a_file_system_that_knows_no_holes_gives_the_same_digest) {
  if (const std::string obstacle = SystemCallTrace::obstacle(); !obstacle.empty())
    GTEST_SKIP() << needs(Need::tracing, obstacle);
  const std::string path = tree_.at("sparse");
  writeAt(path, 2 * MiB, "abc");
  const std::string expected = told(FileDigest::of(path));
  const TracedRun run =
      SystemCallTrace::refusing({{SYS_lseek, EINVAL}}, [&] { return told(FileDigest::of(path)); });
  EXPECT_EQ(run.told, expected);
}

TEST_F(FileDigestTest, only_a_regular_file_is_read) {
  tree_.plant("file 4K\nfolder/\nlink -> file\nlinked -> folder\npipe fifo\nsocket socket\n");
  EXPECT_EQ(failureOf(FileDigest::of(tree_.at("link"))), Kind::linkOnTheWay);
  for (const std::string& path :
       {tree_.at("folder"), tree_.at("pipe"), tree_.at("socket"), std::string("/dev/zero")}) {
    const Result<FileDigest> read = FileDigest::of(path);
    ASSERT_FALSE(read.ok()) << path;
    EXPECT_EQ(read.error().code, EINVAL) << path;
  }
  EXPECT_EQ(failureOf(FileDigest::of(tree_.at("missing"))), Kind::notFound);
  EXPECT_FALSE(FileDigest::of("file").ok());
  EXPECT_FALSE(FileDigest::of("").ok());
  EXPECT_FALSE(FileDigest::of(tree_.at("file") + std::string(1, '\0')).ok());
}

TEST_F(FileDigestTest, the_other_end_of_a_pipe_notices_nothing) {
  tree_.plant("pipe fifo\n");
  const Descriptor events(::inotify_init1(IN_NONBLOCK | IN_CLOEXEC));
  ASSERT_GE(::inotify_add_watch(events.get(), tree_.at("pipe").c_str(), IN_OPEN), 0);
  EXPECT_FALSE(FileDigest::of(tree_.at("pipe")).ok());
  char event[512];
  EXPECT_EQ(::read(events.get(), event, sizeof event), -1);
  EXPECT_EQ(errno, EAGAIN);
}

TEST_F(FileDigestTest, a_file_that_this_user_may_not_read_is_an_error) {
  tree_.plant("file 4K mode=0\n");
  const std::string path = tree_.at("file");
  EXPECT_EQ(asOtherUser([&] { return told(FileDigest::of(path)); }),
            "error " + std::to_string(EACCES));
}

TEST_F(FileDigestTest, a_path_of_any_length_is_read) {
  std::string below;
  constexpr int depth = 30;
  tree_.chain("", std::string(200, 'd'), depth, [&](int folder, int level) {
    if (level != depth) return;
    const Descriptor file(::openat(folder, "file", O_WRONLY | O_CREAT | O_CLOEXEC, 0644));
    EXPECT_EQ(::write(file.get(), "abc", 3), 3);
  });
  for (int level = 0; level < depth; ++level) below += std::string(200, 'd') + "/";
  EXPECT_EQ(told(FileDigest::of(tree_.at(below + "file"))), digestOfAbc);
}

TEST_F(FileDigestTest, a_file_that_takes_other_blocks_than_expected_is_not_read) {
  const std::string path = plant("file", noise(3 * MiB));
  const std::int64_t allocated = tree_.allocated("file");
  EXPECT_TRUE(FileDigest::of(path, {.allocated = allocated}).ok());
  const auto neverRead = [](std::int64_t, std::int64_t) {
    ADD_FAILURE();
    return true;
  };
  EXPECT_EQ(failureOf(FileDigest::of(path, {.allocated = allocated + 512, .goOn = neverRead})),
            Kind::changed);
  EXPECT_EQ(failureOf(FileDigest::of(path, {.allocated = 0, .goOn = neverRead})), Kind::changed);
}

TEST_F(FileDigestTest, a_file_that_grows_while_it_is_read_has_no_digest) {
  const std::string path = plant("file", noise(3 * MiB));
  const auto grow = [&] { writeAt(path, 3 * MiB, "more"); };
  for (const std::int64_t position : {std::int64_t{0}, MiB, 3 * MiB}) {
    ASSERT_EQ(::truncate(path.c_str(), 3 * MiB), 0);
    EXPECT_EQ(failureOf(readWith(path, position, grow)), Kind::changed) << position;
  }
}

TEST_F(FileDigestTest, a_file_that_grows_as_fast_as_it_is_read_is_not_read_for_ever) {
  for (const std::string_view begin : {"begin", ""}) {
    const std::string path = plant("file" + std::string(begin), begin);
    int parts = 0;
    const Result<FileDigest> read =
        FileDigest::of(path, {.goOn = [&](std::int64_t done, std::int64_t) {
                         writeAt(path, done, "more");
                         return ++parts < 100;
                       }});
    EXPECT_EQ(failureOf(read), Kind::changed);
  }
}

TEST_F(FileDigestTest, a_file_that_shrinks_while_it_is_read_has_no_digest) {
  for (const std::int64_t position : {std::int64_t{0}, MiB, 2 * MiB}) {
    const std::string path = plant("file", noise(3 * MiB));
    EXPECT_EQ(
        failureOf(readWith(path, position, [&] { ASSERT_EQ(::truncate(path.c_str(), MiB), 0); })),
        Kind::changed);
  }
}

TEST_F(FileDigestTest, new_content_of_the_same_length_and_time_is_noticed) {
  const std::string path = plant("file", noise(3 * MiB));
  const auto rewrite = [&] {
    struct stat before {};
    ASSERT_EQ(::stat(path.c_str(), &before), 0);
    struct stat now = before;
    // The system's clock for files may stand still for some milliseconds.
    while (now.st_ctim.tv_sec == before.st_ctim.tv_sec &&
           now.st_ctim.tv_nsec == before.st_ctim.tv_nsec) {
      writeAt(path, 0, "other");
      const struct timespec times[] = {before.st_atim, before.st_mtim};
      ASSERT_EQ(::utimensat(AT_FDCWD, path.c_str(), times, 0), 0);
      ASSERT_EQ(::stat(path.c_str(), &now), 0);
    }
  };
  EXPECT_EQ(failureOf(readWith(path, MiB, rewrite)), Kind::changed);
}

TEST_F(FileDigestTest, a_file_that_vanishes_or_is_replaced_while_it_is_read_has_no_digest) {
  const std::string path = plant("file", noise(3 * MiB));
  // So that the change has another time than the creation.
  const struct timespec past[] = {{.tv_sec = 1, .tv_nsec = 0}, {.tv_sec = 1, .tv_nsec = 0}};
  ASSERT_EQ(::utimensat(AT_FDCWD, path.c_str(), past, 0), 0);
  ::usleep(20'000);
  EXPECT_EQ(failureOf(readWith(path, MiB,
                               [&] {
                                 ASSERT_EQ(::unlink(path.c_str()), 0);
                                 ASSERT_EQ(::mkfifo(path.c_str(), 0600), 0);
                               })),
            Kind::changed);
  EXPECT_EQ(FileDigest::of(path).error().code, EINVAL);
}

TEST_F(FileDigestTest, a_device_that_fails_midway_is_an_error) {
  if (const std::string obstacle = SystemCallTrace::obstacle(); !obstacle.empty())
    GTEST_SKIP() << needs(Need::tracing, obstacle);
  const std::string path = plant("file", noise(5 * MiB));
  for (std::size_t part = 1; part <= 6; ++part) {
    const TracedRun run = SystemCallTrace::failingNth(SYS_pread64, part, EIO,
                                                      [&] { return told(FileDigest::of(path)); });
    EXPECT_EQ(run.failedCall, SYS_pread64);
    EXPECT_EQ(run.told, "error " + std::to_string(EIO)) << part;
  }
}

// btrfs finds the damage by its own checksum, and the system reports it like a disk that fails.
TEST_F(FileDigestTest, a_damaged_disk_is_an_error_where_it_is_damaged) {
  const std::string result = inPrivateMounts([this]() -> std::string {
    tree_.plant("disk sparse=256M\nmount/\n");
    const std::string mount =
        "mount -o loop '" + tree_.at("disk") + "' '" + tree_.at("mount") + "'";
    const std::string make = "mkfs.btrfs -q '" + tree_.at("disk") + "' && " + mount;
    if (std::system(("{ " + make + "; } >&2").c_str()) != 0)
      return "refused: " + needs(Need::btrfs, make);
    const std::string bytes = noise(8 * MiB);
    writeAt(tree_.at("mount/file"), 0, bytes);
    const std::string unmount = "umount '" + tree_.at("mount") + "'";
    if (std::system(unmount.c_str()) != 0) return "still mounted";

    std::fstream disk(tree_.at("disk"), std::ios::in | std::ios::out | std::ios::binary);
    const std::string all{std::istreambuf_iterator<char>(disk), {}};
    const std::size_t damaged = all.find(bytes.substr(5 * MiB, 64));
    if (damaged == std::string::npos) return "the content is not on the disk";
    disk.clear();
    disk.seekp(static_cast<std::streamoff>(damaged));
    disk.put(static_cast<char>(~all[damaged]));
    disk.close();

    if (std::system(mount.c_str()) != 0) return "not mounted again";
    std::int64_t last = 0;
    const Result<FileDigest> read =
        FileDigest::of(tree_.at("mount/file"), {.goOn = [&](std::int64_t done, std::int64_t) {
                         last = done;
                         return true;
                       }});
    return told(read) + " at " + std::to_string(last / MiB);
  });
  if (result.starts_with("refused")) GTEST_SKIP() << result;
  EXPECT_EQ(result, "error " + std::to_string(EIO) + " at 5");
}

TEST_F(FileDigestTest, a_real_file_whose_beginning_cannot_be_read_is_an_error) {
  EXPECT_EQ(told(FileDigest::of("/proc/self/mem")), "error " + std::to_string(EIO));
}

TEST_F(FileDigestTest, reading_ends_in_the_middle_of_data) {
  plant("file", noise(10 * MiB));
  std::int64_t last = 0;
  const Result<FileDigest> read =
      FileDigest::of(tree_.at("file"), {.goOn = [&](std::int64_t done, std::int64_t) {
                       last = done;
                       return done < 3 * MiB;
                     }});
  ASSERT_FALSE(read.ok());
  EXPECT_EQ(read.error().code, ECANCELED);
  EXPECT_EQ(last, 3 * MiB);
}

TEST_F(FileDigestTest, reading_ends_in_the_middle_of_a_hole) {
  tree_.plant("hole sparse=100G\n");
  std::int64_t last = 0;
  const Result<FileDigest> read =
      FileDigest::of(tree_.at("hole"), {.goOn = [&](std::int64_t done, std::int64_t) {
                       last = done;
                       return done < 7 * MiB;
                     }});
  ASSERT_FALSE(read.ok());
  EXPECT_EQ(read.error().code, ECANCELED);
  EXPECT_EQ(last, 7 * MiB);
}

TEST_F(FileDigestTest, memory_does_not_depend_on_the_size) {
  const std::string path = plant("file", noise(64 * MiB));
  EXPECT_EQ(inForkedChild([&]() -> std::string {
              const std::string small = path + ".small";
              writeAt(small, 0, noise(MiB));
              rusage before{};
              rusage after{};
              if (!FileDigest::of(small).ok() || ::getrusage(RUSAGE_SELF, &before) != 0)
                return "no digest";
              if (!FileDigest::of(path).ok() || ::getrusage(RUSAGE_SELF, &after) != 0)
                return "no digest";
              const long more = after.ru_maxrss - before.ru_maxrss;
              // An eighth of the file: sanitizers keep freed memory for a while.
              constexpr long most = 8 * 1024;
              return more <= most ? "" : std::to_string(more) + " KiB more";
            }),
            "");
}

TEST_F(FileDigestTest, no_descriptor_is_left_open) {
  const std::string path = plant("file", "abc");
  tree_.plant("folder/\npipe fifo\n");
  const auto countOfOpen = [] {
    const std::filesystem::directory_iterator open("/proc/self/fd");
    return std::distance(begin(open), end(open));
  };
  const auto before = countOfOpen();
  EXPECT_TRUE(FileDigest::of(path).ok());
  EXPECT_FALSE(
      FileDigest::of(path, {.goOn = [](std::int64_t, std::int64_t) { return false; }}).ok());
  EXPECT_FALSE(FileDigest::of(tree_.at("folder")).ok());
  EXPECT_FALSE(FileDigest::of(tree_.at("pipe")).ok());
  EXPECT_EQ(countOfOpen(), before);
}

}  // namespace
}  // namespace tessaly
