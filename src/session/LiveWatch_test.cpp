#include <chrono>
#include <cstdint>
#include <functional>
#include <gtest/gtest.h>
#include <optional>
#include <string>
#include <utility>
#include <vector>

#include <QSignalSpy>

#include "session/WatchingFixture_test.h"

namespace tessaly {
namespace {

using namespace std::chrono_literals;
using Deltas = std::vector<ScanDelta>;
using Paths = std::vector<std::string>;

TEST_F(Watching, is_off_at_first_and_after_a_restart) {
  EXPECT_FALSE(session().watch().watching());
  EXPECT_EQ(session().watch().watchPath(), "");
  EXPECT_TRUE(session().watch().watchGrew().empty());
  watch({});
  restart();
  EXPECT_FALSE(session().watch().watching());
  EXPECT_EQ(session().watch().watchPath(), "");
}

TEST_F(Watching, does_not_start_without_a_tree) {
  TempTree nothing;
  ScanSession::Services services = machine_.services("/");
  services.supportDirectory = nothing.path();
  services.snapshot = snapshot_;
  ScanSession session(std::move(services));
  ASSERT_TRUE(session.navigation().stack().empty());
  QSignalSpy watching(&session.watch(), &LiveWatch::watchingChanged);
  session.startWatch();
  EXPECT_FALSE(session.watch().watching());
  EXPECT_EQ(session.watch().watchPath(), "");
  EXPECT_EQ(watching.count(), 0);
  EXPECT_EQ(dispatch().waiting(Queue::utility), 0U);
}

TEST_F(Watching, is_on_before_anything_is_looked_at) {
  QSignalSpy watching(&session().watch(), &LiveWatch::watchingChanged);
  QSignalSpy path(&session().watch(), &LiveWatch::watchPathChanged);
  session().startWatch();
  EXPECT_TRUE(session().watch().watching());
  EXPECT_EQ(session().watch().watchPath(), "/home");
  EXPECT_TRUE(session().watch().watchGrew().empty());
  EXPECT_EQ(watching.count(), 1);
  EXPECT_EQ(path.count(), 1);
  EXPECT_EQ(looks_, Paths{});
  EXPECT_EQ(toast(), "(none)");
}

TEST_F(Watching, looks_on_the_utility_queue_at_the_folder_on_screen) {
  openMovies();
  session().startWatch();
  EXPECT_EQ(dispatch().waiting(Queue::utility), 1U);
  EXPECT_EQ(dispatch().waiting(Queue::userInitiated), 0U);
  EXPECT_EQ(session().watch().watchPath(), "/home/Movies");
  runLooks();
  EXPECT_EQ(looks_, Paths{"/home/Movies"});
}

TEST_F(Watching, says_so_once_it_has_its_baseline) {
  session().startWatch();
  runLooks();
  EXPECT_EQ(toast(), "(none)");
  runMain();
  EXPECT_EQ(toast(), "Watching home");
  EXPECT_TRUE(session().watch().watchGrew().empty());
}

TEST_F(Watching, names_the_node_as_it_was_when_the_watch_began) {
  session().startWatch();
  openMovies();
  dispatch().drainAll();
  EXPECT_EQ(toast(), "Watching home");
  EXPECT_EQ(session().watch().watchPath(), "/home");
}

TEST_F(Watching, looks_again_20_seconds_after_the_baseline_and_not_before) {
  session().startWatch();
  runLooks();
  dispatch().advance(7s);
  runMain();
  ASSERT_EQ(toast(), "Watching home");
  dispatch().advance(20s - 1ns);
  runMain();
  EXPECT_EQ(dispatch().waiting(Queue::utility), 0U);
  dispatch().advance(1ns);
  EXPECT_EQ(dispatch().waiting(Queue::utility), 0U);
  runMain();
  EXPECT_EQ(dispatch().waiting(Queue::utility), 1U);
  runLooks();
  EXPECT_EQ(looks_, (Paths{"/home", "/home"}));
}

TEST_F(Watching, has_no_timer_while_the_first_look_goes_on) {
  session().startWatch();
  dispatch().advance(1h);
  runMain();
  EXPECT_EQ(dispatch().waiting(Queue::utility), 1U);
}

TEST_F(Watching, goes_on_every_20_seconds) {
  watch({});
  for (std::size_t ticks = 1; ticks <= 10; ++ticks) {
    dispatch().advance(20s - 1ns);
    dispatch().drainAll();
    EXPECT_EQ(looks_.size(), ticks);
    dispatch().advance(1ns);
    dispatch().drainAll();
    EXPECT_EQ(looks_.size(), ticks + 1);
  }
}

TEST_F(Watching, begins_no_look_while_one_is_under_way) {
  watch({});
  for (int ticks = 1; ticks <= 3; ++ticks) {
    dispatch().advance(20s);
    runMain();
    session().watch().pollWatch();
    EXPECT_EQ(dispatch().waiting(Queue::utility), 1U);
  }
  // Nor while what it has found is on its way home.
  runLooks();
  session().watch().pollWatch();
  EXPECT_EQ(dispatch().waiting(Queue::utility), 0U);
  EXPECT_EQ(looks_.size(), 2U);
}

TEST_F(Watching, looks_again_at_the_next_tick_after_a_slow_look) {
  watch({});
  sizes_ = {{"/home/a", 1 * MiB}};
  // Three ticks fit into it.
  duringLook_ = [this](const FolderWatch::IsCancelled&) {
    for (int tick = 0; tick < 3; ++tick) nextTick();
    EXPECT_EQ(looks_.size(), 2U);
  };
  nextTick();
  EXPECT_EQ(toast(), "a grew by 1.0 MB");
  sizes_ = {{"/home/a", 2 * MiB}};
  nextTick();
  EXPECT_EQ(looks_.size(), 3U);
  EXPECT_EQ(toast(), "a grew by 2.0 MB");
}

TEST_F(Watching, of_another_folder_waits_for_no_look_at_the_one_before) {
  watch({});
  dispatch().advance(20s);
  runMain();
  const auto slowLook = dispatch().take(Queue::utility);
  openMovies();
  session().startWatch();
  dispatch().drainAll();
  EXPECT_EQ(toast(), "Watching Movies");
  nextTick();
  EXPECT_EQ(looks_, (Paths{"/home", "/home/Movies", "/home/Movies"}));
  // What the slow one brings home makes no room for a second look.
  dispatch().advance(20s);
  runMain();
  slowLook();
  runMain();
  session().watch().pollWatch();
  EXPECT_EQ(dispatch().waiting(Queue::utility), 1U);
}

TEST_F(Watching, tells_of_a_mebibyte) {
  watch({{"/home/Movies", 6 * MiB}});
  QSignalSpy grew(&session().watch(), &LiveWatch::watchGrewChanged);
  sizes_["/home/Movies"] = 7 * MiB;
  nextTick();
  EXPECT_EQ(session().watch().watchGrew(), (Deltas{{"Movies", "/home/Movies", 6 * MiB, 7 * MiB}}));
  EXPECT_EQ(grew.count(), 1);
  EXPECT_EQ(toast(), "Movies grew by 1.0 MB");
}

TEST_F(Watching, does_not_tell_of_a_byte_less) {
  watch({{"/home/Movies", 6 * MiB}});
  QSignalSpy grew(&session().watch(), &LiveWatch::watchGrewChanged);
  sizes_["/home/Movies"] = 7 * MiB - 1;
  nextTick();
  EXPECT_TRUE(session().watch().watchGrew().empty());
  EXPECT_EQ(grew.count(), 0);
  EXPECT_EQ(toast(), "(none)");
}

TEST_F(Watching, tells_of_the_largest_growth) {
  watch({{"/home/a", 100 * MiB}, {"/home/b", 1 * MiB}, {"/home/c", 5}});
  sizes_ = {{"/home/a", 102 * MiB}, {"/home/b", 4 * MiB + 512 * KiB}, {"/home/c", 6}};
  nextTick();
  EXPECT_EQ(session().watch().watchGrew(), (Deltas{{"b", "/home/b", 1 * MiB, 4 * MiB + 512 * KiB},
                                                   {"a", "/home/a", 100 * MiB, 102 * MiB}}));
  EXPECT_EQ(toast(), "b grew by 3.5 MB");
}

TEST_F(Watching, counts_a_new_child_from_nothing) {
  watch({});
  sizes_ = {{"/home/new", 3 * MiB}, {"/home/tiny", 1 * MiB - 1}};
  nextTick();
  EXPECT_EQ(session().watch().watchGrew(), (Deltas{{"new", "/home/new", 0, 3 * MiB}}));
  EXPECT_EQ(toast(), "new grew by 3.0 MB");
}

TEST_F(Watching, has_no_row_for_what_shrinks_or_goes) {
  watch({{"/home/a", 9 * MiB}, {"/home/b", 9 * MiB}});
  sizes_ = {{"/home/a", 1}};
  nextTick();
  EXPECT_TRUE(session().watch().watchGrew().empty());
  EXPECT_EQ(toast(), "(none)");
}

TEST_F(Watching, tells_nothing_of_a_folder_that_can_no_longer_be_read) {
  watch({{"/home/a", 9 * MiB}});
  sizes_ = {};
  nextTick();
  EXPECT_TRUE(session().watch().watching());
  EXPECT_EQ(toast(), "(none)");
  EXPECT_EQ(session().run().errorMessage(), "");
  sizes_ = {{"/home/a", 10 * MiB}};
  nextTick();
  EXPECT_EQ(toast(), "a grew by 1.0 MB");
}

TEST_F(Watching, compares_with_the_beginning_and_says_the_same_again_at_each_look) {
  watch({{"/home/a", 1 * MiB}});
  QSignalSpy grew(&session().watch(), &LiveWatch::watchGrewChanged);
  sizes_["/home/a"] = 3 * MiB;
  for (int tick = 0; tick < 3; ++tick) {
    nextTick();
    EXPECT_EQ(toast(), "a grew by 2.0 MB");
    EXPECT_EQ(session().watch().watchGrew(), (Deltas{{"a", "/home/a", 1 * MiB, 3 * MiB}}));
    // Shown anew, not left standing.
    dispatch().advance(2800ms);
    runMain();
    EXPECT_EQ(toast(), "(none)");
    dispatch().advance(17200ms);
    runMain();
    dispatch().drain(Queue::utility);
    EXPECT_EQ(toast(), "(none)");
    runMain();
    EXPECT_EQ(toast(), "a grew by 2.0 MB");
  }
  EXPECT_EQ(grew.count(), 1);
  // Less than a mebibyte since the look before, and still told, since the sum is.
  sizes_["/home/a"] = 3 * MiB + 512 * KiB;
  nextTick();
  EXPECT_EQ(toast(), "a grew by 2.5 MB");
}

TEST_F(Watching, forgets_growth_that_is_gone) {
  watch({{"/home/a", 1 * MiB}});
  sizes_["/home/a"] = 3 * MiB;
  nextTick();
  ASSERT_EQ(session().watch().watchGrew().size(), 1U);
  sizes_["/home/a"] = 1 * MiB;
  nextTick();
  EXPECT_TRUE(session().watch().watchGrew().empty());
  EXPECT_EQ(toast(), "(none)");
}

TEST_F(Watching, keeps_the_bytes_of_names_that_are_not_utf8) {
  scanTo(folder("/caf\xe9", 9, {file("/caf\xe9/\xff", 9)}));
  session().startWatch();
  dispatch().drainAll();
  EXPECT_EQ(toast(), "Watching caf\xe9");
  EXPECT_EQ(looks_, Paths{"/caf\xe9"});
  sizes_ = {{"/caf\xe9/\xff", 1 * MiB}};
  nextTick();
  EXPECT_EQ(session().watch().watchGrew(), (Deltas{{"\xff", "/caf\xe9/\xff", 0, 1 * MiB}}));
  EXPECT_EQ(toast(), "\xff grew by 1.0 MB");
}

TEST_F(Watching, has_rows_and_toast_before_anybody_hears_of_either) {
  watch({});
  sizes_ = {{"/home/a", 1 * MiB}};
  std::vector<std::string> seen;
  const auto note = [&] {
    seen.push_back(std::to_string(session().watch().watchGrew().size()) + " " + toast());
  };
  dispatch().advance(19s);
  dispatch().drainAll();
  QObject::connect(&session().watch(), &LiveWatch::watchGrewChanged, note);
  QObject::connect(&session().messages(), &Messages::toastChanged, note);
  dispatch().advance(1s);
  dispatch().drainAll();
  EXPECT_EQ(seen, (std::vector<std::string>(2, "1 a grew by 1.0 MB")));
}

TEST_F(Watching, looks_out_of_turn_when_asked) {
  watch({});
  sizes_ = {{"/home/a", 1 * MiB}};
  session().watch().pollWatch();
  EXPECT_EQ(dispatch().waiting(Queue::utility), 1U);
  dispatch().drainAll();
  EXPECT_EQ(toast(), "a grew by 1.0 MB");
}

TEST_F(Watching, has_nothing_to_look_for_while_it_is_off_or_has_no_baseline) {
  session().watch().pollWatch();
  EXPECT_EQ(dispatch().waiting(Queue::utility), 0U);
  session().startWatch();
  session().watch().pollWatch();
  EXPECT_EQ(dispatch().waiting(Queue::utility), 1U);
  runLooks();
  session().watch().pollWatch();
  EXPECT_EQ(dispatch().waiting(Queue::utility), 0U);
}

TEST_F(Watching, has_no_baseline_of_the_watch_before) {
  watch({});
  session().watch().stopWatch();
  session().startWatch();
  session().watch().pollWatch();
  EXPECT_EQ(dispatch().waiting(Queue::utility), 1U);
}

TEST_F(Watching, clears_all_it_has_told_when_it_stops) {
  watch({});
  sizes_ = {{"/home/a", 1 * MiB}};
  nextTick();
  QSignalSpy watching(&session().watch(), &LiveWatch::watchingChanged);
  QSignalSpy path(&session().watch(), &LiveWatch::watchPathChanged);
  QSignalSpy grew(&session().watch(), &LiveWatch::watchGrewChanged);
  session().watch().stopWatch();
  EXPECT_FALSE(session().watch().watching());
  EXPECT_EQ(session().watch().watchPath(), "");
  EXPECT_TRUE(session().watch().watchGrew().empty());
  EXPECT_EQ(watching.count(), 1);
  EXPECT_EQ(path.count(), 1);
  EXPECT_EQ(grew.count(), 1);
}

TEST_F(Watching, may_be_stopped_when_it_is_off) {
  QSignalSpy watching(&session().watch(), &LiveWatch::watchingChanged);
  session().watch().stopWatch();
  session().watch().stopWatch();
  EXPECT_FALSE(session().watch().watching());
  EXPECT_EQ(watching.count(), 0);
}

TEST_F(Watching, never_looks_again_once_it_is_stopped) {
  watch({});
  session().watch().stopWatch();
  dispatch().advance(1h);
  dispatch().drainAll();
  EXPECT_EQ(looks_.size(), 1U);
  EXPECT_FALSE(dispatch().advanceToNextDue());
}

TEST_F(Watching, has_neither_timer_nor_baseline_when_stopped_during_the_first_look) {
  session().startWatch();
  duringLook_ = [this](const FolderWatch::IsCancelled& isCancelled) {
    EXPECT_FALSE(isCancelled());
    session().watch().stopWatch();
    EXPECT_TRUE(isCancelled());
  };
  dispatch().drainAll();
  EXPECT_EQ(looks_.size(), 1U);
  EXPECT_FALSE(session().watch().watching());
  EXPECT_EQ(toast(), "(none)");
  EXPECT_FALSE(dispatch().advanceToNextDue());
  session().watch().pollWatch();
  EXPECT_EQ(dispatch().waiting(Queue::utility), 0U);
}

TEST_F(Watching, drops_the_first_look_that_comes_home_after_a_stop) {
  session().startWatch();
  runLooks();
  session().watch().stopWatch();
  runMain();
  EXPECT_EQ(toast(), "(none)");
  EXPECT_FALSE(dispatch().advanceToNextDue());
}

TEST_F(Watching, drops_a_look_that_is_under_way_when_it_stops) {
  watch({});
  sizes_ = {{"/home/a", 1 * MiB}};
  dispatch().advance(20s);
  runMain();
  runLooks();
  ASSERT_EQ(looks_.size(), 2U);
  session().watch().stopWatch();
  runMain();
  EXPECT_TRUE(session().watch().watchGrew().empty());
  EXPECT_EQ(toast(), "(none)");
}

TEST_F(Watching, moves_to_another_folder) {
  watch({{"/home/a", 1}});
  sizes_ = {{"/home/a", 3 * MiB}};
  nextTick();
  ASSERT_EQ(session().watch().watchGrew().size(), 1U);
  openMovies();
  sizes_ = {{"/home/Movies/film", 6 * MiB}};
  session().startWatch();
  EXPECT_TRUE(session().watch().watching());
  EXPECT_EQ(session().watch().watchPath(), "/home/Movies");
  EXPECT_TRUE(session().watch().watchGrew().empty());
  dispatch().drainAll();
  EXPECT_EQ(toast(), "Watching Movies");
  sizes_ = {{"/home/Movies/film", 8 * MiB}};
  looks_.clear();
  nextTick();
  EXPECT_EQ(looks_, Paths{"/home/Movies"});
  EXPECT_EQ(toast(), "film grew by 2.0 MB");
  nextTick();
  EXPECT_EQ(looks_.size(), 2U);
}

TEST_F(Watching, drops_the_first_look_at_a_folder_it_has_left) {
  session().startWatch();
  runLooks();
  openMovies();
  session().startWatch();
  runMain();
  EXPECT_EQ(toast(), "(none)");
  session().watch().pollWatch();
  EXPECT_EQ(dispatch().waiting(Queue::utility), 1U);
  dispatch().drainAll();
  EXPECT_EQ(toast(), "Watching Movies");
}

TEST_F(Watching, drops_a_look_at_a_folder_it_has_left) {
  watch({});
  sizes_ = {{"/home/a", 1 * MiB}};
  dispatch().advance(20s);
  runMain();
  runLooks();
  openMovies();
  session().startWatch();
  runMain();
  EXPECT_TRUE(session().watch().watchGrew().empty());
  EXPECT_NE(toast(), "a grew by 1.0 MB");
}

TEST_F(Watching, of_the_same_folder_again_takes_a_new_baseline_and_one_timer) {
  watch({{"/home/a", 1 * MiB}});
  dispatch().advance(10s);
  sizes_ = {{"/home/a", 3 * MiB}};
  QSignalSpy watching(&session().watch(), &LiveWatch::watchingChanged);
  session().startWatch();
  EXPECT_EQ(watching.count(), 0);
  dispatch().drainAll();
  EXPECT_EQ(toast(), "Watching home");
  looks_.clear();
  dispatch().advance(10s);
  dispatch().drainAll();
  EXPECT_EQ(looks_.size(), 0U);
  dispatch().advance(10s);
  dispatch().drainAll();
  EXPECT_EQ(looks_.size(), 1U);
  EXPECT_TRUE(session().watch().watchGrew().empty());
}

TEST_F(Watching, of_the_same_folder_again_takes_nothing_from_the_watch_before) {
  sizes_ = {{"/home/a", 1 * MiB}};
  session().startWatch();
  runLooks();
  session().watch().stopWatch();
  session().startWatch();
  runMain();
  EXPECT_EQ(toast(), "(none)");
  sizes_ = {{"/home/a", 5 * MiB}};
  dispatch().drainAll();
  EXPECT_EQ(toast(), "Watching home");
  looks_.clear();
  nextTick();
  EXPECT_EQ(looks_.size(), 1U);
  EXPECT_TRUE(session().watch().watchGrew().empty());

  sizes_ = {{"/home/a", 9 * MiB}};
  dispatch().advance(20s);
  runMain();
  runLooks();
  session().watch().stopWatch();
  session().startWatch();
  runMain();
  EXPECT_TRUE(session().watch().watchGrew().empty());
  EXPECT_NE(toast(), "a grew by 4.0 MB");
}

TEST_F(Watching, stays_where_it_is_through_scans_and_ways_through_the_tree) {
  watch({{"/home/a", 1 * MiB}});
  openMovies();
  session().navigation().back();
  openMovies();
  session().shown().setPane(MainPane::apps);
  session().shown().setVizMode(VizMode::largest);
  EXPECT_TRUE(session().watch().watching());
  EXPECT_EQ(session().watch().watchPath(), "/home");

  scanTo(folder("/other", 9, {file("/other/f", 9)}));
  session().rescan();
  session().run().cancel();
  dispatch().drainAll();
  EXPECT_TRUE(session().watch().watching());
  EXPECT_EQ(session().watch().watchPath(), "/home");
  sizes_ = {{"/home/a", 2 * MiB}};
  looks_.clear();
  nextTick();
  EXPECT_EQ(looks_, Paths{"/home"});
  EXPECT_EQ(session().watch().watchGrew(), (Deltas{{"a", "/home/a", 1 * MiB, 2 * MiB}}));
  EXPECT_EQ(toast(), "a grew by 1.0 MB");
}

TEST_F(Watching, takes_its_baseline_through_a_scan) {
  session().startWatch();
  runLooks();
  session().rescan();
  runMain();
  EXPECT_EQ(toast(), "Watching home");
  EXPECT_EQ(session().run().status(), ScanStatus::scanning);
}

TEST_F(Watching, stops_its_look_when_the_session_ends) {
  session().startWatch();
  bool hasLooked = false;
  duringLook_ = [&](const FolderWatch::IsCancelled& isCancelled) {
    hasLooked = true;
    EXPECT_FALSE(isCancelled());
    endSession();
    EXPECT_TRUE(isCancelled());
  };
  dispatch().drainAll();
  EXPECT_TRUE(hasLooked);
}

TEST_F(Watching, may_bring_home_its_baseline_when_the_session_is_gone) {
  session().startWatch();
  runLooks();
  endSession();
  EXPECT_EQ(dispatch().drain(Queue::main), 1U);
  EXPECT_FALSE(dispatch().advanceToNextDue());
}

TEST_F(Watching, does_not_keep_the_session) {
  watch({});
  dispatch().advance(20s);
  endSession();
  EXPECT_FALSE(hasSession());
  dispatch().drainAll();
  dispatch().advance(1h);
  dispatch().drainAll();
  EXPECT_EQ(looks_.size(), 1U);
}

TEST_F(Watching, may_bring_home_a_look_when_the_session_is_gone) {
  watch({});
  sizes_ = {{"/home/a", 1 * MiB}};
  dispatch().advance(20s);
  runMain();
  runLooks();
  endSession();
  EXPECT_EQ(dispatch().drain(Queue::main), 1U);
}

TEST_F(Watching, lets_whoever_hears_of_it_end_the_session) {
  QObject::connect(&session().watch(), &LiveWatch::watchingChanged, [this] { endSession(); });
  session().startWatch();
  EXPECT_FALSE(hasSession());
  dispatch().drainAll();
}

TEST_F(Watching, lets_whoever_hears_of_growth_stop_it) {
  watch({});
  QObject::connect(&session().watch(), &LiveWatch::watchGrewChanged,
                   [this] { session().watch().stopWatch(); });
  sizes_ = {{"/home/a", 1 * MiB}};
  nextTick();
  EXPECT_FALSE(session().watch().watching());
  EXPECT_TRUE(session().watch().watchGrew().empty());
  looks_.clear();
  dispatch().advance(1h);
  dispatch().drainAll();
  EXPECT_TRUE(looks_.empty());
}

}  // namespace
}  // namespace tessaly
