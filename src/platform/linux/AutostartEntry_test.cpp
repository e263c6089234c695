#include "platform/linux/AutostartEntry.h"

#include <gtest/gtest.h>
#include <string>
#include <vector>

namespace tessaly {
namespace {

const std::string program = "/usr/bin/tessaly";

bool starts(const std::string& text) {
  return AutostartEntry::starts(text, program);
}

std::string withLine(const std::string& line) {
  return "[Desktop Entry]\nType=Application\nExec=/usr/bin/tessaly\n" + line + "\n";
}

std::string withExec(const std::string& command) {
  return "[Desktop Entry]\nType=Application\nExec=" + command + "\n";
}

TEST(AutostartEntry, an_entry_has_the_form_that_desktop_sessions_read) {
  EXPECT_EQ(AutostartEntry::starting(program),
            "[Desktop Entry]\nType=Application\nName=Tessaly\nIcon=tessaly\n"
            "Exec=\"/usr/bin/tessaly\"\n");
}

TEST(AutostartEntry, the_path_is_escaped_for_the_command_line_and_then_for_the_file) {
  const auto exec = [](const std::string& path) {
    const std::string text = AutostartEntry::starting(path);
    return text.substr(text.find("Exec=") + 5);
  };
  EXPECT_EQ(exec("/a b"), "\"/a b\"\n");
  EXPECT_EQ(exec("/100%"), "\"/100%%\"\n");
  EXPECT_EQ(exec("/a\"b"), "\"/a\\\\\"b\"\n");
  EXPECT_EQ(exec("/$HOME`x`"), "\"/\\\\$HOME\\\\`x\\\\`\"\n");
  EXPECT_EQ(exec("/a\\b"), "\"/a\\\\\\\\b\"\n");
  EXPECT_EQ(exec("/a\nb\tc\rd"), "\"/a\\nb\\tc\\rd\"\n");
  EXPECT_EQ(exec("/caf\xE9"), "\"/caf\xE9\"\n");
}

TEST(AutostartEntry, a_written_path_of_any_bytes_is_read_back) {
  std::string everyByte = "/";
  for (int byte = 1; byte < 256; ++byte) everyByte += static_cast<char>(byte);
  for (const std::string& path :
       {program, std::string("/a b/c"), std::string("/%f%%"), std::string("/\\\\n\\s"),
        std::string("/ends in \\"), std::string("/\"\"' "), everyByte}) {
    EXPECT_TRUE(AutostartEntry::starts(AutostartEntry::starting(path), path)) << path;
    EXPECT_FALSE(AutostartEntry::starts(AutostartEntry::starting(path), path + "x")) << path;
  }
}

TEST(AutostartEntry, a_plain_command_and_one_with_arguments_start_the_program) {
  EXPECT_TRUE(starts(withExec("/usr/bin/tessaly")));
  EXPECT_TRUE(starts(withExec("/usr/bin/tessaly --quiet %U")));
  EXPECT_TRUE(starts(withExec("\"/usr/bin/tessaly\" now")));
  EXPECT_TRUE(starts(withExec("tessaly")));
}

TEST(AutostartEntry, an_entry_of_another_program_does_not_start_this_one) {
  EXPECT_FALSE(starts(withExec("/opt/old/tessaly")));
  EXPECT_FALSE(starts(withExec("/bin/true /usr/bin/tessaly")));
  EXPECT_FALSE(starts(withExec("tessaly2")));
  EXPECT_FALSE(starts(withExec("")));
  EXPECT_FALSE(starts(withExec("\"/usr/bin/tessaly")));
  EXPECT_FALSE(AutostartEntry::starts(withExec(""), ""));
}

TEST(AutostartEntry, a_hidden_or_disabled_entry_does_not_start_the_program) {
  EXPECT_FALSE(starts(withLine("Hidden=true")));
  EXPECT_FALSE(starts(withLine("Hidden = true ")));
  EXPECT_TRUE(starts(withLine("Hidden=false")));
  EXPECT_FALSE(starts(withLine("X-GNOME-Autostart-enabled=false")));
  EXPECT_TRUE(starts(withLine("X-GNOME-Autostart-enabled=true")));
}

TEST(AutostartEntry, only_the_group_of_the_desktop_entry_is_read) {
  EXPECT_TRUE(starts(withLine("[Desktop Action new]\nHidden=true\nExec=/bin/false")));
  EXPECT_FALSE(starts("Type=Application\nExec=/usr/bin/tessaly\n"));
  EXPECT_FALSE(starts("[Other]\nType=Application\nExec=/usr/bin/tessaly\n"));
  EXPECT_TRUE(starts(withLine("# Hidden=true")));
  EXPECT_TRUE(starts(withLine("Hidden[de]=true")));
}

TEST(AutostartEntry, carriage_returns_and_a_missing_last_line_end_are_accepted) {
  EXPECT_TRUE(starts("[Desktop Entry]\r\nType=Application\r\nExec=/usr/bin/tessaly\r\n"));
  EXPECT_TRUE(starts("[Desktop Entry]\nType=Application\nExec=/usr/bin/tessaly"));
}

TEST(AutostartEntry, an_entry_of_another_type_than_application_does_not_start_the_program) {
  EXPECT_FALSE(starts("[Desktop Entry]\nType=Link\nExec=/usr/bin/tessaly\n"));
  EXPECT_FALSE(starts("[Desktop Entry]\nExec=/usr/bin/tessaly\n"));
  EXPECT_FALSE(starts(""));
  EXPECT_FALSE(starts("\n\n"));
}

}  // namespace
}  // namespace tessaly
