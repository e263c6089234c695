#include <charconv>
#include <cmath>
#include <string>

#include "Target.h"
#include "system/DiskSpace.h"

namespace tessaly::fuzz {

namespace {

// A row of df with the values of `usage`.
std::string rowOf(const DiskUsage& usage) {
  char percent[32];
  const std::to_chars_result end =
      std::to_chars(percent, percent + sizeof percent, usage.usedPercent);
  return "disk " + std::to_string(usage.total / 1024) + " " + std::to_string(usage.used / 1024) +
         " " + std::to_string(usage.free / 1024) + " " + std::string(percent, end.ptr) + "% /";
}

}  // namespace

void tryInput(std::string_view input) {
  const std::string text(input);
  const DiskUsage usage = DiskSpace::parse(text);
  require(usage.total % 1024 == 0 && usage.used % 1024 == 0 && usage.free % 1024 == 0,
          "sizes are whole kibibytes");
  require(std::isfinite(usage.usedPercent), "the percentage is finite");
  require(usage.purgeable == 0, "df knows nothing purgeable");
  require(DiskSpace::parse("Filesystem 1 2 3 4%\n" + text) == usage, "a header does not matter");
  require(DiskSpace::parse(text + "\n\r\n") == usage, "newlines at the end do not matter");
  require(DiskSpace::parse(rowOf(usage)) == usage, "figures that are written can be read");
}

}  // namespace tessaly::fuzz
