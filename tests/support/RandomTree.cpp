#include "support/RandomTree.h"

#include <array>
#include <random>
#include <string_view>

namespace tessaly {
namespace {

template <typename List>
auto one(const List& list, std::mt19937_64& random) {
  return list[random() % list.size()];
}

constexpr std::array<std::string_view, 10> stems = {
    "a",          "Film",     "\\xff\\xfe", "two\\swords", "line\\nfeed",
    "\\xc3\\x84", "__rest__", "zz",         ".h",          "percent%d"};
constexpr std::array<std::string_view, 11> endings = {
    "",     "",        ".log", ".LOG", ".app", ".mp4", ".tar.gz", ".Photoslibrary", ".sparsebundle",
    ".tmp", ".app.txt"};
constexpr std::array<std::string_view, 10> folderNames = {
    "Downloads", "Documents", "Videos",       "downloads", ".Trash",
    ".vol",      "proc",      "node_modules", "Music",     "Backups.backupdb"};
constexpr std::array<std::string_view, 9> sizes = {"",     "4K",   "8K", "252K",        "256K",
                                                   "260K", "512K", "1M", "4K sparse=2G"};
constexpr std::array<std::string_view, 7> times = {"mtime=-1000000000.5",
                                                   "mtime=0",
                                                   "mtime=0.25",
                                                   "mtime=1600000000.123456789",
                                                   "mtime=14999999999",
                                                   "mtime=4294967295",
                                                   ""};

// Writes a tree line by line. Folders with many files get them as hard links to two files at the
// top, so that they take no space.
class Writer {
 public:
  explicit Writer(std::uint64_t seed, int items) : random_(seed), left_(items) {}

  std::string written() {
    text_ = "seed-large 256K\nseed-small 4K mtime=1500000000.5\n";
    while (left_ > 0) writeItem(0);
    return std::move(text_);
  }

 private:
  bool chance(unsigned in) { return random_() % in == 0; }

  // Names are unique by a number, except those that must be exact; these are in folders with a
  // number.
  std::string freshName() {
    return std::string(one(stems, random_)) + std::to_string(number_++) +
           std::string(one(endings, random_));
  }

  void write(int level, const std::string& line) {
    text_ += std::string(static_cast<std::size_t>(level) * 2, ' ') + line + "\n";
    --left_;
  }

  void writeFolder(int level, const std::string& name) {
    write(level, name + "/ " + std::string(one(times, random_)));
    for (auto count = random_() % 7; count > 0 && left_ > 0; --count) writeItem(level + 1);
    if (chance(8)) {
      const std::string number = std::to_string(70 + random_() % 60);
      write(level + 1,
            "many-### = seed-" + std::string(chance(2) ? "large" : "small") + " x" + number);
    }
    if (chance(10)) write(level + 1, "folder-###/ x" + std::to_string(random_() % 100 + 2));
  }

  void writeItem(int level) {
    const std::string name = freshName();
    switch (random_() % 14) {
      case 0:
        write(level, name + " -> " + (chance(2) ? ".." : "../seed-large"));
        break;
      case 1:
        write(level, name + (chance(2) ? " fifo " : " socket ") + std::string(one(times, random_)));
        break;
      case 2:
        write(level, name + " = seed-" + (chance(2) ? "large" : "small"));
        break;
      case 3:
      case 4:
        write(level, name + "/ " + std::string(one(times, random_)));
        writeFolder(level + 1, std::string(one(folderNames, random_)));
        break;
      case 5:
      case 6:
      case 7:
      case 8:
        if (level < 16) writeFolder(level, name);
        break;
      case 9:
        writeChain(level, name);
        break;
      default:
        write(level, name + " " + std::string(one(sizes, random_)) + " " +
                         std::string(one(times, random_)));
    }
  }

  // A chain of folders that goes below the depth at which a scanned tree ends.
  void writeChain(int level, const std::string& name) {
    const int depth = static_cast<int>(random_() % 9) + 1;
    if (level + depth > 20) return;
    for (int step = 0; step < depth; ++step) write(level + step, step == 0 ? name + "/" : "d/");
    writeItem(level + depth);
  }

  std::mt19937_64 random_;
  int left_;
  int number_ = 0;
  std::string text_;
};

}  // namespace

std::string randomTree(std::uint64_t seed, int items) {
  return Writer(seed, items).written();
}

DiskScanner::Options randomOptions(std::uint64_t seed, const std::string& root) {
  std::mt19937_64 random(seed);
  DiskScanner::Options options;
  options.expandPackages = random() % 2 == 0;
  if (random() % 2 == 0) options.extraNames = {"node_modules", "many-003", "d"};
  if (random() % 2 == 0) options.extraSuffixes = {".log", "2.tmp"};
  if (random() % 2 == 0) {
    for (int number = 0; number < 60; ++number) {
      options.extraPrefixes.push_back(root + "/" + (random() % 2 == 0 ? "a" : "Film") +
                                      std::to_string(number) + (random() % 2 == 0 ? "/" : ""));
    }
  }
  return options;
}

}  // namespace tessaly
