// A large folder is read in several runs. A file system that lists names by their positions in the
// folder repeats a name that is removed and created again meanwhile.
#include <cstdlib>
#include <filesystem>
#include <fstream>
#include <sys/mount.h>

#include "scan/ScanFacts.h"
#include "support/Needs.h"
#include "support/PrivateMounts.h"

namespace tessaly {
namespace {

namespace fs = std::filesystem;

constexpr int otherFiles = 4000;

// Its position is before those of all others.
std::string furnish(const std::string& volume) {
  fs::create_directory(volume + "/large");
  std::ofstream(volume + "/content") << std::string(512 * 1024, 'x');
  fs::create_hard_link(volume + "/content", volume + "/large/again");
  for (int i = 0; i < otherFiles; ++i) {
    std::ofstream file(volume + "/large/other-" + std::to_string(i));
    if (!file) return "no room for the files";
  }
  return "";
}

TEST(RepeatedNames, a_repeated_name_is_one_node_with_the_size_of_both) {
  const TempTree tree("volume/\n");
  const std::string volume = tree.at("volume");
  const std::string told = inPrivateMounts([&]() -> std::string {
    const std::string make = "truncate -s 32M '" + tree.at("disk") +
                             "' && mke2fs -q -F -t ext2 -O ^dir_index -N 8192 '" + tree.at("disk") +
                             "' && mount -o loop '" + tree.at("disk") + "' '" + volume + "'";
    if (std::system(("{ " + make + "; } >&2").c_str()) != 0)
      return "refused: " + needs(Need::image, make);
    std::string wrong = furnish(volume);
    if (!wrong.empty()) return wrong;
    int items = 0;
    DiskScanner::Callbacks callbacks;
    // After the first run, the name is created again behind all others.
    callbacks.isCancelled = [&] {
      if (++items == 100) {
        fs::remove(volume + "/large/again");
        std::ofstream(volume + "/large/filler").put('x');
        fs::create_hard_link(volume + "/content", volume + "/large/again");
      }
      return false;
    };
    DiskScanner::Options options;
    options.threads = 1;
    const DiskNode root = DiskScanner::scan(volume, callbacks, options, Places::forLinux());
    const DiskNode large = below(root, "large");
    if (childNames(large) != std::vector<std::string>{"again"}) {
      return std::to_string(large.children().size()) + " nodes";
    }
    const std::int64_t once = below(root, "content").size();
    const std::int64_t size = below(large, "again").size();
    return size == 2 * once
               ? ""
               : std::to_string(size) + " bytes instead of twice " + std::to_string(once);
  });
  if (told.starts_with("refused")) GTEST_SKIP() << "no mounting here, " << told;
  EXPECT_EQ(told, "");
}

}  // namespace
}  // namespace tessaly
