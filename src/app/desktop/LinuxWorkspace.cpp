#include "app/desktop/LinuxWorkspace.h"

#include <algorithm>
#include <cstdlib>
#include <optional>
#include <sys/stat.h>
#include <utility>

#include <QDBusMessage>
#include <QStringList>

#include "platform/FileUri.h"
#include "platform/Process.h"
#include "platform/ProgramSearch.h"

namespace tessaly {

namespace {

// Whether there is an item at `path`, a dangling link included.
bool exists(const std::string& path) {
  struct stat status = {};
  return lstat(path.c_str(), &status) == 0;
}

bool canBeOpened(const std::string& path) {
  struct stat status = {};
  return stat(path.c_str(), &status) == 0;
}

std::string parentOf(const std::string& path) {
  const auto slash = path.find_last_of('/');
  return slash == 0 || slash == std::string::npos ? "/" : path.substr(0, slash);
}

// The bus may have to start the file manager, so the answer may take a while.
bool showItems(const LinuxWorkspace::Services& services, const std::vector<std::string>& paths) {
  QDBusConnection bus = services.sessionBus();
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

void revealNow(const LinuxWorkspace::Services& services, const std::vector<std::string>& paths) {
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
  if (!present.empty() && !showItems(services, present))
    for (const auto& path : present) addFolder(path);
  for (const auto& folder : folders)
    if (exists(folder)) services.openUri(fileUri(folder));
}

void openNow(const LinuxWorkspace::Services& services, const std::string& path) {
  if (canBeOpened(path)) {
    services.openUri(fileUri(path));
  } else if (const std::string folder = parentOf(path); exists(folder)) {
    services.openUri(fileUri(folder));
  }
}

// On some desktops xdg-open ends only with the application, which continues after this program has
// ended.
void startXdgOpen(const std::string& uri) {
  const char* const searchPath = std::getenv("PATH");
  const std::optional<std::string> program =
      ProgramSearch::find("xdg-open", searchPath != nullptr ? searchPath : "");
  if (program) {
    (void)Process::launch({.path = *program, .args = {uri}, .isDetached = true});
  }
}

}  // namespace

LinuxWorkspace::Services LinuxWorkspace::Services::real() {
  return {[] { return QDBusConnection::sessionBus(); }, startXdgOpen};
}

LinuxWorkspace::LinuxWorkspace(Dispatch& dispatch, Services services)
    : dispatch_(dispatch),
      services_{
          std::move(services.sessionBus),
          [isClosed = isClosed_, openUri = std::move(services.openUri)](const std::string& uri) {
            if (!*isClosed) openUri(uri);
          }} {}

void LinuxWorkspace::reveal(const std::vector<std::string>& paths) {
  dispatch_.async(Dispatch::Queue::userInitiated,
                  [services = services_, paths] { revealNow(services, paths); });
}

void LinuxWorkspace::open(const std::string& path) {
  dispatch_.async(Dispatch::Queue::userInitiated,
                  [services = services_, path] { openNow(services, path); });
}

}  // namespace tessaly
