#include "platform/PatientPass.h"

#include <atomic>
#include <gmock/gmock.h>
#include <gtest/gtest.h>
#include <semaphore>

#include "support/Eventually.h"
#include "support/OwnProcess.h"
#include "support/RefusedThreads.h"

namespace tessaly {
namespace {

using testing::ElementsAre;
using testing::IsEmpty;
using testing::Optional;

using Pass = PatientPass<int>;
using Answers = std::vector<std::optional<int>>;

// Never cancelled.
bool goOn() {
  return false;
}

Pass::Settings squares() {
  return {.ask = [](std::size_t item, const auto&) { return static_cast<int>(item * item); },
          .hangsWith = [](std::size_t, std::size_t) { return true; }};
}

// Items that hang until the test ends, and a clock that advances by an hour with each look while
// one does, and else stands still.
class Hanging {
 public:
  ~Hanging() {
    for (int i = 0; i < hung_->count; ++i) hung_->release.release();
  }

  // Blocks.
  std::function<void()> hang() {
    return [hung = hung_] {
      hung->isHanging = true;
      ++hung->count;
      hung->release.acquire();
    };
  }

  std::function<Pass::Clock::time_point()> clock() {
    return [hung = hung_] {
      if (hung->isHanging) ++hung->hours;
      return Pass::Clock::time_point(std::chrono::hours(hung->hours));
    };
  }

  // The next round may begin.
  void forget() { hung_->isHanging = false; }

  int count() const { return hung_->count; }

 private:
  struct Hung {
    std::counting_semaphore<> release{0};
    std::atomic<int> count = 0;
    std::atomic<bool> isHanging = false;
    std::atomic<int> hours = 0;
  };
  std::shared_ptr<Hung> hung_ = std::make_shared<Hung>();
};

TEST(PatientPass, each_item_gets_its_answer) {
  EXPECT_THAT(Pass(squares()).run(4, goOn), ElementsAre(0, 1, 4, 9));
}

TEST(PatientPass, without_items_nothing_is_asked) {
  EXPECT_THAT(Pass(squares()).run(0, goOn), IsEmpty());
}

TEST(PatientPass, an_item_may_have_no_answer) {
  Pass::Settings settings = squares();
  settings.ask = [](std::size_t item, const auto&) {
    return item == 1 ? std::nullopt : std::optional(7);
  };
  EXPECT_THAT(Pass(settings).run(3, goOn), ElementsAre(Optional(7), std::nullopt, Optional(7)));
}

TEST(PatientPass, an_item_that_hangs_stops_only_those_that_would_hang_with_it) {
  Hanging hanging;
  Pass::Settings settings = squares();
  settings.ask = [hang = hanging.hang()](std::size_t item, const auto&) {
    if (item % 2 == 1) hang();
    return static_cast<int>(item * item);
  };
  settings.hangsWith = [&hanging](std::size_t hung, std::size_t item) {
    hanging.forget();
    return hung % 2 == item % 2;
  };
  settings.now = hanging.clock();
  EXPECT_THAT(Pass(settings).run(6, goOn), ElementsAre(Optional(0), std::nullopt, Optional(4),
                                                       std::nullopt, Optional(16), std::nullopt));
  EXPECT_EQ(hanging.count(), 1);
}

TEST(PatientPass, two_items_that_hang_for_different_reasons_cost_two_waits) {
  Hanging hanging;
  Pass::Settings settings = squares();
  settings.ask = [hang = hanging.hang()](std::size_t item, const auto&) {
    if (item == 1 || item == 3) hang();
    return static_cast<int>(item * item);
  };
  settings.hangsWith = [&hanging](std::size_t, std::size_t) {
    hanging.forget();
    return false;
  };
  settings.now = hanging.clock();
  EXPECT_THAT(Pass(settings).run(5, goOn),
              ElementsAre(Optional(0), std::nullopt, Optional(4), std::nullopt, Optional(16)));
  EXPECT_EQ(hanging.count(), 2);
}

TEST(PatientPass, a_long_answer_that_shows_signs_of_life_does_not_hang) {
  std::atomic<int> looks = 0;
  Pass::Settings settings = squares();
  settings.patience = std::chrono::hours(3);
  // Each look is an hour later, and no two looks come without a sign of life between them.
  settings.now = [&looks] { return Pass::Clock::time_point(std::chrono::hours(++looks)); };
  settings.ask = [&looks](std::size_t item, const auto& isGivenUp) -> std::optional<int> {
    for (int rounds = 0; rounds < 10 && !isGivenUp(); ++rounds) {
      const int before = looks;
      while (looks == before && !isGivenUp()) std::this_thread::yield();
    }
    return isGivenUp() ? std::nullopt : std::optional(static_cast<int>(item));
  };
  EXPECT_THAT(Pass(settings).run(2, goOn), ElementsAre(0, 1));
}

TEST(PatientPass, a_cancelled_pass_ends_although_an_item_hangs) {
  Hanging hanging;
  Pass::Settings settings = squares();
  settings.ask = [hang = hanging.hang()](std::size_t item, const auto&) {
    if (item == 2) hang();
    return static_cast<int>(item * item);
  };
  EXPECT_THAT(Pass(settings).run(4, [&] { return hanging.count() > 0; }),
              ElementsAre(Optional(0), Optional(1), std::nullopt, std::nullopt));
}

TEST(PatientPass, a_cancelled_pass_gives_up_the_item_in_hand) {
  const auto hasEnded = std::make_shared<std::atomic<bool>>(false);
  const auto hasBegun = std::make_shared<std::atomic<bool>>(false);
  Pass::Settings settings = squares();
  settings.ask = [=](std::size_t, const auto& isGivenUp) -> std::optional<int> {
    *hasBegun = true;
    while (!isGivenUp()) std::this_thread::yield();
    *hasEnded = true;
    return 1;
  };
  EXPECT_THAT(Pass(settings).run(2, [&] { return hasBegun->load(); }),
              ElementsAre(std::nullopt, std::nullopt));
  EXPECT_TRUE(eventually([&] { return hasEnded->load(); }, "the end of the item in hand"));
}

TEST(PatientPass, a_pass_that_is_cancelled_before_it_begins_asks_nothing) {
  Pass::Settings settings = squares();
  settings.ask = [](std::size_t, const auto&) -> std::optional<int> {
    ADD_FAILURE() << "asked";
    return 1;
  };
  EXPECT_THAT(Pass(settings).run(1, [] { return true; }), ElementsAre(std::nullopt));
}

TEST(PatientPass, without_a_thread_the_caller_asks) {
  RefusedThreads system;
  Pass::Settings settings = squares();
  settings.startThread = system.startThread();
  const std::thread::id caller = std::this_thread::get_id();
  settings.ask = [caller](std::size_t item, const auto&) {
    EXPECT_EQ(std::this_thread::get_id(), caller);
    return static_cast<int>(item);
  };
  EXPECT_THAT(Pass(settings).run(3, goOn), ElementsAre(0, 1, 2));
  EXPECT_EQ(system.refused(), 1);
}

TEST(PatientPass, without_a_thread_the_pass_can_be_cancelled_too) {
  RefusedThreads system;
  Pass::Settings settings = squares();
  settings.startThread = system.startThread();
  int asked = 0;
  settings.ask = [&asked](std::size_t, const auto&) { return ++asked; };
  EXPECT_THAT(Pass(settings).run(4, [&] { return asked == 2; }),
              ElementsAre(Optional(1), Optional(2), std::nullopt, std::nullopt));
}

TEST(ThreadsOfAPatientPass, none_is_left) {
  const OwnProcess before = OwnProcess::now();
  for (int i = 0; i < 20; ++i) Pass(squares()).run(100, goOn);
  EXPECT_EQ(OwnProcess::now(), before);
}

}  // namespace
}  // namespace tessaly
