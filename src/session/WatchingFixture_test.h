// A session that watches a folder of which a table tells how large it is.
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

// On screen is /home with Movies/ and Code/. A look at a folder brings what `sizes_` has for it at
// that moment.
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

  // A watch that has its baseline, whose toast is gone.
  void watch(const PathSizes& baseline) {
    sizes_ = baseline;
    session().startWatch();
    dispatch().drainAll();
    ASSERT_TRUE(session().watch().watching());
    ASSERT_EQ(looks_.size(), 1U);
  }

  // The next tick of the timer, with the look it makes and what that brings home.
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
  std::function<void(const FolderWatch::IsCancelled&)> duringLook_;  // in the next look alone
};

}  // namespace tessaly
