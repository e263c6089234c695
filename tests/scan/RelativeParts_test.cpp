#include "scan/RelativeParts.h"

#include <filesystem>

#include "scan/ScanFacts.h"
#include "support/SequentialScan.h"

namespace tessaly {
namespace {

using Parts = std::optional<std::vector<std::string>>;

struct RelativePartsOperation {
  const char* name;
  Parts (*call)(const std::string& root, const std::string& path);
};

void PrintTo(const RelativePartsOperation& operation, std::ostream* out) {
  *out << operation.name;
}

class RelativeParts : public testing::TestWithParam<RelativePartsOperation> {
 protected:
  static Parts parts(const std::string& root, const std::string& path) {
    return GetParam().call(root, path);
  }
};

INSTANTIATE_TEST_SUITE_P(
    by, RelativeParts,
    testing::Values(RelativePartsOperation{"model", SequentialScan::relativeParts},
                    RelativePartsOperation{"scanner", DiskScanner::relativeParts}),
    [](const auto& instance) { return std::string(instance.param.name); });

TEST_P(RelativeParts, relative_parts_lead_from_the_root_to_the_path) {
  const TempTree tree(R"(
    a/
      b/
        film 4K
  )");
  EXPECT_EQ(parts(tree.path(), tree.at("a/b/film")), (Parts{{"a", "b", "film"}}));
  EXPECT_EQ(parts(tree.at("a"), tree.at("a/b")), (Parts{{"b"}}));
}

TEST_P(RelativeParts, relative_parts_of_the_root_are_empty_and_not_absent) {
  const TempTree tree("a/");
  EXPECT_EQ(parts(tree.path(), tree.path()), (Parts{std::vector<std::string>{}}));
  EXPECT_EQ(parts(tree.path(), tree.path() + "/"), (Parts{std::vector<std::string>{}}));
  EXPECT_EQ(parts("/", "/"), (Parts{std::vector<std::string>{}}));
}

TEST_P(RelativeParts, relative_parts_are_absent_outside_the_root) {
  const TempTree tree(R"(
    a/
    ab/
      film 4K
  )");
  EXPECT_EQ(parts(tree.at("a"), tree.at("ab")), std::nullopt);
  EXPECT_EQ(parts(tree.at("a"), tree.at("ab/film")), std::nullopt);
  EXPECT_EQ(parts(tree.at("a"), tree.path()), std::nullopt);
  EXPECT_EQ(parts(tree.at("a"), "/"), std::nullopt);
}

TEST_P(RelativeParts, relative_parts_resolve_links_in_both_paths) {
  const TempTree tree(R"(
    real/
      inner/
        film 4K
    alias -> real
    way-out -> /
  )");
  EXPECT_EQ(parts(tree.at("alias"), tree.at("real/inner")), (Parts{{"inner"}}));
  EXPECT_EQ(parts(tree.at("real"), tree.at("alias/inner/film")), (Parts{{"inner", "film"}}));
  EXPECT_EQ(parts(tree.at("alias"), tree.at("real")), (Parts{std::vector<std::string>{}}));
  EXPECT_EQ(parts(tree.path(), tree.at("alias/inner")), (Parts{{"real", "inner"}}));
  EXPECT_EQ(parts(tree.path(), tree.at("way-out")), std::nullopt);
}

TEST_P(RelativeParts, relative_parts_begin_at_the_top_of_the_disk_if_that_is_the_root) {
  const TempTree tree("a/");
  const Parts found = parts("/", tree.at("a"));
  ASSERT_TRUE(found.has_value());
  std::string joined;
  for (const std::string& part : *found) joined += "/" + part;
  EXPECT_EQ(joined, tree.at("a"));
}

TEST_P(RelativeParts, relative_parts_work_for_missing_paths) {
  const TempTree tree;
  EXPECT_EQ(parts(tree.at("missing"), tree.at("missing/a/b")), (Parts{{"a", "b"}}));
  EXPECT_EQ(parts(tree.path(), tree.at("missing")), (Parts{{"missing"}}));
}

TEST_P(RelativeParts, relative_parts_leave_out_empty_components) {
  const TempTree tree("a/\n  b/");
  EXPECT_EQ(parts(tree.path() + "/", tree.path() + "//a///b/"), (Parts{{"a", "b"}}));
}

TEST_P(RelativeParts, relative_parts_keep_bytes_that_are_not_utf8) {
  const TempTree tree("\\xff\\n/\n  \\xfe 4K");
  EXPECT_EQ(parts(tree.path(), tree.at("\xff\n/\xfe")), (Parts{{"\xff\n", "\xfe"}}));
}

}  // namespace
}  // namespace tessaly
