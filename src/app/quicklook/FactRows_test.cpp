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

// All other facts are absent.
PreviewFacts fileOf(std::int64_t size) {
  PreviewFacts facts;
  facts.name = "a.zip";
  facts.size = size;
  return facts;
}

TEST(FactRows, a_file_has_a_row_for_each_known_fact) {
  PreviewFacts facts = fileOf(1234567);
  facts.path = "/home/ada/a.zip";
  facts.created = 1600000000;
  facts.modified = 1600003661.75;
  EXPECT_THAT(told(facts), ElementsAre("Kind: Archive", "Size: 1.2 MB (1,234,567 bytes)",
                                       "Created: 13 September 2020, 12:26",
                                       "Modified: 13 September 2020, 13:27", "Where: /home/ada"));
}

TEST(FactRows, absent_facts_have_no_row) {
  EXPECT_THAT(told(fileOf(3)), ElementsAre("Kind: Archive", "Size: 3 B"));
}

TEST(FactRows, the_number_of_bytes_is_shown_where_the_size_is_rounded) {
  EXPECT_THAT(told(fileOf(0)), ElementsAre("Kind: Archive", "Size: 0 B"));
  EXPECT_THAT(told(fileOf(1023)), ElementsAre("Kind: Archive", "Size: 1023 B"));
  EXPECT_THAT(told(fileOf(1024)), ElementsAre("Kind: Archive", "Size: 1.0 KB (1,024 bytes)"));
}

TEST(FactRows, a_folder_has_no_row_for_its_size) {
  PreviewFacts facts = fileOf(0);
  facts.isDir = true;
  facts.path = "/a.zip";
  EXPECT_THAT(told(facts), ElementsAre("Kind: Folder", "Where: /"));
}

TEST(FactRows, the_root_has_no_row_for_its_place) {
  PreviewFacts facts;
  facts.path = facts.name = "/";
  facts.isDir = true;
  EXPECT_THAT(told(facts), ElementsAre("Kind: Folder"));
}

TEST(FactRows, the_target_of_a_link_is_shown_with_replacement_characters) {
  PreviewFacts facts = fileOf(0);
  facts.linkTarget = "../caf\xe9\n";
  facts.path = "/b\xff/a.zip";
  EXPECT_THAT(told(facts),
              ElementsAre("Kind: Archive", "Size: 0 B", "Links to: ../caf\xef\xbf\xbd\xef\xbf\xbd",
                          "Where: /b\xef\xbf\xbd"));
}

TEST(FactRows, times_are_shown_in_the_given_zone) {
  PreviewFacts facts = fileOf(0);
  facts.modified = 0;
  EXPECT_THAT(told(facts, QTimeZone(7200)),
              ElementsAre("Kind: Archive", "Size: 0 B", "Modified: 1 January 1970, 02:00"));
}

TEST(FactRows, times_before_1970_are_shown) {
  PreviewFacts facts = fileOf(0);
  facts.modified = -0.5;
  EXPECT_THAT(told(facts),
              ElementsAre("Kind: Archive", "Size: 0 B", "Modified: 31 December 1969, 23:59"));
}

TEST(FactRows, times_beyond_the_calendar_have_no_row) {
  for (const double time : {1e12, -1e12, 1e18, -1e18, std::numeric_limits<double>::infinity(),
                            std::numeric_limits<double>::quiet_NaN()}) {
    PreviewFacts facts = fileOf(0);
    facts.modified = time;
    EXPECT_THAT(told(facts), ElementsAre("Kind: Archive", "Size: 0 B")) << time;
  }
}

}  // namespace
}  // namespace tessaly
