// A process may run out of file descriptors at any time. A scan then works with those it has.
#include <cerrno>
#include <climits>
#include <set>
#include <sys/resource.h>

#include "scan/ScanFacts.h"
#include "support/AllDescriptorsBut.h"
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

  // Compares a scan under the limit with one before it, in a child process.
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

TEST_P(DescriptorLimit, a_wide_tree_is_the_same_under_a_limit_of_descriptors) {
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

// Far deeper than the number of descriptors, with paths longer than the system accepts.
TEST_P(DescriptorLimit, a_deep_tree_is_the_same_under_a_limit_of_descriptors) {
  TempTree tree;
  tree.chain("", "folder", 1000, [&](int folder, int level) {
    plantTree(folder, folder, level % 2 == 0 ? "a/\n  x 4K" : "z/\n  x 4K");
  });
  expectSame(tree.path());
}

TEST_P(DescriptorLimit, a_deep_package_is_the_same_under_a_limit_of_descriptors) {
  TempTree tree("Tool.app/");
  tree.chain("Tool.app", "folder", 1000, [&](int folder, int level) {
    plantTree(folder, folder, level % 2 == 0 ? "a/\n  x 4K" : "z/\n  x 4K");
  });
  expectSame(tree.path());
}

TEST_P(DescriptorLimit, a_folder_of_many_files_is_the_same_under_a_limit_of_descriptors) {
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

TEST_P(FewDescriptors, few_descriptors_suffice_for_a_flat_tree) {
  const TempTree tree(R"(
    many-##/ x60
      inner-#/ x3
        film 4K
  )");
  expectSameWithFew(tree.path(), 6);
}

TEST_P(FewDescriptors, few_descriptors_suffice_for_a_deep_tree) {
  TempTree tree;
  tree.chain("", "folder", 60, [&](int folder, int level) {
    plantTree(folder, folder, level % 2 == 0 ? "a/\n  x 4K" : "z/\n  x 4K");
  });
  expectSameWithFew(tree.path(), 6);
}

TEST_P(FewDescriptors, few_descriptors_suffice_for_a_deep_package) {
  TempTree tree("Tool.app/");
  tree.chain("Tool.app", "folder", 60, [&](int folder, int level) {
    plantTree(folder, folder, level % 2 == 0 ? "a/\n  x 4K" : "z/\n  x 4K");
  });
  expectSameWithFew(tree.path(), 6);
}

// A tree, and the reports of its scan: the errno and the path, one per line.
struct Scanned {
  DiskNode root;
  std::vector<std::string> told;
};

Scanned scanAndNote(const std::string& root, int threads, std::function<void()> duringFirst = {}) {
  ScanRecord record;
  if (duringFirst) record.during(1, std::move(duringFirst));
  DiskScanner::Callbacks callbacks = record.callbacks();
  std::vector<std::string> told;
  callbacks.unreadable = [&](const SystemError& failure) {
    told.push_back(std::to_string(failure.code) + " " + failure.path);
  };
  DiskScanner::Options options;
  options.threads = threads;
  DiskNode node = DiskScanner::scan(root, callbacks, options, Places::forLinux());
  return {std::move(node), std::move(told)};
}

bool lowerLimit(rlim_t to) {
  rlimit number{};
  if (getrlimit(RLIMIT_NOFILE, &number) != 0) return false;
  number.rlim_cur = to;
  return setrlimit(RLIMIT_NOFILE, &number) == 0;
}

class LastDescriptors : public testing::TestWithParam<std::tuple<int, int>> {
 protected:
  static int left() { return std::get<0>(GetParam()); }
  static int threads() { return std::get<1>(GetParam()); }

  static void expectSame(const std::string& root) {
    EXPECT_EQ(inForkedChild([&]() -> std::string {
                const Scanned before = scanAndNote(root, threads());
                if (!lowerLimit(64)) return "no limit";
                const std::vector<Descriptor> held =
                    allDescriptorsBut(static_cast<std::size_t>(left()));
                const Scanned after = scanAndNote(root, threads());
                if (!after.told.empty()) return "told: " + after.told.front();
                return differenceOf(before.root, after.root);
              }),
              "");
  }
};

INSTANTIATE_TEST_SUITE_P(of, LastDescriptors,
                         testing::Combine(testing::Values(1, 2, 3), testing::Values(1, 4)),
                         [](const testing::TestParamInfo<std::tuple<int, int>>& instance) {
                           return std::to_string(std::get<0>(instance.param)) + "_with_threads_" +
                                  std::to_string(std::get<1>(instance.param));
                         });

TEST_P(LastDescriptors, the_last_descriptors_suffice_for_a_tree) {
  const TempTree tree(R"(
    many-##/ x30
      inner-#/ x3
        film 4K
        Tool.app/
          Contents/
            film 4K
  )");
  expectSame(tree.path());
}

TEST_P(LastDescriptors, the_last_descriptors_suffice_for_a_deep_tree) {
  TempTree tree;
  tree.chain("", "folder", 60, [&](int folder, int level) {
    plantTree(folder, folder, level % 2 == 0 ? "a/\n  x 4K" : "z/\n  x 4K");
  });
  expectSame(tree.path());
}

TEST_P(LastDescriptors, the_last_descriptors_suffice_for_a_folder_read_in_runs) {
  const TempTree tree(R"(
    a-#####/ x2000
    b-##### 4K x8000
    other/
      c-##### x8000
      film 1M
  )");
  expectSame(tree.path());
}

// Paths that are too long for one system call need two descriptors, and are reported if there is
// one.
TEST_P(LastDescriptors, the_last_descriptors_suffice_for_paths_of_any_length_or_the_scan_reports) {
  TempTree tree;
  tree.chain("", std::string(200, 'n'), 40, [&](int folder, int level) {
    plantTree(folder, folder, level % 2 == 0 ? "a/\n  x 4K" : "z/\n  x 4K");
  });
  if (left() > 1) {
    expectSame(tree.path());
    return;
  }
  EXPECT_EQ(inForkedChild([&]() -> std::string {
              if (!lowerLimit(64)) return "no limit";
              const std::vector<Descriptor> held = allDescriptorsBut(1);
              const Scanned scanned = scanAndNote(tree.path(), threads());
              if (scanned.told.empty()) return "nothing was reported";
              for (const std::string& line : scanned.told) {
                if (!line.starts_with(std::to_string(EMFILE) + " ")) return line;
                if (line.size() < PATH_MAX) return "too early: " + line;
              }
              return "";
            }),
            "");
}

class LostDescriptors : public testing::TestWithParam<int> {};
INSTANTIATE_TEST_SUITE_P(with, LostDescriptors, testing::Values(1, 4), [](const auto& instance) {
  return std::to_string(instance.param) + "_threads";
});

// Nothing can be opened once the walk has begun, as if another part of the program took every
// descriptor that the walk releases. Waiting for each folder would take half an hour.
TEST_P(LostDescriptors, no_folder_is_left_empty_without_a_report) {
  constexpr int folders = 1000;
  const TempTree tree(R"(
    many-###/ x1000
      film 4K
  )");
  EXPECT_EQ(inForkedChild([&]() -> std::string {
              const Scanned scanned = scanAndNote(tree.path(), GetParam(), [] { lowerLimit(0); });
              const std::set<std::string> told(scanned.told.begin(), scanned.told.end());
              // Other threads may have read everything by then.
              if (told.empty() && GetParam() == 1) return "nothing was reported";
              if (told.size() != scanned.told.size()) return "something was reported twice";
              int whole = 0;
              for (int number = 0; number < folders; ++number) {
                const std::string digits = std::to_string(folders + number).substr(1);
                const std::string line = std::to_string(EMFILE) + " " + tree.at("many-" + digits);
                if (!told.contains(line)) ++whole;
              }
              if (whole + static_cast<int>(told.size()) != folders)
                return "other items were reported";
              return scanned.root.size() == whole * 4 * KiB ? "" : "another size";
            }),
            "");
}

TEST(NoDescriptor, only_the_root_is_reported_without_any_descriptor) {
  const TempTree tree("film 1M\n");
  EXPECT_EQ(inForkedChild([&]() -> std::string {
              if (!lowerLimit(64)) return "no limit";
              const std::vector<Descriptor> held = allDescriptorsBut(0);
              const Scanned scanned = scanAndNote(tree.path(), 0);
              if (scanned.root.size() != 0) return treeText(scanned.root);
              return scanned.told.size() == 1 ? scanned.told.front() : "";
            }),
            std::to_string(EMFILE) + " " + tree.path());
}

}  // namespace
}  // namespace tessaly
