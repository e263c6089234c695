#include <cmath>
#include <optional>
#include <string>
#include <vector>

#include "Target.h"
#include "scan/HistoryJson.h"

namespace tessaly::fuzz {

void tryInput(std::string_view input) {
  const std::optional<std::vector<HistoryPoint>> points = HistoryJson::decode(input);
  if (!points) return;
  for (const HistoryPoint& point : *points) {
    require(std::fabs(point.at) < 9007199254740992.0, "a time can be counted in milliseconds");
    require(point.bytes >= 0 && point.files >= 0, "no count is negative");
  }
  const std::string json = HistoryJson::encode(*points);
  require(HistoryJson::decode(json) == points, "a history comes back as it was");
}

}  // namespace tessaly::fuzz
