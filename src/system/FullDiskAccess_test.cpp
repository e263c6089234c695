#include "system/FullDiskAccess.h"

#include <gmock/gmock.h>
#include <map>

#include "support/FakeWorkspace.h"
#include "support/ForkedChild.h"
#include "support/HandSteppedDispatch.h"
#include "support/TempTree.h"

namespace tessaly {
namespace {

using testing::ElementsAre;

// A file system with scripted answers that records the attempts.
class ScriptedFiles final : public FileAccess {
 public:
  struct File {
    Kind kind = Kind::file;
    bool isListed = false;
    bool isOpened = false;
    bool isReadWhole = false;
  };

  Kind kindOf(const std::string& path) const override {
    tried.push_back("look " + path);
    return at(path).kind;
  }
  bool canList(const std::string& path) const override {
    tried.push_back("list " + path);
    return at(path).isListed;
  }
  bool hasEntries(const std::string& path) const override {
    tried.push_back("list " + path);
    return false;
  }
  Values valuesOf(const std::string& path) const override {
    tried.push_back("examine " + path);
    return {};
  }
  bool canOpen(const std::string& path) const override {
    tried.push_back("open " + path);
    return at(path).isOpened;
  }
  bool canReadWhole(const std::string& path) const override {
    tried.push_back("read " + path);
    return at(path).isReadWhole;
  }

  std::map<std::string, File> files;
  mutable std::vector<std::string> tried;

 private:
  File at(const std::string& path) const {
    const auto found = files.find(path);
    return found != files.end() ? found->second : File{.kind = Kind::nothing};
  }
};

using Kind = FileAccess::Kind;

class FullDiskAccessTest : public testing::Test {
 protected:
  bool canAccess(const std::string& path) { return FullDiskAccess::canAccess(path, files_); }
  bool isGranted(const std::vector<std::string>& paths) {
    return FullDiskAccess::isGranted(paths, files_);
  }

  ScriptedFiles files_;
};

TEST_F(FullDiskAccessTest, a_missing_item_is_not_accessible_and_is_not_tried) {
  EXPECT_FALSE(canAccess("/gone"));
  EXPECT_THAT(files_.tried, ElementsAre("look /gone"));
}

TEST_F(FullDiskAccessTest, a_directory_is_accessible_if_it_can_be_listed) {
  files_.files["/listed"] = {.kind = Kind::directory, .isListed = true};
  files_.files["/locked"] = {.kind = Kind::directory, .isOpened = true, .isReadWhole = true};
  EXPECT_TRUE(canAccess("/listed"));
  EXPECT_FALSE(canAccess("/locked"));
  EXPECT_THAT(files_.tried,
              ElementsAre("look /listed", "list /listed", "look /locked", "list /locked"));
}

TEST_F(FullDiskAccessTest, a_file_is_accessible_if_it_opens) {
  files_.files["/file"] = {.isOpened = true};
  EXPECT_TRUE(canAccess("/file"));
  EXPECT_THAT(files_.tried, ElementsAre("look /file", "open /file"));
}

TEST_F(FullDiskAccessTest, a_file_that_does_not_open_is_read_completely) {
  files_.files["/file"] = {.isReadWhole = true};
  EXPECT_TRUE(canAccess("/file"));
  EXPECT_THAT(files_.tried, ElementsAre("look /file", "open /file", "read /file"));
}

TEST_F(FullDiskAccessTest, a_file_that_neither_opens_nor_reads_is_not_accessible) {
  files_.files["/file"] = {};
  EXPECT_FALSE(canAccess("/file"));
}

TEST_F(FullDiskAccessTest, access_is_granted_at_the_first_readable_path) {
  files_.files["/locked"] = {.kind = Kind::directory};
  files_.files["/closed"] = {};
  files_.files["/open"] = {.isOpened = true};
  files_.files["/behind"] = {.isOpened = true};
  EXPECT_TRUE(isGranted({"/gone", "/locked", "/closed", "/open", "/behind"}));
  EXPECT_THAT(files_.tried,
              ElementsAre("look /gone", "look /locked", "list /locked", "look /closed",
                          "open /closed", "read /closed", "look /open", "open /open"));
}

TEST_F(FullDiskAccessTest, access_is_not_granted_if_no_path_exists) {
  EXPECT_FALSE(isGranted(FullDiskAccess::probePaths("/Users/me", Places::forMacos())));
  EXPECT_EQ(files_.tried.size(), 5U);
  EXPECT_FALSE(isGranted({}));
}

TEST(FullDiskAccessPlaces, the_probed_paths_are_in_the_home_and_at_the_root_in_order) {
  EXPECT_THAT(
      FullDiskAccess::probePaths("/Users/m\xE9", Places::forMacos()),
      ElementsAre("/Users/m\xE9/Library/Application Support/com.apple.TCC/TCC.db",
                  "/Library/Application Support/com.apple.TCC/TCC.db", "/Users/m\xE9/Library/Mail",
                  "/Users/m\xE9/Library/Messages", "/Users/m\xE9/Library/Safari/CloudTabs.db"));
  EXPECT_THAT(FullDiskAccess::probePaths("/home/me", Places::forLinux()), ElementsAre("/"));
}

TEST(FullDiskAccessOnDisk, access_needs_one_folder_that_the_user_may_list) {
  const TempTree tree(
      "locked/ mode=0\n"
      "closed 4K mode=0\n"
      "mail/\n");
  EXPECT_EQ(asOtherUser([&]() -> std::string {
              const std::vector<std::string> refused = {tree.at("gone"), tree.at("locked"),
                                                        tree.at("closed")};
              if (FullDiskAccess::isGranted(refused)) return "granted by what is refused";
              std::vector<std::string> all = refused;
              all.push_back(tree.at("mail"));
              return FullDiskAccess::isGranted(all) ? "" : "not granted by what can be listed";
            }),
            "");
}

TEST(FullDiskAccessOnDisk, access_is_granted_on_this_machine) {
  EXPECT_TRUE(FullDiskAccess::isGranted(FullDiskAccess::probePaths("/", Places::forLinux())));
}

const std::string newest =
    "x-apple.systempreferences:com.apple.settings.PrivacySecurity.extension?Privacy_AllFiles";
const std::string older =
    "x-apple.systempreferences:com.apple.preference.security?Privacy_AllFiles";
const std::string oldest = "x-apple.systempreferences:com.apple.preference.security";

TEST(FullDiskAccessSettings, the_first_page_of_the_settings_that_opens_is_used) {
  FakeWorkspace workspace;
  workspace.settingsPage = older;
  FullDiskAccess::openSystemSettings(workspace);
  EXPECT_THAT(workspace.settingsAsked, ElementsAre(newest, older));
}

TEST(FullDiskAccessSettings, three_pages_of_the_settings_are_tried_if_none_opens) {
  FakeWorkspace workspace;
  FullDiskAccess::openSystemSettings(workspace);
  EXPECT_THAT(workspace.settingsAsked, ElementsAre(newest, older, oldest));
}

TEST(FullDiskAccessReveal, the_running_application_is_revealed) {
  FakeWorkspace workspace;
  FullDiskAccess::revealRunningApp(workspace);
  EXPECT_THAT(workspace.revealed, ElementsAre(ElementsAre(runningApplicationPath())));
  FullDiskAccess::revealRunningApp(workspace, "");
  EXPECT_EQ(workspace.revealed.size(), 1U);
}

class FullDiskAccessRelaunch : public testing::Test {
 protected:
  FullDiskAccess::Relaunch how() {
    return {.dispatch = dispatch_,
            .giveUpInstance = [this] { done_.emplace_back("give up"); },
            .quit = [this] { done_.emplace_back("quit"); },
            .application = "/opt/Tess\xE9ly",
            .launch = [this](const Process::Launch& launch) -> Outcome {
              std::string line = launch.path;
              for (const std::string& arg : launch.args) line += "|" + arg;
              done_.push_back(line);
              return outcome_;
            }};
  }

  HandSteppedDispatch dispatch_;
  Outcome outcome_ = succeeded();
  std::vector<std::string> done_;
};

TEST_F(FullDiskAccessRelaunch,
       a_relaunch_gives_up_the_instance_and_starts_another_one_before_quitting) {
  FullDiskAccess::relaunch(how());
  EXPECT_THAT(done_, ElementsAre("give up", "/usr/bin/open|-n|/opt/Tess\xE9ly"));
  dispatch_.advance(std::chrono::milliseconds(249));
  dispatch_.drainAll();
  EXPECT_EQ(done_.size(), 2U);
  dispatch_.advance(std::chrono::milliseconds(1));
  EXPECT_EQ(dispatch_.waiting(Dispatch::Queue::main), 1U);
  dispatch_.drainAll();
  EXPECT_EQ(done_.back(), "quit");
  EXPECT_EQ(done_.size(), 3U);
}

TEST_F(FullDiskAccessRelaunch, a_relaunch_quits_even_if_the_other_instance_does_not_start) {
  outcome_ = SystemError::fromErrno(ENOENT, "/usr/bin/open");
  FullDiskAccess::relaunch(how());
  dispatch_.advance(std::chrono::milliseconds(250));
  dispatch_.drainAll();
  EXPECT_EQ(done_.back(), "quit");
}

TEST_F(FullDiskAccessRelaunch, giveUpInstance_may_be_empty) {
  FullDiskAccess::Relaunch alone = how();
  alone.giveUpInstance = {};
  FullDiskAccess::relaunch(alone);
  EXPECT_THAT(done_, ElementsAre("/usr/bin/open|-n|/opt/Tess\xE9ly"));
}

}  // namespace
}  // namespace tessaly
