// A session that watches a folder whose sizes come from a table.
#pragma once

#include <chrono>
#include <cstdint>
#include <functional>
#include <gtest/gtest.h>
#include <string>
#include <utility>
#include <vector>

#include "session/SessionFixture_test.h"

namespace tessaly {

inline constexpr std::int64_t KiB = 1024;
inline constexpr std::int64_t MiB = 1024 * KiB;

// /home with Movies/ and Code/ is on screen. A look reads the sizes of a folder from `sizes_`.
class Watching : public SessionFixture {
 protected:
  Watching() {
    snapshot_ = [this](const std::string& path, const FolderWatch::IsCancelled& isCancelled) {
      looks_.push_back(path);
      FolderSnapshot snapshot{path, sizes_};
      if (const auto during = std::exchange(duringLook_, {})) during(isCancelled);
      return snapshot;
    };
    restart();
    scanTo(home_);
    dispatch().advance(std::chrono::hours(1));
    dispatch().drainAll();
  }

  void runLooks() { dispatch().drain(Queue::utility); }

  // Starts a watch, takes its baseline, and lets its toast disappear.
  void watch(const PathSizes& baseline) {
    sizes_ = baseline;
    session().startWatch();
    dispatch().drainAll();
    ASSERT_TRUE(session().watch().watching());
    ASSERT_EQ(looks_.size(), 1U);
  }

  // Runs the next tick of the timer, its look, and the result of that.
  void nextTick() {
    dispatch().advance(std::chrono::seconds(20));
    dispatch().drainAll();
  }

  std::string toast() { return session().messages().toast().value_or("(none)"); }

  void openMovies() { session().open(session().navigation().current()->children().front()); }

  const DiskNode home_ =
      folder("/home", 9 * MiB,
             {folder("/home/Movies", 6 * MiB, {file("/home/Movies/film", 6 * MiB)}),
              folder("/home/Code", 3 * MiB)});
  PathSizes sizes_;
  std::vector<std::string> looks_;
  std::function<void(const FolderWatch::IsCancelled&)> duringLook_;  // in the next look only
};

}  // namespace tessaly
