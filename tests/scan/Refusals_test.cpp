// Items that must not be read. Some machines run the tests as root, to whom nothing is refused, so
// the scans run in a child as another user.
#include "scan/ScanFacts.h"
#include "support/SequentialScan.h"
#include "support/TreeDifference.h"

namespace tessaly {
namespace {

class Refusals : public ScanFacts {
 protected:
  static void expectAsOther(const std::function<std::string()>& body) {
    EXPECT_EQ(asOtherUser(body), "");
  }
};
TESSALY_FOR_ALL_WALKERS(Refusals);

std::string expectSize(const DiskNode& node, std::int64_t size) {
  return node.size() == size ? "" : treeText(node);
}

TEST_P(Refusals, a_locked_folder_is_a_folder_without_children_and_the_rest_counts) {
  const TempTree tree(R"(
    before/
      film 1M
    locked/ mode=0
      film 1M
    after/
      film 1M
  )");
  expectAsOther([&]() -> std::string {
    const DiskNode root = scan(tree.path());
    const DiskNode locked = below(root, "locked");
    if (!locked.isDir() || locked.size() != 0 || !locked.children().empty()) return treeText(root);
    if (locked.mtime() != 1600000000.0) return "another time";
    return expectSize(root, 2 * MiB);
  });
}

TEST_P(Refusals, a_folder_that_may_be_entered_but_not_listed_is_empty) {
  const TempTree tree(R"(
    unlisted/ mode=0311
      film 1M
    film 1M
  )");
  expectAsOther([&] { return expectSize(scan(tree.path()), 1 * MiB); });
}

TEST_P(Refusals, a_folder_that_may_be_listed_but_not_entered_counts_nothing) {
  const TempTree tree(R"(
    listed/ mode=0444
      film 1M
      folder/
        film 1M
    film 1M
  )");
  expectAsOther([&]() -> std::string {
    ScanRecord record;
    const DiskNode root = GetParam().scan(tree.path(), record.callbacks());
    if (root.size() != 1 * MiB) return treeText(root);
    if (record.polls() != 5) return "its names are items: " + std::to_string(record.polls());
    return has(root, "listed") ? "" : treeText(root);
  });
}

TEST_P(Refusals, names_without_attributes_are_empty_files_in_important_folders) {
  const TempTree tree(R"(
    Documents/ mode=0444
      film 1M
      Tool.app/
        film 1M
  )");
  expectAsOther([&]() -> std::string {
    const DiskNode documents = below(scan(tree.path()), "Documents");
    if (childNames(documents) != std::vector<std::string>{"Tool.app", "film"})
      return treeText(documents);
    const DiskNode film = below(documents, "film");
    if (film.isDir() || film.size() != 0 || film.mtime()) return treeText(film);
    return below(documents, "Tool.app").isDir() ? "" : treeText(documents);
  });
}

TEST_P(Refusals, a_locked_package_has_the_length_of_its_entry) {
  const TempTree tree(R"(
    Locked.app/ mode=0
      film 1M
    Half.app/
      film 1M
      inner/ mode=0
        film 1M
  )");
  expectAsOther([&]() -> std::string {
    const DiskNode root = scan(tree.path());
    if (below(root, "Half.app").size() != 1 * MiB) return treeText(root);
    return expectSize(below(root, "Locked.app"), tree.length("Locked.app"));
  });
}

TEST_P(Refusals, an_unreadable_file_counts) {
  const TempTree tree("secret 1M mode=0");
  expectAsOther([&] { return expectSize(scan(tree.path()), 1 * MiB); });
}

TEST_P(Refusals, many_locked_folders_give_the_result_of_the_model) {
  const TempTree tree(R"(
    a-##/ x30
      locked-#/ mode=0 x5
        film 4K
      listed-#/ mode=0444 x3
        film 4K
      unlisted-#/ mode=0311 x3
        film 4K
      open-#/ x5
        film 4K
        film-large 256K
      Package.app/
        locked/ mode=0
          film 4K
        film 4K
  )");
  expectAsOther([&]() -> std::string {
    ScanRecord expected;
    ScanRecord record;
    const DiskNode model = SequentialScan::scan(tree.path(), expected.callbacks());
    const DiskNode root = GetParam().scan(tree.path(), record.callbacks());
    return differenceOf(model, root) + differenceOf(expected, record);
  });
}

}  // namespace
}  // namespace tessaly
