#include "support/MemorySettings.h"

#include "support/SettingsContract.h"

namespace tessaly {
namespace {

struct MemoryHarness {
  SettingsStore& store() { return store_; }

  MemorySettings store_;
};

INSTANTIATE_TYPED_TEST_SUITE_P(Memory, SettingsContract, MemoryHarness);

}  // namespace
}  // namespace tessaly
