// A source tree in which tests plant violations of rules.
#pragma once

#include <cstdlib>
#include <filesystem>
#include <fstream>
#include <gtest/gtest.h>
#include <string>
#include <unistd.h>

namespace tessaly::architecture {

class PlantedSources : public testing::Test {
 protected:
  PlantedSources() {
    std::string pattern =
        (std::filesystem::temp_directory_path() / "tessaly-rules-XXXXXX").string();
    if (::mkdtemp(pattern.data()) == nullptr) {
      std::abort();
    }
    src_ = pattern;
  }
  ~PlantedSources() override { std::filesystem::remove_all(src_); }

  void plant(const std::string& file, const std::string& text) {
    std::filesystem::create_directories((src_ / file).parent_path());
    std::ofstream(src_ / file) << text;
  }

  std::filesystem::path src_;
};

}  // namespace tessaly::architecture
