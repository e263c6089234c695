#include "platform/linux/AutostartEntry.h"

#include <optional>

#include "platform/linux/DesktopEntry.h"

namespace tessaly::AutostartEntry {

namespace {

// A value in the escaped form of the file.
std::string escaped(std::string_view value) {
  std::string text;
  for (const char c : value) {
    switch (c) {
      case '\\':
        text += "\\\\";
        break;
      case '\n':
        text += "\\n";
        break;
      case '\t':
        text += "\\t";
        break;
      case '\r':
        text += "\\r";
        break;
      default:
        text += c;
    }
  }
  return text;
}

constexpr std::string_view escapedInQuotes = "\"`$\\";

// One argument of a command line.
std::string quoted(std::string_view argument) {
  std::string text = "\"";
  for (const char c : argument) {
    if (escapedInQuotes.find(c) != std::string_view::npos) text += '\\';
    if (c == '%') text += '%';
    text += c;
  }
  return text + '"';
}

// The first argument of a command line; absent if a quote is not closed.
std::optional<std::string> programOf(std::string_view command) {
  std::string program;
  bool isQuoted = false;
  for (std::size_t i = 0; i < command.size(); ++i) {
    const char c = command[i];
    const char next = i + 1 < command.size() ? command[i + 1] : '\0';
    if (c == '"') {
      isQuoted = !isQuoted;
    } else if (c == ' ' && !isQuoted) {
      return program;
    } else if ((c == '%' && next == '%') ||
               (c == '\\' && isQuoted && escapedInQuotes.find(next) != std::string_view::npos)) {
      program += command[++i];
    } else {
      program += c;
    }
  }
  if (isQuoted) return std::nullopt;
  return program;
}

// A name without a folder is searched in PATH, so only its last component is compared.
bool names(std::string_view program, std::string_view executable) {
  if (program.empty()) return false;
  if (program.find('/') != std::string_view::npos) return program == executable;
  return program == executable.substr(executable.rfind('/') + 1);
}

}  // namespace

std::string starting(std::string_view executable) {
  return "[Desktop Entry]\nType=Application\nName=Tessaly\nIcon=tessaly\nExec=" +
         escaped(quoted(executable)) + "\n";
}

bool starts(std::string_view text, std::string_view executable) {
  const DesktopEntry::Entries entries = DesktopEntry::entriesOf(text);
  const auto value = [&entries](std::string_view key) {
    const auto found = entries.find(key);
    return found == entries.end() ? std::string() : DesktopEntry::unescaped(found->second);
  };
  const std::optional<std::string> program = programOf(value("Exec"));
  return value("Type") == "Application" && value("Hidden") != "true" &&
         value("X-GNOME-Autostart-enabled") != "false" && program && names(*program, executable);
}

}  // namespace tessaly::AutostartEntry
