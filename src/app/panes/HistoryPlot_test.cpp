#include "app/panes/HistoryPlot.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>
#include <string>
#include <vector>

#include "app/panes/HistoryTexts.h"

namespace tessaly {
namespace {

using testing::ElementsAre;
using testing::IsEmpty;

constexpr double start = 1700000000;
constexpr double hour = 3600;
constexpr double day = 86400;
const QRectF area(100, 10, 400, 80);

// A letter is ten points wide.
double widthOf(const QString& text) {
  return 10.0 * static_cast<double>(text.size());
}

std::vector<std::string> textsOf(const std::vector<HistoryPlot::Date>& dates) {
  std::vector<std::string> texts;
  for (const HistoryPlot::Date& date : dates) texts.push_back(date.text.toStdString());
  return texts;
}

TEST(HistoryPlot, scans_are_placed_by_their_time_and_size) {
  const HistoryPlot plot({{start, 0, 1}, {start + hour, 10, 1}, {start + 4 * hour, 5, 1}}, area);
  EXPECT_THAT(plot.places(), ElementsAre(QPointF(100, 90), QPointF(200, 10), QPointF(500, 50)));
  EXPECT_EQ(plot.line(), plot.places());
  ASSERT_EQ(plot.levels().size(), 3U);
  EXPECT_EQ(plot.levels()[0].y, 90);
  EXPECT_EQ(plot.levels()[0].text, "0 B");
  EXPECT_EQ(plot.levels()[2].y, 10);
  EXPECT_EQ(plot.levels()[2].text, "10 B");
}

TEST(HistoryPlot, a_single_scan_is_in_the_middle) {
  const HistoryPlot plot({{start, 4, 1}}, area);
  EXPECT_THAT(plot.places(), ElementsAre(QPointF(300, 50)));
  EXPECT_EQ(plot.nearest(-1000), 0);
  const auto dates = plot.dates(0, 600, widthOf);
  EXPECT_EQ(textsOf(dates), std::vector{HistoryTexts::time(start).toStdString()});
  EXPECT_EQ(dates[0].left, 300 - 160 / 2);
}

TEST(HistoryPlot, without_scans_there_is_nothing) {
  const HistoryPlot plot({}, area);
  EXPECT_THAT(plot.places(), IsEmpty());
  EXPECT_THAT(plot.levels(), IsEmpty());
  EXPECT_THAT(plot.dates(0, 600, widthOf), IsEmpty());
  EXPECT_EQ(plot.nearest(0), -1);
}

TEST(HistoryPlot, the_line_follows_the_time_even_if_the_clock_was_set_back) {
  const HistoryPlot plot({{start + hour, 10, 1}, {start, 0, 1}}, area);
  EXPECT_THAT(plot.places(), ElementsAre(QPointF(500, 10), QPointF(100, 90)));
  EXPECT_THAT(plot.line(), ElementsAre(QPointF(100, 90), QPointF(500, 10)));
}

TEST(HistoryPlot, scans_of_one_time_are_above_each_other) {
  const HistoryPlot plot({{start, 0, 1}, {start, 10, 1}}, area);
  EXPECT_THAT(plot.line(), ElementsAre(QPointF(300, 90), QPointF(300, 10)));
}

TEST(HistoryPlot, the_nearest_scan_is_found_by_its_time_alone) {
  const HistoryPlot plot({{start, 0, 1}, {start + hour, 10, 1}, {start + 4 * hour, 5, 1}}, area);
  EXPECT_EQ(plot.nearest(-1000), 0);
  EXPECT_EQ(plot.nearest(149), 0);
  EXPECT_EQ(plot.nearest(151), 1);
  EXPECT_EQ(plot.nearest(349), 1);
  EXPECT_EQ(plot.nearest(351), 2);
  EXPECT_EQ(plot.nearest(1000), 2);
}

TEST(HistoryPlot, dates_stand_below_their_scans_inside_the_bounds_and_never_overlap) {
  std::vector<HistoryPoint> points;
  for (int i = 0; i <= 40; ++i) points.push_back({start + i * day, i, 1});
  const HistoryPlot plot(points, area);
  const auto dates = plot.dates(90, 510, widthOf);
  EXPECT_EQ(textsOf(dates), (std::vector{HistoryTexts::date(start).toStdString(),
                                         HistoryTexts::date(start + 16 * day).toStdString(),
                                         HistoryTexts::date(start + 40 * day).toStdString()}));
  EXPECT_EQ(dates[0].left, 90);
  EXPECT_EQ(dates[1].left, 100 + 160 - 50);
  EXPECT_EQ(dates[2].left, 510 - 100);
}

TEST(HistoryPlot, scans_within_two_days_have_the_time_of_day) {
  const HistoryPlot near({{start, 0, 1}, {start + 2 * day - 1, 1, 1}}, area);
  EXPECT_EQ(textsOf(near.dates(0, 600, widthOf))[0], HistoryTexts::time(start).toStdString());
  const HistoryPlot far({{start, 0, 1}, {start + 2 * day, 1, 1}}, area);
  EXPECT_EQ(textsOf(far.dates(0, 600, widthOf))[0], HistoryTexts::date(start).toStdString());
}

TEST(HistoryPlot, a_date_is_not_repeated) {
  const HistoryPlot plot({{start, 0, 1}, {start + 1, 1, 1}, {start + 2, 1, 1}}, area);
  EXPECT_EQ(plot.dates(0, 600, widthOf).size(), 1U);
}

}  // namespace
}  // namespace tessaly
