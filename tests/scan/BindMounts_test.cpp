// Folders mounted once more at another place of the walked tree: their sizes count once.
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

// The model knows nothing of mounts that repeat each other.
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

TEST_P(BindMounts, a_folder_of_the_walk_is_counted_once) {
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

TEST_P(BindMounts, a_folder_from_elsewhere_is_walked) {
  const TempTree tree(fixture);
  expectMounted([&]() -> std::string {
    if (!bind(tree, "outside", "inside/copy")) return refusal();
    const DiskNode root = scan(tree.at("inside"));
    if (!has(root, "copy/film")) return treeText(root);
    return wrong(root, 7 * MiB);
  });
}

TEST_P(BindMounts, the_root_of_the_scan_is_walked) {
  const TempTree tree(fixture);
  expectMounted([&]() -> std::string {
    if (!bind(tree, "inside/original", "inside/copy")) return refusal();
    return wrong(scan(tree.at("inside/copy")), 2 * MiB);
  });
}

TEST_P(BindMounts, a_copy_is_walked_where_the_original_is_excluded) {
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

TEST_P(BindMounts, a_copy_is_walked_where_a_name_keeps_the_walk_from_the_original) {
  const TempTree tree("Backups.backupdb/\n  film 1M\ncopy/\n");
  expectMounted([&]() -> std::string {
    if (!bind(tree, "Backups.backupdb", "copy")) return refusal();
    return wrong(scan(tree.path()), 1 * MiB);
  });
}

TEST_P(BindMounts, of_two_copies_of_what_lies_outside_one_is_walked) {
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

TEST_P(BindMounts, a_folder_bound_into_itself_is_counted_once) {
  const TempTree tree("film 1M\na/\n  film 1M\n  b/\n");
  expectMounted([&]() -> std::string {
    if (!bind(tree, "", "a/b", MS_REC)) return refusal();
    return wrong(scan(tree.path()), 2 * MiB);
  });
}

TEST_P(BindMounts, disks_in_a_folder_that_is_bound_with_them_are_counted_once) {
  TempTree tree("a/\n  film 1M\n  disk/\nb/\n");
  expectMounted([&]() -> std::string {
    if (mount("tmpfs", tree.at("a/disk").c_str(), "tmpfs", 0, nullptr) != 0) return refusal();
    tree.plant("a/disk", "sound 2M");
    if (!bind(tree, "a", "b", MS_REC)) return refusal();
    return wrong(scan(tree.path()), 3 * MiB);
  });
}

TEST_P(BindMounts, a_disk_that_only_the_copy_holds_is_counted) {
  TempTree tree("a/\n  film 1M\n  disk/\nb/\n");
  expectMounted([&]() -> std::string {
    if (!bind(tree, "a", "b")) return refusal();
    if (mount("tmpfs", tree.at("b/disk").c_str(), "tmpfs", 0, nullptr) != 0) return refusal();
    tree.plant("b/disk", "sound 2M");
    const DiskNode root = scan(tree.path());
    return has(root, "b/disk/sound") ? "" : treeText(root);
  });
}

TEST_P(BindMounts, a_copy_is_walked_where_another_disk_hides_the_original) {
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

TEST_P(BindMounts, names_that_are_no_text_make_no_difference) {
  const TempTree tree("caf\\xe9\\sx/\n  film 1M\ncopy\\xff\\n/\n");
  expectMounted([&]() -> std::string {
    const std::string to = tree.path() + "/copy\xff\n";
    const std::string from = tree.path() + "/caf\xe9 x";
    if (mount(from.c_str(), to.c_str(), nullptr, MS_BIND, nullptr) != 0) return refusal();
    return wrong(scan(tree.path()), 1 * MiB);
  });
}

// Somebody takes the mount away while the walk is on its way there.
TEST_P(BindMounts, what_lies_under_a_copy_is_walked_once_that_is_gone) {
  const TempTree tree("original/\n  film 1M\nway/\n  copy/\n    below 2M\n");
  expectMounted([&]() -> std::string {
    if (!bind(tree, "original", "way/copy")) return refusal();
    // The walk asks about the way to the copy first of all, and then about each folder on it.
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

TEST_P(BindMounts, a_snapshot_of_a_folder_counts_once_what_a_child_holds_twice) {
  const TempTree tree(fixture);
  expectMounted([&]() -> std::string {
    if (!bind(tree, "inside/original", "inside/copy")) return refusal();
    const FolderSnapshot snapshot = FolderWatch::snapshot(tree.path());
    const std::int64_t size = snapshot.sizes.at(tree.at("inside"));
    return size == 3 * MiB ? "" : std::to_string(size);
  });
}

// The device that stat tells differs between the parts of one btrfs, and the one in the list of
// mounts does not.
TEST_P(BindMounts, parts_of_one_btrfs_are_walked_each) {
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
