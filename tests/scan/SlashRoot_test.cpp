// The root of a disk: a child process makes a fixture its own "/".
#include <fstream>
#include <sched.h>
#include <string_view>
#include <unistd.h>

#include "scan/ScanFacts.h"
#include "support/Needs.h"
#include "support/SequentialTree.h"
#include "support/TreeDifference.h"

namespace tessaly {
namespace {

class SlashRoot : public ScanFacts {
 protected:
  // Runs `body` with `tree` as "/". Returns false, with the reason printed, if that is forbidden.
  static bool inside(const TempTree& tree, const std::function<std::string()>& body,
                     std::string& told) {
    SequentialScan::lowerCased("A");  // loads tables from files that will be out of reach
    constexpr std::string_view refused = "refused";
    told = inForkedChild([&]() -> std::string {
      if (geteuid() != 0 && unshare(CLONE_NEWUSER) != 0) return std::string(refused);
      if (chroot(tree.path().c_str()) != 0 || chdir("/") != 0) return std::string(refused);
      return body();
    });
    return told != refused;
  }

  static void expectInside(const TempTree& tree, const std::function<std::string()>& body) {
    std::string told;
    if (!inside(tree, body, told))
      GTEST_SKIP() << needs(Need::changedRoot, "a root of its own for a test");
    EXPECT_EQ(told, "");
  }
};
TESSALY_FOR_ALL_WALKERS(SlashRoot);

constexpr const char* disk = R"(
  Users/
    me/
      Downloads/
        tiny 4K
      film 1M
  Volumes/
    other/
      film 1M
  private/
    var/
      film 1M
  tmp -> private/tmp
  var -> private/var
  home/
    me/
      proc/
        film 1M
  proc/
    film 1M
  film 1M
)";

TEST_P(SlashRoot, slash_is_named_after_the_disk) {
  const TempTree tree(disk);
  expectInside(tree, []() -> std::string {
    const DiskNode root = GetParam().scan("/");
    if (root.name() != "Macintosh HD") return "named " + std::string(root.name());
    if (root.path() != "/") return "path " + root.path();
    const std::string film = below(root, "home/me/proc/film").path();
    return film == "/home/me/proc/film" ? "" : "path " + film;
  });
}

TEST_P(SlashRoot, names_of_the_system_are_left_out_only_at_the_top_of_slash) {
  const TempTree tree(disk);
  expectInside(tree, []() -> std::string {
    const DiskNode linux = GetParam().scan("/", {}, {}, Places::forLinux());
    const DiskNode macos = GetParam().scan("/", {}, {}, Places::forMacos());
    if (childNames(linux) !=
        std::vector<std::string>{"Users", "Volumes", "film", "home", "private"})
      return treeText(linux);
    if (linux.size() != 5 * MiB + 4 * KiB) return treeText(linux);
    if (childNames(macos) != std::vector<std::string>{"Users", "film"}) return treeText(macos);
    if (macos.size() != 2 * MiB + 4 * KiB) return treeText(macos);
    return has(macos, "Users/me/Downloads/tiny") ? "" : treeText(macos);
  });
}

TEST_P(SlashRoot, names_left_out_at_the_top_are_reported_and_finished) {
  const TempTree tree(R"(
    proc/
      film 1M
  )");
  expectInside(tree, []() -> std::string {
    ScanRecord record;
    GetParam().scan("/", record.callbacks(), {}, Places::forLinux());
    if (record.lines() != std::vector<std::string>{"0%  proc", "Building map…"}) return "lines";
    if (record.fractions() != std::vector<double>{0, 0, 1, 1}) return "fractions";
    return record.polls() == 2 ? "" : "what is left out was walked";
  });
}

TEST_P(SlashRoot, a_folder_above_is_reached_by_a_relative_path_too) {
  const TempTree tree(disk);
  expectInside(tree, []() -> std::string {
    return GetParam().scan("/Users/..") == GetParam().scan("/") ? "" : "another tree";
  });
}

TEST_P(SlashRoot, excluded_prefixes_work_below_slash) {
  const TempTree tree(disk);
  expectInside(tree, []() -> std::string {
    DiskScanner::Options options;
    options.extraPrefixes = {"/Users/me/"};
    const DiskNode root = GetParam().scan("/", {}, options, Places::forLinux());
    if (!has(root, "Users") || has(root, "Users/me")) return treeText(root);
    options.extraPrefixes = {"/"};
    return GetParam().scan("/", {}, options, Places::forLinux()).size() == 0 ? "" : "not all";
  });
}

TEST_P(SlashRoot, the_remainder_of_slash_is_directly_below_it) {
  const TempTree tree(R"(
    large-first 256K
    large-### = large-first x100
  )");
  expectInside(tree, []() -> std::string {
    const std::string path = GetParam().scan("/").children()[80].path();
    return path == "/__rest__" ? "" : path;
  });
}

}  // namespace
}  // namespace tessaly
