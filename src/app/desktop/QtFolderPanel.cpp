#include "app/desktop/QtFolderPanel.h"

#include <utility>

#include <QDir>
#include <QFileDialog>

#include "app/desktop/FilePanel.h"

namespace tessaly {

QtFolderPanel::QtFolderPanel(std::string startDirectory) : directory_(std::move(startDirectory)) {}

std::optional<std::string> QtFolderPanel::chooseFolder(const Request& request) {
  QFileDialog dialog;
  dialog.setObjectName(QStringLiteral("folderPanel"));
  dialog.setWindowTitle(QString::fromStdString(request.message));
  dialog.setFileMode(QFileDialog::Directory);
  dialog.setOption(QFileDialog::ShowDirsOnly);
  dialog.setLabelText(QFileDialog::Accept, QString::fromStdString(request.prompt));
  FilePanel::setUp(dialog, directory_);
  std::optional<std::string> path = FilePanel::run(dialog);
  if (path) directory_ = FilePanel::bytesOf(dialog.directory().absolutePath());
  return path;
}

}  // namespace tessaly
