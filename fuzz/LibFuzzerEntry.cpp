#include <cstddef>
#include <cstdint>

#include "Target.h"

// The entry point that libFuzzer calls.
extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
  tessaly::fuzz::tryInput({reinterpret_cast<const char*>(data), size});
  return 0;
}
