// What a user can do while a batch moves to the Trash.
#include <gmock/gmock.h>
#include <string>

#include "journeys/Journey.h"
#include "support/WindowItems.h"

namespace tessaly {
namespace {

class BatchJourney : public Journey {
 protected:
  BatchJourney()
      : Journey(
            "Movies/\n"
            "  beach.mp4 6M\n"
            "Code/\n"
            "  main.cpp 3M\n"
            "notes.txt 2M\n") {
    for (const char* below : {"Movies", "Code", "notes.txt"}) machine_.trash.put(tree_.at(below));
    session().scanHome();
    finishScan();
  }

  DiskNode node(const std::string& below) {
    for (const DiskNode& child : session().navigation().current()->children()) {
      if (child.name() == below) return child;
    }
    return *session().navigation().current();
  }
  void startBatch() {
    const std::string path = tree_.at("Movies");
    session().moveBatch({{.location = {.original = path, .place = path}}}, {});
    settle(window());
  }
  void endBatch() {
    dispatch_.drainAll();
    settle(window());
  }
  void expectEnabled(const std::initializer_list<const char*>& names, bool enabled) {
    for (const char* name : names) {
      QQuickItem* const control = item(QString::fromUtf8(name));
      ASSERT_NE(control, nullptr);
      EXPECT_EQ(control->isEnabled(), enabled) << name;
    }
  }
};

TEST_F(BatchJourney, other_ways_to_the_trash_and_back_are_disabled_until_the_batch_has_ended) {
  session().selection().setFocused(node("Code"));
  session().trashFocused();
  dispatch_.drainAll();
  session().cleanupQueue().addToQueue(node("notes.txt"));
  session().selection().toggleSelect(node("notes.txt"));
  startBatch();
  expectEnabled({"zipSelection", "putBack", "zipThenTrash", "moveToTrash", "emptyTrash"}, false);
  expectEnabled({"queueSelection", "clearSelection", "clear"}, true);
  click("putBack");
  click("moveToTrash");
  EXPECT_FALSE(machine_.trash.has(tree_.at("Code")));
  EXPECT_TRUE(machine_.trash.has(tree_.at("notes.txt")));
  endBatch();
  EXPECT_FALSE(machine_.trash.has(tree_.at("Movies")));
  EXPECT_TRUE(machine_.trash.has(tree_.at("notes.txt")));
  expectEnabled({"zipSelection", "putBack", "zipThenTrash", "moveToTrash", "emptyTrash"}, true);
}

TEST_F(BatchJourney, the_menu_of_an_item_moves_nothing_while_a_batch_moves) {
  startBatch();
  session().shown().setMenuNode(node("notes.txt"));
  settle(window());
  expectEnabled({"menuTrash"}, false);
  expectEnabled({"menuQueue", "menuCancel"}, true);
  endBatch();
  expectEnabled({"menuTrash"}, true);
}

TEST_F(BatchJourney, a_warning_is_not_overruled_while_a_batch_moves) {
  startBatch();
  session().removal().setCriticalWarning(node("notes.txt"));
  settle(window());
  expectEnabled({"overrule"}, false);
  click("overrule");
  endBatch();
  EXPECT_TRUE(machine_.trash.has(tree_.at("notes.txt")));
  expectEnabled({"overrule"}, true);
}

TEST_F(BatchJourney, put_back_restores_what_the_batch_has_moved) {
  startBatch();
  endBatch();
  ASSERT_FALSE(machine_.trash.has(tree_.at("Movies")));
  click("putBack");
  EXPECT_TRUE(machine_.trash.has(tree_.at("Movies")));
}

}  // namespace
}  // namespace tessaly
