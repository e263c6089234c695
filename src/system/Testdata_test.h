// What tools printed, kept in files.
#pragma once

#include <fstream>
#include <gtest/gtest.h>
#include <iterator>
#include <string>

namespace tessaly {

// The bytes of a file in testdata.
inline std::string testdata(const std::string& name) {
  std::ifstream file(TESSALY_SYSTEM_TESTDATA "/" + name, std::ios::binary);
  EXPECT_TRUE(file.is_open()) << name;
  return {std::istreambuf_iterator<char>(file), {}};
}

}  // namespace tessaly
