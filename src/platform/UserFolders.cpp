#include "platform/UserFolders.h"

#include <algorithm>
#include <cstddef>
#include <cstdlib>
#include <optional>
#include <utility>

#include "platform/AtomicFile.h"
#include "platform/HomeDirectory.h"
#include "platform/ResolvedPath.h"

namespace tessaly::UserFolders {

namespace {

constexpr std::size_t longestList = 65536;

std::string_view withoutBlanks(std::string_view text) {
  constexpr std::string_view blanks = " \t\r";
  const std::size_t first = text.find_first_not_of(blanks);
  if (first == std::string_view::npos) return {};
  return text.substr(first, text.find_last_not_of(blanks) - first + 1);
}

// The text in double quotes at the start of `text`, without the backslashes that a shell removes.
// Absent if the quotes do not end.
std::optional<std::string> quoted(std::string_view text) {
  if (!text.starts_with('"')) return std::nullopt;
  std::string content;
  for (std::size_t i = 1; i < text.size(); ++i) {
    if (text[i] == '"') return content;
    if (text[i] == '\\' && ++i == text.size()) return std::nullopt;
    content += text[i];
  }
  return std::nullopt;
}

std::string withoutSlashesAtEnd(std::string path) {
  while (path.size() > 1 && path.ends_with('/')) path.pop_back();
  return path;
}

bool holds(const std::string& folder, const std::string& path) {
  return path == folder || folder == "/" || path.starts_with(folder + "/");
}

// The folder of a line such as XDG_PICTURES_DIR="$HOME/Bilder".
std::optional<std::string> folderOf(std::string_view line, const std::string& home) {
  constexpr std::string_view homeWord = "$HOME";
  line = withoutBlanks(line);
  const std::size_t sign = line.find('=');
  if (sign == std::string_view::npos) return std::nullopt;
  const std::string_view key = withoutBlanks(line.substr(0, sign));
  if (!key.starts_with("XDG_") || !key.ends_with("_DIR")) return std::nullopt;
  const std::string_view text = withoutBlanks(line.substr(sign + 1));
  std::optional<std::string> value = quoted(text);
  if (!value) return std::nullopt;
  if (*value == homeWord || value->starts_with(std::string(homeWord) + "/")) {
    value->replace(0, homeWord.size(), home == "/" ? "" : home);
  }
  if (!value->starts_with('/')) return std::nullopt;
  return withoutSlashesAtEnd(std::move(*value));
}

}  // namespace

std::vector<std::string> parse(std::string_view text, const std::string& home) {
  std::vector<std::string> folders;
  while (!text.empty()) {
    const std::size_t end = std::min(text.find('\n'), text.size());
    std::optional<std::string> folder = folderOf(text.substr(0, end), home);
    if (folder && !holds(*folder, home)) folders.push_back(std::move(*folder));
    text.remove_prefix(std::min(end + 1, text.size()));
  }
  return folders;
}

std::vector<std::string> ofUser(const std::string& home, const std::string& configuration) {
  const Result<std::string> text = AtomicFile::read(configuration + "/user-dirs.dirs", longestList);
  if (!text) return {};
  std::vector<std::string> folders;
  for (std::string& folder : parse(text.value(), home)) {
    std::string resolved = resolvedPath(folder);
    const bool isLink = resolved != folder && !holds(resolved, home);
    folders.push_back(std::move(folder));
    if (isLink) folders.push_back(std::move(resolved));
  }
  return folders;
}

std::vector<std::string> ofThisUser() {
  const std::string home = homeDirectory();
  const char* const set = std::getenv("XDG_CONFIG_HOME");
  const std::string configuration = set != nullptr ? set : "";
  return ofUser(home, configuration.starts_with('/') ? configuration : home + "/.config");
}

}  // namespace tessaly::UserFolders
