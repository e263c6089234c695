// A user has a limited number of threads. Without more, a scan uses only the calling thread.
#include "scan/ScanFacts.h"
#include "support/RefusedThreads.h"
#include "support/TreeDifference.h"

namespace tessaly {
namespace {

constexpr const char* fixture = R"(
  folder-##/ x40
    inner-#/ x5
      film 4K
    Tool.app/
      binary 8K
  wide/
    note-#### 4K x5000
)";

TEST(ThreadLimit, scan_is_the_same_without_threads_of_its_own) {
  const TempTree tree(fixture);
  for (const int threads : {0, 1, 4}) {
    EXPECT_EQ(asOtherUser([&]() -> std::string {
                DiskScanner::Options options;
                options.threads = threads;
                const auto scan = [&](ScanRecord& record) {
                  return DiskScanner::scan(tree.path(), record.callbacks(), options,
                                           Places::forLinux());
                };
                ScanRecord expected;
                const DiskNode before = scan(expected);
                if (!has(before, "folder-39/Tool.app")) return "nothing to compare";
                if (std::string wrong = refuseThreads(); !wrong.empty()) return wrong;
                ScanRecord record;
                const DiskNode after = scan(record);
                return differenceOf(before, after) + differenceOf(expected, record);
              }),
              "")
        << threads;
  }
}

}  // namespace
}  // namespace tessaly
