#include "app/model/ListSteps.h"

#include <algorithm>
#include <gmock/gmock.h>
#include <gtest/gtest.h>
#include <numeric>
#include <random>

namespace tessaly {
namespace {

using ListSteps::Step;
using testing::ElementsAre;
using testing::IsEmpty;
using Kind = Step::Kind;

// Applies `steps` to a list whose rows are their numbers. New rows are -1.
std::vector<int> apply(int count, const std::vector<Step>& steps) {
  std::vector<int> rows(static_cast<std::size_t>(count));
  std::iota(rows.begin(), rows.end(), 0);
  for (const Step& step : steps) {
    EXPECT_LE(0, step.first);
    EXPECT_LE(step.first, step.last);
    const auto first = rows.begin() + step.first;
    if (step.kind == Kind::insert) {
      EXPECT_LE(step.first, static_cast<int>(rows.size()));
      rows.insert(first,
                  static_cast<std::size_t>(step.last) - static_cast<std::size_t>(step.first) + 1,
                  -1);
      continue;
    }
    EXPECT_LT(step.last, static_cast<int>(rows.size()));
    const auto end = rows.begin() + step.last + 1;
    if (step.kind == Kind::remove) {
      rows.erase(first, end);
    } else if (step.to < step.first) {
      std::rotate(rows.begin() + step.to, first, end);
    } else {
      EXPECT_GT(step.to, step.last + 1) << "the step moves nothing";
      EXPECT_LE(step.to, static_cast<int>(rows.size()));
      std::rotate(first, end, rows.begin() + step.to);
    }
  }
  return rows;
}

int rowsMoved(const std::vector<Step>& steps) {
  int moved = 0;
  for (const Step& step : steps) {
    if (step.kind == Kind::move) moved += step.last - step.first + 1;
  }
  return moved;
}

// A slow reference implementation.
int longestIncrease(const std::vector<int>& values) {
  std::vector<int> lengths;
  for (std::size_t i = 0; i < values.size(); ++i) {
    int longest = 0;
    for (std::size_t j = 0; j < i; ++j) {
      if (values[j] < values[i]) longest = std::max(longest, lengths[j]);
    }
    lengths.push_back(longest + 1);
  }
  return lengths.empty() ? 0 : std::ranges::max(lengths);
}

TEST(ListSteps, an_unchanged_list_needs_no_steps) {
  EXPECT_THAT(ListSteps::between(3, {0, 1, 2}), IsEmpty());
  EXPECT_THAT(ListSteps::between(0, {}), IsEmpty());
}

TEST(ListSteps, neighbours_are_changed_in_one_step) {
  EXPECT_THAT(ListSteps::between(6, {0, 3}), ElementsAre(Step{Kind::remove, 4, 5, 0},  //
                                                         Step{Kind::remove, 1, 2, 0}));
  EXPECT_THAT(ListSteps::between(2, {-1, 0, -1, -1, 1}),
              ElementsAre(Step{Kind::insert, 0, 0, 0},  //
                          Step{Kind::insert, 2, 3, 0}));
  EXPECT_THAT(ListSteps::between(5, {3, 4, 0, 1, 2}), ElementsAre(Step{Kind::move, 3, 4, 0}));
}

TEST(ListSteps, one_row_moves_over_the_others_and_not_the_others) {
  EXPECT_THAT(ListSteps::between(4, {3, 0, 1, 2}), ElementsAre(Step{Kind::move, 3, 3, 0}));
  EXPECT_THAT(ListSteps::between(4, {1, 2, 3, 0}), ElementsAre(Step{Kind::move, 0, 0, 4}));
}

TEST(ListSteps, the_steps_give_the_wanted_list_with_the_fewest_moved_rows) {
  std::mt19937 random(1);
  for (int round = 0; round < 3000; ++round) {
    const int count = static_cast<int>(random() % 14);
    std::vector<int> wanted(static_cast<std::size_t>(count));
    std::iota(wanted.begin(), wanted.end(), 0);
    if (round % 3 == 0) {
      std::shuffle(wanted.begin(), wanted.end(), random);
    } else if (count > 1) {
      std::rotate(wanted.begin(),
                  wanted.begin() + static_cast<int>(random() % static_cast<unsigned>(count - 1)),
                  wanted.end() - static_cast<int>(random() % 2));
    }
    const std::size_t gone = random() % (wanted.size() + 1);
    for (std::size_t i = 0; i < gone && round % 2 == 0; ++i)
      wanted.erase(wanted.begin() + static_cast<int>(random() % wanted.size()));
    const std::vector<int> kept = wanted;
    for (unsigned i = random() % 5; i > 0; --i)
      wanted.insert(wanted.begin() + static_cast<int>(random() % (wanted.size() + 1)), -1);

    const std::vector<Step> steps = ListSteps::between(count, wanted);
    EXPECT_EQ(apply(count, steps), wanted);
    EXPECT_EQ(rowsMoved(steps), static_cast<int>(kept.size()) - longestIncrease(kept));
    EXPECT_TRUE(std::ranges::is_sorted(steps, {}, &Step::kind));
  }
}

TEST(ListSteps, a_long_list_is_reversed) {
  std::vector<int> wanted(2000);
  std::iota(wanted.rbegin(), wanted.rend(), 0);
  const std::vector<Step> steps = ListSteps::between(2000, wanted);
  EXPECT_EQ(steps.size(), 1999U);
  EXPECT_EQ(apply(2000, steps), wanted);
}

}  // namespace
}  // namespace tessaly
