#include "platform/MemoryFile.h"

#include <gtest/gtest.h>
#include <string>
#include <utility>

#include "support/ForkedChild.h"
#include "support/OwnProcess.h"
#include "support/PlainFiles.h"

namespace tessaly {
namespace {

TEST(MemoryFile, is_written_by_another_process_and_read_here) {
  const Result<MemoryFile> file = MemoryFile::made();
  ASSERT_TRUE(file.ok());
  EXPECT_EQ(file.value().size(), 0);
  const std::string told = inForkedChild([&file]() -> std::string {
    putFile(file.value().path(), "0123456789");
    return "";
  });
  ASSERT_EQ(told, "");
  EXPECT_EQ(file.value().size(), 10);
  std::string bytes(4, '\0');
  ASSERT_TRUE(file.value().read(3, bytes.data(), bytes.size()));
  EXPECT_EQ(bytes, "3456");
  EXPECT_FALSE(file.value().read(8, bytes.data(), bytes.size()));
}

TEST(MemoryFile, is_gone_with_the_object) {
  const OwnProcess before = OwnProcess::now();
  {
    Result<MemoryFile> file = MemoryFile::made();
    ASSERT_TRUE(file.ok());
    const MemoryFile moved = std::move(file.value());
    EXPECT_EQ(OwnProcess::now().descriptors, before.descriptors + 1);
  }
  EXPECT_EQ(OwnProcess::now(), before);
}

}  // namespace
}  // namespace tessaly
