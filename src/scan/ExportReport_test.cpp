#include "scan/ExportReport.h"

#include <gtest/gtest.h>

namespace tessaly {
namespace {

DiskNode node(const DiskNode::Fields& fields, const std::vector<DiskNode>& children = {}) {
  return DiskNode(fields, children);
}

TEST(ExportReport, a_file_is_one_object_with_an_empty_array_of_children) {
  EXPECT_EQ(ExportReport::json(node({.name = "film.mp4",
                                     .path = "/films/film.mp4",
                                     .size = 4096,
                                     .isDir = false,
                                     .kind = FileKind::video,
                                     .mtime = 1600000000})),
            "{\n"
            "  \"children\": [],\n"
            "  \"isDir\": false,\n"
            "  \"kind\": \"video\",\n"
            "  \"mtime\": 1600000000,\n"
            "  \"name\": \"film.mp4\",\n"
            "  \"path\": \"/films/film.mp4\",\n"
            "  \"size\": 4096\n"
            "}\n");
}

TEST(ExportReport, an_unknown_time_is_left_out_at_any_level) {
  const DiskNode inner = node({.name = "b", .path = "/a/b", .size = 1, .mtime = 1.5});
  const DiskNode outer = node(
      {.name = "a", .path = "/a", .size = 1, .isDir = true, .kind = FileKind::folder}, {inner});
  EXPECT_EQ(ExportReport::json(outer),
            "{\n"
            "  \"children\": [\n"
            "    {\n"
            "      \"children\": [],\n"
            "      \"isDir\": false,\n"
            "      \"kind\": \"other\",\n"
            "      \"mtime\": 1.5,\n"
            "      \"name\": \"b\",\n"
            "      \"path\": \"/a/b\",\n"
            "      \"size\": 1\n"
            "    }\n"
            "  ],\n"
            "  \"isDir\": true,\n"
            "  \"kind\": \"folder\",\n"
            "  \"name\": \"a\",\n"
            "  \"path\": \"/a\",\n"
            "  \"size\": 1\n"
            "}\n");
}

TEST(ExportReport, slashes_are_not_escaped_and_odd_names_stay_readable) {
  const std::string report =
      ExportReport::json(node({.name = "a\"b\n\xff", .path = "/x/a\"b\n\xff", .size = 0}));
  EXPECT_NE(report.find("\"name\": \"a\\\"b\\n\xF4\x8F\xBF\xBF\""), std::string::npos) << report;
  EXPECT_NE(report.find("\"path\": \"/x/a"), std::string::npos) << report;
}

}  // namespace
}  // namespace tessaly
