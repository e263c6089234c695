// Feeds a target with the files that its arguments name, folders with all they contain, each whole
// and cut short at many places, all of them in a small one. Ends badly without any file, so that
// lost seeds do not go unnoticed.
#include <cstddef>
#include <cstdio>
#include <exception>
#include <filesystem>
#include <fstream>
#include <iterator>
#include <memory>
#include <string>
#include <string_view>
#include <vector>

#include "Target.h"

namespace {

namespace fs = std::filesystem;

std::vector<fs::path> filesAt(const fs::path& place) {
  if (fs::is_regular_file(place)) return {place};
  std::vector<fs::path> files;
  for (const fs::directory_entry& entry : fs::recursive_directory_iterator(place)) {
    if (entry.is_regular_file()) files.push_back(entry.path());
  }
  return files;
}

void replayStart(const std::string& bytes, std::size_t length) {
  // A block of its own, so that a sanitizer sees a read past its end.
  const auto input = std::make_unique<char[]>(length);
  bytes.copy(input.get(), length);
  tessaly::fuzz::tryInput({input.get(), length});
}

void replay(const std::string& bytes) {
  const std::size_t step = bytes.size() / 512 + 1;
  for (std::size_t length = 0; length < bytes.size(); length += step) replayStart(bytes, length);
  replayStart(bytes, bytes.size());
}

int replayAll(const std::vector<std::string>& places) {
  std::size_t count = 0;
  for (const std::string& place : places) {
    for (const fs::path& file : filesAt(place)) {
      // Said first, for a crash says nothing.
      std::printf("%s\n", file.c_str());
      std::fflush(stdout);
      std::ifstream stream(file, std::ios::binary);
      replay({std::istreambuf_iterator<char>(stream), {}});
      ++count;
    }
  }
  std::printf("%zu files\n", count);
  return count > 0 ? 0 : 1;
}

}  // namespace

int main(int argc, char** argv) {
  try {
    return replayAll({argv + 1, argv + argc});
  } catch (const std::exception& error) {
    std::fprintf(stderr, "%s\n", error.what());
    return 1;
  }
}
