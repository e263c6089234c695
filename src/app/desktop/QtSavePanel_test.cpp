#include "app/desktop/QtSavePanel.h"

#include <fstream>
#include <gtest/gtest.h>

#include <QDir>
#include <QFileDialog>
#include <QLineEdit>
#include <QMessageBox>
#include <QTemporaryDir>
#include <QToolButton>

#include "support/ModalDialog.h"

namespace tessaly {
namespace {

const SavePanel::Request request{
    .fileName = "marrow-home.json", .extension = "json", .canCreateDirectories = true};

QString typedIn(const QFileDialog& dialog) {
  return dialog.findChild<QLineEdit*>(QStringLiteral("fileNameEdit"))->text();
}

void type(QFileDialog& dialog, const QString& name) {
  dialog.findChild<QLineEdit*>(QStringLiteral("fileNameEdit"))->setText(name);
}

void accept(QDialog& dialog) {
  dialog.accept();
}

class QtSavePanelTest : public testing::Test {
 protected:
  std::string at(const std::string& name) const {
    return folder_.path().toStdString() + "/" + name;
  }

  // The result for a name that the user types.
  std::optional<std::string> chosenFor(const QString& name) {
    whenUp<QFileDialog>([name](QFileDialog& dialog) {
      type(dialog, name);
      accept(dialog);
      if (dialog.isVisible()) dialog.reject();
    });
    return panel_.chooseFile(request);
  }

  QTemporaryDir folder_;
  QtSavePanel panel_{folder_.path().toStdString()};
};

TEST_F(QtSavePanelTest, a_cancelled_save_panel_returns_nothing) {
  whenUp<QFileDialog>([](QFileDialog& dialog) { dialog.reject(); });
  EXPECT_EQ(panel_.chooseFile(request), std::nullopt);
}

TEST_F(QtSavePanelTest, the_save_panel_is_for_writing_a_file_with_the_extension) {
  whenUp<QFileDialog>([](QFileDialog& dialog) {
    EXPECT_EQ(dialog.acceptMode(), QFileDialog::AcceptSave);
    EXPECT_EQ(dialog.fileMode(), QFileDialog::AnyFile);
    EXPECT_EQ(dialog.nameFilters(), QStringList{QStringLiteral("JSON (*.json)")});
    EXPECT_TRUE(dialog.testOption(QFileDialog::DontUseNativeDialog));
    EXPECT_FALSE(dialog.testOption(QFileDialog::DontConfirmOverwrite));
    dialog.reject();
  });
  panel_.chooseFile(request);
}

TEST_F(QtSavePanelTest, the_save_panel_suggests_the_name) {
  whenUp<QFileDialog>([](QFileDialog& dialog) {
    EXPECT_EQ(typedIn(dialog), QStringLiteral("marrow-home.json"));
    accept(dialog);
  });
  EXPECT_EQ(panel_.chooseFile(request), at("marrow-home.json"));
}

TEST_F(QtSavePanelTest, the_save_panel_suggests_a_valid_name) {
  whenUp<QFileDialog>([](QFileDialog& dialog) { accept(dialog); });
  EXPECT_EQ(panel_.chooseFile({.fileName = "marrow-a/\"b\"\n\xff.json", .extension = "json"}),
            at("marrow-a-'b'-\ufffd.json"));
  whenUp<QFileDialog>([](QFileDialog& dialog) { accept(dialog); });
  EXPECT_EQ(panel_.chooseFile({.fileName = std::string(300, 'a'), .extension = "json"}),
            at(std::string(250, 'a') + ".json"));
}

TEST_F(QtSavePanelTest, the_save_panel_suggests_a_free_name_for_a_new_file) {
  SavePanel::Request forNewFile = request;
  forNewFile.isForNewFile = true;
  for (const char* name : {"marrow-home.json", "marrow-home 2.json", "marrow-home 3.json"}) {
    whenUp<QFileDialog>([&](QFileDialog& dialog) {
      EXPECT_EQ(typedIn(dialog), QString::fromUtf8(name));
      accept(dialog);
    });
    EXPECT_EQ(panel_.chooseFile(forNewFile), at(name));
    std::ofstream(at(name)) << "old";
  }
  whenUp<QFileDialog>([](QFileDialog& dialog) {
    EXPECT_EQ(typedIn(dialog), QStringLiteral("marrow-home.json"));
    dialog.reject();
  });
  panel_.chooseFile(request);
}

TEST_F(QtSavePanelTest, the_save_panel_creates_folders_if_allowed) {
  for (const bool canCreate : {true, false}) {
    whenUp<QFileDialog>([canCreate](QFileDialog& dialog) {
      EXPECT_EQ(dialog.findChild<QToolButton*>(QStringLiteral("newFolderButton"))->isEnabled(),
                canCreate);
      dialog.reject();
    });
    panel_.chooseFile(
        {.fileName = "a.json", .extension = "json", .canCreateDirectories = canCreate});
  }
}

TEST_F(QtSavePanelTest, the_save_panel_appends_a_missing_extension) {
  EXPECT_EQ(chosenFor(QStringLiteral("report")), at("report.json"));
  EXPECT_EQ(chosenFor(QStringLiteral("backup.2024")), at("backup.2024.json"));
  EXPECT_EQ(chosenFor(QStringLiteral("d\u00e9j\u00e0 vu")), at("d\u00e9j\u00e0 vu.json"));
  EXPECT_EQ(chosenFor(QStringLiteral("report.json")), at("report.json"));
  EXPECT_EQ(chosenFor(QStringLiteral("REPORT.JSON")), at("REPORT.JSON"));
}

TEST_F(QtSavePanelTest, the_save_panel_returns_the_typed_path) {
  ASSERT_TRUE(QDir(folder_.path()).mkdir(QStringLiteral("in")));
  EXPECT_EQ(chosenFor(QStringLiteral("in/report")), at("in/report.json"));
  EXPECT_EQ(chosenFor(folder_.path() + QStringLiteral("/in/other")), at("in/other.json"));
}

TEST_F(QtSavePanelTest, the_save_panel_refuses_a_name_that_no_file_can_have) {
  EXPECT_EQ(chosenFor(QString()), std::nullopt);
  EXPECT_EQ(chosenFor(QString(251, QLatin1Char('a'))), std::nullopt);
  EXPECT_EQ(chosenFor(QString(126, QChar(0xe9))), std::nullopt);
  EXPECT_EQ(chosenFor(QString(125, QChar(0xe9))),
            at(QString(125, QChar(0xe9)).toStdString() + ".json"));
}

TEST_F(QtSavePanelTest, a_file_without_the_extension_is_another_file) {
  std::ofstream(at("report")) << "old";
  EXPECT_EQ(chosenFor(QStringLiteral("report")), at("report.json"));
}

TEST_F(QtSavePanelTest, the_save_panel_enters_a_folder_instead_of_replacing_it) {
  const QString in = folder_.path() + QStringLiteral("/.in/.deeper");
  ASSERT_TRUE(QDir().mkpath(in));
  for (const QString& name : {QStringLiteral(".in/.deeper"), QStringLiteral(".in/.deeper/"), in}) {
    whenUp<QFileDialog>([&](QFileDialog& dialog) {
      type(dialog, name);
      accept(dialog);
      EXPECT_TRUE(dialog.isVisible());
      EXPECT_EQ(dialog.directory().absolutePath(), in);
      if (dialog.isVisible()) dialog.reject();
    });
    EXPECT_EQ(panel_.chooseFile(request), std::nullopt);
  }
}

TEST_F(QtSavePanelTest, the_save_panel_asks_before_replacing_also_with_the_extension_appended) {
  std::ofstream(at("report.json")) << "old";
  for (const QString& name : {QStringLiteral("report.json"), QStringLiteral("report")}) {
    for (const bool agrees : {false, true}) {
      bool wasAsked = false;
      whenUp<QFileDialog>([&](QFileDialog& dialog) {
        type(dialog, name);
        whenUp<QMessageBox>([&](QMessageBox& question) {
          wasAsked = true;
          EXPECT_TRUE(question.text().contains(QStringLiteral("report.json")));
          question.button(agrees ? QMessageBox::Yes : QMessageBox::No)->click();
        });
        accept(dialog);
        EXPECT_EQ(dialog.isVisible(), !agrees);
        if (!agrees) dialog.reject();
      });
      EXPECT_EQ(panel_.chooseFile(request),
                agrees ? std::optional(at("report.json")) : std::nullopt);
      EXPECT_TRUE(wasAsked);
    }
  }
}

TEST_F(QtSavePanelTest, the_save_panel_opens_where_it_was_left) {
  ASSERT_TRUE(QDir(folder_.path()).mkdir(QStringLiteral("in")));
  ASSERT_TRUE(chosenFor(folder_.path() + QStringLiteral("/in/report")).has_value());
  whenUp<QFileDialog>([this](QFileDialog& dialog) {
    EXPECT_EQ(dialog.directory().absolutePath(), folder_.path() + QStringLiteral("/in"));
    dialog.reject();
  });
  panel_.chooseFile(request);
}

}  // namespace
}  // namespace tessaly
