// From the start of the program to a map: what the pane shows during a scan.
#include <QSignalSpy>

#include "journeys/Journey.h"
#include "support/WindowItems.h"

namespace tessaly {
namespace {

class Scan : public Journey {
 protected:
  Scan()
      : Journey(
            "Movies/\n"
            "  holiday.mp4 4M\n"
            "  short.mov 1M\n"
            "Code/\n"
            "  main.cpp 512K\n"
            "notes.txt 300K\n") {}
};

TEST_F(Scan, the_program_begins_on_the_idle_screen) {
  EXPECT_TRUE(shows("idleScreen"));
  EXPECT_TRUE(shows("idleScanHome"));
  EXPECT_TRUE(shows("idleChooseFolder"));
  EXPECT_FALSE(shows("back"));
  EXPECT_FALSE(shows("crumbs"));
  EXPECT_EQ(window().title(), QStringLiteral("Tessaly"));
}

TEST_F(Scan, the_first_walk_shows_the_scanning_screen) {
  click("idleScanHome");
  EXPECT_EQ(session().run().status(), ScanStatus::scanning);
  EXPECT_FALSE(shows("idleScreen"));
  EXPECT_TRUE(shows("scanningScreen"));
  EXPECT_FALSE(shows("canvas"));
  EXPECT_EQ(text("progress"), QStringLiteral("Scanning started…"));
  QQuickItem* const percent = itemNamed(item("scanningScreen"), "percent");
  ASSERT_NE(percent, nullptr);
  EXPECT_EQ(percent->property("text").toString(), QStringLiteral("0%"));
}

TEST_F(Scan, a_scan_ends_with_the_map_of_the_home_folder) {
  click("idleScanHome");
  finishScan();
  EXPECT_TRUE(shows("resultScreen"));
  EXPECT_FALSE(shows("banner"));
  ASSERT_TRUE(session().navigation().current().has_value());
  EXPECT_EQ(session().navigation().current()->path(), tree_.path());
  QQuickItem* header = item("header");
  EXPECT_EQ(itemNamed(header, "items")->property("text").toString(), QStringLiteral("(3 items)"));
  EXPECT_EQ(itemNamed(header, "size")->property("text").toString(), QStringLiteral("5.8 MB"));
  EXPECT_TRUE(itemNamed(header, "stats")
                  ->property("text")
                  .toString()
                  .startsWith(QStringLiteral("4 files · 3 folders · ")));
  EXPECT_TRUE(shows("breakdown"));
}

TEST_F(Scan, the_ring_turns_while_the_walk_reports_nothing) {
  click("idleScanHome");
  QSignalSpy turns(item("ring"), SIGNAL(changed()));
  EXPECT_TRUE(turns.wait(60000));
  finishScan();
  session().rescan();
  QSignalSpy turnsOfTheBanner(item("ring"), SIGNAL(changed()));
  EXPECT_TRUE(turnsOfTheBanner.wait(60000));
}

TEST_F(Scan, a_scan_starts_by_the_keyboard) {
  tabTo("idleScanHome");
  press(Qt::Key_Tab);
  EXPECT_TRUE(item("idleChooseFolder")->hasActiveFocus());
  press(Qt::Key_Backtab);
  press(Qt::Key_Return);
  EXPECT_EQ(session().run().status(), ScanStatus::scanning);
}

TEST_F(Scan, a_scan_walks_the_folder_chosen_in_the_panel) {
  folderPanel_.answer = tree_.at("Movies");
  click("idleChooseFolder");
  ASSERT_EQ(folderPanel_.requests.size(), 1u);
  finishScan();
  EXPECT_EQ(session().navigation().current()->path(), tree_.at("Movies"));
}

TEST_F(Scan, a_cancelled_panel_stays_on_the_idle_screen) {
  click("idleChooseFolder");
  EXPECT_TRUE(shows("idleScreen"));
}

TEST_F(Scan, cancelling_the_first_scan_returns_to_the_idle_screen) {
  click("idleScanHome");
  click("cancel");
  EXPECT_TRUE(shows("idleScreen"));
  finishScan();
  EXPECT_TRUE(shows("idleScreen"));
  EXPECT_FALSE(session().navigation().current().has_value());
}

TEST_F(Scan, a_later_scan_keeps_the_old_map_under_a_banner) {
  click("idleScanHome");
  finishScan();
  const QString sizeBefore = itemNamed(item("header"), "size")->property("text").toString();
  tree_.plant("later.zip 2M\n");
  session().rescan();
  EXPECT_TRUE(shows("banner"));
  EXPECT_TRUE(shows("canvas"));
  EXPECT_FALSE(shows("scanningScreen"));
  EXPECT_FALSE(shows("stats"));
  EXPECT_EQ(text("progress"), QStringLiteral("Scanning started…"));
  EXPECT_EQ(itemNamed(item("header"), "size")->property("text").toString(), sizeBefore);
  finishScan();
  EXPECT_FALSE(shows("banner"));
  EXPECT_EQ(itemNamed(item("header"), "size")->property("text").toString(),
            QStringLiteral("7.8 MB"));
}

TEST_F(Scan, cancelling_from_the_banner_keeps_the_old_map) {
  click("idleScanHome");
  finishScan();
  session().rescan();
  click("cancel");
  EXPECT_FALSE(shows("banner"));
  EXPECT_TRUE(shows("canvas"));
  finishScan();
  EXPECT_EQ(session().run().status(), ScanStatus::complete);
}

TEST_F(Scan, a_replaced_scan_is_never_shown) {
  click("idleScanHome");
  walk();  // the first tree waits on the main queue
  session().scan(tree_.at("Movies"));
  comeHome();
  EXPECT_TRUE(shows("scanningScreen"));
  EXPECT_EQ(text("progress"), QStringLiteral("Scanning started…"));
  finishScan();
  EXPECT_EQ(session().navigation().current()->path(), tree_.at("Movies"));
  EXPECT_EQ(session().navigation().stack().size(), 1u);
}

TEST_F(Scan, a_scan_that_reads_nothing_says_so_and_offers_the_home_folder) {
  session().scan(tree_.at("gone"));
  finishScan();
  EXPECT_TRUE(shows("failedScreen"));
  EXPECT_EQ(text("message"), QStringLiteral("Nothing readable at ") +
                                 QString::fromStdString(tree_.at("gone")) +
                                 QStringLiteral(". Check its permissions or pick another folder."));
  click("tryAgain");
  finishScan();
  EXPECT_TRUE(shows("canvas"));
  EXPECT_EQ(session().navigation().current()->path(), tree_.path());
}

}  // namespace
}  // namespace tessaly
