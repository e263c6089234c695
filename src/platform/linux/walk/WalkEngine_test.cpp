#include "platform/linux/walk/WalkEngine.h"

#include <gtest/gtest.h>
#include <set>
#include <string>

#include "platform/linux/MountSnapshotData.h"
#include "support/RefusedThreads.h"
#include "support/TempTree.h"

namespace tessaly::walk {
namespace {

TEST(WalkEngine, a_walk_continues_with_the_threads_that_the_system_grants) {
  const TempTree tree("folder-##/ x30\n  inner-#/ x5\n    film 4K\nwide/\n  note-#### x5000");
  const MountSnapshot mounts({});
  constexpr int helpers = 3;
  for (int granted = 0; granted <= helpers; ++granted) {
    RefusedThreads system;
    system.refuseAfter(granted);
    WalkEngine walk(tree.path(), {}, 1 + helpers, mounts, {}, {}, system.startThread());
    ASSERT_TRUE(walk.isOpen());
    std::size_t items = 0;
    while (walk.next() != nullptr) ++items;
    EXPECT_EQ(items, 30U + 30 * 5 + 30 * 5 + 1 + 5000) << granted;
    // After a refusal it requests no more threads.
    EXPECT_EQ(system.refused(), granted < helpers ? 1 : 0);
  }
}

}  // namespace
}  // namespace tessaly::walk
