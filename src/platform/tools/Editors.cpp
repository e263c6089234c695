#include "platform/tools/Editors.h"

#include <array>
#include <utility>

namespace tessaly::tools::Editors {

namespace {

struct Editor {
  std::string_view application;
  std::string_view program;
  bool opensFolders;
};

constexpr std::array<Editor, 19> editors = {{
    {"Cursor", "cursor", true},
    {"Visual Studio Code", "code", true},
    {"Code", "code", true},
    {"Code", "code-oss", true},
    {"Code", "code-insiders", true},
    {"TextEdit", "codium", true},
    {"TextEdit", "vscodium", true},
    {"TextEdit", "kate", true},
    {"TextEdit", "gedit", false},
    {"TextEdit", "gnome-text-editor", false},
    {"TextEdit", "kwrite", false},
    {"TextEdit", "mousepad", false},
    {"TextEdit", "xed", false},
    {"TextEdit", "pluma", false},
    {"TextEdit", "featherpad", false},
    {"TextEdit", "geany", false},
    {"TextEdit", "deepin-editor", false},
    {"TextEdit", "l3afpad", false},
    {"TextEdit", "leafpad", false},
}};

}  // namespace

std::optional<std::vector<Process::Launch>> launchesOf(std::string_view application,
                                                       const std::string& path, bool isFolder,
                                                       const Programs& programs) {
  bool isKnown = false;
  std::vector<Process::Launch> launches;
  for (const Editor& editor : editors) {
    if (editor.application != application) continue;
    isKnown = true;
    if (isFolder && !editor.opensFolders) continue;
    if (std::optional<std::string> program = programs.find(std::string(editor.program))) {
      launches.push_back({.path = *std::move(program), .args = {path}, .isDetached = true});
    }
  }
  if (!isKnown) return std::nullopt;
  return launches;
}

}  // namespace tessaly::tools::Editors
