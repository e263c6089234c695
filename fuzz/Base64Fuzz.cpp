#include <optional>
#include <string>

#include "Target.h"
#include "scan/Base64.h"

namespace tessaly::fuzz {

void tryInput(std::string_view input) {
  require(Base64::decode(Base64::encode(input)) == std::string(input), "any bytes come back");
  if (const std::optional<std::string> bytes = Base64::decode(input)) {
    require(Base64::encode(*bytes) == input, "only what is written is read");
  }
}

}  // namespace tessaly::fuzz
