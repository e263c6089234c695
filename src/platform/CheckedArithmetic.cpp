#include "platform/CheckedArithmetic.h"

#include <cinttypes>
#include <cstdio>
#include <cstdlib>

namespace tessaly {

void overflowed(const char* operation, std::int64_t a, std::int64_t b) {
  std::fprintf(stderr, "tessaly: size overflow: %" PRId64 " %s %" PRId64 "\n", a, operation, b);
  std::abort();
}

}  // namespace tessaly
