#include <filesystem>
#include <unistd.h>

#include "scan/ScanFacts.h"

namespace tessaly {
namespace {

namespace fs = std::filesystem;

using testing::ElementsAre;
using testing::IsEmpty;

class Roots : public ScanFacts {
 protected:
  // The result for a root that does not exist.
  static void expectNothing(const std::string& path) {
    ScanRecord record;
    const DiskNode root = GetParam().scan(path, record.callbacks());
    EXPECT_EQ(root.size(), 0);
    EXPECT_TRUE(root.isDir());
    EXPECT_EQ(root.mtime(), std::nullopt);
    EXPECT_THAT(childNames(root), IsEmpty());
    EXPECT_THAT(record.fractions(), ElementsAre(1.0));
    EXPECT_THAT(record.lines(), IsEmpty());
  }
};
TESSALY_FOR_ALL_WALKERS(Roots);

TEST_P(Roots, a_link_as_root_is_resolved) {
  const TempTree tree(R"(
    real/
      film 1M
    alias -> real
    second -> alias
  )");
  const DiskNode root = scan(tree.at("second"));
  EXPECT_EQ(root.name(), "real");
  EXPECT_EQ(root.path(), tree.at("real"));
  EXPECT_EQ(below(root, "film").path(), tree.at("real/film"));
}

TEST_P(Roots, a_link_in_the_path_of_the_root_is_resolved) {
  const TempTree tree(R"(
    real/
      inner/
        film 1M
    alias -> real
  )");
  EXPECT_EQ(scan(tree.at("alias/inner")).path(), tree.at("real/inner"));
  EXPECT_EQ(scan(tree.at("alias/inner")), scan(tree.at("real/inner")));
}

TEST_P(Roots, slashes_and_dots_change_nothing) {
  const TempTree tree(R"(
    a/
      film 1M
    b/
  )");
  const DiskNode plain = scan(tree.at("a"));
  EXPECT_EQ(plain.name(), "a");
  EXPECT_EQ(plain.path(), tree.at("a"));
  EXPECT_EQ(scan(tree.at("a/")), plain);
  EXPECT_EQ(scan(tree.at("a//")), plain);
  EXPECT_EQ(scan(tree.at("b/../a/.")), plain);
  EXPECT_EQ(scan("//" + tree.path() + "/./a"), plain);
}

TEST_P(Roots, a_relative_root_starts_at_the_current_directory) {
  const TempTree tree(R"(
    a/
      film 1M
  )");
  const fs::path before = fs::current_path();
  fs::current_path(tree.path());
  const DiskNode relative = scan("a");
  fs::current_path(before);
  EXPECT_EQ(relative, scan(tree.at("a")));
}

TEST_P(Roots, a_missing_root_is_a_root_without_children) {
  const TempTree tree;
  expectNothing(tree.at("missing"));
  EXPECT_EQ(scan(tree.at("missing")).name(), "missing");
  EXPECT_EQ(scan(tree.at("missing")).path(), tree.at("missing"));
  EXPECT_EQ(scan(tree.at("missing/deeper")).name(), "deeper");
  EXPECT_EQ(scan(tree.at("missing.app")).kind(), FileKind::app);
}

TEST_P(Roots, a_file_as_root_is_a_root_without_children) {
  const TempTree tree("film.mkv 1M");
  expectNothing(tree.at("film.mkv"));
  EXPECT_EQ(scan(tree.at("film.mkv")).name(), "film.mkv");
  EXPECT_EQ(scan(tree.at("film.mkv")).kind(), FileKind::folder);
}

TEST_P(Roots, a_pipe_as_root_does_not_block) {
  const TempTree tree("pipe fifo");
  expectNothing(tree.at("pipe"));
}

TEST_P(Roots, dangling_links_give_a_root_without_children) {
  const TempTree tree(R"(
    dangling -> nowhere
    ping -> pong
    pong -> ping
  )");
  expectNothing(tree.at("dangling"));
  expectNothing(tree.at("ping"));
}

TEST_P(Roots, a_root_without_access_is_a_root_without_children) {
  const TempTree tree(R"(
    locked/ mode=0
      film 1M
    unlisted/ mode=0311
      film 1M
    open/
  )");
  const auto told = asOtherUser([&]() -> std::string {
    for (const char* name : {"locked", "unlisted"}) {
      ScanRecord record;
      const DiskNode root = GetParam().scan(tree.at(name), record.callbacks());
      if (root.size() != 0 || !root.children().empty()) return "a root that could not be read";
      if (root.path() != tree.at(name) || root.name() != name) return "another root";
      if (record.fractions() != std::vector<double>{1.0}) return "other fractions";
      if (!record.lines().empty()) return "a line";
    }
    return "";
  });
  EXPECT_EQ(told, "");
}

TEST_P(Roots, a_root_inside_a_locked_folder_is_a_root_without_children) {
  const TempTree tree(R"(
    locked/ mode=0
      inner/
        film 1M
  )");
  const auto told = asOtherUser([&]() -> std::string {
    const DiskNode root = GetParam().scan(tree.at("locked/inner"));
    if (root.size() != 0 || !root.children().empty()) return "a root that could not be read";
    return root.name() == "inner" ? "" : "another name";
  });
  EXPECT_EQ(told, "");
}

TEST_P(Roots, an_empty_folder_reports_all_progress) {
  const TempTree tree("empty/");
  ScanRecord record;
  const DiskNode root = GetParam().scan(tree.at("empty"), record.callbacks());
  EXPECT_EQ(root.size(), 0);
  EXPECT_EQ(root.kind(), FileKind::folder);
  EXPECT_THAT(record.fractions(), ElementsAre(0.0, 1.0));
  EXPECT_THAT(record.lines(), ElementsAre("Building map…"));
}

}  // namespace
}  // namespace tessaly
