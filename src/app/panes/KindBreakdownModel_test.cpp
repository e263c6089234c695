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

TEST_F(KindBreakdownModelTest, the_model_is_empty_without_a_node_or_without_content) {
  EXPECT_TRUE(model_.isEmpty());
  model_.setNode(folderOf({}));
  EXPECT_TRUE(model_.isEmpty());
  EXPECT_EQ(model_.rowCount(), 0);
  EXPECT_EQ(model_.summary(), QString());
}

TEST_F(KindBreakdownModelTest, the_largest_kind_is_first_with_its_colour_and_word) {
  model_.setNode(folderOf({file("a", 250, FileKind::code), file("b", 750, FileKind::video)}));
  ASSERT_EQ(model_.rowCount(), 2);
  EXPECT_EQ(data(0, KindBreakdownModel::WordRole).toString(), QStringLiteral("Video"));
  EXPECT_EQ(model_.slices()[0].fraction, 0.75);
  EXPECT_EQ(data(0, KindBreakdownModel::PercentTextRole).toString(), QStringLiteral("75%"));
  EXPECT_EQ(data(0, KindBreakdownModel::KindColorRole).value<QColor>(), QColor(0x3B, 0x82, 0xF6));
  EXPECT_EQ(data(1, KindBreakdownModel::WordRole).toString(), QStringLiteral("Developer"));
  EXPECT_EQ(model_.summary(), QStringLiteral("Video 75%, Developer 25%"));
}

TEST_F(KindBreakdownModelTest, half_a_percent_is_rounded_to_the_even_number) {
  model_.setNode(folderOf({file("a", 125, FileKind::code), file("b", 875, FileKind::video)}));
  EXPECT_EQ(data(0, KindBreakdownModel::PercentTextRole).toString(), QStringLiteral("88%"));
  EXPECT_EQ(data(1, KindBreakdownModel::PercentTextRole).toString(), QStringLiteral("12%"));
}

TEST_F(KindBreakdownModelTest, another_node_resets_the_model) {
  model_.setNode(folderOf({file("a", 1, FileKind::code)}));
  QSignalSpy resets(&model_, &KindBreakdownModel::modelReset);
  model_.setNode(folderOf({file("a", 1, FileKind::image), file("b", 1, FileKind::archive)}));
  EXPECT_EQ(resets.count(), 1);
  EXPECT_EQ(model_.rowCount(), 2);
}

}  // namespace
}  // namespace tessaly
