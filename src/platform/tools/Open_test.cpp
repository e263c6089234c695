#include "platform/tools/Open.h"

#include <cerrno>
#include <filesystem>
#include <gmock/gmock.h>
#include <gtest/gtest.h>
#include <map>
#include <set>
#include <sstream>
#include <unistd.h>

#include "platform/linux/UserTrashCan.h"
#include "support/Needs.h"
#include "support/TempTree.h"

namespace tessaly::tools {
namespace {

using testing::ElementsAre;
using testing::HasSubstr;
using testing::IsEmpty;

// A machine that has only the programs a test creates in `bin`, and starts none of them.
class OpenTest : public testing::Test {
 protected:
  TempTree tree_ = TempTree(R"(
    bin/
    desk/
      -note
      note
      folder/
      two\nlines
      broken -> nowhere
  )");
  std::map<std::string, std::string> variables_ = {{"PATH", tree_.at("bin")}, {"DISPLAY", ":7"}};
  std::set<std::string> broken_;  // cannot be started
  Process::Exit exit_ = {};       // of programs that are waited for
  std::vector<std::string> started_;
  std::vector<std::string> waitedFor_;
  std::ostringstream out_;
  std::ostringstream err_;

  void plantPrograms(const std::vector<std::string>& names) {
    for (const std::string& name : names) tree_.plant("bin", name + " mode=0755");
  }

  int run(const std::vector<std::string>& args) {
    out_.str("");
    err_.str("");
    started_.clear();
    waitedFor_.clear();
    UserTrashCan trash;  // not used by open
    const Programs programs = {
        .variable = [this](const std::string& name) { return variables_[name]; },
        .start = [this](const Process::Launch& launch) -> Outcome {
          started_.push_back(lineOf(launch));
          if (broken_.contains(launch.path)) return SystemError::fromErrno(EACCES, launch.path);
          return succeeded();
        },
        .run = [this](const Process::Launch& launch) -> Result<Process::Exit> {
          waitedFor_.push_back(lineOf(launch));
          if (broken_.contains(launch.path)) return SystemError::fromErrno(EACCES, launch.path);
          return exit_;
        },
    };
    return open(args, {.out = out_, .err = err_}, Services{.trash = trash, .programs = programs});
  }

  // The command for a folder "/.../desk/folder", which is written as DIR.
  std::string terminalFor(const std::string& variable) {
    variables_["TERMINAL"] = variable;
    EXPECT_EQ(run({"-a", "Terminal", tree_.at("desk/folder")}), 0);
    if (started_.size() != 1) return "";
    std::string line = started_.front();
    for (std::size_t at = 0; (at = line.find("desk/folder")) != std::string::npos;) {
      line.replace(at, 11, "DIR");
    }
    return line;
  }

  void expectLineOfError(const std::string& part) const {
    EXPECT_THAT(err_.str(), HasSubstr(part));
    EXPECT_EQ(err_.str().find('\n'), err_.str().size() - 1);
    EXPECT_EQ(out_.str(), "");
  }

 private:
  // "program|argument|... in folder", with paths below the tree.
  std::string lineOf(const Process::Launch& launch) const {
    EXPECT_TRUE(launch.isDetached);
    EXPECT_EQ(launch.output, Process::Stream::inherited);
    EXPECT_EQ(launch.error, Process::Stream::inherited);
    std::string line = launch.path;
    for (const std::string& arg : launch.args) line += "|" + arg;
    if (launch.cwd) line += " in " + *launch.cwd;
    const std::string top = tree_.path() + "/";
    for (std::size_t at = 0; (at = line.find(top)) != std::string::npos;)
      line.erase(at, top.size());
    return line;
  }
};

TEST_F(OpenTest, the_terminal_named_by_the_user_is_opened) {
  plantPrograms({"mine", "x-terminal-emulator", "xterm"});
  EXPECT_EQ(terminalFor("mine"), "bin/mine in DIR");
  EXPECT_EQ(terminalFor(tree_.at("bin/mine")), "bin/mine in DIR");
}

TEST_F(OpenTest, the_arguments_of_the_users_terminal_are_passed_on) {
  plantPrograms({"mine", "konsole"});
  EXPECT_EQ(terminalFor("  mine --big  -e\ttmux "), "bin/mine|--big|-e|tmux in DIR");
  EXPECT_EQ(terminalFor("konsole -e tmux"), "bin/konsole|-e|tmux in DIR");
}

TEST_F(OpenTest, the_users_terminal_may_have_a_path_with_a_blank) {
  plantPrograms({"my\\sown", "my"});
  EXPECT_EQ(terminalFor(tree_.at("bin/my own")), "bin/my own in DIR");
}

TEST_F(OpenTest, a_missing_terminal_of_the_user_is_passed_over) {
  plantPrograms({"x-terminal-emulator"});
  for (const char* gone : {"gone", "/gone/xterm", "gone --big", " ", ""}) {
    EXPECT_EQ(terminalFor(gone), "bin/x-terminal-emulator in DIR") << gone;
  }
}

TEST_F(OpenTest, the_terminal_chosen_for_the_system_comes_before_others) {
  plantPrograms({"xterm"});
  EXPECT_EQ(terminalFor(""), "bin/xterm in DIR");
  plantPrograms({"konsole"});
  EXPECT_EQ(terminalFor(""), "bin/konsole|--workdir|DIR in DIR");
  plantPrograms({"xdg-terminal-exec"});
  EXPECT_EQ(terminalFor(""), "bin/xdg-terminal-exec in DIR");
  plantPrograms({"x-terminal-emulator"});
  EXPECT_EQ(terminalFor(""), "bin/x-terminal-emulator in DIR");
}

TEST_F(OpenTest, terminals_that_open_windows_in_another_process_get_the_folder_as_an_argument) {
  const std::map<std::string, std::string> args = {
      {"konsole", "|--workdir|DIR"},
      {"gnome-terminal", "|--working-directory=DIR"},
      {"kgx", "|--working-directory=DIR"},
      {"ptyxis", "|--new-window|--working-directory=DIR"},
      {"xfce4-terminal", "|--working-directory=DIR"},
      {"mate-terminal", "|--working-directory=DIR"},
      {"lxterminal", "|--working-directory=DIR"},
      {"qterminal", "|--workdir|DIR"},
      {"deepin-terminal", "|--work-directory|DIR"},
      {"tilix", "|--working-directory=DIR"},
      {"terminator", "|--working-directory=DIR"},
      {"foot", ""},
      {"alacritty", "|--working-directory|DIR"},
      {"kitty", "|--directory|DIR"},
      {"wezterm", "|start|--cwd|DIR"},
      {"ghostty", "|--working-directory=DIR"},
      {"xterm", ""},
  };
  for (const auto& [terminal, expected] : args) {
    plantPrograms({terminal});
    EXPECT_EQ(terminalFor(terminal), "bin/" + terminal + expected + " in DIR");
  }
}

TEST_F(OpenTest, a_terminal_behind_a_link_is_recognised) {
  tree_.plant(R"(
    elsewhere/
      konsole mode=0755
      snap mode=0755
  )");
  tree_.plant("bin", "x-terminal-emulator -> ../elsewhere/konsole");
  EXPECT_EQ(terminalFor(""), "bin/x-terminal-emulator|--workdir|DIR in DIR");
  tree_.plant("bin", "kitty -> ../elsewhere/snap");
  EXPECT_EQ(terminalFor("kitty"), "bin/kitty|--directory|DIR in DIR");
}

TEST_F(OpenTest, the_terminal_for_a_file_opens_in_its_folder) {
  plantPrograms({"xterm"});
  EXPECT_EQ(run({"-a", "Terminal", tree_.at("desk/note")}), 0);
  EXPECT_THAT(started_, ElementsAre("bin/xterm in desk"));
  EXPECT_EQ(run({"-a", "Terminal", "/etc/passwd"}), 0);
  EXPECT_THAT(started_, ElementsAre("bin/xterm in /etc"));
  EXPECT_EQ(run({"-a", "Terminal", "/"}), 0);
  EXPECT_THAT(started_, ElementsAre("bin/xterm in /"));
}

TEST_F(OpenTest, the_terminal_for_a_file_in_the_root_opens_in_the_root) {
  plantPrograms({"xterm"});
  std::string file;
  for (const auto& entry : std::filesystem::directory_iterator("/")) {
    if (entry.exists() && !entry.is_directory()) file = entry.path();
  }
  if (file.empty()) GTEST_SKIP() << needs(Need::rootFile, "there is none in /");
  EXPECT_EQ(run({"-a", "Terminal", file}), 0);
  EXPECT_THAT(started_, ElementsAre("bin/xterm in /"));
}

TEST_F(OpenTest, the_next_terminal_is_tried_if_one_cannot_be_started) {
  plantPrograms({"konsole", "foot", "xterm"});
  broken_ = {tree_.at("bin/konsole")};
  EXPECT_EQ(run({"-a", "Terminal", tree_.at("desk")}), 0);
  EXPECT_THAT(started_, ElementsAre("bin/konsole|--workdir|desk in desk", "bin/foot in desk"));
  EXPECT_EQ(err_.str(), "");
}

TEST_F(OpenTest, the_tool_fails_if_no_terminal_can_be_started) {
  plantPrograms({"foot", "xterm"});
  broken_ = {tree_.at("bin/foot"), tree_.at("bin/xterm")};
  EXPECT_EQ(run({"-a", "Terminal", tree_.at("desk")}), 1);
  EXPECT_EQ(started_.size(), 2U);
  expectLineOfError(tree_.at("bin/foot") + ": Permission denied");
}

TEST_F(OpenTest, the_tool_fails_if_no_terminal_is_installed) {
  EXPECT_EQ(run({"-a", "Terminal", tree_.at("desk")}), 1);
  EXPECT_EQ(err_.str(), "Unable to find application named 'Terminal'\n");
}

TEST_F(OpenTest, each_editor_is_started_by_its_command) {
  plantPrograms({"cursor", "code", "kate"});
  EXPECT_EQ(run({"-a", "Cursor", tree_.at("desk/note")}), 0);
  EXPECT_THAT(started_, ElementsAre("bin/cursor|desk/note"));
  EXPECT_EQ(run({"-a", "Visual Studio Code", tree_.at("desk/note")}), 0);
  EXPECT_THAT(started_, ElementsAre("bin/code|desk/note"));
  EXPECT_EQ(run({"-a", "Code", tree_.at("desk/note")}), 0);
  EXPECT_THAT(started_, ElementsAre("bin/code|desk/note"));
  EXPECT_EQ(run({"-a", "TextEdit", tree_.at("desk/note")}), 0);
  EXPECT_THAT(started_, ElementsAre("bin/kate|desk/note"));
  EXPECT_EQ(out_.str() + err_.str(), "");
}

TEST_F(OpenTest, the_tool_fails_for_each_editor_that_is_not_installed) {
  plantPrograms({"vim", "xterm", "code-oss"});
  for (const std::string name : {"Cursor", "Visual Studio Code", "TextEdit"}) {
    EXPECT_EQ(run({"-a", name, tree_.at("desk/note")}), 1);
    EXPECT_EQ(err_.str(), "Unable to find application named '" + name + "'\n");
    EXPECT_THAT(started_, IsEmpty());
  }
  EXPECT_EQ(run({"-a", "Code", tree_.at("desk/note")}), 0);
  EXPECT_THAT(started_, ElementsAre("bin/code-oss|desk/note"));
}

TEST_F(OpenTest, plain_editors_are_tried_in_their_order) {
  const std::vector<std::string> fromTheLast = {
      "leafpad",  "l3afpad", "deepin-editor",     "geany", "featherpad", "pluma",    "xed",
      "mousepad", "kwrite",  "gnome-text-editor", "gedit", "kate",       "vscodium", "codium"};
  for (const std::string& editor : fromTheLast) {
    plantPrograms({editor});
    EXPECT_EQ(run({"-a", "TextEdit", tree_.at("desk/note")}), 0);
    EXPECT_THAT(started_, ElementsAre("bin/" + editor + "|desk/note"));
  }
}

TEST_F(OpenTest, a_folder_is_opened_only_in_editors_that_can_open_folders) {
  plantPrograms({"gedit", "kwrite"});
  EXPECT_EQ(run({"-a", "TextEdit", tree_.at("desk/folder")}), 1);
  EXPECT_THAT(started_, IsEmpty());
  expectLineOfError("Unable to find application named 'TextEdit'");
  plantPrograms({"kate", "code"});
  EXPECT_EQ(run({"-a", "TextEdit", tree_.at("desk/folder")}), 0);
  EXPECT_THAT(started_, ElementsAre("bin/kate|desk/folder"));
  EXPECT_EQ(run({"-a", "Code", tree_.at("desk/folder")}), 0);
  EXPECT_THAT(started_, ElementsAre("bin/code|desk/folder"));
}

TEST_F(OpenTest, other_applications_are_unknown) {
  plantPrograms({"xterm", "rm", "Preview"});
  for (const std::string name : {"Preview", "", "rm", "xterm", "terminal", "/bin/sh"}) {
    EXPECT_EQ(run({"-a", name, tree_.at("desk/note")}), 1);
    EXPECT_EQ(err_.str(), "Unable to find application named '" + name + "'\n");
    EXPECT_THAT(started_, IsEmpty());
  }
}

TEST_F(OpenTest, a_file_is_opened_by_its_uri_if_no_application_is_named) {
  plantPrograms({"xdg-open"});
  EXPECT_EQ(run({tree_.at("desk/two\nlines")}), 0);
  EXPECT_THAT(waitedFor_, ElementsAre("bin/xdg-open|file://desk/two%0Alines"));
  EXPECT_EQ(run({tree_.at("desk/folder")}), 0);
  EXPECT_THAT(waitedFor_, ElementsAre("bin/xdg-open|file://desk/folder"));
  EXPECT_THAT(started_, IsEmpty());
}

TEST_F(OpenTest, a_failure_of_the_default_application_is_reported) {
  EXPECT_EQ(run({tree_.at("desk/note")}), 1);
  expectLineOfError("No application knows how to open " + tree_.at("desk/note"));
  plantPrograms({"xdg-open"});
  exit_ = {.status = 3, .signal = 0};
  EXPECT_EQ(run({tree_.at("desk/note")}), 1);
  expectLineOfError("No application knows how to open " + tree_.at("desk/note"));
  exit_ = {.status = 0, .signal = 9};
  EXPECT_EQ(run({tree_.at("desk/note")}), 1);
  exit_ = {};
  broken_ = {tree_.at("bin/xdg-open")};
  EXPECT_EQ(run({tree_.at("desk/two\nlines")}), 1);
  expectLineOfError("No application knows how to open " + tree_.at("desk/two?lines"));
}

TEST_F(OpenTest, a_missing_item_is_not_opened) {
  plantPrograms({"xterm", "kate", "xdg-open"});
  for (const std::string path : {"desk/gone", "desk/broken", "desk/note/in", "gone/with\nit"}) {
    for (const std::string name : {"Terminal", "TextEdit"}) {
      EXPECT_EQ(run({"-a", name, tree_.at(path)}), 1) << path;
      EXPECT_THAT(started_, IsEmpty());
    }
    EXPECT_EQ(run({tree_.at(path)}), 1) << path;
    EXPECT_THAT(waitedFor_, IsEmpty());
    expectLineOfError("");
  }
  EXPECT_EQ(run({tree_.at("desk/gone")}), 1);
  EXPECT_EQ(err_.str(), "The file " + tree_.at("desk/gone") + " does not exist.\n");
  EXPECT_EQ(run({"-a", "TextEdit", ""}), 1);
  EXPECT_EQ(err_.str(), "The file  does not exist.\n");
}

TEST_F(OpenTest, a_path_with_a_dash_is_not_taken_as_an_option) {
  plantPrograms({"xterm", "kate", "xdg-open"});
  char before[4096];
  ASSERT_NE(getcwd(before, sizeof before), nullptr);
  ASSERT_EQ(chdir(tree_.at("desk").c_str()), 0);
  EXPECT_EQ(run({"-a", "TextEdit", "-note"}), 0);
  EXPECT_THAT(started_, ElementsAre("bin/kate|desk/-note"));
  EXPECT_EQ(run({"--", "-note"}), 0);
  EXPECT_THAT(waitedFor_, ElementsAre("bin/xdg-open|file://desk/-note"));
  EXPECT_EQ(run({"-a", "Terminal", "folder"}), 0);
  EXPECT_THAT(started_, ElementsAre("bin/xterm in desk/folder"));
  ASSERT_EQ(chdir(before), 0);
}

TEST_F(OpenTest, nothing_is_opened_without_a_display) {
  plantPrograms({"xterm", "kate", "xdg-open"});
  variables_.erase("DISPLAY");
  for (const std::string name : {"Terminal", "TextEdit"}) {
    EXPECT_EQ(run({"-a", name, tree_.at("desk")}), 1);
    EXPECT_THAT(started_, IsEmpty());
    expectLineOfError("no display");
  }
  EXPECT_EQ(run({tree_.at("desk")}), 1);
  EXPECT_THAT(waitedFor_, IsEmpty());
  variables_["WAYLAND_DISPLAY"] = "wayland-0";
  EXPECT_EQ(run({"-a", "Terminal", tree_.at("desk")}), 0);
}

TEST_F(OpenTest, another_instance_of_a_program_needs_no_arguments_and_no_display) {
  variables_.clear();
  EXPECT_EQ(run({"-n", "/opt/caf\xE9 bar"}), done);
  EXPECT_THAT(started_, ElementsAre("/opt/caf\xE9 bar"));
}

TEST_F(OpenTest, the_tool_needs_exactly_one_path) {
  const std::vector<std::vector<std::string>> misuses = {
      {},     {"-a"},           {"-a", "Terminal"},          {"-x"}, {"-n"}, {"/", "/"},
      {"--"}, {"-b", "x", "/"}, {"-a", "Terminal", "/", "/"}};
  for (const std::vector<std::string>& args : misuses) {
    EXPECT_EQ(run(args), 2);
    expectLineOfError("usage: open");
  }
}

TEST_F(OpenTest, the_option_help_prints_the_usage) {
  EXPECT_EQ(run({"--help"}), 0);
  EXPECT_THAT(out_.str(), HasSubstr("Visual Studio Code"));
  EXPECT_EQ(err_.str(), "");
}

}  // namespace
}  // namespace tessaly::tools
