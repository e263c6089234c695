#include <cstdio>
#include <cstdlib>

#include "Target.h"

namespace tessaly::fuzz {

void require(bool holds, const char* fact) {
  if (holds) return;
  std::fprintf(stderr, "does not hold: %s\n", fact);
  std::abort();
}

}  // namespace tessaly::fuzz
