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

TEST_F(Watching, the_watch_is_off_at_first_and_after_a_restart) {
  EXPECT_FALSE(session().watch().watching());
  EXPECT_EQ(session().watch().watchPath(), "");
  EXPECT_TRUE(session().watch().watchGrew().empty());
  watch({});
  restart();
  EXPECT_FALSE(session().watch().watching());
  EXPECT_EQ(session().watch().watchPath(), "");
}

TEST_F(Watching, the_watch_does_not_start_without_a_tree) {
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

TEST_F(Watching, the_watch_is_on_before_the_first_look) {
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

TEST_F(Watching, a_look_examines_the_folder_on_screen_on_the_utility_queue) {
  openMovies();
  session().startWatch();
  EXPECT_EQ(dispatch().waiting(Queue::utility), 1U);
  EXPECT_EQ(dispatch().waiting(Queue::userInitiated), 0U);
  EXPECT_EQ(session().watch().watchPath(), "/home/Movies");
  runLooks();
  EXPECT_EQ(looks_, Paths{"/home/Movies"});
}

TEST_F(Watching, a_toast_is_shown_once_the_baseline_is_taken) {
  session().startWatch();
  runLooks();
  EXPECT_EQ(toast(), "(none)");
  runMain();
  EXPECT_EQ(toast(), "Watching home");
  EXPECT_TRUE(session().watch().watchGrew().empty());
}

TEST_F(Watching, the_toast_names_the_node_as_it_was_when_the_watch_began) {
  session().startWatch();
  openMovies();
  dispatch().drainAll();
  EXPECT_EQ(toast(), "Watching home");
  EXPECT_EQ(session().watch().watchPath(), "/home");
}

TEST_F(Watching, the_next_look_comes_20_seconds_after_the_baseline) {
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

TEST_F(Watching, no_timer_runs_during_the_first_look) {
  session().startWatch();
  dispatch().advance(1h);
  runMain();
  EXPECT_EQ(dispatch().waiting(Queue::utility), 1U);
}

TEST_F(Watching, looks_repeat_every_20_seconds) {
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

TEST_F(Watching, no_look_starts_while_one_is_running) {
  watch({});
  for (int ticks = 1; ticks <= 3; ++ticks) {
    dispatch().advance(20s);
    runMain();
    session().watch().pollWatch();
    EXPECT_EQ(dispatch().waiting(Queue::utility), 1U);
  }
  // Nor while its result waits on the main queue.
  runLooks();
  session().watch().pollWatch();
  EXPECT_EQ(dispatch().waiting(Queue::utility), 0U);
  EXPECT_EQ(looks_.size(), 2U);
}

TEST_F(Watching, the_tick_after_a_slow_look_looks_again) {
  watch({});
  sizes_ = {{"/home/a", 1 * MiB}};
  // Three ticks during one look.
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

TEST_F(Watching, a_watch_of_another_folder_does_not_wait_for_the_previous_look) {
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
  // The result of the slow look must not allow a second look at a time.
  dispatch().advance(20s);
  runMain();
  slowLook();
  runMain();
  session().watch().pollWatch();
  EXPECT_EQ(dispatch().waiting(Queue::utility), 1U);
}

TEST_F(Watching, growth_by_a_mebibyte_is_reported) {
  watch({{"/home/Movies", 6 * MiB}});
  QSignalSpy grew(&session().watch(), &LiveWatch::watchGrewChanged);
  sizes_["/home/Movies"] = 7 * MiB;
  nextTick();
  EXPECT_EQ(session().watch().watchGrew(), (Deltas{{"Movies", "/home/Movies", 6 * MiB, 7 * MiB}}));
  EXPECT_EQ(grew.count(), 1);
  EXPECT_EQ(toast(), "Movies grew by 1.0 MB");
}

TEST_F(Watching, growth_by_a_byte_less_is_not_reported) {
  watch({{"/home/Movies", 6 * MiB}});
  QSignalSpy grew(&session().watch(), &LiveWatch::watchGrewChanged);
  sizes_["/home/Movies"] = 7 * MiB - 1;
  nextTick();
  EXPECT_TRUE(session().watch().watchGrew().empty());
  EXPECT_EQ(grew.count(), 0);
  EXPECT_EQ(toast(), "(none)");
}

TEST_F(Watching, the_toast_names_the_largest_growth) {
  watch({{"/home/a", 100 * MiB}, {"/home/b", 1 * MiB}, {"/home/c", 5}});
  sizes_ = {{"/home/a", 102 * MiB}, {"/home/b", 4 * MiB + 512 * KiB}, {"/home/c", 6}};
  nextTick();
  EXPECT_EQ(session().watch().watchGrew(), (Deltas{{"b", "/home/b", 1 * MiB, 4 * MiB + 512 * KiB},
                                                   {"a", "/home/a", 100 * MiB, 102 * MiB}}));
  EXPECT_EQ(toast(), "b grew by 3.5 MB");
}

TEST_F(Watching, a_new_child_has_grown_from_zero) {
  watch({});
  sizes_ = {{"/home/new", 3 * MiB}, {"/home/tiny", 1 * MiB - 1}};
  nextTick();
  EXPECT_EQ(session().watch().watchGrew(), (Deltas{{"new", "/home/new", 0, 3 * MiB}}));
  EXPECT_EQ(toast(), "new grew by 3.0 MB");
}

TEST_F(Watching, items_that_shrink_or_vanish_have_no_row) {
  watch({{"/home/a", 9 * MiB}, {"/home/b", 9 * MiB}});
  sizes_ = {{"/home/a", 1}};
  nextTick();
  EXPECT_TRUE(session().watch().watchGrew().empty());
  EXPECT_EQ(toast(), "(none)");
}

TEST_F(Watching, a_folder_that_becomes_unreadable_reports_no_growth) {
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

TEST_F(Watching, each_look_compares_with_the_baseline_and_reports_again) {
  watch({{"/home/a", 1 * MiB}});
  QSignalSpy grew(&session().watch(), &LiveWatch::watchGrewChanged);
  sizes_["/home/a"] = 3 * MiB;
  for (int tick = 0; tick < 3; ++tick) {
    nextTick();
    EXPECT_EQ(toast(), "a grew by 2.0 MB");
    EXPECT_EQ(session().watch().watchGrew(), (Deltas{{"a", "/home/a", 1 * MiB, 3 * MiB}}));
    // The toast is a new one, not the old one still shown.
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
  // Less than a mebibyte since the last look, but more since the baseline.
  sizes_["/home/a"] = 3 * MiB + 512 * KiB;
  nextTick();
  EXPECT_EQ(toast(), "a grew by 2.5 MB");
}

TEST_F(Watching, growth_that_is_undone_is_no_longer_listed) {
  watch({{"/home/a", 1 * MiB}});
  sizes_["/home/a"] = 3 * MiB;
  nextTick();
  ASSERT_EQ(session().watch().watchGrew().size(), 1U);
  sizes_["/home/a"] = 1 * MiB;
  nextTick();
  EXPECT_TRUE(session().watch().watchGrew().empty());
  EXPECT_EQ(toast(), "(none)");
}

TEST_F(Watching, names_of_rows_keep_bytes_that_are_not_utf8) {
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

TEST_F(Watching, rows_and_toast_are_set_before_either_is_announced) {
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

TEST_F(Watching, polling_looks_outside_of_the_schedule) {
  watch({});
  sizes_ = {{"/home/a", 1 * MiB}};
  session().watch().pollWatch();
  EXPECT_EQ(dispatch().waiting(Queue::utility), 1U);
  dispatch().drainAll();
  EXPECT_EQ(toast(), "a grew by 1.0 MB");
}

TEST_F(Watching, polling_does_nothing_while_off_or_without_a_baseline) {
  session().watch().pollWatch();
  EXPECT_EQ(dispatch().waiting(Queue::utility), 0U);
  session().startWatch();
  session().watch().pollWatch();
  EXPECT_EQ(dispatch().waiting(Queue::utility), 1U);
  runLooks();
  session().watch().pollWatch();
  EXPECT_EQ(dispatch().waiting(Queue::utility), 0U);
}

TEST_F(Watching, a_new_watch_does_not_use_the_previous_baseline) {
  watch({});
  session().watch().stopWatch();
  session().startWatch();
  session().watch().pollWatch();
  EXPECT_EQ(dispatch().waiting(Queue::utility), 1U);
}

TEST_F(Watching, stopping_clears_everything_reported) {
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

TEST_F(Watching, stopping_is_allowed_while_off) {
  QSignalSpy watching(&session().watch(), &LiveWatch::watchingChanged);
  session().watch().stopWatch();
  session().watch().stopWatch();
  EXPECT_FALSE(session().watch().watching());
  EXPECT_EQ(watching.count(), 0);
}

TEST_F(Watching, a_stopped_watch_never_looks_again) {
  watch({});
  session().watch().stopWatch();
  dispatch().advance(1h);
  dispatch().drainAll();
  EXPECT_EQ(looks_.size(), 1U);
  EXPECT_FALSE(dispatch().advanceToNextDue());
}

TEST_F(Watching, stopping_during_the_first_look_leaves_no_timer_or_baseline) {
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

TEST_F(Watching, a_first_look_that_ends_after_the_stop_is_dropped) {
  session().startWatch();
  runLooks();
  session().watch().stopWatch();
  runMain();
  EXPECT_EQ(toast(), "(none)");
  EXPECT_FALSE(dispatch().advanceToNextDue());
}

TEST_F(Watching, a_look_running_at_the_stop_is_dropped) {
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

TEST_F(Watching, the_watch_moves_to_another_folder) {
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

TEST_F(Watching, the_first_look_at_the_previous_folder_is_dropped) {
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

TEST_F(Watching, a_look_at_the_previous_folder_is_dropped) {
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

TEST_F(Watching, watching_the_same_folder_again_takes_a_new_baseline_and_one_timer) {
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

TEST_F(Watching, watching_the_same_folder_again_uses_nothing_of_the_previous_watch) {
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

TEST_F(Watching, scans_and_navigation_do_not_move_the_watch) {
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

TEST_F(Watching, the_baseline_is_taken_even_during_a_scan) {
  session().startWatch();
  runLooks();
  session().rescan();
  runMain();
  EXPECT_EQ(toast(), "Watching home");
  EXPECT_EQ(session().run().status(), ScanStatus::scanning);
}

TEST_F(Watching, the_end_of_the_session_stops_a_look) {
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

TEST_F(Watching, a_baseline_that_arrives_after_the_session_is_harmless) {
  session().startWatch();
  runLooks();
  endSession();
  EXPECT_EQ(dispatch().drain(Queue::main), 1U);
  EXPECT_FALSE(dispatch().advanceToNextDue());
}

TEST_F(Watching, a_watch_does_not_keep_the_session_alive) {
  watch({});
  dispatch().advance(20s);
  endSession();
  EXPECT_FALSE(hasSession());
  dispatch().drainAll();
  dispatch().advance(1h);
  dispatch().drainAll();
  EXPECT_EQ(looks_.size(), 1U);
}

TEST_F(Watching, a_look_that_arrives_after_the_session_is_harmless) {
  watch({});
  sizes_ = {{"/home/a", 1 * MiB}};
  dispatch().advance(20s);
  runMain();
  runLooks();
  endSession();
  EXPECT_EQ(dispatch().drain(Queue::main), 1U);
}

TEST_F(Watching, a_receiver_of_the_watch_signal_may_end_the_session) {
  QObject::connect(&session().watch(), &LiveWatch::watchingChanged, [this] { endSession(); });
  session().startWatch();
  EXPECT_FALSE(hasSession());
  dispatch().drainAll();
}

TEST_F(Watching, a_receiver_of_growth_may_stop_the_watch) {
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
