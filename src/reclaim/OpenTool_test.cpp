#include "reclaim/OpenTool.h"

#include <cstdlib>
#include <fcntl.h>
#include <fstream>
#include <gtest/gtest.h>
#include <optional>
#include <sys/stat.h>
#include <unistd.h>

#include "reclaim/Trash.h"
#include "support/FakeWorkspace.h"
#include "support/OwnProcess.h"
#include "support/TempTree.h"
#include "support/TestTool.h"

namespace tessaly {
namespace {

constexpr double longEnough = 600;

TEST(OpenTool, the_tool_succeeds_only_with_status_0) {
  const OpenTool tool = OpenTool::at(testTool(), longEnough);
  EXPECT_TRUE(tool.run({}));
  EXPECT_FALSE(tool.run({"exit", "1"}));
  EXPECT_FALSE(tool.run({"exit", "255"}));
}

TEST(OpenTool, a_tool_that_cannot_be_started_fails) {
  const TempTree tree("note");
  const OwnProcess before = OwnProcess::now();
  for (const char* path : {"note", "gone"}) {
    const OpenTool tool = OpenTool::at(tree.at(path), longEnough);
    EXPECT_FALSE(tool.run({}));
    tool.start({});
  }
  EXPECT_EQ(OwnProcess::now(), before);
}

TEST(OpenTool, a_tool_that_does_not_exit_fails_and_is_terminated) {
  const OwnProcess before = OwnProcess::now();
  EXPECT_FALSE(OpenTool::at(testTool(), 0).run({"sleep"}));
  EXPECT_EQ(settled(before), before);
}

TEST(OpenTool, start_does_not_wait_for_the_tool) {
  const TempTree folder;
  Hold hold(folder.at("hold"));
  const ToolMessages ended(folder.at("ended"));
  const OwnProcess before = OwnProcess::now();
  OpenTool::at(testTool(), longEnough).start({"hold", hold.path(), "tell", ended.path()});
  EXPECT_TRUE(OwnProcess::now().hasChildren);
  hold.release();
  ended.wait();
  // Releasing the hold closes its descriptor.
  const OwnProcess after{before.descriptors - 1, before.threads, false};
  EXPECT_EQ(settled(after), after);
}

// Sets an environment variable for the duration of a test.
class Variable {
 public:
  Variable(const char* name, const std::string& value) : name_(name) {
    if (const char* const before = std::getenv(name)) before_ = before;
    setenv(name, value.c_str(), 1);
  }
  ~Variable() {
    if (before_) {
      setenv(name_, before_->c_str(), 1);
    } else {
      unsetenv(name_);
    }
  }
  Variable(const Variable&) = delete;
  Variable& operator=(const Variable&) = delete;

 private:
  const char* name_;
  std::optional<std::string> before_;
};

// The real tool on a machine that has only the programs a test installs.
class RealOpenTool : public testing::Test {
 protected:
  TempTree tree_ = TempTree(R"(
    bin/
    folder/
      note
  )");
  Variable path_ = Variable("PATH", tree_.at("bin"));
  Variable terminal_ = Variable("TERMINAL", "");
  Variable display_ = Variable("DISPLAY", ":7");
  FakeWorkspace workspace_;

  void SetUp() override { ASSERT_EQ(mkfifo(tree_.at("told").c_str(), 0600), 0); }

  // A program that records its arguments and its working directory.
  void plantTeller(const std::string& name) const {
    const std::string path = tree_.at("bin/" + name);
    std::ofstream(path) << "#!/bin/sh\n{ echo \"$*\"; /bin/pwd; } >'" << tree_.at("told") << "'\n";
    ASSERT_EQ(chmod(path.c_str(), 0755), 0);
  }

  std::string told() const {
    std::ifstream fifo(tree_.at("told"));
    std::string text;
    std::getline(fifo, text, '\0');
    return text;
  }
};

TEST_F(RealOpenTool, a_terminal_opens_in_the_folder_of_a_file) {
  plantTeller("x-terminal-emulator");
  Trash::openTerminal(tree_.at("folder/note"), workspace_);
  EXPECT_EQ(told(), "\n" + tree_.at("folder") + "\n");
  EXPECT_EQ(workspace_.opened, std::vector{tree_.at("folder")});
}

TEST_F(RealOpenTool, a_file_opens_in_the_installed_editor) {
  plantTeller("gedit");
  Trash::openInEditor(tree_.at("folder/note"), workspace_);
  EXPECT_TRUE(told().starts_with(tree_.at("folder/note") + "\n"));
  EXPECT_TRUE(workspace_.opened.empty());
}

TEST_F(RealOpenTool, a_file_opens_in_its_default_application_if_no_editor_is_installed) {
  Trash::openTerminal(tree_.at("folder"), workspace_);
  Trash::openInEditor(tree_.at("folder/note"), workspace_);
  EXPECT_EQ(workspace_.opened, (std::vector{tree_.at("folder"), tree_.at("folder/note")}));
}

}  // namespace
}  // namespace tessaly
