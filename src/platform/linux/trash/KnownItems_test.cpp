#include "platform/linux/trash/KnownItems.h"

#include <fcntl.h>
#include <gtest/gtest.h>

#include "support/TempTree.h"

namespace tessaly {
namespace {

TEST(KnownItems, items_without_an_identity_are_not_the_same) {
  const TempTree tree("files/\n");
  const FileDescriptor files(::open(tree.at("files").c_str(), O_PATH | O_DIRECTORY | O_CLOEXEC));
  const Result<KnownItems> known = KnownItems::in(files, tree.at("files"));
  ASSERT_TRUE(known);
  const TrashIdentity unknown{.item = "", .record = "record"};
  EXPECT_FALSE(known.value().areSame(unknown, unknown));
  const TrashIdentity item{.item = "item", .record = "record"};
  EXPECT_TRUE(known.value().areSame(item, item));
}

}  // namespace
}  // namespace tessaly
