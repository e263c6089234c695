#include "app/desktop/FilePanel.h"

#include <QDir>
#include <QFile>
#include <QUrl>

namespace tessaly::FilePanel {

void setUp(QFileDialog& dialog, const std::string& directory) {
  dialog.setOption(QFileDialog::DontUseNativeDialog);
  dialog.setSidebarUrls(
      {QUrl::fromLocalFile(QDir::homePath()), QUrl::fromLocalFile(QDir::rootPath())});
  dialog.setDirectory(QFile::decodeName(QByteArray::fromStdString(directory)));
}

std::optional<std::string> run(QFileDialog& dialog) {
  if (dialog.exec() != QDialog::Accepted) return std::nullopt;
  const QStringList chosen = dialog.selectedFiles();
  if (chosen.isEmpty()) return std::nullopt;
  return bytesOf(QDir::cleanPath(QDir(chosen.first()).absolutePath()));
}

std::string bytesOf(const QString& path) {
  return QFile::encodeName(path).toStdString();
}

}  // namespace tessaly::FilePanel
