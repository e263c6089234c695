#include "app/desktop/QtSavePanel.h"

#include <utility>

#include <QDir>
#include <QFile>
#include <QFileDialog>
#include <QFileInfo>
#include <QItemSelectionModel>
#include <QLineEdit>
#include <QListView>

#include "app/desktop/FilePanel.h"
#include "app/desktop/SuggestedName.h"
#include "platform/NumberedName.h"

namespace tessaly {

namespace {

constexpr int mostBytesInName = 255;

// Appends the extension before the dialog checks whether the file exists. Qt's own default suffix
// would not add one to "backup.2024".
class SaveDialog : public QFileDialog {
 public:
  explicit SaveDialog(const QString& extension) : ending_(QLatin1Char('.') + extension) {
    setAcceptMode(QFileDialog::AcceptSave);
    setFileMode(QFileDialog::AnyFile);
    setNameFilter(extension.toUpper() + QStringLiteral(" (*") + ending_ + QLatin1Char(')'));
  }

  void accept() override {
    auto* nameField = findChild<QLineEdit*>(QStringLiteral("fileNameEdit"));
    auto* list = findChild<QListView*>(QStringLiteral("listView"));
    const QStringList files = selectedFiles();
    if (nameField == nullptr || list == nullptr || files.isEmpty()) return;
    QString path = files.first();
    // A folder is entered, not replaced.
    if (!QFileInfo(path).isDir()) {
      if (!path.endsWith(ending_, Qt::CaseInsensitive)) {
        path += ending_;
        nameField->setText(directory().relativeFilePath(path));
        // The selection in the list follows the typed name, and Qt prefers the list.
        list->selectionModel()->clear();
      }
      // No file can have this name, so the panel stays open for another one.
      if (QFile::encodeName(QFileInfo(path).fileName()).size() > mostBytesInName) return;
    }
    QFileDialog::accept();
  }

 private:
  QString ending_;
};

// The first numbered name that is free in the folder.
QString freeName(const std::string& name, const QString& folder) {
  const QDir directory(folder);
  int number = 1;
  while (true) {
    QString candidate = QString::fromStdString(numberedName(name, number));
    const QFileInfo entry(directory.filePath(candidate));
    if (!entry.exists() && !entry.isSymLink()) return candidate;
    ++number;
  }
}

}  // namespace

QtSavePanel::QtSavePanel(std::string startDirectory) : directory_(std::move(startDirectory)) {}

std::optional<std::string> QtSavePanel::chooseFile(const Request& request) {
  SaveDialog dialog(QString::fromStdString(request.extension));
  dialog.setObjectName(QStringLiteral("savePanel"));
  dialog.setOption(QFileDialog::ReadOnly, !request.canCreateDirectories);
  FilePanel::setUp(dialog, directory_);
  const std::string name = suggestedName(request.fileName, request.extension);
  dialog.selectFile(request.isForNewFile ? freeName(name, dialog.directory().absolutePath())
                                         : QString::fromStdString(name));
  std::optional<std::string> path = FilePanel::run(dialog);
  // This may be another folder than the one shown: the user can type a path.
  if (path)
    directory_ = FilePanel::bytesOf(QFileInfo(dialog.selectedFiles().first()).absolutePath());
  return path;
}

}  // namespace tessaly
