// Other file systems inside the walked tree, mounted in a child process's namespace.
#include <cerrno>
#include <cstdlib>
#include <cstring>
#include <sched.h>
#include <sys/mount.h>
#include <unistd.h>

#include "scan/ScanFacts.h"
#include "support/Needs.h"
#include "support/SequentialScan.h"
#include "support/TreeDifference.h"

namespace tessaly {
namespace {

class Mounts : public ScanFacts {
 protected:
  // Runs `body` with a file system of `type` mounted on the folder `below` in `tree`.
  static void expectMounted(const TempTree& tree, const char* type, const std::string& below,
                            const std::function<std::string()>& body) {
    expectInNamespace([&]() -> std::string {
      return mount(type, tree.at(below).c_str(), type, 0, nullptr) == 0 ? body() : refusal();
    });
  }

  // Runs `body` in a mount namespace. If it is refused to mount, it returns why.
  static void expectInNamespace(const std::function<std::string()>& body) {
    const std::string told = inForkedChild([&]() -> std::string {
      const int spaces = CLONE_NEWNS | (geteuid() == 0 ? 0 : CLONE_NEWUSER);
      if (unshare(spaces) != 0 || mount("none", "/", nullptr, MS_REC | MS_PRIVATE, nullptr) != 0) {
        return refusal();
      }
      return body();
    });
    if (told.starts_with("refused")) GTEST_SKIP() << "no mounting here, " << told;
    EXPECT_EQ(told, "");
  }

  static std::string refusal() { return "refused: " + needs(Need::mounts, std::strerror(errno)); }
};
TESSALY_FOR_ALL_WALKERS(Mounts);

constexpr const char* fixture = R"(
  before/
    film 1M
  inside/
    mounted/
  after/
    film 1M
)";

TEST_P(Mounts, kernel_file_systems_are_folders_that_are_never_entered) {
  for (const char* type : {"proc", "sysfs"}) {
    const TempTree tree(fixture);
    expectMounted(tree, type, "inside/mounted", [&]() -> std::string {
      ScanRecord record;
      const DiskNode root = GetParam().scan(tree.path(), record.callbacks());
      const DiskNode mounted = below(root, "inside/mounted");
      if (!mounted.isDir() || mounted.size() != 0 || !mounted.children().empty()) {
        return treeText(root);
      }
      if (record.polls() != 7) return std::to_string(record.polls()) + " polls";
      return root.size() == 2 * MiB ? "" : treeText(root);
    });
  }
}

TEST_P(Mounts, kernel_file_systems_mounted_during_the_walk_are_not_entered) {
  const TempTree tree(R"(
    inside/
      mounted/
        film 1M
  )");
  expectInNamespace([&]() -> std::string {
    bool mounted = false;
    ScanRecord record;
    record.during(1, [&] {
      mounted = mount("sysfs", tree.at("inside/mounted").c_str(), "sysfs", 0, nullptr) == 0;
    });
    const DiskNode root = GetParam().scan(tree.path(), record.callbacks());
    if (!mounted) return refusal();
    // A thread that reads ahead may have been there before.
    return root.size() <= 1 * MiB && record.polls() <= 4 ? "" : treeText(root);
  });
}

TEST_P(Mounts, other_disks_are_walked) {
  TempTree tree(fixture);
  expectMounted(tree, "tmpfs", "inside/mounted", [&]() -> std::string {
    tree.plant("inside/mounted", "film 1M\nDownloads/\n  tiny 4K");
    const DiskNode root = scan(tree.path());
    if (root.size() != 3 * MiB + 4 * KiB) return treeText(root);
    if (!has(root, "inside/mounted/Downloads/tiny")) return treeText(root);
    return differenceOf(SequentialScan::scan(tree.path()), root);
  });
}

// ext4 without the feature "filetype" does not report the types of entries.
TEST_P(Mounts, types_that_a_folder_does_not_report_are_queried) {
  TempTree tree("disk sparse=16M\nmounted/");
  expectInNamespace([&]() -> std::string {
    const std::string disk = "'" + tree.at("disk") + "'";
    const std::string make = "mkfs.ext4 -q -O ^filetype " + disk + " && mount -o loop " + disk +
                             " '" + tree.at("mounted") + "'";
    if (std::system(("{ " + make + "; } >&2").c_str()) != 0) return "refused: " + make;
    tree.plant("mounted", R"(
      Downloads/
        film 2M
        tiny 4K
      deeper/
        still/
          sound 1M
      empty/
      alias -> deeper
      pipe fifo
      Tool.app/
        part 1M
    )");
    const DiskNode root = scan(tree.at("mounted"));
    if (!has(root, "Downloads/tiny") || !has(root, "deeper/still/sound")) return treeText(root);
    if (root.size() < 4 * MiB) return treeText(root);
    return differenceOf(SequentialScan::scan(tree.at("mounted")), root);
  });
}

}  // namespace
}  // namespace tessaly
