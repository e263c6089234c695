#include "app/quicklook/FactRows.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>
#include <limits>
#include <string>

namespace tessaly {
namespace {

using testing::ElementsAre;

const QTimeZone utc = QTimeZone::utc();

std::vector<std::string> told(const PreviewFacts& facts, const QTimeZone& zone = utc) {
  std::vector<std::string> lines;
  for (const PreviewRow& row : factRows(facts, zone))
    lines.push_back((row.name + ": " + row.value).toStdString());
  return lines;
}

// Everything else absent.
PreviewFacts fileOf(std::int64_t size) {
  PreviewFacts facts;
  facts.name = "a.zip";
  facts.size = size;
  return facts;
}

TEST(FactRows, tell_all_that_is_known_of_a_file) {
  PreviewFacts facts = fileOf(1234567);
  facts.path = "/home/ada/a.zip";
  facts.created = 1600000000;
  facts.modified = 1600003661.75;
  EXPECT_THAT(told(facts), ElementsAre("Kind: Archive", "Size: 1.2 MB (1,234,567 bytes)",
                                       "Created: 13 September 2020, 12:26",
                                       "Modified: 13 September 2020, 13:27", "Where: /home/ada"));
}

TEST(FactRows, leave_out_what_is_absent) {
  EXPECT_THAT(told(fileOf(3)), ElementsAre("Kind: Archive", "Size: 3 B"));
}

TEST(FactRows, count_the_bytes_where_the_size_does_not) {
  EXPECT_THAT(told(fileOf(0)), ElementsAre("Kind: Archive", "Size: 0 B"));
  EXPECT_THAT(told(fileOf(1023)), ElementsAre("Kind: Archive", "Size: 1023 B"));
  EXPECT_THAT(told(fileOf(1024)), ElementsAre("Kind: Archive", "Size: 1.0 KB (1,024 bytes)"));
}

TEST(FactRows, of_a_folder_tell_no_size) {
  PreviewFacts facts = fileOf(0);
  facts.isDir = true;
  facts.path = "/a.zip";
  EXPECT_THAT(told(facts), ElementsAre("Kind: Folder", "Where: /"));
}

TEST(FactRows, of_the_root_tell_no_place) {
  PreviewFacts facts;
  facts.path = facts.name = "/";
  facts.isDir = true;
  EXPECT_THAT(told(facts), ElementsAre("Kind: Folder"));
}

TEST(FactRows, tell_where_a_link_leads_as_far_as_it_is_text) {
  PreviewFacts facts = fileOf(0);
  facts.linkTarget = "../caf\xe9\n";
  facts.path = "/b\xff/a.zip";
  EXPECT_THAT(told(facts),
              ElementsAre("Kind: Archive", "Size: 0 B", "Links to: ../caf\xef\xbf\xbd\xef\xbf\xbd",
                          "Where: /b\xef\xbf\xbd"));
}

TEST(FactRows, give_times_in_the_zone_they_are_asked_for) {
  PreviewFacts facts = fileOf(0);
  facts.modified = 0;
  EXPECT_THAT(told(facts, QTimeZone(7200)),
              ElementsAre("Kind: Archive", "Size: 0 B", "Modified: 1 January 1970, 02:00"));
}

TEST(FactRows, tell_times_before_the_count_began) {
  PreviewFacts facts = fileOf(0);
  facts.modified = -0.5;
  EXPECT_THAT(told(facts),
              ElementsAre("Kind: Archive", "Size: 0 B", "Modified: 31 December 1969, 23:59"));
}

TEST(FactRows, leave_out_times_beyond_any_calendar) {
  for (const double time : {1e12, -1e12, 1e18, -1e18, std::numeric_limits<double>::infinity(),
                            std::numeric_limits<double>::quiet_NaN()}) {
    PreviewFacts facts = fileOf(0);
    facts.modified = time;
    EXPECT_THAT(told(facts), ElementsAre("Kind: Archive", "Size: 0 B")) << time;
  }
}

}  // namespace
}  // namespace tessaly
