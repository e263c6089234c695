// A walk that is short of descriptors closes those of folders that it still needs, and reopens the
// folders by name. Another folder may have that name by then.
#include <algorithm>
#include <filesystem>
#include <gtest/gtest.h>
#include <string>
#include <sys/mount.h>
#include <sys/resource.h>
#include <vector>

#include "platform/DirectoryWalk.h"
#include "support/AllDescriptorsBut.h"
#include "support/ForkedChild.h"
#include "support/OwnProcess.h"
#include "support/PrivateMounts.h"
#include "support/TempTree.h"

namespace tessaly {
namespace {

namespace fs = std::filesystem;

// Seven levels with two folders in each folder: on the way down to the first item of the deepest
// level, each level has another folder that is still to be opened.
void plantFolders(const std::string& top) {
  constexpr unsigned levels = 7;
  for (unsigned number = 0; number < 1U << levels; ++number) {
    std::string folder = top;
    for (unsigned level = 0; level < levels; ++level) {
      folder += (number >> level & 1U) != 0 ? "/b" : "/a";
    }
    fs::create_directories(folder + "/end");
  }
}
constexpr std::uint32_t deepest = 9;  // counted from the parent of the planted folders

void plantDecoys(const std::string& top) {
  for (const char* decoy : {"/a/decoy", "/b/decoy"}) fs::create_directories(top + decoy);
}

// A folder to walk, and beside it another one that can replace its "top".
class TopAndOther {
 public:
  TopAndOther() {
    plantFolders(tree_.at("walked/top"));
    plantDecoys(tree_.at("other"));
  }

  std::string walked() const { return tree_.at("walked"); }
  void exchange() const {
    fs::rename(tree_.at("walked/top"), tree_.at("before"));
    fs::rename(tree_.at("other"), tree_.at("walked/top"));
  }
  void exchangeForLink() const {
    fs::rename(tree_.at("walked/top"), tree_.at("before"));
    fs::create_directory_symlink("../other", tree_.at("walked/top"));
  }

 private:
  TempTree tree_{"walked/\n  top/\nother/\n"};
};

// Walks the tree with few descriptors, on the caller's thread alone, and replaces the folder "top"
// in it at the first item of the deepest level, when its descriptor has been closed. "" if the walk
// reports nothing of the replacement.
std::string toldOfAnother(const std::string& root, const std::function<bool()>& exchange,
                          bool hasOneDescriptor = false) {
  const rlimit few{16, 16};
  if (setrlimit(RLIMIT_NOFILE, &few) != 0) return "no limit";
  std::vector<Descriptor> held;
  if (hasOneDescriptor) held = allDescriptorsBut(1);
  DirectoryWalk walk(root, {}, 1);
  bool isExchanged = false;
  int left = 0;
  while (const DirectoryWalk::Item* const item = walk.next()) {
    if (item->name == "decoy") return "the walk has entered another folder";
    if (isExchanged && item->depth == 2 && item->type == DirectoryWalk::Type::directory) ++left;
    if (isExchanged || item->depth != deepest) continue;
    isExchanged = exchange();
    if (!isExchanged) return refusal();
  }
  if (!isExchanged) return "the deepest level was not reached";
  return left > 0 ? "" : "nothing was left to be opened";
}

// The rest of the program uses the other descriptors.
TEST(Reopening, folders_are_closed_and_reopened_to_use_a_quarter_of_the_descriptors) {
  const TempTree tree;
  plantFolders(tree.at("top"));
  EXPECT_EQ(inForkedChild([&]() -> std::string {
              const rlimit few{16, 16};
              if (setrlimit(RLIMIT_NOFILE, &few) != 0) return "no limit";
              const std::size_t before = OwnProcess::now().descriptors;
              std::size_t most = before;
              int items = 0;
              DirectoryWalk walk(tree.path(), {}, 1);
              while (walk.next() != nullptr) {
                most = std::max(most, OwnProcess::now().descriptors);
                ++items;
              }
              if (items != 1 + 2 * 127 + 128) return std::to_string(items) + " items";
              // One of them may be about to be closed.
              const std::size_t open = most - before;
              return open >= 3 && open <= 5 ? "" : std::to_string(open) + " are open";
            }),
            "");
}

TEST(Reopening, another_folder_of_the_same_name_is_not_entered) {
  const TopAndOther trees;
  EXPECT_EQ(inForkedChild([&] {
              return toldOfAnother(trees.walked(), [&] {
                trees.exchange();
                return true;
              });
            }),
            "");
}

// With one descriptor the walk opens whole paths, which may lead elsewhere.
TEST(Reopening, another_folder_at_the_same_path_is_not_entered) {
  const TopAndOther trees;
  EXPECT_EQ(inForkedChild([&] {
              return toldOfAnother(
                  trees.walked(),
                  [&] {
                    trees.exchange();
                    return true;
                  },
                  true);
            }),
            "");
}

TEST(Reopening, a_link_in_the_path_is_not_followed) {
  const TopAndOther trees;
  EXPECT_EQ(inForkedChild([&] {
              return toldOfAnother(
                  trees.walked(),
                  [&] {
                    trees.exchangeForLink();
                    return true;
                  },
                  true);
            }),
            "");
}

// The folder that is not yet open is replaced by a link to its neighbour, which has been opened.
TEST(Reopening, a_link_to_a_folder_beside_it_is_not_followed) {
  TempTree tree("walked/\n  top/\n");
  plantFolders(tree.at("walked/top"));
  EXPECT_EQ(inForkedChild([&]() -> std::string {
              const rlimit few{16, 16};
              if (setrlimit(RLIMIT_NOFILE, &few) != 0) return "no limit";
              const std::vector<Descriptor> held = allDescriptorsBut(1);
              DirectoryWalk walk(tree.at("walked"), {}, 1);
              std::string first;
              int ends = 0;
              while (const DirectoryWalk::Item* const item = walk.next()) {
                if (item->depth == deepest) ++ends;
                if (item->depth != 2 || !first.empty()) continue;
                if (item->type != DirectoryWalk::Type::directory) continue;
                first = item->name;
                const std::string other = first == "a" ? "b" : "a";
                fs::rename(tree.at("walked/top/" + other), tree.at(other));
                fs::create_directory_symlink(first, tree.at("walked/top/" + other));
              }
              return ends == 64 ? "" : std::to_string(ends) + " are told of";
            }),
            "");
}

// Mounts another file system over the one that is walked. The top folders of two tmpfs file systems
// have the same inode number.
std::string toldOfAnotherFileSystem(bool hasOneDescriptor) {
  TempTree tree("top/\n");
  const std::string top = tree.at("top");
  return inPrivateMounts([&]() -> std::string {
    if (::mount("tmpfs", top.c_str(), "tmpfs", 0, nullptr) != 0) return refusal();
    plantFolders(top);
    const auto exchange = [&] {
      if (::mount("tmpfs", top.c_str(), "tmpfs", 0, nullptr) != 0) return false;
      plantDecoys(top);
      return true;
    };
    return toldOfAnother(tree.path(), exchange, hasOneDescriptor);
  });
}

TEST(Reopening, a_folder_with_the_same_inode_number_on_another_file_system_is_not_entered) {
  const std::string told = toldOfAnotherFileSystem(false);
  if (told.starts_with("refused")) GTEST_SKIP() << "no mounting here, " << told;
  EXPECT_EQ(told, "");
}

TEST(Reopening, a_folder_at_the_same_path_on_another_file_system_is_not_entered) {
  const std::string told = toldOfAnotherFileSystem(true);
  if (told.starts_with("refused")) GTEST_SKIP() << "no mounting here, " << told;
  EXPECT_EQ(told, "");
}

}  // namespace
}  // namespace tessaly
