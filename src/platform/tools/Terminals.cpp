#include "platform/tools/Terminals.h"

#include <algorithm>
#include <array>
#include <optional>
#include <string_view>
#include <utility>

#include "platform/ResolvedPath.h"

namespace tessaly::tools::Terminals {

namespace {

struct Terminal {
  std::string_view program;
  std::string_view option = {};  // before the folder; part of the same word if it ends in "="
  std::string_view first = {};   // a word before all others
};

constexpr std::array<Terminal, 22> known = {{
    {"konsole", "--workdir"},
    {"gnome-terminal", "--working-directory="},
    {"kgx", "--working-directory="},
    {"ptyxis", "--working-directory=", "--new-window"},
    {"xfce4-terminal", "--working-directory="},
    {"mate-terminal", "--working-directory="},
    {"lxterminal", "--working-directory="},
    {"qterminal", "--workdir"},
    {"deepin-terminal", "--work-directory"},
    {"tilix", "--working-directory="},
    {"terminator", "--working-directory="},
    {"foot"},
    {"alacritty", "--working-directory"},
    {"kitty", "--directory"},
    {"wezterm", "--cwd", "start"},
    {"ghostty", "--working-directory="},
    {"terminology"},
    {"sakura"},
    {"urxvt"},
    {"stterm"},
    {"uxterm"},
    {"xterm"},
}};

std::string_view lastComponent(std::string_view path) {
  return path.substr(path.rfind('/') + 1);
}

const Terminal* knownAs(std::string_view name) {
  const auto* const found = std::find_if(known.begin(), known.end(), [&](const Terminal& terminal) {
    return terminal.program == name;
  });
  return found != known.end() ? found : nullptr;
}

// x-terminal-emulator is a link to the chosen terminal. But a link may also lead to a program that
// acts as many others, depending on the name of the link.
const Terminal* terminalAt(const std::string& program) {
  const Terminal* const byName = knownAs(lastComponent(program));
  return byName != nullptr ? byName : knownAs(lastComponent(resolvedPath(program)));
}

std::vector<std::string> folderWords(const std::string& program, const std::string& folder) {
  const Terminal* const terminal = terminalAt(program);
  if (terminal == nullptr || terminal->option.empty()) return {};
  std::vector<std::string> words;
  if (!terminal->first.empty()) words.emplace_back(terminal->first);
  words.emplace_back(terminal->option);
  if (terminal->option.ends_with('=')) {
    words.back() += folder;
  } else {
    words.push_back(folder);
  }
  return words;
}

Process::Launch launchOf(std::string program, std::vector<std::string> args,
                         const std::string& folder) {
  if (args.empty()) args = folderWords(program, folder);
  return {.path = std::move(program), .args = std::move(args), .cwd = folder, .isDetached = true};
}

std::vector<std::string> wordsOf(std::string_view text) {
  constexpr std::string_view blanks = " \t\n";
  std::vector<std::string> words;
  while (true) {
    text.remove_prefix(std::min(text.find_first_not_of(blanks), text.size()));
    if (text.empty()) return words;
    const std::string_view word = text.substr(0, text.find_first_of(blanks));
    words.emplace_back(word);
    text.remove_prefix(word.size());
  }
}

std::optional<Process::Launch> chosenByUser(const std::string& folder, const Programs& programs) {
  const std::string text = programs.variable("TERMINAL");
  if (std::optional<std::string> program = programs.find(text)) {
    return launchOf(*std::move(program), {}, folder);
  }
  std::vector<std::string> words = wordsOf(text);
  if (words.empty()) return std::nullopt;
  std::optional<std::string> program = programs.find(words.front());
  if (!program) return std::nullopt;
  words.erase(words.begin());
  return launchOf(*std::move(program), std::move(words), folder);
}

}  // namespace

std::vector<Process::Launch> launchesIn(const std::string& folder, const Programs& programs) {
  std::vector<Process::Launch> launches;
  if (std::optional<Process::Launch> chosen = chosenByUser(folder, programs)) {
    launches.push_back(*std::move(chosen));
  }
  const auto addIfThere = [&](std::string_view name) {
    if (std::optional<std::string> program = programs.find(std::string(name))) {
      launches.push_back(launchOf(*std::move(program), {}, folder));
    }
  };
  addIfThere("x-terminal-emulator");
  addIfThere("xdg-terminal-exec");
  for (const Terminal& terminal : known) addIfThere(terminal.program);
  return launches;
}

}  // namespace tessaly::tools::Terminals
