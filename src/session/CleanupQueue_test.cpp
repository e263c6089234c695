#include "session/CleanupQueue.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>
#include <string>
#include <vector>

#include "session/SessionFixture_test.h"

namespace tessaly {
namespace {

using testing::ElementsAre;

std::vector<std::string> pathsOf(const CleanupQueue& queue) {
  std::vector<std::string> paths;
  for (const DiskNode& node : queue.queue()) paths.push_back(node.path());
  return paths;
}

TEST(CleanupQueueAlone, the_panel_stays_open_until_the_last_item_is_removed) {
  CleanupQueue queue;
  for (const char* path : {"/a", "/b", "/c"}) queue.addToQueue(file(path, 1));
  queue.removeFromQueue("/b");
  EXPECT_THAT(pathsOf(queue), ElementsAre("/a", "/c"));
  EXPECT_TRUE(queue.queueOpen());
  FieldChanges changes;
  queue.removeFromQueue(changes, {"/a", "/c", "/elsewhere"});
  changes.announce();
  EXPECT_TRUE(queue.queue().empty());
  EXPECT_FALSE(queue.queueOpen());
}

TEST(CleanupQueueAlone, the_panel_expands_for_a_new_item_only) {
  CleanupQueue queue;
  queue.addToQueue(file("/a", 1));
  queue.setQueueMinimized(true);
  queue.addToQueue(file("/a", 1));
  EXPECT_TRUE(queue.queueMinimized());
  queue.addToQueue(file("/b", 1));
  EXPECT_FALSE(queue.queueMinimized());
}

}  // namespace
}  // namespace tessaly
