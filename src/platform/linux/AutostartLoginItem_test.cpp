#include "platform/linux/AutostartLoginItem.h"

#include <filesystem>
#include <fstream>
#include <gtest/gtest.h>
#include <iterator>
#include <string>
#include <sys/fsuid.h>
#include <sys/stat.h>
#include <unistd.h>

#include "platform/Process.h"
#include "support/FakeLoginItem.h"
#include "support/LoginItemContract.h"
#include "support/Needs.h"
#include "support/TempTree.h"

namespace tessaly {
namespace {

namespace fs = std::filesystem;

struct FakeHarness {
  LoginItem& item() { return fake; }
  void refuse() { fake.refuses = true; }

  FakeLoginItem fake;
};
INSTANTIATE_TYPED_TEST_SUITE_P(Fake, LoginItemContract, FakeHarness);

// A login item whose folder can be made read-only. Root may write to any folder, so as root the
// thread accesses files as nobody from then on.
struct AutostartHarness {
  AutostartHarness() { fs::permissions(tree.path(), readable); }
  ~AutostartHarness() {
    ::setfsuid(::geteuid());
    if (fs::exists(tree.at("config"))) fs::permissions(tree.at("config"), fs::perms::owner_all);
    if (fs::exists(folder)) fs::permissions(folder, fs::perms::owner_all);
  }
  AutostartHarness(const AutostartHarness&) = delete;
  AutostartHarness& operator=(const AutostartHarness&) = delete;

  LoginItem& item() { return autostart; }
  void refuse() {
    constexpr uid_t nobody = 65534;
    fs::create_directory(tree.at("config"));
    if (fs::exists(folder)) fs::permissions(folder, locked);
    fs::permissions(tree.at("config"), locked);
    if (::geteuid() == 0) ::setfsuid(nobody);
  }

  static constexpr fs::perms readable{0755};
  static constexpr fs::perms locked{0555};

  TempTree tree;
  std::string folder = tree.at("config/autostart");
  AutostartLoginItem autostart{folder, "/usr/bin/tessaly"};
};
INSTANTIATE_TYPED_TEST_SUITE_P(Autostart, LoginItemContract, AutostartHarness);

class AutostartLoginItemTest : public testing::Test {
 protected:
  std::string content() const {
    std::ifstream in(path_, std::ios::binary);
    return {std::istreambuf_iterator<char>(in), {}};
  }
  void write(const std::string& text) {
    fs::create_directories(folder_);
    std::ofstream(path_, std::ios::binary) << text;
  }

  TempTree tree_;
  std::string folder_ = tree_.at("config/autostart");
  std::string path_ = folder_ + "/tessaly.desktop";
  AutostartLoginItem item_{folder_, "/usr/bin/tessaly"};
};

TEST_F(AutostartLoginItemTest, enabling_writes_one_file_into_a_folder_that_it_creates) {
  ASSERT_TRUE(item_.setEnabled(true));
  EXPECT_EQ(content(),
            "[Desktop Entry]\nType=Application\nName=Tessaly\nIcon=tessaly\n"
            "Exec=\"/usr/bin/tessaly\"\n");
  EXPECT_EQ(std::distance(fs::directory_iterator(folder_), fs::directory_iterator()), 1);
}

TEST_F(AutostartLoginItemTest, disabling_removes_the_file) {
  ASSERT_TRUE(item_.setEnabled(true));
  ASSERT_TRUE(item_.setEnabled(false));
  EXPECT_TRUE(fs::is_empty(folder_));
}

TEST_F(AutostartLoginItemTest, an_entry_hidden_by_the_user_is_off_and_can_be_enabled_again) {
  write("[Desktop Entry]\nType=Application\nExec=/usr/bin/tessaly\nHidden=true\n");
  EXPECT_FALSE(item_.isEnabled());
  EXPECT_TRUE(item_.setEnabled(false));
  EXPECT_TRUE(fs::exists(path_));
  EXPECT_TRUE(item_.setEnabled(true));
  EXPECT_TRUE(item_.isEnabled());
}

TEST_F(AutostartLoginItemTest, an_entry_of_another_program_is_off_and_is_kept) {
  const std::string other = "[Desktop Entry]\nType=Application\nExec=/opt/other\n";
  write(other);
  EXPECT_FALSE(item_.isEnabled());
  EXPECT_TRUE(item_.setEnabled(false));
  EXPECT_EQ(content(), other);
}

TEST_F(AutostartLoginItemTest, enabling_replaces_an_entry_with_an_older_path_of_the_program) {
  write("[Desktop Entry]\nType=Application\nExec=/old/tessaly\n");
  EXPECT_TRUE(item_.setEnabled(true));
  EXPECT_TRUE(item_.isEnabled());
}

TEST_F(AutostartLoginItemTest, an_entry_that_the_user_wrote_is_on_and_is_kept_until_disabled) {
  write("[Desktop Entry]\nType=Application\nName=Mine\nExec=tessaly\n");
  EXPECT_TRUE(item_.isEnabled());
  EXPECT_TRUE(item_.setEnabled(true));
  EXPECT_NE(content().find("Mine"), std::string::npos);
  EXPECT_TRUE(item_.setEnabled(false));
  EXPECT_FALSE(fs::exists(path_));
}

TEST_F(AutostartLoginItemTest, a_removed_file_is_noticed_at_once) {
  ASSERT_TRUE(item_.setEnabled(true));
  fs::remove(path_);
  EXPECT_FALSE(item_.isEnabled());
}

TEST_F(AutostartLoginItemTest, a_folder_in_place_of_the_file_is_off_and_cannot_be_enabled) {
  fs::create_directories(path_);
  EXPECT_FALSE(item_.isEnabled());
  EXPECT_FALSE(item_.setEnabled(true));
  EXPECT_TRUE(item_.setEnabled(false));
  EXPECT_TRUE(fs::is_directory(path_));
}

TEST_F(AutostartLoginItemTest, enabling_fails_if_the_folder_is_a_file) {
  tree_.plant("config\n");
  EXPECT_FALSE(item_.setEnabled(true));
  EXPECT_FALSE(item_.isEnabled());
}

TEST_F(AutostartLoginItemTest, a_pipe_in_place_of_the_file_is_not_waited_for) {
  fs::create_directories(folder_);
  ASSERT_EQ(::mkfifo(path_.c_str(), 0600), 0);
  EXPECT_FALSE(item_.isEnabled());
}

// Reads the entry with GLib, by which several desktops start programs, and not with our own reader.
// GLib accepts only UTF-8 paths without a percent sign: it looks for the program before it replaces
// "%%" by "%".
TEST_F(AutostartLoginItemTest, another_program_can_start_the_written_entry) {
  const char* gio = "/usr/bin/gio";
  if (!fs::exists(gio)) GTEST_SKIP() << needs(Need::gio, "not installed");
  for (const std::string name :
       {"plain", "with blanks", "\"quoted\"", "it's", "$HOME `id`", "back\\slash\\n", "a\ttab",
        "semi;colon&ampersand|<>", "h\xC3\xA9", "equal=sign", "~ # * ? ( )"}) {
    const std::string executable = tree_.at(name);
    std::ofstream(executable, std::ios::binary) << "#!/bin/sh\necho ran \"$#\"\n";
    fs::permissions(executable, fs::perms::owner_all);
    AutostartLoginItem item(folder_, executable);
    ASSERT_TRUE(item.setEnabled(true)) << name;

    Result<Process> launched =
        Process::launch({.path = gio,
                         .args = {"launch", path_},
                         .environment = {{"DBUS_SESSION_BUS_ADDRESS", "unix:path=/none"}},
                         .output = Process::Stream::captured});
    ASSERT_TRUE(launched.ok());
    ASSERT_TRUE(launched.value().waitUntil(Deadline::never()));
    EXPECT_EQ(launched.value().readOutput(Deadline::never()), "ran 0\n") << name;
  }
}

}  // namespace
}  // namespace tessaly
