#include "app/quicklook/PreviewRowsModel.h"

#include <gtest/gtest.h>

#include <QAbstractItemModelTester>

namespace tessaly {
namespace {

TEST(PreviewRowsModel, each_row_has_symbol_name_and_value) {
  PreviewRowsModel model;
  const QAbstractItemModelTester tester(&model,
                                        QAbstractItemModelTester::FailureReportingMode::Fatal);
  EXPECT_EQ(model.rowCount(), 0);
  model.setRows({{"doc", "a.txt", "1 B"}, {{}, "Kind", "File"}});
  ASSERT_EQ(model.rowCount(), 2);
  EXPECT_EQ(model.data(model.index(0), PreviewRowsModel::SymbolRole).toString(), "doc");
  EXPECT_EQ(model.data(model.index(0), PreviewRowsModel::NameRole).toString(), "a.txt");
  EXPECT_EQ(model.data(model.index(1), PreviewRowsModel::ValueRole).toString(), "File");
}

TEST(PreviewRowsModel, new_rows_replace_the_old_ones) {
  PreviewRowsModel model;
  model.setRows({{"doc", "a", ""}, {"doc", "b", ""}});
  model.setRows({{"doc", "c", ""}});
  ASSERT_EQ(model.rowCount(), 1);
  EXPECT_EQ(model.data(model.index(0), PreviewRowsModel::NameRole).toString(), "c");
}

}  // namespace
}  // namespace tessaly
