#include "architecture/AppArrows.h"

#include <algorithm>
#include <cctype>
#include <fstream>
#include <functional>
#include <regex>

#include "architecture/SourceLines.h"

namespace tessaly::architecture {
namespace {

const std::string pages = "preview/pages";

// The folder of a file relative to app/.
std::string folderOf(const std::string& file) {
  if (file.starts_with(pages + "/")) return pages;
  const std::size_t slash = file.find('/');
  return slash == std::string::npos ? "main" : file.substr(0, slash);
}

// The folder of a QML module or a library, as in Tessaly.QuickLook, Tessaly_QuickLookPlugin,
// tessaly_quicklook and tessaly_quicklookplugin.
std::string folderOfModule(std::string name) {
  std::transform(name.begin(), name.end(), name.begin(),
                 [](unsigned char letter) { return static_cast<char>(std::tolower(letter)); });
  constexpr std::string_view plugin = "plugin";
  if (name.ends_with(plugin)) name.resize(name.size() - plugin.size());
  if (name == "app") return "main";
  return name == "decoders" ? pages : name;
}

std::vector<std::string> foldersNamedIn(const std::string& text) {
  static const std::regex include("\\s*#\\s*include\\s*\"app/([^\"]+)\".*");
  static const std::regex neighbour("\\s*import\\s+\"\\.\\./([^\"]+)\".*");
  static const std::regex module("\\b(tessaly_|Tessaly[._])([A-Za-z]+)");
  std::smatch match;
  if (std::regex_match(text, match, include)) return {folderOf(match[1].str())};
  if (std::regex_match(text, match, neighbour)) return {folderOf(match[1].str() + "/")};
  std::vector<std::string> folders;
  for (auto at = std::sregex_iterator(text.begin(), text.end(), module);
       at != std::sregex_iterator(); ++at) {
    folders.push_back(folderOfModule((*at)[2].str()));
  }
  return folders;
}

std::set<std::string> quotedNames(const std::string& text) {
  static const std::regex quoted("`([^`]+)`");
  std::set<std::string> names;
  for (auto at = std::sregex_iterator(text.begin(), text.end(), quoted);
       at != std::sregex_iterator(); ++at) {
    names.insert((*at)[1].str());
  }
  return names;
}

}  // namespace

const Arrows& appArrows() {
  static const Arrows arrows = {
      {"main",
       {"commands", "controls", "desktop", "map", "model", "overlays", "panes", "preview", "queue",
        "quicklook", "sidebar", "window"}},
      {"window", {"commands", "controls", "model", "overlays", "panes", "queue", "sidebar"}},
      {"panes", {"controls", "map", "model"}},
      {"sidebar", {"controls", "model"}},
      {"queue", {"controls", "model"}},
      {"overlays", {"controls", "model"}},
      {"commands", {"controls", "model"}},
      {"map", {"controls", "model"}},
      {"quicklook", {"controls", "model", "preview"}},
      {"desktop", {"controls"}},
      {pages, {"preview"}},
      {"preview", {}},
      {"model", {}},
      {"controls", {}},
  };
  return arrows;
}

std::set<std::string> foldersOnCycles(const Arrows& arrows) {
  std::set<std::string> found;
  for (const auto& [start, firsts] : arrows) {
    std::set<std::string> reached;
    const std::function<void(const std::string&)> follow = [&](const std::string& folder) {
      if (!reached.insert(folder).second || !arrows.contains(folder)) return;
      for (const std::string& next : arrows.at(folder)) follow(next);
    };
    for (const std::string& first : firsts) follow(first);
    if (reached.contains(start)) found.insert(start);
  }
  return found;
}

std::vector<std::string> forbiddenInApp(const std::filesystem::path& app, const Arrows& arrows) {
  std::vector<std::string> complaints;
  const auto visit = [&](const Line& line) {
    const std::string folder = folderOf(line.file);
    if (!arrows.contains(folder)) {
      complaints.push_back(line.complaint("not in a folder that is known"));
      return;
    }
    // Most lines name no module, and need no regular expression.
    if (line.text.find("essaly") == std::string::npos &&
        line.text.find("app/") == std::string::npos && line.text.find("../") == std::string::npos)
      return;
    for (const std::string& other : foldersNamedIn(line.text)) {
      if (other == folder || !arrows.contains(other)) continue;
      if (arrows.at(folder).contains(other)) continue;
      complaints.push_back(line.complaint(folder + " uses " + other + ": there is no such arrow"));
    }
  };
  forEachLine(app, visit, Files::sourcesAndLists);
  return complaints;
}

Arrows drawnArrows(const std::filesystem::path& document) {
  static const std::regex row("\\| `([^`]+)` \\|[^|]*\\|([^|]*)\\|");
  Arrows arrows;
  bool isBelow = false;
  std::ifstream stream(document);
  for (std::string line; std::getline(stream, line);) {
    if (line.starts_with("#")) isBelow = line.find("`app`") != std::string::npos;
    std::smatch match;
    if (isBelow && std::regex_match(line, match, row)) {
      arrows[match[1].str()] = quotedNames(match[2].str());
    }
  }
  return arrows;
}

}  // namespace tessaly::architecture
