#include "app/window/BreadcrumbModel.h"

#include <gtest/gtest.h>

#include <QAbstractItemModelTester>
#include <QSignalSpy>

#include "app/window/WindowState.h"
#include "session/SessionFixture_test.h"

namespace tessaly {
namespace {

class BreadcrumbModelTest : public SessionFixture {
 protected:
  BreadcrumbModelTest() {
    walks_.at(0).result = tree("/home", 10);
    session().scan("/home");
    dispatch_.drainAll();
  }

  static DiskNode tree(const std::string& path, std::int64_t size) {
    const DiskNode leaf = folder(path + "/b\xff/c", 1, {file(path + "/b\xff/c/f", 1)});
    return folder(path, size, {folder(path + "/b\xff", 2, {leaf})});
  }

  void drillIn() { session().open(session().navigation().current()->children().front()); }

  QStringList names() {
    QStringList names;
    for (int row = 0; row < model_.rowCount(); ++row)
      names << model_.data(model_.index(row), BreadcrumbModel::NameRole).toString();
    return names;
  }
  bool flag(int row, int role) { return model_.data(model_.index(row), role).toBool(); }

  BreadcrumbModel model_{session().navigation()};
  QAbstractItemModelTester tester_{&model_, QAbstractItemModelTester::FailureReportingMode::Fatal};
  AccessController access_{settings_, [] { return true; }};
  WindowState bars_{session(), access_};
};

TEST_F(BreadcrumbModelTest, follows_the_way_down) {
  EXPECT_EQ(names(), QStringList{"home"});
  drillIn();
  drillIn();
  EXPECT_EQ(names(), (QStringList{"home", QStringLiteral("b\ufffd"), "c"}));
}

TEST_F(BreadcrumbModelTest, marks_the_first_and_the_last_step) {
  drillIn();
  drillIn();
  EXPECT_TRUE(flag(0, BreadcrumbModel::FirstRole));
  EXPECT_FALSE(flag(0, BreadcrumbModel::LastRole));
  EXPECT_FALSE(flag(1, BreadcrumbModel::FirstRole));
  EXPECT_FALSE(flag(1, BreadcrumbModel::LastRole));
  EXPECT_FALSE(flag(2, BreadcrumbModel::FirstRole));
  EXPECT_TRUE(flag(2, BreadcrumbModel::LastRole));
}

TEST_F(BreadcrumbModelTest, keeps_the_rows_that_stay) {
  drillIn();
  drillIn();
  QSignalSpy resets(&model_, &BreadcrumbModel::modelReset);
  QSignalSpy removals(&model_, &BreadcrumbModel::rowsRemoved);
  QSignalSpy changes(&model_, &BreadcrumbModel::dataChanged);
  session().navigation().back();
  EXPECT_EQ(names(), (QStringList{"home", QStringLiteral("b\ufffd")}));
  EXPECT_EQ(resets.count(), 0);
  ASSERT_EQ(removals.count(), 1);
  EXPECT_EQ(removals.at(0).at(1).toInt(), 2);
  ASSERT_EQ(changes.count(), 1);
  EXPECT_EQ(changes.at(0).at(0).toModelIndex().row(), 1);
  EXPECT_TRUE(flag(1, BreadcrumbModel::LastRole));
}

TEST_F(BreadcrumbModelTest, leads_to_the_folder_of_a_row) {
  drillIn();
  drillIn();
  model_.jump(0);
  EXPECT_EQ(names(), QStringList{"home"});
  EXPECT_EQ(session().navigation().current()->path(), "/home");
}

TEST_F(BreadcrumbModelTest, begins_anew_with_another_root) {
  drillIn();
  walks_.at(1).result = tree("/srv", 20);
  session().scan("/srv");
  dispatch_.drainAll();
  EXPECT_EQ(names(), QStringList{"srv"});
  EXPECT_TRUE(flag(0, BreadcrumbModel::LastRole));
}

TEST_F(BreadcrumbModelTest, keeps_the_row_of_a_folder_that_has_become_the_root) {
  drillIn();
  walks_.at(1).result = tree("/home/b\xff", 20);
  QSignalSpy changes(&model_, &BreadcrumbModel::dataChanged);
  session().scan("/home/b\xff");
  dispatch_.drainAll();
  EXPECT_EQ(names(), QStringList{QStringLiteral("b\ufffd")});
  EXPECT_TRUE(flag(0, BreadcrumbModel::FirstRole));
  EXPECT_EQ(changes.count(), 1);
}

TEST_F(BreadcrumbModelTest, stands_with_the_back_button_below_the_root_of_the_map) {
  EXPECT_FALSE(bars_.showsBackButton());
  EXPECT_FALSE(bars_.showsBreadcrumbs());
  QSignalSpy changes(&bars_, &WindowState::changed);
  drillIn();
  EXPECT_GE(changes.count(), 1);
  EXPECT_TRUE(bars_.showsBackButton());
  EXPECT_TRUE(bars_.showsBreadcrumbs());
  session().shown().setPane(MainPane::apps);
  EXPECT_TRUE(bars_.showsBackButton());
  EXPECT_FALSE(bars_.showsBreadcrumbs());
}

}  // namespace
}  // namespace tessaly
