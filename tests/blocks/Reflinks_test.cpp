// Files that share blocks, on each file system that has such files.
#include <fcntl.h>
#include <gtest/gtest.h>
#include <limits>
#include <unistd.h>

#include "blocks/DiskImage.h"
#include "support/PlainFiles.h"

namespace tessaly {
namespace {

class Reflinks : public testing::TestWithParam<FileSystem> {
 protected:
  void expect(const std::function<std::string()>& body) {
    const std::string told = disk_.run(body);
    if (told.starts_with("refused")) GTEST_SKIP() << "no mounting here, " << told;
    EXPECT_EQ(told, "");
  }

  // Whether the two files have one clone id.
  bool areClones(const std::string& a, const std::string& b) const {
    const std::vector<ShareRecord> both = disk_.records({a, b});
    return both.at(0).cloneId != 0 && both.at(0).cloneId == both.at(1).cloneId;
  }

  DiskImage disk_ = DiskImage(GetParam());
};

INSTANTIATE_TEST_SUITE_P(On, Reflinks, testing::Values(FileSystem::btrfs(), FileSystem::xfs()),
                         [](const auto& system) { return system.param.name; });

TEST_P(Reflinks, clones_are_a_group_and_copies_are_none) {
  expect([&]() -> std::string {
    disk_.write("a", 4 * MiB);
    disk_.clone("a", "b");
    disk_.clone("b", "c");
    disk_.shell("cp --reflink=never '" + disk_.at("a") + "' '" + disk_.at("copy") + "' && sync");
    disk_.write("other", 4 * MiB);
    return difference(disk_.found(), "clone a b c, 12 MiB on 4 MiB\n");
  });
}

TEST_P(Reflinks, clones_in_different_folders_are_found) {
  expect([&]() -> std::string {
    disk_.shell("mkdir -p '" + disk_.at("x/y") + "' '" + disk_.at("z") + "'");
    disk_.write("x/y/a", 3 * MiB);
    disk_.clone("x/y/a", "z/b");
    return difference(disk_.found(), "clone x/y/a z/b, 6 MiB on 3 MiB\n");
  });
}

TEST_P(Reflinks, a_clone_in_which_a_block_was_rewritten_is_in_no_group) {
  expect([&]() -> std::string {
    disk_.write("a", 4 * MiB);
    for (const std::int64_t offset : {std::int64_t{0}, 2 * MiB, 4 * MiB - 4 * KiB}) {
      disk_.clone("a", "b");
      if (!areClones("a", "b")) return "the clone was not found";
      disk_.write("b", 4 * KiB, offset);
      if (areClones("a", "b")) return "found, rewritten at " + std::to_string(offset);
      if (!disk_.found().empty()) return disk_.found();
    }
    return "";
  });
}

TEST_P(Reflinks, clones_that_are_rewritten_alike_share_only_the_rest) {
  expect([&]() -> std::string {
    disk_.write("a", 4 * MiB);
    disk_.clone("a", "b");
    disk_.clone("a", "c");
    disk_.write("b", 4 * KiB);
    disk_.write("c", 4 * KiB);
    if (areClones("b", "c")) return "the rewritten files";
    // Clones of the rewritten file share all blocks with it, and not with the others.
    disk_.clone("b", "d");
    // XFS has reserved more blocks for the file that was written to.
    return disk_.found().starts_with("clone b d, ") ? "" : "found: " + disk_.found();
  });
}

TEST_P(Reflinks, files_that_share_a_part_are_in_no_group) {
  expect([&]() -> std::string {
    disk_.write("a", 4 * MiB);
    disk_.clonePart("a", "first", 0, 2 * MiB);
    disk_.clonePart("a", "last", 2 * MiB, 2 * MiB);
    disk_.write("grown", 4 * MiB);
    disk_.clonePart("a", "grown", 0, 2 * MiB);
    return difference(disk_.found(), "");
  });
}

TEST_P(Reflinks, files_that_share_the_same_part_alone_are_a_group) {
  expect([&]() -> std::string {
    disk_.write("a", 4 * MiB);
    disk_.clonePart("a", "b", 0, 2 * MiB);
    disk_.clonePart("a", "c", 0, 2 * MiB);
    return difference(disk_.found(), "clone b c, 4 MiB on 2 MiB\n");
  });
}

TEST_P(Reflinks, a_file_whose_clones_are_gone_is_in_no_group) {
  expect([&]() -> std::string {
    disk_.write("a", 4 * MiB);
    disk_.clone("a", "b");
    disk_.shell("rm '" + disk_.at("b") + "' && sync");
    return difference(disk_.found(), "");
  });
}

TEST_P(Reflinks, the_names_of_a_clone_are_in_its_group_and_other_hard_links_beside_it) {
  expect([&]() -> std::string {
    disk_.write("a", 4 * MiB);
    disk_.link("a", "a-too");
    disk_.clone("a", "b");
    disk_.write("h", 8 * MiB);
    disk_.link("h", "h-too");
    disk_.link("h", "h-also");
    return difference(disk_.found(),
                      "hardlink h h-also h-too, 24 MiB on 8 MiB\n"
                      "clone a a-too b, 12 MiB on 4 MiB\n");
  });
}

TEST_P(Reflinks, clones_that_save_too_little_are_left_out) {
  expect([&]() -> std::string {
    disk_.write("a", MiB - 4 * KiB);
    disk_.clone("a", "b");
    disk_.write("c", MiB);
    disk_.clone("c", "d");
    return difference(disk_.found(), "clone c d, 2 MiB on 1 MiB\n");
  });
}

TEST_P(Reflinks, sparse_clones_count_the_blocks_that_they_have) {
  expect([&]() -> std::string {
    disk_.write("a", 2 * MiB);
    disk_.write("a", 2 * MiB, 100 * MiB);
    disk_.shell("truncate -s 10G '" + disk_.at("a") + "'");
    disk_.clone("a", "b");
    return difference(disk_.found(), "clone a b, 8 MiB on 4 MiB\n");
  });
}

TEST_P(Reflinks, clones_of_the_largest_files_are_found) {
  expect([&]() -> std::string {
    disk_.write("a", 2 * MiB);
    disk_.write("a", 4 * KiB, std::numeric_limits<std::int64_t>::max() - 8 * KiB + 1);
    disk_.clone("a", "b");
    disk_.clone("a", "c");
    disk_.write("c", 4 * KiB, std::numeric_limits<std::int64_t>::max() - 8 * KiB + 1);
    return disk_.found().starts_with("clone a b, ") ? "" : "found: " + disk_.found();
  });
}

TEST_P(Reflinks, the_same_blocks_in_another_order_are_no_clone) {
  expect([&]() -> std::string {
    disk_.write("a", 4 * MiB);
    disk_.clonePart("a", "b", 0, 2 * MiB, 2 * MiB);
    disk_.clonePart("a", "b", 2 * MiB, 2 * MiB, 0);
    return difference(disk_.found(), "");
  });
}

TEST_P(Reflinks, files_of_holes_alone_are_in_no_group) {
  expect([&]() -> std::string {
    disk_.shell("truncate -s 1G '" + disk_.at("a") + "' '" + disk_.at("empty") +
                "' && truncate -s 0 '" + disk_.at("empty") + "'");
    disk_.clone("a", "b");
    disk_.clone("empty", "void");
    for (const ShareRecord& record : disk_.records({"a", "b", "empty", "void"})) {
      if (record.cloneId != 0) return record.path;
    }
    return difference(disk_.found(0), "");
  });
}

TEST_P(Reflinks, all_extents_of_a_fragmented_file_are_compared) {
  expect([&]() -> std::string {
    constexpr int blocks = 500;
    disk_.writeEverySecondBlock("a", blocks);
    disk_.clone("a", "b");
    // XFS also counts the blocks of its list of extents.
    if (!disk_.found().starts_with("clone a b, ")) return "found: " + disk_.found();
    for (const int place : {0, 31, 32, 100, blocks - 1}) {
      disk_.clone("a", "c");
      if (!areClones("a", "c")) return "the clone was not found";
      disk_.write("c", 4 * KiB, place * 8 * KiB);
      if (areClones("a", "c")) return "found, rewritten at " + std::to_string(place);
    }
    return "";
  });
}

TEST_P(Reflinks, a_file_with_blocks_reserved_for_it_alone_is_in_no_group) {
  expect([&]() -> std::string {
    disk_.write("a", 4 * MiB);
    disk_.clone("a", "b");
    disk_.clone("a", "c");
    disk_.shell("fallocate -o 8M -l 1M '" + disk_.at("a") + "' && sync");
    return difference(disk_.found(), "clone b c, 8 MiB on 4 MiB\n");
  });
}

TEST_P(Reflinks, a_clone_with_bytes_that_have_no_place_yet_is_in_no_group) {
  expect([&]() -> std::string {
    disk_.write("a", 4 * MiB);
    disk_.clone("a", "b");
    // Not stored: the file system has not chosen blocks for it.
    const int file = open(disk_.at("b").c_str(), O_WRONLY | O_APPEND | O_CLOEXEC);
    const bool hasWritten = ::write(file, "more", 4) == 4;
    const bool found = areClones("a", "b");
    close(file);
    if (!hasWritten) return "nothing was written";
    return found ? "found" : "";
  });
}

TEST_P(Reflinks, no_file_is_changed_by_being_examined) {
  expect([&]() -> std::string {
    disk_.write("a", MiB);
    disk_.clone("a", "b");
    const std::string look =
        "stat -c '%x %y %z %n' '" + disk_.at("a") + "' '" + disk_.at("b") + "'";
    const std::string before = disk_.outputOf(look);
    disk_.found();
    return difference(disk_.outputOf(look), before);
  });
}

}  // namespace
}  // namespace tessaly
