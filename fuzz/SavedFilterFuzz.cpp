#include <optional>
#include <string>
#include <vector>

#include "Target.h"
#include "treemap/SavedFilter.h"

namespace tessaly::fuzz {

void tryInput(std::string_view input) {
  if (const std::optional<std::vector<SavedFilter>> filters = SavedFilter::decode(input)) {
    require(SavedFilter::decode(SavedFilter::encode(*filters)) == filters,
            "filters come back as they were");
  }

  const std::vector<SavedFilter> filters = {
      {.id = std::string(input), .enabled = true, .skipScan = false}};
  require(SavedFilter::decode(SavedFilter::encode(filters)) == filters, "an id is any bytes");
}

}  // namespace tessaly::fuzz
