#include "app/panes/HistoryTexts.h"

#include <cstdlib>
#include <ctime>
#include <gtest/gtest.h>
#include <limits>

namespace tessaly {
namespace {

class HistoryTextsTest : public testing::Test {
 protected:
  HistoryTextsTest() {
    const char* const set = std::getenv("TZ");
    if (set != nullptr) before_ = set;
    // Two hours east of Greenwich.
    setenv("TZ", "XYZ-2", 1);
    tzset();
  }
  ~HistoryTextsTest() override {
    if (before_.empty()) {
      unsetenv("TZ");
    } else {
      setenv("TZ", before_.c_str(), 1);
    }
    tzset();
  }

 private:
  std::string before_;
};

TEST_F(HistoryTextsTest, a_time_is_local_to_the_minute) {
  EXPECT_EQ(HistoryTexts::time(1700000000), "2023-11-15 00:13");
  EXPECT_EQ(HistoryTexts::time(1700000039.99), "2023-11-15 00:13");
  EXPECT_EQ(HistoryTexts::time(1700000039.9999), "2023-11-15 00:13");
  EXPECT_EQ(HistoryTexts::time(1700000040), "2023-11-15 00:14");
  EXPECT_EQ(HistoryTexts::time(-0.5), "1970-01-01 01:59");
  EXPECT_EQ(HistoryTexts::date(1700000000), "2023-11-15");
}

TEST_F(HistoryTextsTest, a_time_that_no_calendar_has_is_empty) {
  for (const double at : {std::numeric_limits<double>::quiet_NaN(),
                          std::numeric_limits<double>::infinity(), 1e300, -1e300})
    EXPECT_EQ(HistoryTexts::time(at), "") << at;
}

TEST_F(HistoryTextsTest, a_scan_is_compared_with_the_one_before) {
  const std::vector<HistoryPoint> points = {
      {0, 1LL << 30U, 1}, {60, 3LL << 30U, 1}, {120, 3LL << 30U, 1}, {180, 0, 0}};
  EXPECT_EQ(HistoryTexts::scan(points, 0), "1970-01-01 02:00: 1.0 GB");
  EXPECT_EQ(HistoryTexts::scan(points, 1),
            "1970-01-01 02:01: 3.0 GB, 2.0 GB more than the scan before");
  EXPECT_EQ(HistoryTexts::scan(points, 2), "1970-01-01 02:02: 3.0 GB, as much as the scan before");
  EXPECT_EQ(HistoryTexts::scan(points, 3),
            "1970-01-01 02:03: 0 B, 3.0 GB less than the scan before");
}

TEST_F(HistoryTextsTest, all_scans_have_one_summary) {
  EXPECT_EQ(HistoryTexts::summary({}), "");
  EXPECT_EQ(HistoryTexts::summary({{0, 1024, 1}}), "1 scan. 1970-01-01 02:00: 1.0 KB");
  EXPECT_EQ(
      HistoryTexts::summary({{0, 1024, 1}, {60, 512, 1}, {120, 4096, 1}, {180, 2048, 1}}),
      "4 scans from 1970-01-01 02:00 to 1970-01-01 02:03, between 512 B and 4.0 KB. The last: "
      "2.0 KB");
}

}  // namespace
}  // namespace tessaly
