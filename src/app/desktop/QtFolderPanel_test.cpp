#include "app/desktop/QtFolderPanel.h"

#include <gtest/gtest.h>

#include <QDir>
#include <QFileDialog>
#include <QTemporaryDir>

#include "support/ModalDialog.h"

namespace tessaly {
namespace {

const FolderPanel::Request request{.prompt = "Scan", .message = "Choose a folder to map."};

TEST(QtFolderPanel, a_cancelled_folder_panel_returns_nothing) {
  QtFolderPanel panel("/");
  whenUp<QFileDialog>([](QFileDialog& dialog) { dialog.reject(); });
  EXPECT_EQ(panel.chooseFolder(request), std::nullopt);
}

TEST(QtFolderPanel, the_folder_panel_shows_message_and_prompt) {
  QtFolderPanel panel("/");
  whenUp<QFileDialog>([](QFileDialog& dialog) {
    EXPECT_EQ(dialog.windowTitle(), QStringLiteral("Choose a folder to map."));
    EXPECT_EQ(dialog.labelText(QFileDialog::Accept), QStringLiteral("Scan"));
    EXPECT_EQ(dialog.fileMode(), QFileDialog::Directory);
    EXPECT_TRUE(dialog.testOption(QFileDialog::ShowDirsOnly));
    dialog.reject();
  });
  panel.chooseFolder(request);
}

TEST(QtFolderPanel, the_folder_panel_returns_the_chosen_folder) {
  const QTemporaryDir folder;
  ASSERT_TRUE(QDir(folder.path()).mkdir(QStringLiteral("d\u00e9j\u00e0 vu")));
  QtFolderPanel panel(folder.path().toStdString());
  whenUp<QFileDialog>([](QFileDialog& dialog) {
    dialog.selectFile(QStringLiteral("d\u00e9j\u00e0 vu"));
    dialog.QDialog::accept();
  });
  EXPECT_EQ(panel.chooseFolder(request), folder.path().toStdString() + "/d\xc3\xa9j\xc3\xa0 vu");
}

TEST(QtFolderPanel, the_folder_panel_opens_where_it_was_left) {
  const QTemporaryDir folder;
  ASSERT_TRUE(QDir(folder.path()).mkdir(QStringLiteral("in")));
  QtFolderPanel panel("/");
  whenUp<QFileDialog>([&](QFileDialog& dialog) {
    dialog.setDirectory(folder.path());
    dialog.selectFile(QStringLiteral("in"));
    dialog.QDialog::accept();
  });
  ASSERT_TRUE(panel.chooseFolder(request).has_value());
  whenUp<QFileDialog>([&](QFileDialog& dialog) {
    EXPECT_EQ(dialog.directory().absolutePath(), folder.path());
    dialog.reject();
  });
  panel.chooseFolder(request);
}

}  // namespace
}  // namespace tessaly
