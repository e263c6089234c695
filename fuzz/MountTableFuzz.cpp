#include <cstdio>
#include <string>
#include <vector>

#include "Target.h"
#include "platform/linux/MountTable.h"

namespace tessaly::fuzz {

namespace {

// A path as the kernel writes it.
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
  const std::string line = "36 35 98:0 /mnt1 /" + escaped(text) + " rw,noatime - ext4 /dev/r rw\n";
  const Mount mount = {.point = "/" + text, .type = "ext4"};
  require(mountsIn(line + line) == std::vector<Mount>{mount, mount}, "a mount point is any bytes");
}

}  // namespace tessaly::fuzz
