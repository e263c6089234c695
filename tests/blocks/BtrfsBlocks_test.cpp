// What only btrfs has: files inside of metadata, compressed files, and subvolumes.
#include <fstream>
#include <gtest/gtest.h>

#include "blocks/DiskImage.h"
#include "support/PlainFiles.h"

namespace tessaly {
namespace {

class BtrfsBlocks : public testing::Test {
 protected:
  void expect(const std::function<std::string()>& body) {
    const std::string told = disk_.run(body);
    if (told.starts_with("refused")) GTEST_SKIP() << "no mounting here, " << told;
    EXPECT_EQ(told, "");
  }

  void makeSubvolume(const std::string& name) const {
    disk_.shell("btrfs subvolume create '" + disk_.at(name) + "'");
  }

  // Compresses well.
  void writeText(const std::string& below, int lines) const {
    {
      std::ofstream file(disk_.at(below));
      for (int i = 0; i < lines; ++i) file << "the same words again and again, line " << i << "\n";
    }
    disk_.shell("sync '" + disk_.at(below) + "'");
  }

  DiskImage disk_ = DiskImage(FileSystem::btrfs());
};

TEST_F(BtrfsBlocks, small_files_inside_of_metadata_are_no_clones) {
  expect([&]() -> std::string {
    putFile(disk_.at("a"), "a few bytes");
    disk_.shell("sync '" + disk_.at("a") + "'");
    disk_.clone("a", "b");
    if (disk_.outputOf("filefrag -v '" + disk_.at("b") + "'").find("inline") == std::string::npos) {
      return "it is not inside of metadata";
    }
    for (const ShareRecord& record : disk_.records({"a", "b"})) {
      if (record.cloneId != 0) return record.path;
    }
    return "";
  });
}

TEST_F(BtrfsBlocks, compressed_clones_are_a_group) {
  expect([&]() -> std::string {
    disk_.shell("mkdir '" + disk_.at("z") + "' && btrfs property set '" + disk_.at("z") +
                "' compression zstd");
    writeText("z/a", 200000);
    disk_.clone("z/a", "z/b");
    std::string extents = disk_.outputOf("filefrag -v '" + disk_.at("z/b") + "'");
    if (extents.find("encoded,shared") == std::string::npos) return extents;
    if (!disk_.found().starts_with("clone z/a z/b, ")) return "found: " + disk_.found();
    for (const std::int64_t offset : {std::int64_t{0}, 5 * MiB}) {
      disk_.write("z/b", 4 * KiB, offset);
      if (!disk_.found().empty()) return "rewritten: " + disk_.found();
      disk_.clone("z/a", "z/b");
    }
    return "";
  });
}

TEST_F(BtrfsBlocks, files_of_a_snapshot_are_clones_of_the_originals) {
  expect([&]() -> std::string {
    makeSubvolume("home");
    disk_.write("home/a", 4 * MiB);
    disk_.write("home/changed", 4 * MiB);
    disk_.write("home/h", 2 * MiB);
    disk_.link("home/h", "home/h-too");
    disk_.shell("btrfs subvolume snapshot -r '" + disk_.at("home") + "' '" + disk_.at("old") + "'");
    disk_.write("home/changed", 4 * KiB);
    return difference(disk_.found(),
                      "clone home/h home/h-too old/h old/h-too, 8 MiB on 2 MiB\n"
                      "clone home/a old/a, 8 MiB on 4 MiB\n");
  });
}

// In a new subvolume the numbers of inodes begin anew.
TEST_F(BtrfsBlocks, equal_inode_numbers_in_two_subvolumes_are_two_files) {
  expect([&]() -> std::string {
    for (const char* name : {"one", "two"}) {
      makeSubvolume(name);
      disk_.write(std::string(name) + "/h", 2 * MiB);
      disk_.link(std::string(name) + "/h", std::string(name) + "/h-too");
    }
    const std::string inodes =
        disk_.outputOf("stat -c %i '" + disk_.at("one/h") + "' '" + disk_.at("two/h") + "'");
    if (inodes != "257\n257\n") return "other inodes: " + inodes;
    return difference(disk_.found(),
                      "hardlink one/h one/h-too, 4 MiB on 2 MiB\n"
                      "hardlink two/h two/h-too, 4 MiB on 2 MiB\n");
  });
}

TEST_F(BtrfsBlocks, clones_in_two_mounts_of_a_file_system_are_found) {
  expect([&]() -> std::string {
    makeSubvolume("one");
    makeSubvolume("two");
    disk_.write("one/a", 4 * MiB);
    disk_.clone("one/a", "two/b");
    disk_.shell("mkdir '" + disk_.at("m") + "' && umount '" + disk_.top() +
                "' && mount -o loop,subvol=one '" + disk_.image() + "' '" + disk_.top() +
                "' && mkdir '" + disk_.at("m") +
                "' && mount -o subvol=two \"$(findmnt -no SOURCE '" + disk_.top() +
                "' | sed 's/\\[.*//')\" '" + disk_.at("m") + "'");
    return difference(disk_.found(), "clone a m/b, 8 MiB on 4 MiB\n");
  });
}

}  // namespace
}  // namespace tessaly
