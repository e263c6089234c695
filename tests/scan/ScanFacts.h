// A fixture for facts about scans, which hold for the sequential model and for DiskScanner on one
// thread and on four; so the model is checked as well.
#pragma once

#include <gmock/gmock.h>
#include <gtest/gtest.h>
#include <optional>
#include <string>
#include <string_view>
#include <vector>

#include "scan/DiskScanner.h"
#include "support/ForkedChild.h"
#include "support/ScanRecord.h"
#include "support/TempTree.h"

namespace tessaly {

constexpr std::int64_t KiB = 1024;
constexpr std::int64_t MiB = 1024 * KiB;

struct Walker {
  const char* name;
  int threads;  // 0: the model

  DiskNode scan(const std::string& root, const DiskScanner::Callbacks& callbacks = {},
                DiskScanner::Options options = {}, const Places& places = Places::forLinux()) const;
};

inline void PrintTo(const Walker& walker, std::ostream* out) {
  *out << walker.name;
}

class ScanFacts : public testing::TestWithParam<Walker> {
 protected:
  static DiskNode scan(const std::string& root, const DiskScanner::Options& options = {},
                       const Places& places = Places::forLinux()) {
    return GetParam().scan(root, {}, options, places);
  }
  static DiskNode scanExpanded(const std::string& root) {
    DiskScanner::Options options;
    options.expandPackages = true;
    return scan(root, options);
  }
};

// The node at `path` below `node`, with components separated by "/"; ends the test if there is
// none.
DiskNode below(const DiskNode& node, std::string_view path);

// Whether there is a node at `path` below `node`.
bool has(const DiskNode& node, std::string_view path);

std::vector<std::string> childNames(const DiskNode& node);

}  // namespace tessaly

#define TESSALY_FOR_ALL_WALKERS(suite)                                                   \
  INSTANTIATE_TEST_SUITE_P(                                                              \
      by, suite,                                                                         \
      testing::Values(::tessaly::Walker{"model", 0}, ::tessaly::Walker{"one_thread", 1}, \
                      ::tessaly::Walker{"four_threads", 4}),                             \
      [](const testing::TestParamInfo<::tessaly::Walker>& instance) {                    \
        return std::string(instance.param.name);                                         \
      })
