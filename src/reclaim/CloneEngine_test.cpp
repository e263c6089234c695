#include "reclaim/CloneEngine.h"

#include <algorithm>
#include <gmock/gmock.h>
#include <limits>
#include <unordered_set>

namespace tessaly {
namespace {

using testing::ElementsAre;
using testing::IsEmpty;
using testing::SizeIs;

constexpr std::int64_t mebibyte = 1048576;
constexpr std::int64_t most = std::numeric_limits<std::int64_t>::max();

DiskNode folder(const std::string& path, const std::vector<DiskNode>& children,
                FileKind kind = FileKind::folder) {
  return DiskNode({.name = path.substr(path.rfind('/') + 1),
                   .path = path,
                   .size = mebibyte,
                   .isDir = true,
                   .kind = kind},
                  children);
}

DiskNode file(const std::string& path, std::int64_t size = mebibyte) {
  return DiskNode({.name = path.substr(path.rfind('/') + 1), .path = path, .size = size});
}

// A machine on which every file has blocks of its own, unless a test says otherwise.
class Machine {
 public:
  void put(const std::string& path, const std::optional<FileBlocks>& blocks) {
    files_[path] = blocks;
  }

  FileBlocksOf look() {
    return [this](const std::vector<std::string>& paths, const auto&) {
      looked = paths;
      std::vector<std::optional<FileBlocks>> all;
      for (const std::string& path : paths) {
        const auto found = files_.find(path);
        all.push_back(
            found != files_.end()
                ? found->second
                : FileBlocks{
                      .device = 1, .inode = ++lastInode_, .links = 1, .blockBytes = mebibyte});
      }
      return all;
    };
  }

  std::vector<std::string> looked;

 private:
  std::map<std::string, std::optional<FileBlocks>> files_;
  std::uint64_t lastInode_ = 1000;
};

class CloneEngineCollect : public testing::Test {
 protected:
  std::vector<ShareRecord> collect(const DiskNode& from, std::int64_t limit = 400) {
    return CloneEngine::collect(
        from, limit, [] { return false; }, machine_.look());
  }

  Machine machine_;
};

TEST_F(CloneEngineCollect, files_are_examined_in_the_order_of_the_tree_depth_first) {
  collect(folder("/r", {folder("/r/b", {file("/r/b/2"), folder("/r/b/d", {file("/r/b/d/3")})}),
                        file("/r/1"), folder("/r/a", {file("/r/a/4")})}));
  EXPECT_THAT(machine_.looked, ElementsAre("/r/b/2", "/r/b/d/3", "/r/1", "/r/a/4"));
}

TEST_F(CloneEngineCollect, bundles_are_entered) {
  collect(folder("/r", {folder("/r/Tool.app", {file("/r/Tool.app/part")}, FileKind::app)}));
  EXPECT_THAT(machine_.looked, ElementsAre("/r/Tool.app/part"));
}

TEST_F(CloneEngineCollect, files_of_every_size_are_examined) {
  EXPECT_THAT(collect(folder("/r", {file("/r/empty", 0), file("/r/one", 1)})), SizeIs(2));
}

TEST_F(CloneEngineCollect, a_root_that_is_a_file_is_examined) {
  EXPECT_THAT(collect(file("/film")), SizeIs(1));
}

TEST_F(CloneEngineCollect, no_more_files_are_examined_than_the_limit) {
  std::vector<DiskNode> files;
  for (int i = 0; i < 450; ++i) files.push_back(file("/r/" + std::to_string(i)));
  const DiskNode tree = folder("/r", {folder("/r", files), file("/r/late")});
  EXPECT_THAT(collect(tree, 400), SizeIs(400));
  EXPECT_EQ(machine_.looked.front(), "/r/0");
  EXPECT_EQ(machine_.looked.back(), "/r/399");
  EXPECT_THAT(collect(tree, 451), SizeIs(451));
  EXPECT_THAT(collect(tree, 1), SizeIs(1));
}

TEST_F(CloneEngineCollect, a_limit_below_1_finds_nothing) {
  const DiskNode tree = folder("/r", {file("/r/a")});
  EXPECT_THAT(collect(tree, 0), IsEmpty());
  EXPECT_THAT(collect(tree, -5), IsEmpty());
  EXPECT_THAT(machine_.looked, IsEmpty());
}

TEST_F(CloneEngineCollect, files_that_cannot_be_examined_are_left_out_and_not_replaced_by_others) {
  machine_.put("/r/b", std::nullopt);
  const std::vector<ShareRecord> records =
      collect(folder("/r", {file("/r/a"), file("/r/b"), file("/r/c"), file("/r/d")}), 3);
  ASSERT_THAT(records, SizeIs(2));
  EXPECT_EQ(records[0].path, "/r/a");
  EXPECT_EQ(records[1].path, "/r/c");
}

TEST_F(CloneEngineCollect, a_record_has_the_name_path_and_size_of_the_node) {
  machine_.put("/r/a\xff", FileBlocks{.device = 7,
                                      .inode = 42,
                                      .links = 3,
                                      .blockBytes = 8192,
                                      .allocated = 4096,
                                      .cloneId = 99});
  EXPECT_THAT(collect(folder("/r", {file("/r/a\xff", 12345)})),
              ElementsAre(ShareRecord{.name = "a\xff",
                                      .path = "/r/a\xff",
                                      .logical = 12345,
                                      .allocated = 4096,
                                      .inode = 42,
                                      .nlink = 3,
                                      .cloneId = 99}));
}

TEST_F(CloneEngineCollect, without_an_allocated_size_the_blocks_count_and_the_clone_id_stays) {
  for (const std::int64_t allocated : {std::int64_t{0}, std::int64_t{-1}}) {
    machine_.put("/r/a", FileBlocks{.device = 1,
                                    .inode = 2,
                                    .links = 1,
                                    .blockBytes = 8192,
                                    .allocated = allocated,
                                    .cloneId = 5});
    const std::vector<ShareRecord> records = collect(folder("/r", {file("/r/a")}));
    ASSERT_THAT(records, SizeIs(1));
    EXPECT_EQ(records[0].allocated, 8192);
    EXPECT_EQ(records[0].cloneId, 5U);
  }
}

TEST_F(CloneEngineCollect, the_number_of_names_ends_at_65535) {
  for (const auto& [links, nlink] :
       {std::pair<std::uint64_t, int>{65535, 65535}, {65536, 65535}, {65538, 65535}, {2, 2}}) {
    machine_.put("/r/a", FileBlocks{.device = 1, .inode = 2, .links = links});
    EXPECT_EQ(collect(folder("/r", {file("/r/a")})).front().nlink, nlink);
  }
}

TEST_F(CloneEngineCollect, equal_inode_numbers_of_two_devices_become_different) {
  // The first file is of the device 7, whose numbers stay.
  machine_.put("/r/a", FileBlocks{.device = 7, .inode = 257, .links = 2});
  machine_.put("/r/b", FileBlocks{.device = 8, .inode = 257, .links = 2});
  machine_.put("/r/c", FileBlocks{.device = 9, .inode = 257, .links = 2});
  machine_.put("/r/d", FileBlocks{.device = 8, .inode = 257, .links = 2});
  machine_.put("/r/e", FileBlocks{.device = 7, .inode = 257, .links = 2});
  machine_.put("/r/f", FileBlocks{.device = 7, .inode = 258, .links = 2});
  std::vector<std::uint64_t> inodes;
  for (const ShareRecord& record :
       collect(folder("/r", {file("/r/a"), file("/r/b"), file("/r/c"), file("/r/d"), file("/r/e"),
                             file("/r/f")}))) {
    inodes.push_back(record.inode);
  }
  ASSERT_THAT(inodes, SizeIs(6));
  EXPECT_EQ(inodes[0], 257U);
  EXPECT_EQ(inodes[4], 257U);
  EXPECT_EQ(inodes[5], 258U);
  EXPECT_EQ(inodes[1], inodes[3]);
  EXPECT_EQ(std::unordered_set<std::uint64_t>(inodes.begin(), inodes.end()).size(), 4U);
}

TEST_F(CloneEngineCollect, a_number_in_place_of_an_inode_is_never_that_of_another_file) {
  machine_.put("/r/a", FileBlocks{.device = 7, .inode = 1, .links = 1});
  machine_.put("/r/b", FileBlocks{.device = 8, .inode = 257, .links = 2});
  const DiskNode two = folder("/r", {file("/r/a"), file("/r/b")});
  const std::uint64_t replacing = collect(two)[1].inode;
  // A file of the first device with just that number.
  machine_.put("/r/c", FileBlocks{.device = 7, .inode = replacing, .links = 2});
  machine_.put("/r/d", FileBlocks{.device = 8, .inode = 257, .links = 2});
  for (const DiskNode& tree :
       {folder("/r", {file("/r/a"), file("/r/b"), file("/r/c"), file("/r/d")}),
        folder("/r", {file("/r/a"), file("/r/c"), file("/r/b"), file("/r/d")})}) {
    std::map<std::string, std::uint64_t> inodes;
    for (const ShareRecord& record : collect(tree)) inodes[record.name] = record.inode;
    EXPECT_NE(inodes["b"], inodes["c"]);
    EXPECT_EQ(inodes["b"], inodes["d"]);
  }
}

TEST_F(CloneEngineCollect, a_cancelled_collection_finds_nothing) {
  EXPECT_THAT(CloneEngine::collect(
                  folder("/r", {file("/r/a")}), 400, [] { return true; }, machine_.look()),
              IsEmpty());
}

ShareRecord record(const std::string& path, std::int64_t size, std::uint64_t cloneId,
                   std::uint64_t inode = 0, std::uint16_t nlink = 1) {
  return {.name = path.substr(path.rfind('/') + 1),
          .path = path,
          .logical = size,
          .allocated = size,
          .inode = inode,
          .nlink = nlink,
          .cloneId = cloneId};
}

std::vector<std::string> idsOf(const std::vector<ShareGroup>& groups) {
  std::vector<std::string> ids;
  for (const ShareGroup& group : groups) ids.push_back(group.id);
  return ids;
}

std::vector<std::string> pathsOf(const ShareGroup& group) {
  std::vector<std::string> paths;
  for (const ShareRecord& one : group.files) paths.push_back(one.path);
  return paths;
}

TEST(CloneEngineGroups, two_clones_of_10_MiB_save_10_MiB) {
  const std::vector<ShareRecord> clones = {record("/a", 10 * mebibyte, 5),
                                           record("/b", 10 * mebibyte, 5)};
  const std::vector<ShareGroup> found = CloneEngine::groups(clones, mebibyte);
  EXPECT_THAT(found, ElementsAre(ShareGroup{.id = "clone-5",
                                            .kind = "clone",
                                            .files = clones,
                                            .logical = 20 * mebibyte,
                                            .unique = 10 * mebibyte}));
  EXPECT_EQ(found[0].saving(), 10 * mebibyte);
}

TEST(CloneEngineGroups, two_names_of_a_file_are_a_group_of_hard_links) {
  const std::vector<ShareRecord> names = {record("/a", 3 * mebibyte, 0, 77, 2),
                                          record("/b", 3 * mebibyte, 0, 77, 2)};
  EXPECT_THAT(CloneEngine::groups(names, mebibyte),
              ElementsAre(ShareGroup{.id = "inode-77",
                                     .kind = "hardlink",
                                     .files = names,
                                     .logical = 6 * mebibyte,
                                     .unique = 3 * mebibyte}));
}

TEST(CloneEngineGroups, unique_is_the_largest_allocated_size) {
  std::vector<ShareRecord> clones = {record("/a", 100, 5), record("/b", 100, 5),
                                     record("/c", 100, 5)};
  clones[0].allocated = 30;
  clones[1].allocated = 70;
  clones[2].allocated = 50;
  const std::vector<ShareGroup> found = CloneEngine::groups(clones, 0);
  ASSERT_THAT(found, SizeIs(1));
  EXPECT_EQ(found[0].logical, 300);
  EXPECT_EQ(found[0].unique, 70);
  EXPECT_EQ(found[0].saving(), 230);
}

TEST(CloneEngineGroups, a_group_saves_at_least_the_given_bytes) {
  const auto found = [](std::int64_t saving) {
    return CloneEngine::groups({record("/a", saving, 5), record("/b", saving, 5)}, 1048576).size();
  };
  EXPECT_EQ(found(1048575), 0U);
  EXPECT_EQ(found(1048576), 1U);
}

TEST(CloneEngineGroups, a_group_of_hard_links_saves_at_least_the_given_bytes) {
  const auto found = [](std::int64_t saving) {
    return CloneEngine::groups({record("/a", saving, 0, 7, 2), record("/b", saving, 0, 7, 2)},
                               1048576)
        .size();
  };
  EXPECT_EQ(found(1048575), 0U);
  EXPECT_EQ(found(1048576), 1U);
}

TEST(CloneEngineGroups, a_group_that_saves_nothing_is_kept_where_nothing_is_asked_for) {
  std::vector<ShareRecord> clones = {record("/a", 100, 5), record("/b", 100, 5)};
  clones[0].allocated = 1000;  // more than both sizes together
  for (const std::int64_t least : {std::int64_t{0}, std::int64_t{-1}}) {
    const std::vector<ShareGroup> found = CloneEngine::groups(clones, least);
    ASSERT_THAT(found, SizeIs(1));
    EXPECT_EQ(found[0].saving(), 0);
  }
  EXPECT_THAT(CloneEngine::groups(clones, 1), IsEmpty());
}

TEST(CloneEngineGroups, records_without_a_clone_id_are_no_clones) {
  EXPECT_THAT(CloneEngine::groups(
                  {record("/a", 100, 0, 1), record("/b", 100, 0, 2), record("/c", 100, 0, 3)}, 0),
              IsEmpty());
}

TEST(CloneEngineGroups, a_clone_without_another_one_is_in_no_group) {
  EXPECT_THAT(CloneEngine::groups({record("/a", 100, 5), record("/b", 100, 6)}, 0), IsEmpty());
}

TEST(CloneEngineGroups, a_file_with_one_name_is_no_hard_link_whatever_its_inode) {
  EXPECT_THAT(CloneEngine::groups({record("/a", 100, 0, 7, 1), record("/b", 100, 0, 7, 2)}, 0),
              IsEmpty());
}

TEST(CloneEngineGroups, names_of_a_file_with_a_clone_are_with_the_clones_alone) {
  EXPECT_THAT(
      idsOf(CloneEngine::groups({record("/a", 100, 5, 7, 2), record("/b", 100, 5, 7, 2)}, 0)),
      ElementsAre("clone-5"));
}

TEST(CloneEngineGroups, names_that_are_in_no_group_of_clones_remain_hard_links) {
  const std::vector<ShareGroup> found =
      CloneEngine::groups({record("/a", 100, 5, 7, 3), record("/b", 40, 0, 7, 3),
                           record("/c", 40, 0, 7, 3), record("/d", 100, 5, 8, 1)},
                          0);
  ASSERT_THAT(idsOf(found), ElementsAre("clone-5", "inode-7"));
  EXPECT_THAT(pathsOf(found[0]), ElementsAre("/a", "/d"));
  EXPECT_THAT(pathsOf(found[1]), ElementsAre("/b", "/c"));
  EXPECT_EQ(found[1].logical, 80);
  EXPECT_EQ(found[1].unique, 40);
}

TEST(CloneEngineGroups, one_remaining_name_is_no_group) {
  EXPECT_THAT(
      idsOf(CloneEngine::groups(
          {record("/a", 100, 5, 7, 3), record("/b", 100, 5, 7, 3), record("/c", 100, 0, 7, 3)}, 0)),
      ElementsAre("clone-5"));
}

TEST(CloneEngineGroups, clones_that_save_too_little_leave_their_names_to_the_hard_links) {
  std::vector<ShareRecord> records = {record("/a", 100, 5, 7, 2), record("/b", 100, 0, 7, 2),
                                      record("/c", 10, 5, 8, 1)};
  // The clones save 10 bytes, the hard links 100.
  EXPECT_THAT(idsOf(CloneEngine::groups(records, 50)), ElementsAre("inode-7"));
  EXPECT_THAT(idsOf(CloneEngine::groups(records, 10)), ElementsAre("clone-5"));
}

TEST(CloneEngineGroups, groups_are_sorted_by_what_they_save_and_equal_ones_stay_in_order) {
  const std::vector<ShareGroup> found = CloneEngine::groups(
      {record("/l1", 50, 0, 70, 2), record("/small1", 10, 3), record("/x1", 50, 9),
       record("/y1", 50, 4), record("/big1", 90, 0, 60, 2), record("/y2", 50, 4),
       record("/x2", 50, 9), record("/small2", 10, 3), record("/l2", 50, 0, 70, 2),
       record("/big2", 90, 0, 60, 2)},
      0);
  EXPECT_THAT(idsOf(found), ElementsAre("inode-60", "clone-9", "clone-4", "inode-70", "clone-3"));
}

TEST(CloneEngineGroups, ids_are_written_in_decimal_to_the_largest_number) {
  constexpr std::uint64_t largest = std::numeric_limits<std::uint64_t>::max();
  EXPECT_THAT(
      idsOf(CloneEngine::groups({record("/a", 1, largest), record("/b", 1, largest),
                                 record("/c", 1, 0, largest, 2), record("/d", 1, 0, largest, 2)},
                                0)),
      ElementsAre("clone-18446744073709551615", "inode-18446744073709551615"));
}

TEST(CloneEngineGroups, no_records_have_no_groups) {
  EXPECT_THAT(CloneEngine::groups({}, 0), IsEmpty());
}

TEST(CloneEngineGroupsDeath, a_sum_that_overflows_ends_the_program) {
  GTEST_FLAG_SET(death_test_style, "threadsafe");
  EXPECT_DEATH(CloneEngine::groups({record("/a", most, 5), record("/b", 1, 5)}, 0),
               "size overflow: 9223372036854775807 \\+ 1\n");
  EXPECT_DEATH(CloneEngine::groups({record("/a", most, 0, 7, 2), record("/b", 1, 0, 7, 2)}, 0),
               "size overflow: 9223372036854775807 \\+ 1\n");
  std::vector<ShareRecord> negative = {record("/a", most, 5), record("/b", 0, 5)};
  for (ShareRecord& one : negative) one.allocated = -1;
  EXPECT_DEATH(CloneEngine::groups(negative, 0), "size overflow: 9223372036854775807 - -1\n");
}

TEST(ShareGroups, equal_ones_have_the_same_hash) {
  const ShareGroup group{.id = "clone-5",
                         .kind = "clone",
                         .files = {record("/a", 10, 5), record("/b", 10, 5)},
                         .logical = 20,
                         .unique = 10};
  ShareGroup other = group;
  EXPECT_EQ(std::hash<ShareGroup>()(group), std::hash<ShareGroup>()(other));
  other.files[1].cloneId = 6;
  EXPECT_NE(std::hash<ShareGroup>()(group), std::hash<ShareGroup>()(other));
}

}  // namespace
}  // namespace tessaly
