#include <string>

#include "Target.h"
#include "platform/FileUri.h"
#include "platform/linux/links/LinkEntry.h"

namespace tessaly::fuzz {

void tryInput(std::string_view input) {
  const auto variable = [](const std::string& name) -> std::optional<std::string> {
    require(!name.empty() && name.find('(') == std::string::npos, "a variable has a name");
    if (name != "HOME") return std::nullopt;
    return "/home/ada";
  };
  for (const std::string& text :
       {std::string(input), "[Desktop Entry]\nType=Link\nURL=" + std::string(input),
        "[Desktop Entry]\nType=Link\nURL[$e]=file:" + std::string(input)}) {
    const std::optional<std::string> path = LinkEntry::destinationIn(text, "desk", variable);
    if (!path || path->empty()) continue;
    require(path->starts_with('/'), "a path is absolute");
    require(path->find('\0') == std::string::npos, "no path has a NUL");
  }

  if (input.find('\0') != std::string_view::npos) return;
  const std::string path = "/" + std::string(input);
  const std::optional<FileLocation> location = locationOfFileUri(fileUri(path));
  require(location && location->path == path && location->host.empty(), "a path is any bytes");
}

}  // namespace tessaly::fuzz
