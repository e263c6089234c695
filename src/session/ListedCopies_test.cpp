// Queued copies that have changed since they were listed, and the ones that only moved.

#include "session/ListedCopies.h"

#include <cstdio>
#include <fcntl.h>
#include <fstream>
#include <gtest/gtest.h>
#include <string>
#include <sys/stat.h>
#include <unistd.h>
#include <vector>

#include "support/TempTree.h"

namespace tessaly {
namespace {

using Kind = SystemError::Kind;

class ListedCopiesTest : public testing::Test {
 protected:
  std::string at(const std::string& name) const { return disk_.at(name); }

  // A new list of these files as they are now.
  void list(const std::vector<std::string>& names) {
    ListedCopies::Identities listed;
    for (const std::string& name : names) listed[at(name)] = FileIdentity::of(at(name)).value();
    copies_.take(listed);
  }

  void queue(const std::vector<std::string>& names) {
    std::vector<DiskNode> nodes;
    for (const std::string& name : names)
      nodes.push_back(DiskNode({.name = name, .path = at(name), .size = 4096}));
    copies_.follow(nodes);
  }

  // "may move", or the kind of the failure.
  std::string check(const std::string& name) {
    const Outcome outcome = copies_.check(at(name));
    if (outcome) return "may move";
    EXPECT_EQ(outcome.error().path, at(name));
    if (outcome.error().kind == Kind::changed) return "changed";
    return outcome.error().kind == Kind::stale ? "stale" : "other";
  }

  // Waits until the system's clock for files has moved on, and does it: other attributes, and no
  // other time of modification.
  void touch(const std::string& name) const {
    const FileIdentity before = FileIdentity::of(at(name)).value();
    for (mode_t mode = 0600; FileIdentity::of(at(name)).value().changed == before.changed;
         mode ^= 0044)
      ASSERT_EQ(::chmod(at(name).c_str(), mode), 0);
  }

  // Renames like a move to the Trash, until the file has another time of change.
  void rename(const std::string& from, const std::string& to) const {
    const FileIdentity before = FileIdentity::of(at(from)).value();
    ASSERT_EQ(::rename(at(from).c_str(), at(to).c_str()), 0);
    while (FileIdentity::of(at(to)).value().changed == before.changed) touch(to);
  }

  TempTree disk_{"a 4K\nb 4K\nc = a\ntrash/\n"};
  ListedCopies copies_;
};

TEST_F(ListedCopiesTest, an_unchanged_copy_may_move) {
  list({"a", "b"});
  queue({"a"});
  EXPECT_EQ(check("a"), "may move");
}

TEST_F(ListedCopiesTest, a_copy_with_other_content_may_not_move) {
  list({"a", "b"});
  queue({"a", "b"});
  std::ofstream(at("a")) << "other";
  EXPECT_EQ(check("a"), "changed");
  EXPECT_EQ(check("b"), "may move");
}

TEST_F(ListedCopiesTest, a_copy_whose_time_was_set_back_may_not_move) {
  list({"a", "b"});
  queue({"a"});
  touch("a");
  EXPECT_EQ(check("a"), "changed");
}

TEST_F(ListedCopiesTest, another_file_at_the_path_may_not_move) {
  list({"a", "b"});
  queue({"b"});
  ASSERT_EQ(::rename(at("b").c_str(), at("kept").c_str()), 0);
  disk_.plant("b 4K\n");
  EXPECT_EQ(check("b"), "stale");
  ASSERT_EQ(::unlink(at("b").c_str()), 0);
  ASSERT_EQ(::symlink("kept", at("b").c_str()), 0);
  EXPECT_EQ(check("b"), "stale");
}

TEST_F(ListedCopiesTest, a_copy_that_is_gone_is_left_to_the_move) {
  list({"a", "b"});
  queue({"a"});
  ASSERT_EQ(::unlink(at("a").c_str()), 0);
  EXPECT_EQ(check("a"), "may move");
}

TEST_F(ListedCopiesTest, an_item_that_was_in_no_list_may_move_whatever_it_is_now) {
  list({"a"});
  queue({"b"});
  list({"a", "b"});
  touch("b");
  EXPECT_EQ(check("b"), "may move");
  EXPECT_EQ(check("never queued"), "may move");
}

TEST_F(ListedCopiesTest, a_queued_copy_keeps_its_guard_when_a_later_list_lacks_it) {
  list({"a", "b"});
  queue({"a"});
  touch("a");
  list({});
  queue({"a", "b"});
  EXPECT_EQ(check("a"), "changed");
}

TEST_F(ListedCopiesTest, a_queued_copy_that_is_listed_again_may_move_as_it_is_then) {
  list({"a", "b"});
  queue({"a"});
  touch("a");
  list({"a", "b"});
  EXPECT_EQ(check("a"), "may move");
  touch("a");
  EXPECT_EQ(check("a"), "changed");
}

TEST_F(ListedCopiesTest, a_copy_that_left_the_queue_loses_the_guard_of_an_old_list) {
  list({"a", "b"});
  queue({"a"});
  list({});
  queue({});
  touch("a");
  queue({"a"});
  EXPECT_EQ(check("a"), "may move");
}

TEST_F(ListedCopiesTest, a_copy_that_moved_and_came_back_may_move_again) {
  list({"a", "b"});
  queue({"b"});
  ASSERT_EQ(check("b"), "may move");
  rename("b", "trash/b");
  copies_.renew({at("b")});
  queue({});
  rename("trash/b", "b");
  copies_.renew({at("b")});
  queue({"b"});
  EXPECT_EQ(check("b"), "may move");
  touch("b");
  EXPECT_EQ(check("b"), "changed");
}

TEST_F(ListedCopiesTest, a_hard_link_to_a_file_that_moved_may_move) {
  list({"a", "c"});
  queue({"a", "c"});
  ASSERT_EQ(check("a"), "may move");
  rename("a", "trash/a");
  EXPECT_EQ(check("c"), "changed");
  copies_.renew({at("a")});
  EXPECT_EQ(check("c"), "may move");
}

TEST_F(ListedCopiesTest, a_listed_item_that_moved_by_another_way_may_move_again) {
  list({"a", "b"});
  copies_.note(at("b"));
  rename("b", "trash/b");
  copies_.renew({at("b")});
  rename("trash/b", "b");
  copies_.renew({at("b")});
  queue({"b"});
  EXPECT_EQ(check("b"), "may move");
}

TEST_F(ListedCopiesTest, a_change_is_not_forgotten_because_the_item_moved) {
  list({"a", "b"});
  touch("b");
  copies_.note(at("b"));
  copies_.renew({at("b")});
  queue({"b"});
  EXPECT_EQ(check("b"), "changed");
  copies_.renew({at("b")});
  EXPECT_EQ(check("b"), "changed");
}

}  // namespace
}  // namespace tessaly
