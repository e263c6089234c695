#include <cstdint>
#include <string>

#include "Target.h"
#include "system/Shell.h"

namespace tessaly::fuzz {

void tryInput(std::string_view input) {
  const std::string text(input);
  const std::int64_t bytes = Shell::parseDu(text);
  require(bytes % 1024 == 0, "a size is whole kibibytes");
  require(Shell::parseDu("\t " + text) == bytes, "blanks in front do not matter");
  require(Shell::parseDu(text + "\t more") == bytes, "what follows a tab does not matter");
  require(Shell::parseDu(std::to_string(bytes / 1024) + "\t/" + text) == bytes,
          "a size that is written before a path can be read");
}

}  // namespace tessaly::fuzz
