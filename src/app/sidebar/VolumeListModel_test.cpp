#include "app/sidebar/VolumeListModel.h"

#include <gtest/gtest.h>

#include <QAbstractItemModelTester>
#include <QSignalSpy>

#include "session/SessionFixture_test.h"

namespace tessaly {
namespace {

class VolumeListModelTest : public SessionFixture {
 protected:
  QVariant at(int row, int role) { return model_.data(model_.index(row), role); }

  VolumeListModel model_{session().machine()};
  QAbstractItemModelTester tester_{&model_, QAbstractItemModelTester::FailureReportingMode::Fatal};
};

TEST_F(VolumeListModelTest, the_rows_follow_the_mounted_volumes) {
  EXPECT_EQ(model_.count(), 0);
  const QSignalSpy counts(&model_, &VolumeListModel::countChanged);
  df_ =
      "Filesystem 1K-blocks Used Available Use% Mounted on\n"
      "/dev/sda1 100 60 40 60% /\n"
      "/dev/sdb1 200 50 150 25% /media/st\xef"
      "ck\n";
  scanTo(folder("/data", 1, {file("/data/f", 1)}));
  EXPECT_EQ(counts.count(), 1);
  ASSERT_EQ(model_.count(), 2);
  EXPECT_EQ(at(0, VolumeListModel::NameRole).toString().toStdString(), "System Disk");
  EXPECT_EQ(at(0, VolumeListModel::PathRole).value<PathHandle>().path(), "/");
  EXPECT_EQ(at(1, VolumeListModel::NameRole).toString().toStdString(), "st\uFFFDck");
  EXPECT_EQ(at(1, VolumeListModel::PathRole).value<PathHandle>().path(),
            "/media/st\xef"
            "ck");
}

}  // namespace
}  // namespace tessaly
