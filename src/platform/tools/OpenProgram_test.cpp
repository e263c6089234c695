// The built executable in place of /usr/bin/open, with a PATH that contains only scripts.
#include <fstream>
#include <gtest/gtest.h>
#include <iterator>
#include <sstream>
#include <sys/stat.h>

#include "platform/Process.h"
#include "support/TempTree.h"

namespace tessaly::tools {
namespace {

class OpenProgramTest : public testing::Test {
 protected:
  TempTree tree_ = TempTree(R"(
    bin/
    work/
      -a\sb\xFF
  )");

  void SetUp() override { ASSERT_EQ(mkfifo(tree_.at("told").c_str(), 0600), 0); }

  void plantScript(const std::string& name, const std::string& commands) const {
    const std::string path = tree_.at("bin/" + name);
    std::ofstream(path) << "#!/bin/sh\n" << commands << "\n";
    ASSERT_EQ(chmod(path.c_str(), 0755), 0);
  }

  // A program that reports how it was started, as soon as the test reads it.
  void plantTeller(const std::string& name) const {
    plantScript(name, "exec 3>'" + tree_.at("told") +
                          "'\n"
                          "read number name state parent group session rest </proc/self/stat\n"
                          "[ $number = $session ] && echo of its own >&3\n"
                          "streams=$(/usr/bin/readlink /proc/$$/fd/0 /proc/$$/fd/1 /proc/$$/fd/2)\n"
                          "echo \"$streams\" >&3\n"
                          "printf '%s\\n' \"$@\" >&3\n"
                          "/bin/pwd >&3");
  }

  std::string told() const {
    std::ifstream fifo(tree_.at("told"));
    std::ostringstream text;
    text << fifo.rdbuf();
    return text.str();
  }

  int run(std::vector<std::string> args) const {
    Result<Process> process = Process::launch(
        {.path = "/usr/bin/open",
         .args = std::move(args),
         .cwd = tree_.at("work"),
         .environment = {{"PATH", tree_.at("bin")}, {"TERMINAL", ""}, {"DISPLAY", ":7"}},
         .error = Process::Stream::captured});
    EXPECT_TRUE(process.ok());
    if (!process) return -1;
    process.value().waitUntil(Deadline::never());
    return process.value().exit()->status;
  }

  static std::string ofItsOwn() { return "of its own\n/dev/null\n/dev/null\n/dev/null\n"; }
};

// In each test, the started program waits until the tool has ended and the test reads its report.

TEST_F(OpenProgramTest, a_terminal_in_the_folder_outlives_the_tool) {
  plantTeller("qterminal");
  ASSERT_EQ(run({"-a", "Terminal", tree_.at("work")}), 0);
  EXPECT_EQ(told(), ofItsOwn() + "--workdir\n" + tree_.at("work") + "\n" + tree_.at("work") + "\n");
}

TEST_F(OpenProgramTest, an_editor_with_the_unchanged_path_outlives_the_tool) {
  plantTeller("code");
  ASSERT_EQ(run({"-a", "Visual Studio Code", "-a b\xFF"}), 0);
  EXPECT_EQ(told(), ofItsOwn() + tree_.at("work/-a b\xFF") + "\n" + tree_.at("work") + "\n");
}

TEST_F(OpenProgramTest, an_editor_that_cannot_be_executed_is_passed_over) {
  tree_.plant("bin", "codium 4K mode=0755");
  EXPECT_EQ(run({"-a", "TextEdit", tree_.at("work")}), 1);
  plantTeller("kate");
  ASSERT_EQ(run({"-a", "TextEdit", tree_.at("work")}), 0);
  EXPECT_EQ(told(), ofItsOwn() + tree_.at("work") + "\n" + tree_.at("work") + "\n");
}

TEST_F(OpenProgramTest, another_instance_of_a_program_outlives_the_tool) {
  plantTeller("an other");
  ASSERT_EQ(run({"-n", tree_.at("bin/an other")}), 0);
  EXPECT_EQ(told(), ofItsOwn() + "\n" + tree_.at("work") + "\n");
  EXPECT_EQ(run({"-n", tree_.at("bin/none")}), 1);
}

TEST_F(OpenProgramTest, the_tool_fails_if_no_program_is_installed) {
  EXPECT_EQ(run({"-a", "Cursor", tree_.at("work")}), 1);
  EXPECT_EQ(run({"-a", "Terminal", tree_.at("work")}), 1);
  EXPECT_EQ(run({tree_.at("work")}), 1);
  EXPECT_EQ(run({}), 2);
}

TEST_F(OpenProgramTest, the_tool_succeeds_only_if_the_default_application_does) {
  plantScript("xdg-open", "exit 3");
  EXPECT_EQ(run({tree_.at("work")}), 1);
  plantScript("xdg-open", "[ \"$*\" = 'file://" + tree_.at("work") + "/-a%20b%FF' ]");
  EXPECT_EQ(run({"./-a b\xFF"}), 1);
  EXPECT_EQ(run({tree_.at("work/-a b\xFF")}), 0);
}

}  // namespace
}  // namespace tessaly::tools
