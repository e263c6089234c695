// A process may run out of file descriptors at any moment. A scan then does with what it has.
#include <fcntl.h>
#include <sys/resource.h>
#include <unistd.h>

#include "scan/ScanFacts.h"
#include "support/Descriptor.h"
#include "support/TreeDifference.h"

namespace tessaly {
namespace {

class DescriptorLimit : public testing::TestWithParam<std::tuple<int, int>> {
 protected:
  static int limit() { return std::get<0>(GetParam()); }
  static int threads() { return std::get<1>(GetParam()); }

  static DiskNode scan(const std::string& root, ScanRecord& record) {
    DiskScanner::Options options;
    options.threads = threads();
    return DiskScanner::scan(root, record.callbacks(), options, Places::forLinux());
  }

  // Compares a scan under the limit with one before it, in a process of its own.
  static void expectSame(const std::string& root) {
    EXPECT_EQ(inForkedChild([&]() -> std::string {
                ScanRecord expected;
                const DiskNode before = scan(root, expected);
                rlimit number{};
                number.rlim_cur = number.rlim_max = static_cast<rlim_t>(limit());
                if (setrlimit(RLIMIT_NOFILE, &number) != 0) return "no limit";
                ScanRecord record;
                const DiskNode after = scan(root, record);
                return differenceOf(before, after) + differenceOf(expected, record);
              }),
              "");
  }
};

INSTANTIATE_TEST_SUITE_P(of, DescriptorLimit,
                         testing::Combine(testing::Values(64, 16), testing::Values(0, 1, 4)),
                         [](const testing::TestParamInfo<std::tuple<int, int>>& instance) {
                           return std::to_string(std::get<0>(instance.param)) + "_with_threads_" +
                                  std::to_string(std::get<1>(instance.param));
                         });

TEST_P(DescriptorLimit, wide_tree_is_the_same) {
  const TempTree tree(R"(
    many-###/ x700
      inner-#/ x3
        film 4K
        Tool.app/
          Contents/
            film 4K
  )");
  expectSame(tree.path());
}

TEST_P(DescriptorLimit, deep_tree_is_the_same) {
  TempTree tree;
  tree.chain("", "folder", limit() == 64 ? 5000 : 1000, [&](int folder, int level) {
    plantTree(folder, folder, level % 2 == 0 ? "a/\n  x 4K" : "z/\n  x 4K");
  });
  expectSame(tree.path());
}

TEST_P(DescriptorLimit, deep_package_is_the_same) {
  TempTree tree("Tool.app/");
  tree.chain("Tool.app", "folder", limit() == 64 ? 3000 : 1000, [&](int folder, int level) {
    plantTree(folder, folder, level % 2 == 0 ? "a/\n  x 4K" : "z/\n  x 4K");
  });
  expectSame(tree.path());
}

TEST_P(DescriptorLimit, folder_of_many_files_is_the_same) {
  const TempTree tree(R"(
    wide/
      a-##### x20000
      b-###/ x300
        c 4K
    other/
      film 1M
  )");
  expectSame(tree.path());
}

// Takes all descriptors of the process but `left`, as a process under load does.
std::vector<Descriptor> allDescriptorsBut(std::size_t left) {
  std::vector<Descriptor> held;
  while (true) {
    Descriptor one(open("/dev/null", O_RDONLY | O_CLOEXEC));
    if (!one) break;
    held.push_back(std::move(one));
  }
  for (; left > 0 && !held.empty(); --left) held.pop_back();
  return held;
}

class FewDescriptors : public DescriptorLimit {
 protected:
  static void expectSameWithFew(const std::string& root, std::size_t left) {
    EXPECT_EQ(inForkedChild([&]() -> std::string {
                ScanRecord expected;
                const DiskNode before = scan(root, expected);
                rlimit number{};
                number.rlim_cur = number.rlim_max = static_cast<rlim_t>(limit());
                if (setrlimit(RLIMIT_NOFILE, &number) != 0) return "no limit";
                const std::vector<Descriptor> held = allDescriptorsBut(left);
                ScanRecord record;
                const DiskNode after = scan(root, record);
                return differenceOf(before, after) + differenceOf(expected, record);
              }),
              "");
  }
};

INSTANTIATE_TEST_SUITE_P(of, FewDescriptors,
                         testing::Combine(testing::Values(1024, 64, 16), testing::Values(0, 1, 4)),
                         [](const testing::TestParamInfo<std::tuple<int, int>>& instance) {
                           return std::to_string(std::get<0>(instance.param)) + "_with_threads_" +
                                  std::to_string(std::get<1>(instance.param));
                         });

TEST_P(FewDescriptors, left_by_others_are_enough_for_a_flat_tree) {
  const TempTree tree(R"(
    many-##/ x60
      inner-#/ x3
        film 4K
  )");
  expectSameWithFew(tree.path(), 6);
}

TEST_P(FewDescriptors, left_by_others_are_enough_for_a_deep_tree) {
  TempTree tree;
  tree.chain("", "folder", 60, [&](int folder, int level) {
    plantTree(folder, folder, level % 2 == 0 ? "a/\n  x 4K" : "z/\n  x 4K");
  });
  expectSameWithFew(tree.path(), 6);
}

TEST_P(FewDescriptors, left_by_others_are_enough_for_a_deep_package) {
  TempTree tree("Tool.app/");
  tree.chain("Tool.app", "folder", 60, [&](int folder, int level) {
    plantTree(folder, folder, level % 2 == 0 ? "a/\n  x 4K" : "z/\n  x 4K");
  });
  expectSameWithFew(tree.path(), 6);
}

}  // namespace
}  // namespace tessaly
