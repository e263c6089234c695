// The items that a scan could not read stay with its tree.
#include <cerrno>

#include <QSignalSpy>

#include "session/SessionFixture_test.h"

namespace tessaly {
namespace {

class ScanSessionUnreadable : public SessionFixture {
 protected:
  // Makes the next walk report `count` unreadable items.
  void tellOf(int count, const std::string& first) {
    walks().at(walks().ran()).during = [count, first](const DiskScanner::Callbacks& callbacks) {
      for (int i = 0; callbacks.unreadable && i < count; ++i) {
        callbacks.unreadable(SystemError::fromErrno(EACCES, first + std::to_string(i)));
      }
    };
  }

  static DiskNode home() { return folder("/home", 10, {file("/home/a", 10)}); }
};

TEST_F(ScanSessionUnreadable, no_unreadable_items_are_known_before_a_scan) {
  EXPECT_EQ(session().result().unreadable(), UnreadableItems());
}

TEST_F(ScanSessionUnreadable, unreadable_items_are_those_that_the_walk_reported) {
  QSignalSpy changes(&session().result(), &ScanResult::unreadableChanged);
  tellOf(2, "/home/locked");
  scanTo(home());
  EXPECT_EQ(session().result().unreadable().count, 2U);
  ASSERT_EQ(session().result().unreadable().first.size(), 2U);
  EXPECT_EQ(session().result().unreadable().first[1],
            SystemError::fromErrno(EACCES, "/home/locked1"));
  EXPECT_EQ(changes.count(), 1);
}

TEST_F(ScanSessionUnreadable, unreadable_items_are_all_counted_and_the_first_200_kept) {
  tellOf(1000, "/home/locked");
  scanTo(home());
  EXPECT_EQ(session().result().unreadable().count, 1000U);
  ASSERT_EQ(session().result().unreadable().first.size(), 200U);
  EXPECT_EQ(session().result().unreadable().first.back().path, "/home/locked199");
}

TEST_F(ScanSessionUnreadable, unreadable_items_are_replaced_by_the_next_scan) {
  tellOf(3, "/home/locked");
  scanTo(home());
  tellOf(1, "/home/other");
  scanTo(home());
  EXPECT_EQ(session().result().unreadable().count, 1U);
  EXPECT_EQ(session().result().unreadable().first.front().path, "/home/other0");
  scanTo(home());
  EXPECT_EQ(session().result().unreadable(), UnreadableItems());
}

TEST_F(ScanSessionUnreadable, unreadable_items_stay_during_a_scan_and_after_its_cancellation) {
  tellOf(3, "/home/locked");
  scanTo(home());
  tellOf(1, "/home/other");
  walks().at(1).result = home();
  session().rescan();
  runWalks();
  EXPECT_EQ(session().result().unreadable().count, 3U);
  session().run().cancel();
  dispatch().drainAll();
  EXPECT_EQ(session().result().unreadable().count, 3U);
}

TEST_F(ScanSessionUnreadable, unreadable_items_stay_if_a_rescan_reads_nothing) {
  tellOf(3, "/home/locked");
  scanTo(home());
  tellOf(1, "/home");
  walks().at(1).result = folder("/home", 0);
  session().rescan();
  dispatch().drainAll();
  EXPECT_EQ(session().navigation().current(), home());
  EXPECT_EQ(session().result().unreadable().count, 3U);
}

TEST_F(ScanSessionUnreadable, opening_a_package_adds_no_unreadable_items) {
  tellOf(3, "/home/locked");
  scanTo(folder("/home", 10, {folder("/home/Tool.app", 10)}));
  tellOf(2, "/home/Tool.app/locked");
  walks().at(1).result = folder("/home/Tool.app", 10, {file("/home/Tool.app/a", 10)});
  session().expandPackage(session().navigation().current()->children().front());
  dispatch().drainAll();
  EXPECT_EQ(session().navigation().stack().size(), 2U);
  EXPECT_EQ(session().result().unreadable().count, 3U);
}

TEST_F(ScanSessionUnreadable, a_restored_tree_has_no_unreadable_items) {
  tellOf(3, "/home/locked");
  scanTo(home());
  restart();
  EXPECT_EQ(session().navigation().current(), home());
  EXPECT_EQ(session().result().unreadable(), UnreadableItems());
}

}  // namespace
}  // namespace tessaly
