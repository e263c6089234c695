// A watched folder on screen grows.
#include <chrono>
#include <filesystem>
#include <string>

#include "journeys/Journey.h"

namespace tessaly {
namespace {

using namespace std::chrono_literals;

class WatchJourney : public Journey {
 protected:
  WatchJourney()
      : Journey(
            "Movies/\n"
            "  beach.mp4 6M\n"
            "Code/\n"
            "  main.cpp 3M\n"
            "notes.txt 2M\n") {
    session().scanHome();
    finishScan();
    session().startWatch();
    look();
  }

  // Runs the waiting look, and its result.
  void look() {
    dispatch_.drain(Dispatch::Queue::utility);
    comeHome();
  }

  void nextTick() {
    dispatch_.advance(20s);
    comeHome();
    look();
  }
};

TEST_F(WatchJourney, the_toast_names_the_watched_folder) {
  EXPECT_EQ(text("toast"),
            "Watching " + QString::fromStdString(std::filesystem::path(tree_.path()).filename()));
  dispatch_.advance(2800ms);
  comeHome();
  EXPECT_FALSE(shows("toast"));
}

TEST_F(WatchJourney, growth_by_a_mebibyte_is_reported) {
  tree_.plant("Code", "out.o 1M");
  ASSERT_EQ(tree_.allocated("Code/out.o"), 1048576);
  dispatch_.advance(19s);
  comeHome();
  look();
  EXPECT_FALSE(shows("toast"));
  dispatch_.advance(1s);
  comeHome();
  look();
  EXPECT_EQ(text("toast"), QStringLiteral("Code grew by 1.0 MB"));
}

TEST_F(WatchJourney, growth_by_one_block_less_is_not_reported) {
  tree_.plant("Code", "out.o 1044480");
  ASSERT_EQ(tree_.allocated("Code/out.o"), 1048576 - 4096);
  nextTick();
  EXPECT_FALSE(shows("toast"));
  tree_.plant("Code", "block.o 4K");
  nextTick();
  EXPECT_EQ(text("toast"), QStringLiteral("Code grew by 1.0 MB"));
}

TEST_F(WatchJourney, the_watch_stays_on_its_folder_when_the_screen_changes) {
  clickAt(tilePoint("Movies"));
  ASSERT_EQ(session().navigation().current()->path(), tree_.at("Movies"));
  tree_.plant("Movies", "inside.mp4 2M");
  tree_.plant("beside.mov 4M");
  nextTick();
  EXPECT_EQ(text("toast"), QStringLiteral("beside.mov grew by 4.0 MB"));
  session().watch().stopWatch();
  nextTick();
  EXPECT_FALSE(shows("toast"));
}

}  // namespace
}  // namespace tessaly
