#include <algorithm>
#include <cstdint>
#include <cstring>
#include <string>
#include <vector>

#include "Target.h"
#include "system/DiskSpace.h"

namespace tessaly::fuzz {

namespace {

std::int64_t countOf(const std::string& printed) {
  return DiskSpace::trashCount(
      [&printed](const std::string&, const std::vector<std::string>&, double) { return printed; });
}

}  // namespace

void tryInput(std::string_view input) {
  const std::string text(input);
  const std::int64_t count = countOf(text);
  require(countOf(" \r\n" + text + "\t\u2029") == count, "white space around does not matter");
  require(countOf(std::to_string(count)) == count, "a count that is written can be read");
  if (count != 0) require(countOf("x" + text) == 0, "a count stands alone");

  std::int64_t anyCount = 0;
  std::memcpy(&anyCount, text.data(), std::min(text.size(), sizeof anyCount));
  require(countOf(std::to_string(anyCount) + "\n") == anyCount, "any count can be read");
}

}  // namespace tessaly::fuzz
