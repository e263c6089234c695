#include "app/panes/HistoryChart.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>
#include <memory>

#include <QImage>
#include <QPainter>
#include <QSignalSpy>

#include "app/controls/QtColor.h"
#include "app/panes/HistoryTexts.h"
#include "look/MarrowTheme.h"
#include "session/SessionFixture_test.h"

namespace tessaly {
namespace {

class HistoryChartTest : public SessionFixture {
 protected:
  HistoryChartTest() {
    chart_.setSize({600, 160});
    chart_.setHistory(&state_);
  }

  void scanAt(std::int64_t seconds, std::int64_t size) {
    date_ = std::chrono::system_clock::from_time_t(seconds);
    scanTo(folder("/r", size, {file("/r/f", size)}));
  }
  QImage picture() {
    QImage image(600, 160, QImage::Format_ARGB32_Premultiplied);
    image.fill(Qt::black);
    QPainter painter(&image);
    chart_.paint(&painter);
    return image;
  }
  // How many pixels have nearly the colour of the line.
  static int pixelsOfLine(const QImage& image) {
    const QColor line = toQColor(MarrowTheme::accent);
    int count = 0;
    for (int y = 0; y < image.height(); ++y) {
      for (int x = 0; x < image.width(); ++x) {
        const QColor pixel = image.pixelColor(x, y);
        if (std::abs(pixel.red() - line.red()) < 12 &&
            std::abs(pixel.green() - line.green()) < 12 &&
            std::abs(pixel.blue() - line.blue()) < 12)
          ++count;
      }
    }
    return count;
  }

  static int paintedPixels(const QImage& image) {
    int count = 0;
    for (int y = 0; y < image.height(); ++y) {
      for (int x = 0; x < image.width(); ++x) count += image.pixelColor(x, y) != Qt::black ? 1 : 0;
    }
    return count;
  }

  HistoryListState state_{session()};
  HistoryChart chart_;
};

TEST_F(HistoryChartTest, nothing_is_drawn_without_scans) {
  QImage black = picture();
  black.fill(Qt::black);
  EXPECT_EQ(picture(), black);
  EXPECT_EQ(chart_.nearest(0), -1);
}

TEST_F(HistoryChartTest, a_single_scan_is_a_point_and_more_are_a_line) {
  scanAt(1700000000, 1024);
  const int point = pixelsOfLine(picture());
  EXPECT_GT(point, 10);
  EXPECT_LT(point, 60);
  scanAt(1700086400, 2048);
  EXPECT_GT(pixelsOfLine(picture()), 300);
  // The area below the line is filled.
  EXPECT_GT(paintedPixels(picture()), 20000);
}

TEST_F(HistoryChartTest, the_marked_scan_has_words_and_a_place) {
  scanAt(1700000000, 1024);
  scanAt(1700086400, 2048);
  QSignalSpy changes(&chart_, &HistoryChart::markChanged);
  const QImage before = picture();
  chart_.setMarked(1);
  EXPECT_EQ(changes.count(), 1);
  EXPECT_EQ(chart_.markText(), HistoryTexts::scan(session().result().history(), 1));
  EXPECT_EQ(chart_.nearest(chart_.markPlace().x()), 1);
  EXPECT_NE(picture(), before);
  chart_.setMarked(-1);
  EXPECT_EQ(chart_.markText(), "");
  EXPECT_EQ(picture(), before);
}

TEST_F(HistoryChartTest, the_place_of_the_mark_follows_the_size_and_the_scans) {
  scanAt(1700000000, 1024);
  chart_.setMarked(0);
  QSignalSpy changes(&chart_, &HistoryChart::markChanged);
  const double alone = chart_.markPlace().x();
  chart_.setSize({900, 160});
  EXPECT_EQ(chart_.markPlace().x(), alone + 150);
  EXPECT_EQ(changes.count(), 1);
  scanAt(1700086400, 2048);
  EXPECT_LT(chart_.markPlace().x(), alone);
  EXPECT_EQ(changes.count(), 2);
}

// When the history changes, the list of its rows changes before the chart does.
TEST_F(HistoryChartTest, the_words_of_the_mark_are_those_of_a_drawn_scan_at_any_time) {
  scanAt(1700000000, 1024);
  scanAt(1700086400, 2048);
  chart_.setMarked(1);
  const QString words = chart_.markText();
  QStringList seen;
  const auto look = [&] { seen << chart_.markText(); };
  QObject::connect(state_.rows(), &QAbstractItemModel::rowsRemoved, &chart_, look);
  QObject::connect(state_.rows(), &QAbstractItemModel::rowsInserted, &chart_, look);
  date_ = std::chrono::system_clock::from_time_t(1700172800);
  scanTo(folder("/other", 1, {file("/other/f", 1)}));
  ASSERT_FALSE(seen.isEmpty());
  for (const QString& each : seen) EXPECT_EQ(each, words);
  EXPECT_EQ(chart_.markText(), "");
}

TEST_F(HistoryChartTest, scans_that_are_close_together_have_no_points) {
  const auto hasPoint = [this](int index) {
    chart_.setMarked(index);
    const QPoint place = chart_.markPlace().toPoint();
    chart_.setMarked(-1);
    QImage above = picture().copy(place.x() - 1, place.y() - 2, 2, 1);
    return pixelsOfLine(above) == 2;
  };
  scanAt(1700000000, 1024);
  scanAt(1700086400, 1024);
  EXPECT_TRUE(hasPoint(0));
  for (int i = 2; i < 60; ++i)
    ScanStore::appendHistory({1700000000.0 + i * 86400, 1024, 1}, "/r", support_.path());
  scanAt(1700000000 + 60 * 86400, 1024);
  ASSERT_EQ(state_.rows()->rowCount(), 60);
  EXPECT_FALSE(hasPoint(40));
}

TEST_F(HistoryChartTest, a_mark_beyond_the_scans_is_none) {
  scanAt(1700000000, 1024);
  chart_.setMarked(1);
  EXPECT_EQ(chart_.marked(), -1);
  EXPECT_EQ(chart_.markText(), "");
  chart_.setMarked(-7);
  EXPECT_EQ(chart_.marked(), -1);
}

TEST_F(HistoryChartTest, a_chart_without_a_history_is_empty) {
  scanAt(1700000000, 1024);
  chart_.setHistory(nullptr);
  EXPECT_EQ(chart_.nearest(0), -1);
  chart_.setMarked(0);
  EXPECT_EQ(chart_.markText(), "");
  const QSignalSpy changes(&chart_, &HistoryChart::markChanged);
  scanAt(1700086400, 2048);
  EXPECT_EQ(changes.count(), 0);
}

TEST_F(HistoryChartTest, a_chart_of_no_size_draws_and_finds_scans) {
  scanAt(1700000000, 1024);
  scanAt(1700086400, 2048);
  chart_.setSize({0, 0});
  picture();
  EXPECT_EQ(chart_.nearest(0), 0);
}

}  // namespace
}  // namespace tessaly
