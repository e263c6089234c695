#include "app/panes/KindBreakdownModel.h"

#include <gtest/gtest.h>

#include <QAbstractItemModelTester>
#include <QColor>
#include <QSignalSpy>

namespace tessaly {
namespace {

DiskNode file(const std::string& name, std::int64_t size, FileKind kind) {
  return DiskNode(
      {.name = name, .path = "/" + name, .size = size, .isDir = false, .kind = kind, .mtime = {}});
}

NodeHandle folderOf(const std::vector<DiskNode>& children) {
  return NodeHandle(DiskNode(
      {.name = "", .path = "/", .size = 1000, .isDir = true, .kind = FileKind::folder, .mtime = {}},
      children));
}

class KindBreakdownModelTest : public testing::Test {
 protected:
  QVariant data(int row, int role) { return model_.data(model_.index(row), role); }

  KindBreakdownModel model_;
  QAbstractItemModelTester tester_{&model_, QAbstractItemModelTester::FailureReportingMode::Fatal};
};

TEST_F(KindBreakdownModelTest, is_empty_without_a_node_and_without_content) {
  EXPECT_TRUE(model_.isEmpty());
  model_.setNode(folderOf({}));
  EXPECT_TRUE(model_.isEmpty());
  EXPECT_EQ(model_.rowCount(), 0);
  EXPECT_EQ(model_.summary(), QString());
}

TEST_F(KindBreakdownModelTest, gives_the_largest_kind_first_in_its_colour_and_word) {
  model_.setNode(folderOf({file("a", 250, FileKind::code), file("b", 750, FileKind::video)}));
  ASSERT_EQ(model_.rowCount(), 2);
  EXPECT_EQ(data(0, KindBreakdownModel::WordRole).toString(), QStringLiteral("Video"));
  EXPECT_EQ(data(0, KindBreakdownModel::FractionRole).toDouble(), 0.75);
  EXPECT_EQ(data(0, KindBreakdownModel::PercentTextRole).toString(), QStringLiteral("75%"));
  EXPECT_EQ(data(0, KindBreakdownModel::KindColorRole).value<QColor>(), QColor(0x3B, 0x82, 0xF6));
  EXPECT_EQ(data(1, KindBreakdownModel::WordRole).toString(), QStringLiteral("Developer"));
  EXPECT_EQ(model_.summary(), QStringLiteral("Video 75%, Developer 25%"));
}

TEST_F(KindBreakdownModelTest, rounds_a_half_to_the_even_number) {
  model_.setNode(folderOf({file("a", 125, FileKind::code), file("b", 875, FileKind::video)}));
  EXPECT_EQ(data(0, KindBreakdownModel::PercentTextRole).toString(), QStringLiteral("88%"));
  EXPECT_EQ(data(1, KindBreakdownModel::PercentTextRole).toString(), QStringLiteral("12%"));
}

TEST_F(KindBreakdownModelTest, has_a_bar_as_wide_as_wanted_where_its_segments_have_room) {
  EXPECT_EQ(model_.barWidth(100, 90), 100);
  model_.setNode(folderOf({file("a", 250, FileKind::code), file("b", 750, FileKind::video)}));
  // A gap between the two.
  EXPECT_EQ(model_.barWidth(100, 101), 100);
  EXPECT_NEAR(model_.barWidth(100, 100), 99, 1e-9);
  EXPECT_EQ(KindBreakdownModel::segmentWidth(0.25, 100), 25);
  EXPECT_EQ(KindBreakdownModel::segmentWidth(0.001, 1000), 2);
}

TEST_F(KindBreakdownModelTest, narrows_the_bar_for_segments_that_cannot_be_narrower) {
  model_.setNode(folderOf({file("a", 997, FileKind::video), file("b", 1, FileKind::code),
                           file("c", 1, FileKind::image), file("d", 1, FileKind::archive)}));
  const double width = model_.barWidth(500, 500);
  double end = 3;
  for (int row = 0; row < 4; ++row)
    end += KindBreakdownModel::segmentWidth(data(row, KindBreakdownModel::FractionRole).toDouble(),
                                            width);
  EXPECT_NEAR(end, 500, 1e-9);
  EXPECT_EQ(model_.barWidth(500, 0), 0);
}

TEST_F(KindBreakdownModelTest, narrows_the_bar_until_no_more_segments_come_to_their_least_width) {
  // The second is wider than the least only in a bar as wide as wanted.
  model_.setNode(folderOf({file("a", 974, FileKind::video), file("b", 21, FileKind::code),
                           file("c", 3, FileKind::image), file("d", 2, FileKind::archive)}));
  const double width = model_.barWidth(100, 98);
  double end = 3;
  for (int row = 0; row < 4; ++row)
    end += KindBreakdownModel::segmentWidth(data(row, KindBreakdownModel::FractionRole).toDouble(),
                                            width);
  EXPECT_NEAR(end, 98, 1e-9);
}

TEST_F(KindBreakdownModelTest, is_made_anew_for_another_node) {
  model_.setNode(folderOf({file("a", 1, FileKind::code)}));
  QSignalSpy resets(&model_, &KindBreakdownModel::modelReset);
  model_.setNode(folderOf({file("a", 1, FileKind::image), file("b", 1, FileKind::archive)}));
  EXPECT_EQ(resets.count(), 1);
  EXPECT_EQ(model_.rowCount(), 2);
}

}  // namespace
}  // namespace tessaly
