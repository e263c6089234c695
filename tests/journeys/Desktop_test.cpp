// The window, and the parts of the program on the desktop: status bar, hot key, second start.
#include <gmock/gmock.h>
#include <string>
#include <vector>

#include <QGuiApplication>
#include <QWindow>

#include "journeys/Journey.h"
#include "support/PlainFiles.h"
#include "support/WindowItems.h"

namespace tessaly {
namespace {

using testing::Contains;
using testing::ElementsAre;
using testing::IsEmpty;
using Presence = StatusBarExtra::Presence;

class DesktopJourney : public Journey {
 protected:
  DesktopJourney() : Journey("notes.txt 2M\n") {}

  // Hides the window as if the user had closed it.
  void closeWindow() {
    machine_.statusBar.become(Presence::shown);
    window().close();
    settle(window());
    ASSERT_FALSE(window().isVisible());
  }
};

TEST_F(DesktopJourney, the_window_comes_back_from_the_status_bar) {
  closeWindow();
  EXPECT_TRUE(machine_.statusBar.click("Open Tessaly"));
  EXPECT_TRUE(window().isVisible());
}

TEST_F(DesktopJourney, quick_search_of_the_status_bar_opens_in_the_window) {
  closeWindow();
  EXPECT_TRUE(machine_.statusBar.click("Quick Search…"));
  EXPECT_TRUE(window().isVisible());
  EXPECT_TRUE(session().shown().searchOpen());
}

TEST_F(DesktopJourney, scan_home_of_the_status_bar_scans_in_the_window) {
  closeWindow();
  EXPECT_TRUE(machine_.statusBar.click("Scan Home"));
  EXPECT_TRUE(window().isVisible());
  EXPECT_EQ(session().run().status(), ScanStatus::scanning);
  EXPECT_EQ(session().run().scanRoot(), tree_.path());
}

TEST_F(DesktopJourney, the_hot_key_opens_the_search_and_does_not_close_it) {
  closeWindow();
  machine_.hotKey.press();
  EXPECT_TRUE(window().isVisible());
  EXPECT_TRUE(session().shown().searchOpen());
  machine_.hotKey.press();
  EXPECT_TRUE(session().shown().searchOpen());
}

TEST_F(DesktopJourney, the_hot_key_leaves_the_pane_that_is_in_front) {
  session().shown().setPane(MainPane::apps);
  machine_.hotKey.press();
  EXPECT_TRUE(shows("search"));
  EXPECT_EQ(session().shown().pane(), MainPane::apps);
}

TEST_F(DesktopJourney, a_second_start_brings_the_window_back) {
  closeWindow();
  application().reopen();
  EXPECT_TRUE(window().isVisible());
}

TEST_F(DesktopJourney, closing_quits_only_without_a_status_bar) {
  machine_.statusBar.become(Presence::shown);
  EXPECT_FALSE(QGuiApplication::quitOnLastWindowClosed());
  machine_.statusBar.become(Presence::absent);
  EXPECT_TRUE(QGuiApplication::quitOnLastWindowClosed());
}

TEST_F(DesktopJourney, the_login_item_is_switched_in_the_status_bar) {
  EXPECT_THAT(machine_.statusBar.lines(), Contains("Open at Login: Off"));
  EXPECT_TRUE(machine_.statusBar.click("Open at Login: Off"));
  EXPECT_TRUE(machine_.loginItem.enabled);
  EXPECT_THAT(machine_.statusBar.lines(), Contains("Open at Login: On"));
}

TEST_F(DesktopJourney, a_hidden_start_shows_the_window_on_request_only) {
  machine_.statusBar.become(Presence::shown);
  machine_.prefs.setStartHidden(true);
  relaunch();
  EXPECT_FALSE(window().isVisible());
  dispatch_.advanceToNextDue();
  dispatch_.drainAll();
  EXPECT_FALSE(window().isVisible());
  EXPECT_TRUE(machine_.statusBar.click("Open Tessaly"));
  EXPECT_TRUE(window().isVisible());
}

TEST_F(DesktopJourney, a_hidden_start_shows_the_window_if_there_is_no_status_bar) {
  machine_.statusBar.become(Presence::absent);
  machine_.prefs.setStartHidden(true);
  relaunch();
  EXPECT_FALSE(window().isVisible());
  dispatch_.advance(WindowStart::patience);
  dispatch_.drainAll();
  EXPECT_TRUE(window().isVisible());
}

TEST_F(DesktopJourney, a_scan_that_ends_during_quitting_stores_nothing) {
  session().scanHome();
  application().endWriting();
  finishScan();
  EXPECT_THAT(entriesOf(machine_.support.path()), IsEmpty());
  EXPECT_EQ(machine_.settings.text(ScanStore::lastScanRootKey), std::nullopt);
}

TEST_F(DesktopJourney, no_window_is_shown_again_once_the_program_has_left_the_desktop) {
  machine_.prefs.setStartHidden(true);
  relaunch();
  application().hideWindows();
  application().leaveDesktop();
  machine_.statusBar.become(Presence::absent);
  dispatch_.advance(WindowStart::patience);
  dispatch_.drainAll();
  EXPECT_FALSE(window().isVisible());
}

TEST_F(DesktopJourney, all_windows_are_closed_when_the_program_quits) {
  QWindow another;
  another.show();
  application().hideWindows();
  EXPECT_FALSE(window().isVisible());
  EXPECT_FALSE(another.isVisible());
}

// What the program checks when the user returns, in order.
struct Looks {
  bool isGranted = false;
  double usedPercent = 40;
  std::vector<std::string> seen;

  Journey::Lend lend() {
    return [this](Application::Services& services) {
      services.access = [this] {
        seen.emplace_back("access");
        return isGranted;
      };
      services.volumeUsage = [this] {
        seen.emplace_back("disk");
        return DiskUsage{.total = 1000, .used = 400, .free = 600, .usedPercent = usedPercent};
      };
    };
  }
};

class Attention : protected Looks, public Journey {
 protected:
  Attention() : Journey("notes.txt 2M\n", lend()) {}

  void become(Qt::ApplicationState state) {
    emit qGuiApp->applicationStateChanged(state);
    settle(window());
  }
};

TEST_F(Attention, the_first_activation_checks_the_disk_and_then_the_access) {
  // Both objects have checked once at construction. Activation may come later.
  ASSERT_GE(seen.size(), 4U);
  seen.resize(4);
  EXPECT_THAT(seen, ElementsAre("access", "disk", "disk", "access"));
}

TEST_F(Attention, a_later_activation_checks_the_access_and_then_the_disk) {
  seen.clear();
  become(Qt::ApplicationInactive);
  EXPECT_THAT(seen, IsEmpty());
  become(Qt::ApplicationActive);
  EXPECT_THAT(seen, ElementsAre("access", "disk"));
}

TEST_F(Attention, an_activation_shows_changes_made_elsewhere_at_once) {
  EXPECT_TRUE(shows("gate"));
  EXPECT_EQ(text("percent"), QStringLiteral("40%"));
  isGranted = true;
  usedPercent = 62;
  become(Qt::ApplicationActive);
  EXPECT_FALSE(shows("gate"));
  EXPECT_EQ(text("percent"), QStringLiteral("62%"));
}

}  // namespace
}  // namespace tessaly
