#include <cstring>
#include <string>

#include "Target.h"
#include "reclaim/ZipListing.h"

namespace tessaly::fuzz {

void tryInput(std::string_view input) {
  constexpr std::size_t entryLength = 46;
  const auto size = static_cast<std::int64_t>(input.size());
  const auto read = [&](std::int64_t offset, char* to, std::size_t count) {
    require(offset >= 0 && offset <= size, "a read begins within the archive");
    if (count > input.size() - static_cast<std::size_t>(offset)) return false;
    std::memcpy(to, input.data() + offset, count);
    return true;
  };
  const auto listing = ZipListing::of(size, read);
  if (!listing) return;
  require(listing->count() * entryLength <= input.size(), "an entry takes room in the archive");
  require(!listing->sizeOf(std::string(input) + "x"), "no name is longer than the archive");
}

}  // namespace tessaly::fuzz
