#include "session/StatusBar.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>
#include <memory>
#include <set>
#include <string>
#include <utility>
#include <vector>

#include "session/StatusMenu.h"
#include "support/FakeLoginItem.h"
#include "support/FakeMachine.h"
#include "support/FakeStatusBarExtra.h"

namespace tessaly {
namespace {

using testing::Contains;
using testing::ElementsAre;
using testing::HasSubstr;
using testing::Not;
using Kind = StatusBarExtra::Entry::Kind;

constexpr std::int64_t gigabyte = std::int64_t{1} << 30;

DiskUsage usage(double percent, std::int64_t purgeable) {
  return {.total = 500 * gigabyte,
          .used = 400 * gigabyte,
          .free = 64 * gigabyte + gigabyte / 2,
          .usedPercent = percent,
          .purgeable = purgeable};
}

std::vector<std::string> linesOf(const DiskUsage& disk, bool openAtLogin) {
  FakeStatusBarExtra extra;
  extra.setMenu(StatusMenu::entries(disk, openAtLogin, {}));
  return extra.lines();
}

TEST(StatusMenu, the_menu_has_eleven_entries_in_order) {
  EXPECT_THAT(linesOf(usage(87.4, 3 * gigabyte), true),
              ElementsAre("Open Tessaly", "-", "Disk 87% used", "64.5 GB free", "3.0 GB purgeable",
                          "-", "Quick Search…", "Scan Home", "-", "Open at Login: On", "Quit"));
}

TEST(StatusMenu, the_menu_has_texts_that_cannot_be_pressed_and_buttons_that_can) {
  std::vector<Kind> kinds;
  for (const auto& entry : StatusMenu::entries(usage(87, 1), false, {}))
    kinds.push_back(entry.kind);
  EXPECT_THAT(kinds, ElementsAre(Kind::button, Kind::divider, Kind::text, Kind::text, Kind::text,
                                 Kind::divider, Kind::button, Kind::button, Kind::divider,
                                 Kind::button, Kind::button));
}

TEST(StatusMenu, the_menu_has_no_line_for_purgeable_space_if_there_is_none) {
  EXPECT_THAT(linesOf(usage(87, 0), false), Not(Contains(HasSubstr("purgeable"))));
  EXPECT_THAT(linesOf(usage(87, -1), false), Not(Contains(HasSubstr("purgeable"))));
  EXPECT_EQ(linesOf(usage(87, 0), false).size(), 10u);
  EXPECT_THAT(linesOf(usage(87, 1), false), Contains("1 B purgeable"));
}

TEST(StatusMenu, the_percentage_is_rounded_alike_in_label_and_menu) {
  for (const auto& [percent, text] : std::vector<std::pair<double, std::string>>{
           {0, "0%"}, {0.5, "0%"}, {1.5, "2%"}, {89.5, "90%"}, {99.6, "100%"}, {100, "100%"}}) {
    EXPECT_EQ(StatusMenu::label(usage(percent, 0)).text, text);
    EXPECT_THAT(linesOf(usage(percent, 0), false), Contains("Disk " + text + " used"));
  }
  EXPECT_EQ(StatusMenu::label({}).symbol, "externaldrive.fill");
}

TEST(StatusMenu, the_menu_shows_whether_the_program_opens_at_login) {
  EXPECT_THAT(linesOf({}, false), Contains("Open at Login: Off"));
  EXPECT_THAT(linesOf({}, true), Contains("Open at Login: On"));
}

TEST(StatusMenu, entries_keep_their_numbers_whatever_is_above_them) {
  const auto with = StatusMenu::entries(usage(1, 1), true, {});
  const auto without = StatusMenu::entries(usage(1, 0), false, {});
  EXPECT_EQ(with.back().id, without.back().id);
  EXPECT_EQ(with.front().id, without.front().id);
  std::set<int> ids;
  for (const auto& entry : with) ids.insert(entry.id);
  EXPECT_EQ(ids.size(), with.size());
  EXPECT_GT(*ids.begin(), 0);
}

class StatusBarTest : public testing::Test {
 protected:
  StatusBarTest() {
    ScanSession::Services services = machine_.services("/home/user");
    services.volumeUsage = [this] { return disk_; };
    services.walk = [this](const std::string& root, const DiskScanner::Callbacks&,
                           const DiskScanner::Options&) {
      walked_.push_back(root);
      return DiskNode(DiskNode::Fields{});
    };
    session_ = std::make_unique<ScanSession>(services);
  }

  void makeBar() {
    bar_ = std::make_unique<StatusBar>(
        *session_, login_, extra_,
        StatusBar::Services{.showMainWindow = [this] { done_.emplace_back("show"); },
                            .activate =
                                [this] {
                                  done_.emplace_back("activate");
                                  wasSearching_ = session_->shown().searchOpen();
                                  wasScanning_ = session_->run().status() == ScanStatus::scanning;
                                },
                            .quit = [this] { done_.emplace_back("quit"); }});
  }

  FakeMachine machine_;
  FakeLoginItem login_;
  FakeStatusBarExtra extra_;
  DiskUsage disk_ = usage(87, 0);
  std::vector<std::string> walked_;
  std::vector<std::string> done_;
  bool wasSearching_ = false;  // when the program was activated
  bool wasScanning_ = false;
  std::unique_ptr<ScanSession> session_;
  std::unique_ptr<StatusBar> bar_;
};

TEST_F(StatusBarTest, the_disk_usage_is_shown_from_the_start) {
  makeBar();
  EXPECT_EQ(extra_.label, (StatusBarExtra::Label{"externaldrive.fill", "87%"}));
  EXPECT_THAT(extra_.lines(), Contains("Disk 87% used"));
}

TEST_F(StatusBarTest, the_label_follows_the_disk_usage) {
  makeBar();
  disk_ = usage(91, 2 * gigabyte);
  session_->machine().refreshDisk();
  EXPECT_EQ(extra_.label.text, "91%");
  EXPECT_THAT(extra_.lines(), Contains("Disk 91% used"));
  EXPECT_THAT(extra_.lines(), Contains("2.0 GB purgeable"));
}

TEST_F(StatusBarTest, the_first_button_opens_the_window) {
  makeBar();
  EXPECT_TRUE(extra_.click("Open Tessaly"));
  EXPECT_THAT(done_, ElementsAre("show"));
}

TEST_F(StatusBarTest, quick_search_activates_the_program_first) {
  makeBar();
  EXPECT_TRUE(extra_.click("Quick Search…"));
  EXPECT_THAT(done_, ElementsAre("activate"));
  EXPECT_FALSE(wasSearching_);
  EXPECT_TRUE(session_->shown().searchOpen());
  EXPECT_TRUE(extra_.click("Quick Search…"));
  EXPECT_TRUE(session_->shown().searchOpen());
}

TEST_F(StatusBarTest, scan_home_starts_the_scan_before_activating_the_program) {
  makeBar();
  EXPECT_TRUE(extra_.click("Scan Home"));
  EXPECT_THAT(done_, ElementsAre("activate"));
  EXPECT_TRUE(wasScanning_);
  machine_.dispatch.drainAll();
  EXPECT_THAT(walked_, ElementsAre("/home/user"));
}

TEST_F(StatusBarTest, the_last_button_quits) {
  makeBar();
  EXPECT_TRUE(extra_.click("Quit"));
  EXPECT_THAT(done_, ElementsAre("quit"));
}

TEST_F(StatusBarTest, the_state_of_the_login_item_is_read_at_the_start) {
  login_.enabled = true;
  makeBar();
  EXPECT_TRUE(bar_->openAtLogin());
  EXPECT_THAT(extra_.lines(), Contains("Open at Login: On"));
}

TEST_F(StatusBarTest, a_button_turns_opening_at_login_on_and_off) {
  makeBar();
  EXPECT_TRUE(extra_.click("Open at Login: Off"));
  EXPECT_TRUE(login_.enabled);
  EXPECT_TRUE(extra_.click("Open at Login: On"));
  EXPECT_FALSE(login_.enabled);
  EXPECT_THAT(extra_.lines(), Contains("Open at Login: Off"));
}

TEST_F(StatusBarTest, a_refused_change_of_the_login_item_has_no_effect) {
  login_.refuses = true;
  makeBar();
  EXPECT_TRUE(extra_.click("Open at Login: Off"));
  EXPECT_FALSE(bar_->openAtLogin());
  EXPECT_THAT(extra_.lines(), Contains("Open at Login: Off"));
}

// Another process has enabled it meanwhile.
TEST_F(StatusBarTest, the_state_of_the_login_item_is_read_again_after_a_change) {
  login_.refuses = true;
  makeBar();
  login_.enabled = true;
  EXPECT_TRUE(extra_.click("Open at Login: Off"));
  EXPECT_THAT(extra_.lines(), Contains("Open at Login: On"));
}

TEST_F(StatusBarTest, destruction_removes_all_buttons) {
  makeBar();
  bar_.reset();
  EXPECT_TRUE(extra_.menu.empty());
}

}  // namespace
}  // namespace tessaly
