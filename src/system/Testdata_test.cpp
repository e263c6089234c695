#include "system/Testdata_test.h"

#include <fstream>
#include <gtest/gtest.h>
#include <iterator>

namespace tessaly {

std::string testdata(const std::string& name) {
  std::ifstream file(TESSALY_SYSTEM_TESTDATA "/" + name, std::ios::binary);
  EXPECT_TRUE(file.is_open()) << name;
  return {std::istreambuf_iterator<char>(file), {}};
}

}  // namespace tessaly
