#include <string>

#include "Target.h"
#include "platform/linux/AutostartEntry.h"

namespace tessaly::fuzz {

void tryInput(std::string_view input) {
  const std::string text(input);
  AutostartEntry::starts(text, "/usr/bin/tessaly");
  if (text.find('\0') != std::string::npos) return;
  const std::string path = "/" + text;
  const std::string entry = AutostartEntry::starting(path);
  require(AutostartEntry::starts(entry, path), "a path is any bytes");
  require(!AutostartEntry::starts(entry, path + "x"), "a path is all of its bytes");
}

}  // namespace tessaly::fuzz
