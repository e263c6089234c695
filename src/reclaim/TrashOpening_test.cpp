#include <gmock/gmock.h>
#include <gtest/gtest.h>
#include <set>

#include "platform/Workspace.h"
#include "reclaim/Trash.h"
#include "support/TempTree.h"

namespace tessaly {
namespace {

using testing::ElementsAre;

// Records all calls of the workspace and the tool in one list, with paths below the tree.
class TrashOpening : public testing::Test {
 protected:
  TempTree tree_ = TempTree(R"(
    folder/
      file
      \xFF/
      pipe fifo
      to-folder -> .
      to-file -> file
      broken -> nowhere
  )");
  std::set<std::string> editors_;  // that are installed
  std::vector<std::string> calls_;

  void openTerminal(const std::string& path) { Trash::openTerminal(path, workspace_, tool_); }
  void openInEditor(const std::string& path) { Trash::openInEditor(path, workspace_, tool_); }

  void expectTerminalIn(const std::string& folder, const std::string& path) {
    calls_.clear();
    openTerminal(tree_.at(path));
    EXPECT_THAT(calls_, ElementsAre("workspace: " + folder, "start: -a|Terminal|" + folder))
        << path;
  }

 private:
  class ListedWorkspace : public Workspace {
   public:
    explicit ListedWorkspace(TrashOpening& test) : test_(test) {}
    void reveal(const std::vector<std::string>&) override { test_.calls_.emplace_back("reveal"); }
    void open(const std::string& path) override { test_.note("workspace: ", {path}); }
    bool openSettings(const std::string&) override { return false; }

   private:
    TrashOpening& test_;
  };

  ListedWorkspace workspace_ = ListedWorkspace(*this);
  OpenTool tool_ = {
      .start = [this](const OpenTool::Args& args) { note("start: ", args); },
      .run =
          [this](const OpenTool::Args& args) {
            note("run: ", args);
            return editors_.contains(args.at(1));
          },
  };

  void note(std::string line, const std::vector<std::string>& texts) {
    for (const std::string& text : texts) line += text + "|";
    line.pop_back();
    const std::string top = tree_.path() + "/";
    if (const auto at = line.find(top); at != std::string::npos) line.erase(at, top.size());
    calls_.push_back(std::move(line));
  }
};

TEST_F(TrashOpening, the_terminal_for_a_folder_opens_in_it_after_it_was_shown) {
  expectTerminalIn("folder", "folder");
  expectTerminalIn("folder/\xFF", "folder/\xFF");
  expectTerminalIn("folder/", "folder/");
}

TEST_F(TrashOpening, the_terminal_for_a_file_opens_in_its_folder) {
  expectTerminalIn("folder", "folder/file");
  expectTerminalIn("folder", "folder/pipe");
}

TEST_F(TrashOpening, the_terminal_for_a_missing_item_opens_in_the_folder_that_contained_it) {
  expectTerminalIn("folder", "folder/gone");
  expectTerminalIn("folder", "folder/gone/");
  expectTerminalIn("folder", "folder//gone//");
  expectTerminalIn("gone", "gone/with");
}

TEST_F(TrashOpening, the_terminal_for_a_link_to_a_folder_opens_in_that_folder) {
  expectTerminalIn("folder/to-folder", "folder/to-folder");
  expectTerminalIn("folder", "folder/to-file");
  expectTerminalIn("folder", "folder/broken");
}

TEST_F(TrashOpening, the_terminal_for_the_root_and_for_its_children_opens_in_the_root) {
  openTerminal("/");
  openTerminal("/no such thing");
  openTerminal("//no such thing");
  openTerminal("");
  EXPECT_EQ(calls_.size(), 8U);
  for (std::size_t at = 0; at < calls_.size(); at += 2) {
    EXPECT_EQ(calls_[at], "workspace: /");
    EXPECT_EQ(calls_[at + 1], "start: -a|Terminal|/");
  }
}

TEST_F(TrashOpening, the_search_stops_at_the_first_editor_that_opens_the_file) {
  editors_ = {"Cursor", "TextEdit"};
  openInEditor(tree_.at("folder/file"));
  EXPECT_THAT(calls_, ElementsAre("run: -a|Cursor|folder/file"));
  calls_.clear();
  editors_ = {"TextEdit", "Code"};
  openInEditor(tree_.at("folder/file"));
  EXPECT_THAT(calls_,
              ElementsAre("run: -a|Cursor|folder/file", "run: -a|Visual Studio Code|folder/file",
                          "run: -a|Code|folder/file"));
}

TEST_F(TrashOpening, four_editors_are_tried_before_the_default_application) {
  for (const std::string path : {"folder/file", "folder", "gone", "folder/\xFF"}) {
    calls_.clear();
    openInEditor(tree_.at(path));
    EXPECT_THAT(calls_, ElementsAre("run: -a|Cursor|" + path, "run: -a|Visual Studio Code|" + path,
                                    "run: -a|Code|" + path, "run: -a|TextEdit|" + path,
                                    "workspace: " + path));
  }
  calls_.clear();
  editors_ = {"TextEdit"};
  openInEditor(tree_.at("folder"));
  EXPECT_EQ(calls_.size(), 4U);
  EXPECT_EQ(calls_.back(), "run: -a|TextEdit|folder");
}

}  // namespace
}  // namespace tessaly
