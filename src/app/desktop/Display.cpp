#include "app/desktop/Display.h"

#include <algorithm>
#include <cctype>
#include <cstdlib>
#include <string_view>

#include <QCoreApplication>
#include <QDir>
#include <QFile>
#include <QJsonArray>
#include <QJsonObject>
#include <QPluginLoader>

#include "app/desktop/DisplayServers.h"

namespace tessaly {

namespace {

std::string environment(const char* name) {
  const char* value = std::getenv(name);
  return value != nullptr ? value : "";
}

std::string lowerCase(std::string_view text) {
  std::string lower(text);
  std::ranges::transform(lower, lower.begin(),
                         [](unsigned char c) { return static_cast<char>(std::tolower(c)); });
  return lower;
}

// The folders where Qt looks for its platform plugins.
QStringList pluginFolders() {
  QStringList folders;
  if (const std::string own = environment("QT_QPA_PLATFORM_PLUGIN_PATH"); !own.empty())
    folders << QFile::decodeName(QByteArray::fromStdString(own));
  for (const QString& path : QCoreApplication::libraryPaths())
    folders << path + QStringLiteral("/platforms");
  return folders;
}

// From the metadata of the plugins; loads none.
std::vector<std::string> installedPlatforms() {
  std::vector<std::string> platforms;
  for (const QString& folder : pluginFolders()) {
    const QDir plugins(folder);
    for (const QString& file : plugins.entryList(QDir::Files)) {
      const QJsonObject facts = QPluginLoader(plugins.filePath(file)).metaData();
      const QJsonArray names = facts.value(QStringLiteral("MetaData"))
                                   .toObject()
                                   .value(QStringLiteral("Keys"))
                                   .toArray();
      for (const auto& name : names) platforms.push_back(lowerCase(name.toString().toStdString()));
    }
  }
  return platforms;
}

bool isWayland(std::string_view platform) {
  return platform.starts_with("wayland");
}

// Qt ignores the case of the name. Options follow a ":".
std::string nameOf(std::string_view platform) {
  return lowerCase(platform.substr(0, platform.find(':')));
}

bool isInstalled(std::string_view name, const DisplayFacts& facts) {
  return std::ranges::find(facts.installed, name) != facts.installed.end();
}

bool reached(std::string_view platform, const DisplayFacts& facts) {
  const std::string name = nameOf(platform);
  if (!facts.requested.empty() && !isInstalled(name, facts)) return false;
  if (name == "xcb") return facts.xAnswers;
  if (isWayland(name)) return facts.waylandAnswers;
  return true;
}

std::string orderOf(const DisplayFacts& facts) {
  if (!facts.requested.empty()) return facts.requested;
  return facts.waylandSession ? "wayland;xcb" : "xcb;wayland";
}

void askServerOf(std::string_view name, DisplayFacts& facts) {
  constexpr double patience = 5;  // seconds
  if (name == "xcb") facts.xAnswers = DisplayServers::xAnswers(Deadline::after(patience));
  if (!isWayland(name)) return;
  facts.waylandAnswers = DisplayServers::waylandAnswers(Deadline::after(patience));
  if (!facts.waylandAnswers) return;
  if (facts.installed.empty()) facts.installed = installedPlatforms();
  facts.waylandAnswers = std::ranges::any_of(facts.installed, isWayland);
}

std::vector<std::string_view> partsOf(std::string_view list) {
  std::vector<std::string_view> parts;
  while (!list.empty()) {
    const auto end = list.find(';');
    parts.push_back(list.substr(0, end));
    list = end == std::string_view::npos ? std::string_view() : list.substr(end + 1);
  }
  return parts;
}

}  // namespace

DisplayFacts DisplayFacts::ofThisMachine() {
  DisplayFacts facts = {.requested = environment("QT_QPA_PLATFORM"),
                        .waylandSession = environment("XDG_SESSION_TYPE") == "wayland"};
  // Takes some milliseconds, which a usual start can do without.
  if (!facts.requested.empty()) facts.installed = installedPlatforms();
  const std::string order = orderOf(facts);
  for (const std::string_view platform : partsOf(order)) {
    askServerOf(nameOf(platform), facts);
    if (reached(platform, facts)) break;
  }
  return facts;
}

std::string platformFor(const DisplayFacts& facts) {
  const std::string order = orderOf(facts);
  for (const std::string_view platform : partsOf(order)) {
    if (reached(platform, facts)) return std::string(platform);
  }
  return "";
}

std::string complaintFor(const DisplayFacts& facts) {
  const bool isUnknown = std::ranges::none_of(partsOf(facts.requested), [&](auto platform) {
    return isInstalled(nameOf(platform), facts);
  });
  if (!facts.requested.empty() && isUnknown) return "QT_QPA_PLATFORM names no platform of Qt's";
  return "there is no display to open a window on";
}

}  // namespace tessaly
