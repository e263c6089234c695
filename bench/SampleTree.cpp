#include "SampleTree.h"

#include <cstdint>
#include <random>

#include "scan/DiskNode.h"

namespace tessaly::bench {

namespace {

constexpr int mostLevels = 12;

class SampleTree {
 public:
  explicit SampleTree(const std::string& letters) : letters_(letters) {}

  DiskNode build() {
    builder_.open({"somebody", 0, true, FileKind::folder, 1700000000.0}, "/home/somebody");
    --left_;
    while (left_ > 0) addChildren(1, 8);
    builder_.close();
    return builder_.finish();
  }

 private:
  std::string name() {
    std::string text;
    for (auto length = 4 + random_() % 16; length > 0; --length) {
      text += letters_[random_() % letters_.size()];
    }
    return text;
  }

  void addChildren(int level, int count) {
    for (; count > 0 && left_ > 0; --count) {
      --left_;
      const bool isFolder = level < mostLevels && random_() % 3 == 0;
      const double mtime = 1.5e9 + static_cast<double>(random_() % 200'000'000'000) / 1000;
      builder_.openBelow({isFolder ? name() : name() + ".json",
                          static_cast<std::int64_t>(random_() % (std::uint64_t{1} << 34U)),
                          isFolder, isFolder ? FileKind::folder : FileKind::code, mtime});
      if (isFolder) addChildren(level + 1, static_cast<int>(random_() % (mostChildren / 4)));
      builder_.close();
    }
  }

  std::string letters_;
  std::mt19937_64 random_{40000};
  int left_ = sampleNodes;
  DiskTreeBuilder builder_;
};

}  // namespace

DiskNode sampleTree(const std::string& letters) {
  return SampleTree(letters).build();
}

}  // namespace tessaly::bench
