#include "app/panes/BreakdownSegments.h"

#include <gtest/gtest.h>

#include <QQuickWindow>

#include "support/WindowItems.h"

namespace tessaly {
namespace {

DiskNode file(const std::string& name, std::int64_t size, FileKind kind) {
  return DiskNode(
      {.name = name, .path = "/" + name, .size = size, .isDir = false, .kind = kind, .mtime = {}});
}

// A bar in a window, at a fractional pixel position.
class BreakdownSegmentsTest : public testing::Test {
 protected:
  BreakdownSegmentsTest() {
    window_.resize(400, 60);
    window_.setColor(Qt::black);
    outer_.setParentItem(window_.contentItem());
    inner_.setParentItem(&outer_);
    outer_.setPosition({20.4, 6.3});
    inner_.setSize({300.7, 10});
    segments_.setParentItem(&inner_);
    model_.setNode(
        NodeHandle(DiskNode({.name = "", .path = "/", .size = 1000, .isDir = true, .mtime = {}},
                            {file("a", 500, FileKind::video), file("b", 300, FileKind::image),
                             file("c", 199, FileKind::code), file("d", 1, FileKind::archive)})));
    segments_.setSlices(&model_);
    window_.show();
    settle(window_);
  }

  // The widths of the runs along the middle of the bar, negative for black, without those beyond
  // its ends.
  std::vector<int> widths() {
    settle(window_);
    const QImage picture = window_.grabWindow();
    const int y = static_cast<int>(segments_.mapToScene(QPointF(0, 5)).y());
    std::vector<int> runs;
    QRgb before = 0;
    for (int x = 0; x < picture.width(); ++x) {
      const QRgb pixel = picture.pixel(x, y);
      if (pixel != before) runs.push_back(0);
      runs.back() += pixel == qRgb(0, 0, 0) ? -1 : 1;
      before = pixel;
    }
    if (runs.size() < 2) return {};
    return {runs.begin() + 1, runs.end() - 1};
  }

  QQuickWindow window_;
  QQuickItem outer_;
  QQuickItem inner_;
  KindBreakdownModel model_;
  BreakdownSegments segments_;
};

TEST_F(BreakdownSegmentsTest, segments_have_whole_pixels_and_gaps_of_one_at_any_position) {
  // From 20.4 to 321.1: 301 pixels, 298 without the gaps.
  const std::vector<int> expected = {147, -1, 90, -1, 59, -1, 2};
  EXPECT_EQ(widths(), expected);
  for (const double x : {20.0, 19.7, 7.5, 33.2}) {
    outer_.setX(x);
    int total = 0;
    const std::vector<int> found = widths();
    ASSERT_EQ(found.size(), 7U) << x;
    for (std::size_t i = 0; i < 7; ++i) {
      total += std::abs(found[i]);
      if (i % 2 == 1) {
        EXPECT_EQ(found[i], -1) << x;
      }
    }
    EXPECT_NEAR(total, 300.7, 1) << x;
  }
}

TEST_F(BreakdownSegmentsTest, segments_follow_the_width_of_the_bar_and_the_folder) {
  inner_.setWidth(100);
  const std::vector<int> narrow = {47, -1, 29, -1, 19, -1, 2};
  EXPECT_EQ(widths(), narrow);
  model_.setNode(
      NodeHandle(DiskNode({.name = "", .path = "/", .size = 10, .isDir = true, .mtime = {}},
                          {file("a", 10, FileKind::code)})));
  EXPECT_EQ(widths(), std::vector<int>{100});
}

}  // namespace
}  // namespace tessaly
