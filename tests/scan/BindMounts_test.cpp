// Folders that are mounted again elsewhere in the walked tree: their sizes count once.
#include <cstdlib>
#include <sys/mount.h>
#include <unistd.h>

#include "platform/DirectoryWalk.h"
#include "scan/FolderWatch.h"
#include "scan/ScanFacts.h"
#include "support/Needs.h"
#include "support/PrivateMounts.h"
#include "support/TreeDifference.h"

namespace tessaly {
namespace {

bool bind(const TempTree& tree, const std::string& from, const std::string& to,
          unsigned long flags = 0) {
  return mount(tree.at(from).c_str(), tree.at(to).c_str(), nullptr, MS_BIND | flags, nullptr) == 0;
}

class BindMounts : public ScanFacts {
 protected:
  static void expectMounted(const std::function<std::string()>& body) {
    const std::string told = inPrivateMounts(body);
    if (told.starts_with("refused")) GTEST_SKIP() << "no mounting here, " << told;
    EXPECT_EQ(told, "");
  }

  static std::string wrong(const DiskNode& root, std::int64_t size) {
    return root.size() == size ? "" : "not " + std::to_string(size) + "\n" + treeText(root);
  }
};

// The model does not handle mounts that repeat others.
INSTANTIATE_TEST_SUITE_P(by, BindMounts,
                         testing::Values(Walker{"one_thread", 1}, Walker{"four_threads", 4}),
                         [](const testing::TestParamInfo<Walker>& instance) {
                           return std::string(instance.param.name);
                         });

constexpr const char* fixture = R"(
  inside/
    original/
      film 1M
      deeper/
        sound 1M
    copy/
    other/
      film 1M
  outside/
    film 4M
)";

TEST_P(BindMounts, a_bind_mount_of_a_walked_folder_counts_once) {
  const TempTree tree(fixture);
  expectMounted([&]() -> std::string {
    if (!bind(tree, "inside/original", "inside/copy")) return refusal();
    const DiskNode root = scan(tree.at("inside"));
    if (!has(root, "original/deeper/sound")) return treeText(root);
    if (!below(root, "copy").isDir() || !below(root, "copy").children().empty()) {
      return treeText(root);
    }
    return wrong(root, 3 * MiB);
  });
}

TEST_P(BindMounts, a_bind_mount_of_a_folder_outside_is_walked) {
  const TempTree tree(fixture);
  expectMounted([&]() -> std::string {
    if (!bind(tree, "outside", "inside/copy")) return refusal();
    const DiskNode root = scan(tree.at("inside"));
    if (!has(root, "copy/film")) return treeText(root);
    return wrong(root, 7 * MiB);
  });
}

TEST_P(BindMounts, a_bind_mount_as_the_root_of_the_scan_is_walked) {
  const TempTree tree(fixture);
  expectMounted([&]() -> std::string {
    if (!bind(tree, "inside/original", "inside/copy")) return refusal();
    return wrong(scan(tree.at("inside/copy")), 2 * MiB);
  });
}

TEST_P(BindMounts, a_bind_mount_is_walked_if_the_original_is_excluded) {
  const TempTree tree(fixture);
  expectMounted([&]() -> std::string {
    if (!bind(tree, "inside/original", "inside/copy")) return refusal();
    DiskScanner::Options options;
    options.extraPrefixes = {tree.at("inside/original")};
    const DiskNode byPath = scan(tree.at("inside"), options);
    if (!has(byPath, "copy/deeper/sound")) return treeText(byPath);
    if (byPath.size() != 3 * MiB) return treeText(byPath);
    options = {};
    options.extraNames = {"original"};
    return wrong(scan(tree.at("inside"), options), 3 * MiB);
  });
}

TEST_P(BindMounts, a_bind_mount_is_walked_if_a_skipped_name_excludes_the_original) {
  const TempTree tree("Backups.backupdb/\n  film 1M\ncopy/\n");
  expectMounted([&]() -> std::string {
    if (!bind(tree, "Backups.backupdb", "copy")) return refusal();
    return wrong(scan(tree.path()), 1 * MiB);
  });
}

TEST_P(BindMounts, one_of_two_bind_mounts_of_a_folder_outside_is_walked) {
  const TempTree tree(fixture);
  expectMounted([&]() -> std::string {
    if (!bind(tree, "outside", "inside/copy") || !bind(tree, "outside", "inside/other")) {
      return refusal();
    }
    const DiskNode root = scan(tree.at("inside"));
    if (!has(root, "copy/film")) return treeText(root);
    return wrong(root, 6 * MiB);
  });
}

TEST_P(BindMounts, a_bind_mount_of_a_folder_into_itself_counts_once) {
  const TempTree tree("film 1M\na/\n  film 1M\n  b/\n");
  expectMounted([&]() -> std::string {
    if (!bind(tree, "", "a/b", MS_REC)) return refusal();
    return wrong(scan(tree.path()), 2 * MiB);
  });
}

TEST_P(BindMounts, disks_in_a_recursive_bind_mount_count_once) {
  TempTree tree("a/\n  film 1M\n  disk/\nb/\n");
  expectMounted([&]() -> std::string {
    if (mount("tmpfs", tree.at("a/disk").c_str(), "tmpfs", 0, nullptr) != 0) return refusal();
    tree.plant("a/disk", "sound 2M");
    if (!bind(tree, "a", "b", MS_REC)) return refusal();
    return wrong(scan(tree.path()), 3 * MiB);
  });
}

TEST_P(BindMounts, a_disk_mounted_only_in_the_copy_counts) {
  TempTree tree("a/\n  film 1M\n  disk/\nb/\n");
  expectMounted([&]() -> std::string {
    if (!bind(tree, "a", "b")) return refusal();
    if (mount("tmpfs", tree.at("b/disk").c_str(), "tmpfs", 0, nullptr) != 0) return refusal();
    tree.plant("b/disk", "sound 2M");
    const DiskNode root = scan(tree.path());
    return has(root, "b/disk/sound") ? "" : treeText(root);
  });
}

TEST_P(BindMounts, a_bind_mount_is_walked_if_another_disk_hides_the_original) {
  TempTree tree(fixture);
  expectMounted([&]() -> std::string {
    if (!bind(tree, "inside/original", "inside/copy")) return refusal();
    if (mount("tmpfs", tree.at("inside/original").c_str(), "tmpfs", 0, nullptr) != 0) {
      return refusal();
    }
    tree.plant("inside/original", "film 8M");
    return wrong(scan(tree.at("inside")), 11 * MiB);
  });
}

TEST_P(BindMounts, bind_mounts_may_have_names_that_are_not_utf8) {
  const TempTree tree("caf\\xe9\\sx/\n  film 1M\ncopy\\xff\\n/\n");
  expectMounted([&]() -> std::string {
    const std::string to = tree.path() + "/copy\xff\n";
    const std::string from = tree.path() + "/caf\xe9 x";
    if (mount(from.c_str(), to.c_str(), nullptr, MS_BIND, nullptr) != 0) return refusal();
    return wrong(scan(tree.path()), 1 * MiB);
  });
}

// The mount is removed while the walk is on its way there.
TEST_P(BindMounts, a_folder_under_a_removed_bind_mount_is_walked) {
  const TempTree tree("original/\n  film 1M\nway/\n  copy/\n    below 2M\n");
  expectMounted([&]() -> std::string {
    if (!bind(tree, "original", "way/copy")) return refusal();
    // The walk first asks about each folder on the path to the copy, and later about each folder
    // that it could enter.
    bool isChosen = false;
    const auto decide = [&](const DirectoryWalk::Candidate& candidate) {
      if (isChosen && candidate.name == "way") umount(tree.at("way/copy").c_str());
      if (candidate.name == "copy") isChosen = true;
      return DirectoryWalk::Descent{};
    };
    DirectoryWalk walk(tree.path(), decide, 1);
    while (const DirectoryWalk::Item* item = walk.next()) {
      if (item->name == "below") return "";
    }
    return "what lies below was left out";
  });
}

TEST_P(BindMounts, the_snapshot_of_a_folder_counts_a_repeated_folder_once) {
  const TempTree tree(fixture);
  expectMounted([&]() -> std::string {
    if (!bind(tree, "inside/original", "inside/copy")) return refusal();
    const FolderSnapshot snapshot = FolderWatch::snapshot(tree.path());
    const std::int64_t size = snapshot.sizes.at(tree.at("inside"));
    return size == 3 * MiB ? "" : std::to_string(size);
  });
}

// For subvolumes of a btrfs, stat reports different devices, and the list of mounts one.
TEST_P(BindMounts, subvolumes_of_one_btrfs_are_all_walked) {
  TempTree tree("disk sparse=128M\ntop/\nmounted/\n");
  expectMounted([&]() -> std::string {
    const std::string disk = "'" + tree.at("disk") + "'";
    const std::string top = "'" + tree.at("top") + "'";
    const std::string mounted = "'" + tree.at("mounted") + "'";
    const std::string make = "mkfs.btrfs -q " + disk + " && mount -o loop " + disk + " " + top +
                             " && btrfs -q subvolume create " + top +
                             "/@ && btrfs -q subvolume create " + top + "/@home && mkdir " + top +
                             "/@/home && mount -o bind " + top + "/@ " + mounted +
                             " && mount -o bind " + top + "/@home " + mounted + "/home";
    if (std::system(("{ " + make + "; } >&2").c_str()) != 0)
      return "refused: " + needs(Need::btrfs, make);
    tree.plant("mounted", "film 1M");
    tree.plant("mounted/home", "sound 2M");
    sync();
    const DiskNode root = scan(tree.at("mounted"));
    if (!has(root, "film") || !has(root, "home/sound")) return treeText(root);
    const DiskNode both = scan(tree.path());
    if (!has(both, "top/@/film") || !has(both, "top/@home/sound")) return treeText(both);
    return below(both, "mounted").size() == 0 ? "" : treeText(both);
  });
}

}  // namespace
}  // namespace tessaly
