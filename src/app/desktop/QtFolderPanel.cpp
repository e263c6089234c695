#include "app/desktop/QtFolderPanel.h"

#include <utility>

#include <QDir>
#include <QFile>
#include <QFileDialog>
#include <QUrl>

namespace tessaly {

QtFolderPanel::QtFolderPanel(std::string startDirectory) : directory_(std::move(startDirectory)) {}

std::optional<std::string> QtFolderPanel::chooseFolder(const Request& request) {
  QFileDialog dialog;
  dialog.setObjectName(QStringLiteral("folderPanel"));
  dialog.setWindowTitle(QString::fromStdString(request.message));
  dialog.setOption(QFileDialog::DontUseNativeDialog);
  dialog.setFileMode(QFileDialog::Directory);
  dialog.setOption(QFileDialog::ShowDirsOnly);
  dialog.setLabelText(QFileDialog::Accept, QString::fromStdString(request.prompt));
  dialog.setSidebarUrls(
      {QUrl::fromLocalFile(QDir::homePath()), QUrl::fromLocalFile(QDir::rootPath())});
  dialog.setDirectory(QFile::decodeName(QByteArray::fromStdString(directory_)));
  if (dialog.exec() != QDialog::Accepted) return std::nullopt;

  const QStringList chosen = dialog.selectedFiles();
  if (chosen.isEmpty()) return std::nullopt;
  directory_ = QFile::encodeName(dialog.directory().absolutePath()).toStdString();
  return QFile::encodeName(QDir(chosen.first()).absolutePath()).toStdString();
}

}  // namespace tessaly
