#include "scan/KindBreakdown.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>
#include <limits>
#include <string>

namespace tessaly {
namespace {

using testing::ElementsAre;
using testing::IsEmpty;

DiskNode file(const std::string& name, std::int64_t size, FileKind kind) {
  return DiskNode({name, "/r/" + name, size, false, kind, std::nullopt});
}

DiskNode folder(const std::string& name, std::int64_t size, const std::vector<DiskNode>& children,
                FileKind kind = FileKind::folder) {
  return DiskNode({name, "/r/" + name, size, true, kind, std::nullopt}, children);
}

TEST(KindBreakdown, a_file_or_an_empty_folder_has_no_slices) {
  EXPECT_THAT(KindBreakdown::slices(DiskNode()), IsEmpty());
  EXPECT_THAT(KindBreakdown::slices(file("a", 5, FileKind::video)), IsEmpty());
  EXPECT_THAT(KindBreakdown::slices(folder("a", 5, {})), IsEmpty());
}

TEST(KindBreakdown, items_of_size_0_have_no_slice) {
  EXPECT_THAT(KindBreakdown::slices(folder("a", 0, {file("b", 0, FileKind::code)})), IsEmpty());
}

TEST(KindBreakdown, files_are_added_up_by_kind_with_the_largest_first) {
  const DiskNode root =
      folder("a", 100,
             {folder("b", 60, {file("c", 40, FileKind::video), file("d", 20, FileKind::code)}),
              file("e", 30, FileKind::code), file("+ 2 more", 10, FileKind::other)});
  EXPECT_THAT(KindBreakdown::slices(root),
              ElementsAre(KindSlice{FileKind::code, 50, 0.5}, KindSlice{FileKind::video, 40, 0.4},
                          KindSlice{FileKind::other, 10, 0.1}));
}

TEST(KindBreakdown, an_app_counts_as_a_whole) {
  const DiskNode app = folder("X.app", 75, {file("inside", 40, FileKind::image)}, FileKind::app);
  EXPECT_THAT(
      KindBreakdown::slices(folder("a", 100, {app, file("b", 25, FileKind::image)})),
      ElementsAre(KindSlice{FileKind::app, 75, 0.75}, KindSlice{FileKind::image, 25, 0.25}));
}

TEST(KindBreakdown, an_app_that_is_a_file_counts_as_an_app) {
  EXPECT_THAT(KindBreakdown::slices(folder("a", 5, {file("T.app", 5, FileKind::app)})),
              ElementsAre(KindSlice{FileKind::app, 5, 1}));
}

TEST(KindBreakdown, a_folder_counts_only_where_the_tree_stops) {
  const DiskNode root =
      folder("a", 100, {folder("b", 70, {file("c", 10, FileKind::disk)}), folder("d", 30, {})});
  EXPECT_THAT(KindBreakdown::slices(root), ElementsAre(KindSlice{FileKind::folder, 30, 0.75},
                                                       KindSlice{FileKind::disk, 10, 0.25}));
}

TEST(KindBreakdown, equal_slices_are_in_the_order_of_the_kinds) {
  const DiskNode root = folder(
      "a", 9,
      {file("z", 3, FileKind::other), file("y", 3, FileKind::disk), file("x", 3, FileKind::video)});
  const std::vector<KindSlice> slices = KindBreakdown::slices(root);
  ASSERT_EQ(slices.size(), 3U);
  EXPECT_EQ(slices[0].kind, FileKind::video);
  EXPECT_EQ(slices[1].kind, FileKind::disk);
  EXPECT_EQ(slices[2].kind, FileKind::other);
}

TEST(KindBreakdown, only_nodes_below_the_given_one_are_counted) {
  const DiskNode root = folder(
      "a", 9, {folder("b", 5, {file("c", 5, FileKind::code)}), file("d", 4, FileKind::video)});
  EXPECT_THAT(KindBreakdown::slices(root.children().front()),
              ElementsAre(KindSlice{FileKind::code, 5, 1}));
}

TEST(KindBreakdownDeath, an_overflow_of_the_total_ends_the_program) {
  GTEST_FLAG_SET(death_test_style, "threadsafe");
  const std::int64_t huge = std::numeric_limits<std::int64_t>::max();
  const DiskNode root =
      folder("a", huge, {file("b", huge, FileKind::code), file("c", 1, FileKind::video)});
  EXPECT_DEATH(KindBreakdown::slices(root), "overflow");
}

}  // namespace
}  // namespace tessaly
