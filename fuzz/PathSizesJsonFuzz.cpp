#include <cstdint>
#include <optional>
#include <string>

#include "Target.h"
#include "scan/PathSizesJson.h"

namespace tessaly::fuzz {

void tryInput(std::string_view input) {
  if (const std::optional<PathSizes> sizes = PathSizesJson::decode(input)) {
    std::int64_t total = 0;
    for (const auto& [path, size] : *sizes) {
      require(size >= 0, "no size is negative");
      require(!__builtin_add_overflow(total, size, &total), "sizes can be added up");
    }
    const std::string json = PathSizesJson::encode(*sizes);
    require(PathSizesJson::decode(json) == sizes, "sizes come back as they were");
  }

  const PathSizes sizes = {{std::string(input), 1}, {"/" + std::string(input), 2}};
  require(PathSizesJson::decode(PathSizesJson::encode(sizes)) == sizes, "paths are any bytes");
}

}  // namespace tessaly::fuzz
