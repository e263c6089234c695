#include "architecture/SourceRules.h"

#include <algorithm>
#include <array>
#include <cstddef>
#include <fstream>
#include <optional>
#include <regex>
#include <string_view>

#include "architecture/SourceLines.h"
#include "support/SystemWords.h"

namespace tessaly::architecture {
namespace {

namespace fs = std::filesystem;

constexpr std::array<std::string_view, 9> rooms = {
    "platform", "look", "scan", "treemap", "system", "reclaim", "assistants", "session", "app"};

// The headers of QtCore, and of QtTest for tests, that session may include without their module. A
// bare name does not tell its module, so any other name counts as another module.
constexpr std::array<std::string_view, 47> coreHeaders = {"QAbstractItemModel",
                                                          "QAbstractListModel",
                                                          "QByteArray",
                                                          "QByteArrayView",
                                                          "QChar",
                                                          "QCoreApplication",
                                                          "QDateTime",
                                                          "QDebug",
                                                          "QDir",
                                                          "QElapsedTimer",
                                                          "QEvent",
                                                          "QEventLoop",
                                                          "QFile",
                                                          "QFileInfo",
                                                          "QFlags",
                                                          "QHash",
                                                          "QHashFunctions",
                                                          "QJsonDocument",
                                                          "QLatin1StringView",
                                                          "QList",
                                                          "QLocale",
                                                          "QMap",
                                                          "QMetaEnum",
                                                          "QMetaMethod",
                                                          "QMetaObject",
                                                          "QMetaType",
                                                          "QModelIndex",
                                                          "QMutex",
                                                          "QObject",
                                                          "QPointer",
                                                          "QProperty",
                                                          "QSaveFile",
                                                          "QScopeGuard",
                                                          "QSet",
                                                          "QSignalSpy",
                                                          "QString",
                                                          "QStringList",
                                                          "QStringView",
                                                          "QTemporaryDir",
                                                          "QTest",
                                                          "QThread",
                                                          "QTimer",
                                                          "QUrl",
                                                          "QVariant",
                                                          "QVariantList",
                                                          "QVariantMap",
                                                          "QtGlobal"};

// The main queue of Qt: the only implementation of a platform/ interface that must use Qt's own
// means to change threads.
constexpr std::string_view mainQueue = "app/desktop/MainQueue.cpp";

std::optional<int> rank(std::string_view room) {
  const auto place = std::find(rooms.begin(), rooms.end(), room);
  return place == rooms.end() ? std::nullopt
                              : std::optional(static_cast<int>(place - rooms.begin()));
}

std::string_view firstComponent(std::string_view path) {
  return path.substr(0, path.find('/'));
}

// Decided by the folder or the name of the file.
bool isOfOneSystem(std::string_view path) {
  static const std::regex own("(.*/)?(linux|macos)/.*|(.*/)?(Linux|X11|Wayland|Macos)[A-Z][^/]*");
  return std::regex_match(path.begin(), path.end(), own);
}

std::optional<std::string> quotedComplaint(std::string_view file, std::string_view included) {
  const std::string_view room = firstComponent(file);
  const std::string_view other = firstComponent(included);
  if (!rank(other)) {
    const bool generated = included.ends_with(".moc");
    const bool fixture = isTest(file) && other == "support";
    return generated || fixture
               ? std::nullopt
               : std::optional("\"" + std::string(included) + "\" is not named by its room");
  }
  if (*rank(other) > *rank(room)) {
    return std::string(room) + " includes " + std::string(other) + ": the arrow runs back";
  }
  const bool mayName = isOfOneSystem(file) || (isTest(file) && room == other);
  if (isOfOneSystem(included) && !mayName) {
    return "\"" + std::string(included) +
           "\" is for one system: only its own files and tests name it";
  }
  return std::nullopt;
}

std::optional<std::string> angledComplaint(std::string_view file, const std::string& included) {
  // The rules on rooms read what is between quotation marks.
  if (included.find('/') != std::string::npos && rank(firstComponent(included))) {
    return "<" + included + ">: a file of a room is included as \"" + included + "\"";
  }
  static const std::regex ofOneDesktop("(xcb|X11|QtDBus)/.*|QDBus.*");
  if (std::regex_match(included, ofOneDesktop) && !file.starts_with("app/desktop/")) {
    return "<" + included + "> is for one system: only app/desktop names it";
  }
  static const std::regex anyQt("(Qt[A-Za-z0-9]*/.*)|(Q[A-Za-z0-9]+)|(qt?[a-z0-9_]+\\.h)");
  if (!std::regex_match(included, anyQt) || included == "queue") {
    return std::nullopt;
  }
  const std::string_view room = firstComponent(file);
  if (*rank(room) < *rank("session")) {
    return "<" + included + ">: " + std::string(room) + " is built without Qt";
  }
  const bool core =
      included.starts_with("QtCore/") || (isTest(file) && included.starts_with("QtTest/")) ||
      std::find(coreHeaders.begin(), coreHeaders.end(), included) != coreHeaders.end();
  if (room == "session" && !core) {
    return "<" + included + "> is not known to be a header of QtCore, which is all session has";
  }
  return std::nullopt;
}

// The texts between two of the same `marks` on a line, without those in its comment.
std::vector<std::string_view> quotedTexts(std::string_view line, std::string_view marks) {
  std::vector<std::string_view> texts;
  std::optional<std::size_t> begin;
  for (std::size_t i = 0; i < line.size(); ++i) {
    if (!begin && line.substr(i).starts_with("//")) break;
    if (line[i] == '\\') {
      ++i;
    } else if (begin ? line[i] == line[*begin - 1] : marks.find(line[i]) != marks.npos) {
      if (begin) texts.push_back(line.substr(*begin, i - *begin));
      begin = begin ? std::nullopt : std::optional(i + 1);
    }
  }
  return texts;
}

std::string_view qtOf(std::string_view room) {
  if (*rank(room) < *rank("session")) return "none";
  return room == "session" ? "QtCore" : "Qt Quick";
}

// The names between the arrows of a line; none if it has no arrow.
std::vector<std::string> namesAlongArrows(const std::string& line) {
  static const std::regex chain(" *[a-z]+( → [a-z]+)+ *");
  static const std::regex name("[a-z]+");
  std::vector<std::string> names;
  if (!std::regex_match(line, chain)) return names;
  for (auto at = std::sregex_iterator(line.begin(), line.end(), name); at != std::sregex_iterator();
       ++at) {
    names.push_back(at->str());
  }
  return names;
}

}  // namespace

Rooms knownRooms() {
  Rooms known;
  for (const std::string_view room : rooms) {
    known.order.emplace(known.order.begin(), room);
    known.qt.emplace(room, qtOf(room));
  }
  return known;
}

Rooms drawnRooms(const fs::path& document) {
  static const std::regex row("\\| `([^`]+)` \\|[^|]*\\| *([^|]*[^| ]) *\\|");
  Rooms drawn;
  bool isBelow = false;
  std::ifstream stream(document);
  for (std::string line; std::getline(stream, line);) {
    if (line.starts_with("#")) isBelow = line.find("Rooms") != std::string::npos;
    if (!isBelow) continue;
    if (const std::vector<std::string> names = namesAlongArrows(line); !names.empty()) {
      drawn.order = names;
    }
    std::smatch match;
    if (std::regex_match(line, match, row)) drawn.qt[match[1].str()] = match[2].str();
  }
  return drawn;
}

std::vector<std::string> forbiddenIncludes(const fs::path& src) {
  static const std::regex include("\\s*#\\s*include\\s*([<\"])([^>\"]+)[>\"].*");
  std::vector<std::string> complaints;
  forEachLine(src, [&complaints](const Line& line) {
    std::smatch match;
    if (!std::regex_match(line.text, match, include)) {
      return;
    }
    if (!rank(firstComponent(line.file))) {
      complaints.push_back(line.complaint("not in a room that is known"));
      return;
    }
    const auto complaint = match[1] == "\"" ? quotedComplaint(line.file, match[2].str())
                                            : angledComplaint(line.file, match[2].str());
    if (complaint) {
      complaints.push_back(line.complaint(*complaint));
    }
  });
  return complaints;
}

std::vector<std::string> forbiddenThreads(const fs::path& src) {
  static const std::regex hop(
      "std::(j?thread\\b(?!::)|async\\b)|\\bmoveToThread\\b|\\binvokeMethod\\b|\\bQThread::"
      "create\\b|"
      "\\bQtConcurrent\\b");
  std::vector<std::string> complaints;
  forEachLine(src, [&complaints](const Line& line) {
    if (line.file.starts_with("platform/") || line.file == mainQueue || isTest(line.file) ||
        !std::regex_search(line.text.substr(0, line.text.find("//")), hop)) {
      return;
    }
    complaints.push_back(line.complaint("hops between threads go through platform/Dispatch.h"));
  });
  return complaints;
}

std::vector<std::string> unguardedThreads(const fs::path& src) {
  // A statement that creates a thread; a declared variable or member creates none.
  static const std::regex start("std::j?thread( +\\w+)? *[({]|\\bpthread_create\\b");
  static constexpr std::string_view door = "platform/StartThread.";
  std::vector<std::string> complaints;
  forEachLine(src, [&complaints](const Line& line) {
    if (line.file.starts_with(door) || isTest(line.file) ||
        !std::regex_search(line.text.substr(0, line.text.find("//")), start)) {
      return;
    }
    complaints.push_back(line.complaint("the system may refuse a thread: startThread() tells"));
  });
  return complaints;
}

std::vector<std::string> strayDecoders(const fs::path& src) {
  static const std::regex include(
      "\\s*#\\s*include\\s*<((QtGui/)?(QImageReader|QMovie)|(QtPdf/)?QPdf(Document|Page).*|"
      "(QtSvg/)?QSvg.*|QtPdf|QtSvg|lib(av|sw)[a-z]*/.*)>.*");
  // The program's own symbols are not foreign files.
  static constexpr std::string_view symbols = "app/controls/SymbolPainter.cpp";
  std::vector<std::string> complaints;
  forEachLine(src, [&complaints](const Line& line) {
    if (line.file.starts_with("app/preview/pages/") || line.file == symbols || isTest(line.file) ||
        !std::regex_match(line.text, include)) {
      return;
    }
    complaints.push_back(line.complaint("foreign files are decoded in app/preview/pages/ alone"));
  });
  return complaints;
}

std::vector<std::string> strayWordsOfMacos(const fs::path& src) {
  static constexpr std::array<std::string_view, 6> homes = {
      "app/preview/ContentKind.cpp", "look/Wording.cpp",     "platform/Places.cpp",
      "platform/ReclaimPlaces.cpp",  "scan/DiskScanner.cpp", "system/DiskSpace.cpp"};
  std::vector<std::string> complaints;
  forEachLine(src, [&complaints](const Line& line) {
    if (isTest(line.file) || line.file.starts_with("platform/tools/") ||
        std::ranges::find(homes, line.file) != homes.end()) {
      return;
    }
    const bool isView = line.file.ends_with(".qml") || line.file.ends_with(".js");
    for (const std::string_view text : quotedTexts(line.text, isView ? "\"'`" : "\"")) {
      if (const auto word = wordOfMacosIn(text)) {
        complaints.push_back(
            line.complaint("\"" + std::string(*word) + "\": texts of one system stand in Wording"));
      }
    }
  });
  return complaints;
}

std::vector<std::string> strayColors(const fs::path& src) {
  static const std::regex color(
      "\\bQt\\.(rgba|hsla|hsva)\\(|\"#[0-9A-Fa-f]{3,8}\"|"
      "\\b([Cc]olor|\\w+Color|tint)\\b[^;]*\"(?!transparent\")[a-z]+\"");
  std::vector<std::string> complaints;
  forEachLine(src, [&complaints](const Line& line) {
    if (!line.file.ends_with(".qml") ||
        !std::regex_search(line.text.substr(0, line.text.find("//")), color)) {
      return;
    }
    complaints.push_back(line.complaint("views take their colours from Theme"));
  });
  return complaints;
}

std::vector<std::string> overlongFiles(const fs::path& folder, int limit) {
  std::vector<std::string> complaints;
  forEachLine(folder, [&complaints, limit](const Line& line) {
    if (line.number == limit + 1) {
      complaints.push_back(line.complaint("more than " + std::to_string(limit) + " lines"));
    }
  });
  return complaints;
}

}  // namespace tessaly::architecture
