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

TEST(StatusMenu, has_eleven_entries_in_their_order) {
  EXPECT_THAT(linesOf(usage(87.4, 3 * gigabyte), true),
              ElementsAre("Open Tessaly", "-", "Disk 87% used", "64.5 GB free", "3.0 GB purgeable",
                          "-", "Quick Search…", "Scan Home", "-", "Open at Login: On", "Quit"));
}

TEST(StatusMenu, has_texts_that_cannot_be_pressed_and_buttons_that_can) {
  std::vector<Kind> kinds;
  for (const auto& entry : StatusMenu::entries(usage(87, 1), false, {}))
    kinds.push_back(entry.kind);
  EXPECT_THAT(kinds, ElementsAre(Kind::button, Kind::divider, Kind::text, Kind::text, Kind::text,
                                 Kind::divider, Kind::button, Kind::button, Kind::divider,
                                 Kind::button, Kind::button));
}

TEST(StatusMenu, has_no_line_on_what_can_be_purged_where_there_is_nothing) {
  EXPECT_THAT(linesOf(usage(87, 0), false), Not(Contains(HasSubstr("purgeable"))));
  EXPECT_THAT(linesOf(usage(87, -1), false), Not(Contains(HasSubstr("purgeable"))));
  EXPECT_EQ(linesOf(usage(87, 0), false).size(), 10u);
  EXPECT_THAT(linesOf(usage(87, 1), false), Contains("1 B purgeable"));
}

TEST(StatusMenu, rounds_the_percentage_in_the_label_as_in_the_menu) {
  for (const auto& [percent, text] : std::vector<std::pair<double, std::string>>{
           {0, "0%"}, {0.5, "0%"}, {1.5, "2%"}, {89.5, "90%"}, {99.6, "100%"}, {100, "100%"}}) {
    EXPECT_EQ(StatusMenu::label(usage(percent, 0)).text, text);
    EXPECT_THAT(linesOf(usage(percent, 0), false), Contains("Disk " + text + " used"));
  }
  EXPECT_EQ(StatusMenu::label({}).symbol, "externaldrive.fill");
}

TEST(StatusMenu, says_whether_it_opens_at_login) {
  EXPECT_THAT(linesOf({}, false), Contains("Open at Login: Off"));
  EXPECT_THAT(linesOf({}, true), Contains("Open at Login: On"));
}

TEST(StatusMenu, numbers_what_does_the_same_alike_whatever_stands_above) {
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
  bool wasSearching_ = false;  // at the moment of activation
  bool wasScanning_ = false;
  std::unique_ptr<ScanSession> session_;
  std::unique_ptr<StatusBar> bar_;
};

TEST_F(StatusBarTest, shows_the_disk_from_the_start) {
  makeBar();
  EXPECT_EQ(extra_.label, (StatusBarExtra::Label{"externaldrive.fill", "87%"}));
  EXPECT_THAT(extra_.lines(), Contains("Disk 87% used"));
}

TEST_F(StatusBarTest, follows_the_disk) {
  makeBar();
  disk_ = usage(91, 2 * gigabyte);
  session_->machine().refreshDisk();
  EXPECT_EQ(extra_.label.text, "91%");
  EXPECT_THAT(extra_.lines(), Contains("Disk 91% used"));
  EXPECT_THAT(extra_.lines(), Contains("2.0 GB purgeable"));
}

TEST_F(StatusBarTest, opens_the_window) {
  makeBar();
  EXPECT_TRUE(extra_.click("Open Tessaly"));
  EXPECT_THAT(done_, ElementsAre("show"));
}

TEST_F(StatusBarTest, activates_first_and_then_searches) {
  makeBar();
  EXPECT_TRUE(extra_.click("Quick Search…"));
  EXPECT_THAT(done_, ElementsAre("activate"));
  EXPECT_FALSE(wasSearching_);
  EXPECT_TRUE(session_->shown().searchOpen());
  EXPECT_TRUE(extra_.click("Quick Search…"));
  EXPECT_TRUE(session_->shown().searchOpen());
}

TEST_F(StatusBarTest, scans_home_first_and_then_activates) {
  makeBar();
  EXPECT_TRUE(extra_.click("Scan Home"));
  EXPECT_THAT(done_, ElementsAre("activate"));
  EXPECT_TRUE(wasScanning_);
  machine_.dispatch.drainAll();
  EXPECT_THAT(walked_, ElementsAre("/home/user"));
}

TEST_F(StatusBarTest, quits) {
  makeBar();
  EXPECT_TRUE(extra_.click("Quit"));
  EXPECT_THAT(done_, ElementsAre("quit"));
}

TEST_F(StatusBarTest, knows_at_the_start_whether_it_opens_at_login) {
  login_.enabled = true;
  makeBar();
  EXPECT_TRUE(bar_->openAtLogin());
  EXPECT_THAT(extra_.lines(), Contains("Open at Login: On"));
}

TEST_F(StatusBarTest, turns_opening_at_login_on_and_off) {
  makeBar();
  EXPECT_TRUE(extra_.click("Open at Login: Off"));
  EXPECT_TRUE(login_.enabled);
  EXPECT_TRUE(extra_.click("Open at Login: On"));
  EXPECT_FALSE(login_.enabled);
  EXPECT_THAT(extra_.lines(), Contains("Open at Login: Off"));
}

TEST_F(StatusBarTest, shows_a_refused_change_as_none) {
  login_.refuses = true;
  makeBar();
  EXPECT_TRUE(extra_.click("Open at Login: Off"));
  EXPECT_FALSE(bar_->openAtLogin());
  EXPECT_THAT(extra_.lines(), Contains("Open at Login: Off"));
}

// Somebody else has switched it on meanwhile.
TEST_F(StatusBarTest, asks_the_system_again_after_a_change) {
  login_.refuses = true;
  makeBar();
  login_.enabled = true;
  EXPECT_TRUE(extra_.click("Open at Login: Off"));
  EXPECT_THAT(extra_.lines(), Contains("Open at Login: On"));
}

TEST_F(StatusBarTest, leaves_no_button_behind) {
  makeBar();
  bar_.reset();
  EXPECT_TRUE(extra_.menu.empty());
}

}  // namespace
}  // namespace tessaly
