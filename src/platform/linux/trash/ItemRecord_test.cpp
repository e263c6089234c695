#include "platform/linux/trash/ItemRecord.h"

#include <cerrno>
#include <fcntl.h>
#include <gtest/gtest.h>
#include <string>

#include "support/PlainFiles.h"
#include "support/TempTree.h"

namespace tessaly {
namespace {

// 4,096 bytes of a path, each encoded as three, and another 4,096 for the rest.
TEST(ItemRecord, a_record_longer_than_any_path_needs_is_refused) {
  const TempTree tree;
  const FileDescriptor folder(::open(tree.path().c_str(), O_PATH | O_DIRECTORY | O_CLOEXEC));
  const ItemRecord record(folder, "film");
  const std::string longest(3 * 4096 + 4096, 'x');
  putFile(tree.at("film.trashinfo"), longest);
  const Result<std::string> read = record.content();
  ASSERT_TRUE(read);
  EXPECT_EQ(read.value(), longest);
  putFile(tree.at("film.trashinfo"), longest + "x");
  const Result<std::string> refused = record.content();
  ASSERT_FALSE(refused);
  EXPECT_EQ(refused.error().code, EFBIG);
}

}  // namespace
}  // namespace tessaly
