#include "app/desktop/LinuxWorkspace.h"

#include <algorithm>
#include <sys/stat.h>
#include <utility>

#include <QDBusMessage>
#include <QProcess>
#include <QStringList>

#include "app/desktop/FileUri.h"

namespace tessaly {

namespace {

bool exists(const std::string& path) {
  struct stat status = {};
  return lstat(path.c_str(), &status) == 0;
}

std::string parentOf(const std::string& path) {
  const auto slash = path.find_last_of('/');
  return slash == 0 || slash == std::string::npos ? "/" : path.substr(0, slash);
}

// The file manager is started by the bus when none runs, so the answer may take a while.
bool showItems(const LinuxWorkspace::Desktop& desktop, const std::vector<std::string>& paths) {
  QDBusConnection bus = desktop.sessionBus();
  if (!bus.isConnected()) return false;
  QDBusMessage message = QDBusMessage::createMethodCall(
      QStringLiteral("org.freedesktop.FileManager1"),
      QStringLiteral("/org/freedesktop/FileManager1"),
      QStringLiteral("org.freedesktop.FileManager1"), QStringLiteral("ShowItems"));
  QStringList uris;
  for (const auto& path : paths) uris << QString::fromStdString(fileUri(path));
  message << uris << QString();
  return bus.call(message).type() == QDBusMessage::ReplyMessage;
}

void revealNow(const LinuxWorkspace::Desktop& desktop, const std::vector<std::string>& paths) {
  std::vector<std::string> present;
  std::vector<std::string> folders;
  const auto addFolder = [&folders](const std::string& path) {
    const std::string folder = parentOf(path);
    if (std::find(folders.begin(), folders.end(), folder) == folders.end())
      folders.push_back(folder);
  };
  for (const auto& path : paths) {
    if (exists(path))
      present.push_back(path);
    else
      addFolder(path);
  }
  if (!present.empty() && !showItems(desktop, present))
    for (const auto& path : present) addFolder(path);
  for (const auto& folder : folders)
    if (exists(folder)) desktop.openUri(fileUri(folder));
}

}  // namespace

LinuxWorkspace::Desktop LinuxWorkspace::Desktop::real() {
  return {
      [] { return QDBusConnection::sessionBus(); },
      [](const std::string& uri) {
        // A URI is plain ASCII, so the bytes of the path survive the way through QString.
        QProcess::startDetached(QStringLiteral("xdg-open"), {QString::fromStdString(uri)});
      },
  };
}

LinuxWorkspace::LinuxWorkspace(Dispatch& dispatch, Desktop desktop)
    : dispatch_(dispatch), desktop_(std::move(desktop)) {}

void LinuxWorkspace::reveal(const std::vector<std::string>& paths) {
  dispatch_.async(Dispatch::Queue::userInitiated,
                  [desktop = desktop_, paths] { revealNow(desktop, paths); });
}

void LinuxWorkspace::open(const std::string& path) {
  dispatch_.async(Dispatch::Queue::userInitiated,
                  [desktop = desktop_, path] { desktop.openUri(fileUri(path)); });
}

}  // namespace tessaly
