#include "platform/tools/SnapshotRecords.h"

#include <gtest/gtest.h>
#include <string>

namespace tessaly::tools {
namespace {

constexpr const char* snapperXml = R"xml(<?xml version="1.0"?>
<snapshot>
  <type>pre</type>
  <num>12</num>
  <date>2024-02-01 13:30:00</date>
  <description>zypp(zypper) &amp; &lt;more&gt;</description>
  <cleanup>number</cleanup>
  <userdata>
    <key>important</key>
    <value>no</value>
  </userdata>
</snapshot>
)xml";

TEST(SnapperRecord, date_cleanup_and_description_are_read) {
  EXPECT_EQ(snapperRecord(snapperXml, 12),
            (SnapshotRecord{"2024-02-01 13:30:00 UTC", "number, zypp(zypper) & <more>"}));
}

TEST(SnapperRecord, each_entity_stands_for_its_character_once) {
  const std::string xml =
      "<snapshot><num>1</num><description>&lt;&gt;&amp;&quot;&apos; &amp;lt; &nbsp; "
      "&</description></snapshot>";
  EXPECT_EQ(snapperRecord(xml, 1), (SnapshotRecord{"", "<>&\"' &lt; &nbsp; &"}));
}

TEST(SnapperRecord, only_the_number_is_needed) {
  EXPECT_EQ(snapperRecord("<snapshot><num> 3 </num></snapshot>", 3), (SnapshotRecord{"", ""}));
  EXPECT_EQ(snapperRecord("<snapshot><num>3</num><type>single</type></snapshot>", 3),
            (SnapshotRecord{"", "single"}));
}

TEST(SnapperRecord, the_record_of_another_snapshot_is_none) {
  EXPECT_EQ(snapperRecord(snapperXml, 13), std::nullopt);
}

TEST(SnapperRecord, a_date_of_another_form_is_left_out) {
  for (const char* const date : {"", "yesterday", "2024-02-01", "2024-02-01 13:30:00.5", "\xff"}) {
    const std::string xml =
        "<snapshot><num>1</num><date>" + std::string(date) + "</date></snapshot>";
    EXPECT_EQ(snapperRecord(xml, 1), (SnapshotRecord{"", ""})) << date;
  }
}

TEST(SnapperRecord, other_texts_are_no_record) {
  for (const std::string& xml :
       {std::string(), std::string("snapshot"), std::string("<snapshot>"),
        std::string("<snapshot></snapshot>"), std::string("<snapshot><num>1</snapshot>"),
        std::string("</snapshot><snapshot><num>1</num>"), std::string("<num>1</num>"),
        std::string("<snapshot><num>1x</num></snapshot>"),
        std::string("<snapshot><num>-1</num></snapshot>"),
        std::string("<snapshot><num>18446744073709551617</num></snapshot>"),
        std::string(60000, '<'), std::string(60000, '\0')}) {
    EXPECT_EQ(snapperRecord(xml, 1), std::nullopt) << xml.substr(0, 100);
  }
}

TEST(SnapperRecord, every_beginning_of_a_record_can_be_read) {
  const std::string whole = snapperXml;
  for (std::size_t length = 0; length < whole.size(); ++length) {
    const auto record = snapperRecord(whole.substr(0, length), 12);
    EXPECT_EQ(record.has_value(), length >= whole.find("</snapshot>") + 11) << length;
  }
}

TEST(TimeshiftRecord, the_time_and_the_comments_are_read) {
  constexpr const char* json = R"json({
    "created" : "1706794200",
    "sys-uuid" : "6ac17a11-3b3b-4c4c-8d8d-000000000000",
    "sys-distro" : "LinuxMint 21.3 (virginia)",
    "app-version" : "24.01.1",
    "file_count" : "300000",
    "tags" : "daily ",
    "comments" : " before the update ",
    "live" : "false",
    "type" : "btrfs"
  })json";
  EXPECT_EQ(timeshiftRecord(json),
            (SnapshotRecord{"2024-02-01 13:30:00 UTC", "daily, before the update"}));
}

TEST(TimeshiftRecord, only_a_time_is_needed) {
  EXPECT_EQ(timeshiftRecord(R"({"created":"0"})"), (SnapshotRecord{"1970-01-01 00:00:00 UTC", ""}));
  EXPECT_EQ(timeshiftRecord(R"({"created":"253402300799"})"),
            (SnapshotRecord{"9999-12-31 23:59:59 UTC", ""}));
  EXPECT_EQ(timeshiftRecord(R"({"created":"soon","tags":7})"), (SnapshotRecord{"", ""}));
  for (const char* const time : {"-1", "99999999999999", "253402300800", "1e3"}) {
    EXPECT_EQ(timeshiftRecord(R"({"created":")" + std::string(time) + R"("})"),
              (SnapshotRecord{"", ""}));
  }
}

TEST(TimeshiftRecord, other_texts_are_no_record) {
  for (const std::string& json :
       {std::string(), std::string("{}"), std::string("[]"), std::string(R"({"created":17})"),
        std::string(R"({"created":""})"), std::string(R"({"created":"17")"),
        std::string(R"(["created","17"])"), std::string("\xff\xfe"), std::string(60000, '['),
        std::string(R"({"created":"17"} {})"), std::string(60000, '\0')}) {
    EXPECT_EQ(timeshiftRecord(json), std::nullopt) << json.substr(0, 100);
  }
}

TEST(ShellValue, the_last_assignment_counts) {
  EXPECT_EQ(shellValue("# SUBVOLUME=\"/no\"\nSUBVOLUME=\"/\"\n", "SUBVOLUME"), "/");
  EXPECT_EQ(shellValue("SUBVOLUME='/a b' # home\nOTHER=1", "SUBVOLUME"), "/a b");
  EXPECT_EQ(shellValue("  SUBVOLUME=/srv # c\r\n", "SUBVOLUME"), "/srv");
  EXPECT_EQ(shellValue("A=1\nA=2", "A"), "2");
  EXPECT_EQ(shellValue("A=", "A"), "");
  EXPECT_EQ(shellValue("A=\"open", "A"), "\"open");
}

TEST(ShellValue, other_lines_are_no_assignment) {
  for (const char* const text :
       {"", "SUBVOLUME", "SUBVOLUME2=\"/\"", "XSUBVOLUME=\"/\"", "=", "\n\n"}) {
    EXPECT_EQ(shellValue(text, "SUBVOLUME"), std::nullopt) << text;
  }
}

TEST(JsonText, a_text_of_an_object_is_read) {
  EXPECT_EQ(jsonText(R"({"a":"b","c":1})", "a"), "b");
  EXPECT_EQ(jsonText(R"({"a":"b","c":1})", "c"), std::nullopt);
  EXPECT_EQ(jsonText(R"({"a":"b"})", "x"), std::nullopt);
  EXPECT_EQ(jsonText("garbage", "a"), std::nullopt);
}

}  // namespace
}  // namespace tessaly::tools
