// From a map to its comparison with another folder, also with the program's own panel.
#include <cstdint>
#include <functional>
#include <gtest/gtest.h>
#include <string>
#include <vector>

#include <QApplication>
#include <QFileDialog>
#include <QLineEdit>
#include <QPushButton>
#include <QTest>
#include <QTimer>

#include "app/Application.h"
#include "fixture/Services.h"
#include "journeys/Journey.h"
#include "support/WindowItems.h"

namespace tessaly {
namespace {

using Rows = std::vector<FolderCompareRow>;

constexpr std::int64_t MiB = 1048576;

constexpr const char* twoFolders = R"(
  today/
    Movies/
      holiday.mp4 4M
      short.mov 1M
    Code/
      main.cpp 512K
    caf\xe9 2M
  backup/
    Movies/
      holiday.mp4 4M
    Code/
      main.cpp 512K
    old\xff/
      draft 3M
)";

// today/ compared with backup/.
const Rows expectedRows = {{"old\xff", 0, 3 * MiB},
                           {"old\xff/draft", 0, 3 * MiB},
                           {"caf\xe9", 2 * MiB, 0},
                           {"Movies", 5 * MiB, 4 * MiB},
                           {"Movies/short.mov", 1 * MiB, 0}};

class Compare : public Journey {
 protected:
  Compare() : Journey(twoFolders) {}

  void mapOfToday() {
    session().scan(tree_.at("today"));
    finishScan();
    ASSERT_TRUE(shows("canvas"));
  }
};

TEST_F(Compare, comparison_lists_the_differences_between_map_and_folder) {
  mapOfToday();
  folderPanel_.answer = tree_.at("backup");
  session().compareWithFolder();
  EXPECT_EQ(session().shown().vizMode(), VizMode::compare);
  EXPECT_EQ(session().comparison().compareLeftName(), "today");
  EXPECT_EQ(session().comparison().compareRightName(), "backup");
  EXPECT_TRUE(session().comparison().compareRows().empty());
  walk();
  EXPECT_TRUE(session().comparison().compareRows().empty());
  comeHome();
  EXPECT_EQ(session().comparison().compareRows(), expectedRows);
  EXPECT_EQ(session().navigation().current()->path(), tree_.at("today"));
}

TEST_F(Compare, comparison_uses_the_root_of_the_scan_after_drilling_in) {
  mapOfToday();
  clickAt(tilePoint("today/Movies"));
  ASSERT_EQ(session().navigation().current()->path(), tree_.at("today/Movies"));
  folderPanel_.answer = tree_.at("backup");
  session().compareWithFolder();
  finishScan();
  EXPECT_EQ(session().comparison().compareLeftName(), "today");
  EXPECT_EQ(session().comparison().compareRows(), expectedRows);
}

TEST_F(Compare, a_cancelled_panel_leaves_the_map) {
  mapOfToday();
  session().compareWithFolder();
  EXPECT_EQ(folderPanel_.requests.size(), 1u);
  EXPECT_EQ(session().shown().vizMode(), VizMode::treemap);
  EXPECT_TRUE(shows("canvas"));
  EXPECT_EQ(dispatch_.waiting(Dispatch::Queue::userInitiated), 0u);
}

// With the program's own panel.
class CompareWithPanel : public testing::Test {
 protected:
  CompareWithPanel() {
    application_.window().show();
    settle(application_.window());
    session().scan(tree_.at("today"));
    dispatch_.drainAll();
    settle(application_.window());
  }

  ScanSession& session() { return application_.session(); }

  // Runs `answer` on the panel that the comparison opens; expects that it is open.
  void compare(const std::function<void(QFileDialog&)>& answer) {
    bool wasUp = false;
    QTimer::singleShot(0, [&] {
      auto* dialog = qobject_cast<QFileDialog*>(QApplication::activeModalWidget());
      ASSERT_NE(dialog, nullptr);
      wasUp = true;
      answer(*dialog);
      if (dialog->isVisible()) dialog->reject();
    });
    session().compareWithFolder();
    EXPECT_TRUE(wasUp);
  }

  static QPushButton* button(QFileDialog& dialog, const QString& label) {
    for (QPushButton* found : dialog.findChildren<QPushButton*>()) {
      if (found->isVisible() && found->text().remove(QLatin1Char('&')) == label) return found;
    }
    return nullptr;
  }

  // All services are fakes except the panel.
  Application::Services services() {
    Application::Services services = servicesOf(machine_, tree_.path());
    services.folderPanel = nullptr;
    return services;
  }

  TempTree tree_{twoFolders};
  FakeMachine machine_;
  HandSteppedDispatch& dispatch_ = machine_.dispatch;
  Application application_{services()};
};

TEST_F(CompareWithPanel, the_panel_says_what_the_choice_is_for) {
  compare([](QFileDialog& dialog) {
    EXPECT_EQ(dialog.windowTitle(),
              QStringLiteral("Choose a folder to compare with the current map."));
    EXPECT_EQ(dialog.labelText(QFileDialog::Accept), QStringLiteral("Compare"));
    EXPECT_NE(button(dialog, QStringLiteral("Compare")), nullptr);
    EXPECT_EQ(dialog.fileMode(), QFileDialog::Directory);
    EXPECT_TRUE(dialog.testOption(QFileDialog::ShowDirsOnly));
  });
  EXPECT_EQ(session().shown().vizMode(), VizMode::treemap);
  EXPECT_EQ(session().comparison().compareRightName(), "");
}

TEST_F(CompareWithPanel, a_typed_folder_is_compared) {
  compare([](QFileDialog& dialog) {
    auto* name = dialog.findChild<QLineEdit*>(QStringLiteral("fileNameEdit"));
    ASSERT_NE(name, nullptr);
    QTest::keyClicks(name, QStringLiteral("backup"));
    QTest::keyClick(name, Qt::Key_Return);
    EXPECT_FALSE(dialog.isVisible());
  });
  EXPECT_EQ(session().shown().vizMode(), VizMode::compare);
  EXPECT_EQ(session().comparison().compareRightName(), "backup");
  dispatch_.drainAll();
  EXPECT_EQ(session().comparison().compareRows(), expectedRows);
}

TEST_F(CompareWithPanel, a_selected_folder_is_compared) {
  compare([](QFileDialog& dialog) {
    dialog.selectFile(QStringLiteral("backup"));
    QPushButton* accept = button(dialog, QStringLiteral("Compare"));
    ASSERT_NE(accept, nullptr);
    QTest::mouseClick(accept, Qt::LeftButton);
  });
  EXPECT_EQ(session().comparison().compareRightName(), "backup");
  dispatch_.drainAll();
  EXPECT_EQ(session().comparison().compareRows(), expectedRows);
}

TEST_F(CompareWithPanel, escape_closes_the_panel_without_a_comparison) {
  compare([](QFileDialog& dialog) {
    QTest::keyClick(&dialog, Qt::Key_Escape);
    EXPECT_FALSE(dialog.isVisible());
  });
  EXPECT_EQ(session().shown().vizMode(), VizMode::treemap);
  EXPECT_EQ(dispatch_.waiting(Dispatch::Queue::userInitiated), 0u);
}

TEST_F(CompareWithPanel, the_tree_may_change_while_the_panel_is_open) {
  compare([this](QFileDialog& dialog) {
    session().scan(tree_.at("backup"));
    dispatch_.drainAll();
    dialog.selectFile(QStringLiteral("backup"));
    dialog.QDialog::accept();
  });
  EXPECT_EQ(session().comparison().compareLeftName(), "backup");
  dispatch_.drainAll();
  EXPECT_EQ(session().comparison().compareRows(), Rows{});
}

}  // namespace
}  // namespace tessaly
