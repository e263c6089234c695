#include "platform/linux/links/LinkEntry.h"

#include <gtest/gtest.h>
#include <string>

namespace tessaly {
namespace {

std::optional<std::string> homeAlone(const std::string& name) {
  return name == "HOME" ? std::optional<std::string>("/home/ada") : std::nullopt;
}

std::string destination(const std::string& text) {
  return LinkEntry::destinationIn(text, "desk", homeAlone).value_or("none");
}

// Of an entry with this line.
std::string destinationOf(const std::string& line) {
  return destination("[Desktop Entry]\nType=Link\n" + line + "\n");
}

TEST(LinkEntry, a_file_url_names_a_path) {
  EXPECT_EQ(destinationOf("URL=file:///home/ada/a%20b"), "/home/ada/a b");
  EXPECT_EQ(destinationOf("URL=file:/tmp"), "/tmp");
  EXPECT_EQ(destinationOf("URL = FILE://localhost/tmp "), "/tmp");
  EXPECT_EQ(destinationOf("URL=file://Desk/tmp\r"), "/tmp");
  EXPECT_EQ(destinationOf("URL=/tmp/a"), "/tmp/a");
  EXPECT_EQ(destinationOf("URL=file:///a\\\\b"), "/a\\b");
}

TEST(LinkEntry, a_file_of_another_machine_is_none_of_this) {
  EXPECT_EQ(destinationOf("URL=file://server/tmp"), "none");
}

TEST(LinkEntry, other_urls_name_no_file) {
  for (const char* url :
       {"https://example.org/", "smb://server/x", "trash:/", "", "tmp", "files:/a"}) {
    EXPECT_EQ(destinationOf("URL=" + std::string(url)), "none") << url;
  }
}

TEST(LinkEntry, a_damaged_file_url_has_an_empty_path) {
  for (const char* url : {"file:", "file://", "file://localhost", "file:tmp", "file:///%",
                          "file:///%4", "file:///%xy", "file:///%00"}) {
    EXPECT_EQ(destinationOf("URL=" + std::string(url)), "") << url;
  }
  EXPECT_EQ(destinationOf(std::string("URL=file:///a\0b", 15)), "");
}

TEST(LinkEntry, variables_stand_for_their_values_where_the_key_says_so) {
  EXPECT_EQ(destinationOf("URL[$e]=file:$HOME/Music"), "/home/ada/Music");
  EXPECT_EQ(destinationOf("URL[$e]=file://${HOME}/Music"), "/home/ada/Music");
  EXPECT_EQ(destinationOf("URL[$e]=file:///a$$b"), "/a$b");
  EXPECT_EQ(destinationOf("URL=file:///$HOME"), "/$HOME");
}

TEST(LinkEntry, an_unknown_variable_or_a_command_says_nothing) {
  for (const char* url : {"file:$NONE/a", "file:///$(id)", "file:///${HOME", "file:///$",
                          "file:///${}", "file:///$-"}) {
    EXPECT_EQ(destinationOf("URL[$e]=" + std::string(url)), "none") << url;
  }
}

TEST(LinkEntry, only_the_type_link_of_the_right_group_counts) {
  EXPECT_EQ(destination("Type=Link\nURL=file:///a\n"), "none");
  EXPECT_EQ(destination("[Desktop Entry]\nType=Application\nURL=file:///a\n"), "none");
  EXPECT_EQ(destination("[Desktop Entry]\nURL=file:///a\n"), "none");
  EXPECT_EQ(destination("[Desktop Entry]\nType=Link\n"), "none");
  EXPECT_EQ(destination("[Desktop Entry]\nType=Link\n[Other]\nURL=file:///a\n"), "none");
  EXPECT_EQ(destination("# c\n[Desktop Entry]\nURL[de]=file:///d\nURL=file:///a\nURL=file:///b\n"
                        "Type=Link\n"),
            "/a");
}

}  // namespace
}  // namespace tessaly
