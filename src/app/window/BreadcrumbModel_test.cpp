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
  CommandTarget target_{session()};
  WindowState bars_{session(), access_, target_};
};

TEST_F(BreadcrumbModelTest, the_rows_are_the_folders_down_to_the_one_on_screen) {
  EXPECT_EQ(names(), QStringList{"home"});
  drillIn();
  drillIn();
  EXPECT_EQ(names(), (QStringList{"home", QStringLiteral("b\ufffd"), "c"}));
}

TEST_F(BreadcrumbModelTest, the_first_and_the_last_row_are_marked) {
  drillIn();
  drillIn();
  EXPECT_TRUE(flag(0, BreadcrumbModel::FirstRole));
  EXPECT_FALSE(flag(0, BreadcrumbModel::LastRole));
  EXPECT_FALSE(flag(1, BreadcrumbModel::FirstRole));
  EXPECT_FALSE(flag(1, BreadcrumbModel::LastRole));
  EXPECT_FALSE(flag(2, BreadcrumbModel::FirstRole));
  EXPECT_TRUE(flag(2, BreadcrumbModel::LastRole));
}

TEST_F(BreadcrumbModelTest, going_back_removes_the_last_row_and_keeps_the_others) {
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

TEST_F(BreadcrumbModelTest, a_jump_shows_the_folder_of_its_row) {
  drillIn();
  drillIn();
  model_.jump(0);
  EXPECT_EQ(names(), QStringList{"home"});
  EXPECT_EQ(session().navigation().current()->path(), "/home");
}

TEST_F(BreadcrumbModelTest, a_scan_of_another_root_replaces_the_rows) {
  drillIn();
  walks_.at(1).result = tree("/srv", 20);
  session().scan("/srv");
  dispatch_.drainAll();
  EXPECT_EQ(names(), QStringList{"srv"});
  EXPECT_TRUE(flag(0, BreadcrumbModel::LastRole));
}

TEST_F(BreadcrumbModelTest, the_row_of_a_folder_that_becomes_the_root_is_kept) {
  drillIn();
  walks_.at(1).result = tree("/home/b\xff", 20);
  QSignalSpy changes(&model_, &BreadcrumbModel::dataChanged);
  session().scan("/home/b\xff");
  dispatch_.drainAll();
  EXPECT_EQ(names(), QStringList{QStringLiteral("b\ufffd")});
  EXPECT_TRUE(flag(0, BreadcrumbModel::FirstRole));
  EXPECT_EQ(changes.count(), 1);
}

TEST_F(BreadcrumbModelTest, back_button_and_breadcrumbs_are_shown_below_the_root) {
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
