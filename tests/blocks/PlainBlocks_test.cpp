// File systems whose files share no blocks, and several file systems in one tree.
#include <gtest/gtest.h>
#include <sys/mount.h>

#include "blocks/DiskImage.h"
#include "support/PrivateMounts.h"

namespace tessaly {
namespace {

void expect(const DiskImage& disk, const std::function<std::string()>& body) {
  const std::string told = disk.run(body);
  if (told.starts_with("refused")) GTEST_SKIP() << "no mounting here, " << told;
  EXPECT_EQ(told, "");
}

// Two equal files and two names of another one.
std::string findsHardLinksAlone(const DiskImage& disk) {
  disk.write("a", 4 * MiB);
  disk.shell("cp '" + disk.at("a") + "' '" + disk.at("b") + "'");
  disk.write("h", 3 * MiB);
  disk.link("h", "h-too");
  for (const ShareRecord& record : disk.records({"a", "b", "h"})) {
    if (record.cloneId != 0) return "a clone id: " + record.path;
  }
  return difference(disk.found(), "hardlink h h-too, 6 MiB on 3 MiB\n");
}

TEST(PlainBlocks, on_ext4_hard_links_alone_are_found) {
  const DiskImage disk(FileSystem::ext4());
  expect(disk, [&] { return findsHardLinksAlone(disk); });
}

TEST(PlainBlocks, on_tmpfs_hard_links_alone_are_found) {
  const DiskImage disk(FileSystem::ext4());
  const std::string told = inPrivateMounts([&]() -> std::string {
    if (::mount("tmpfs", disk.top().c_str(), "tmpfs", 0, nullptr) != 0) return refusal();
    return findsHardLinksAlone(disk);
  });
  if (told.starts_with("refused")) GTEST_SKIP() << "no mounting here, " << told;
  EXPECT_EQ(told, "");
}

// A disk and its copy: all inode numbers and all extents are the same.
TEST(PlainBlocks, files_of_two_disks_are_never_paired) {
  const DiskImage disk(FileSystem::xfs());
  expect(disk, [&]() -> std::string {
    disk.write("a", 4 * MiB);
    disk.clone("a", "b");
    disk.write("h", 3 * MiB);
    disk.link("h", "h-too");
    disk.shell("mkdir '" + disk.at("copy") + "' && sync && fsfreeze -f '" + disk.top() +
               "' && cp --sparse=always '" + disk.image() + "' '" + disk.image() +
               ".copy'; fsfreeze -u '" + disk.top() + "' && mount -o loop,nouuid '" + disk.image() +
               ".copy' '" + disk.at("copy") + "'");
    const std::string inodes = disk.outputOf("stat -c %i '" + disk.at("h") + "' '" +
                                             disk.at("copy/h") + "' | uniq | wc -l");
    if (inodes != "1\n") return "other inodes";
    return difference(disk.found(),
                      "clone copy/a copy/b, 8 MiB on 4 MiB\n"
                      "clone a b, 8 MiB on 4 MiB\n"
                      "hardlink copy/h copy/h-too, 6 MiB on 3 MiB\n"
                      "hardlink h h-too, 6 MiB on 3 MiB\n");
  });
}

}  // namespace
}  // namespace tessaly
