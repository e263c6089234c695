#include <cstdio>
#include <string>
#include <vector>

#include "Target.h"
#include "platform/linux/MountTable.h"
#include "platform/linux/VisibleMounts.h"
#include "platform/linux/walk/RepeatedMounts.h"

namespace tessaly::fuzz {

namespace {

// A path as the kernel escapes it.
std::string escaped(std::string_view path) {
  std::string text;
  for (const char c : path) {
    if (c == ' ' || c == '\t' || c == '\n' || c == '\\') {
      char octal[8];
      std::snprintf(octal, sizeof octal, "\\%03o", static_cast<unsigned>(c));
      text += octal;
    } else {
      text += c;
    }
  }
  return text;
}

}  // namespace

void tryInput(std::string_view input) {
  const std::string text(input);
  for (const Mount& mount : mountsIn(text)) {
    require(!mount.point.empty() && !mount.type.empty(), "a mount has a point and a type");
  }
  const std::string path = "/" + escaped(text);
  const std::string line = "36 35 98:0 " + path + " " + path + " rw,noatime - ext4 /dev/r rw\n";
  const Mount mount = {36, 35, "98:0", "/" + text, "/" + text, "ext4"};
  require(mountsIn(line + line) == std::vector<Mount>{mount, mount}, "paths are any bytes");

  // Must hold however the mounts hide each other, also in cycles.
  const VisibleMounts visible(mountsIn(text));
  for (const auto i : walk::repeatedMounts(visible, "/", [](const std::string&) { return true; })) {
    require(visible.isVisible(i), "what is left out was to be seen");
    require(visible.all()[i].point != "/", "the root is never left out");
  }
}

}  // namespace tessaly::fuzz
