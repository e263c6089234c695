#include "app/controls/RoundedPanel.h"

#include <algorithm>
#include <cmath>
#include <cstdlib>
#include <functional>
#include <gtest/gtest.h>

#include <QPainter>

#include "app/controls/ContinuousShape.h"
#include "app/controls/PropertyTable.h"

namespace tessaly {
namespace {

// The integral of a Gaussian beyond `distance`.
double beyond(double distance, double sigma) {
  return 0.5 * std::erfc(distance / (sigma * std::sqrt(2)));
}

int largestDifference(const QImage& a, const QImage& b) {
  int largest = 0;
  for (int y = 0; y < a.height(); ++y) {
    for (int x = 0; x < a.width(); ++x) {
      largest = std::max(largest, std::abs(qAlpha(a.pixel(x, y)) - qAlpha(b.pixel(x, y))));
    }
  }
  return largest;
}

TEST(ContinuousShape, a_shape_is_inside_its_rectangle_and_cuts_its_corners) {
  const QRectF rect(10, 20, 100, 60);
  const QPainterPath path = ContinuousShape::path(rect, 12);
  EXPECT_NEAR(path.boundingRect().left(), 10, 1e-6);
  EXPECT_NEAR(path.boundingRect().right(), 110, 1e-6);
  EXPECT_NEAR(path.boundingRect().top(), 20, 1e-6);
  EXPECT_NEAR(path.boundingRect().bottom(), 80, 1e-6);
  for (const QPointF& corner :
       {QPointF(11, 21), QPointF(109, 21), QPointF(109, 79), QPointF(11, 79)}) {
    EXPECT_FALSE(path.contains(corner)) << corner.x() << "," << corner.y();
  }
  EXPECT_TRUE(path.contains(QPointF(10.5, 50)));
}

TEST(ContinuousShape, a_shape_bends_earlier_than_a_round_corner_and_meets_it_on_the_diagonal) {
  const QPainterPath path = ContinuousShape::path(QRectF(0, 0, 100, 100), 20);
  // Here the round corner has not begun yet, and the continuous one has.
  EXPECT_FALSE(path.contains(QPointF(22, 0.02)));
  EXPECT_TRUE(path.contains(QPointF(ContinuousShape::reach(20) + 1, 0.02)));
  const double middle = 20 - 20 / std::sqrt(2.0);
  EXPECT_TRUE(path.contains(QPointF(middle + 0.4, middle + 0.4)));
  EXPECT_FALSE(path.contains(QPointF(middle - 0.4, middle - 0.4)));
}

TEST(ContinuousShape, a_shape_becomes_a_capsule_if_there_is_no_space) {
  const QPainterPath path = ContinuousShape::path(QRectF(0, 0, 100, 20), 50);
  EXPECT_TRUE(path.contains(QPointF(0.1, 10)));
  EXPECT_FALSE(path.contains(QPointF(2.5, 2.5)));
  EXPECT_TRUE(path.contains(QPointF(3.4, 3.4)));
}

TEST(ContinuousShape, a_shape_is_a_rectangle_without_a_radius) {
  EXPECT_TRUE(ContinuousShape::path(QRectF(0, 0, 10, 10), 0).contains(QPointF(0.1, 0.1)));
}

class RoundedPanelPicture : public testing::Test {
 protected:
  RoundedPanelPicture() {
    panel_.setSize(QSizeF(80, 40));
    panel_.setRadius(8);
    panel_.setColor(QColor(0x20, 0x40, 0x80));
  }
  QImage at(double ratio) const { return panel_.toImage(ratio); }
  RoundedPanel panel_;
};

TEST_F(RoundedPanelPicture, a_panel_has_smooth_corners) {
  const QImage image = at(1);
  ASSERT_EQ(image.size(), QSize(80, 40));
  EXPECT_EQ(image.pixelColor(0, 0).alpha(), 0);
  EXPECT_EQ(image.pixelColor(40, 20), QColor(0x20, 0x40, 0x80));
  EXPECT_EQ(image.pixelColor(40, 0).alpha(), 255);
  int partial = 0;
  for (int y = 0; y < 8; ++y) {
    for (int x = 0; x < 8; ++x) {
      const int alpha = image.pixelColor(x, y).alpha();
      if (alpha > 10 && alpha < 245) ++partial;
    }
  }
  EXPECT_GE(partial, 6);
}

TEST_F(RoundedPanelPicture, a_panel_has_four_equal_corners) {
  const QImage image = at(2);
  EXPECT_LE(largestDifference(image, image.mirrored(true, false)), 3);
  EXPECT_LE(largestDifference(image, image.mirrored(false, true)), 3);
}

TEST_F(RoundedPanelPicture, the_gradient_of_a_panel_runs_from_top_to_bottom_or_to_the_far_corner) {
  panel_.setColor(Qt::white);
  panel_.setEndColor(Qt::black);
  QImage image = at(1);
  EXPECT_GT(image.pixelColor(40, 1).red(), 240);
  EXPECT_LT(image.pixelColor(40, 38).red(), 15);
  EXPECT_EQ(image.pixelColor(12, 20), image.pixelColor(68, 20));
  panel_.setDiagonal(true);
  image = at(1);
  EXPECT_GT(image.pixelColor(12, 20).red(), image.pixelColor(68, 20).red() + 60);
}

TEST_F(RoundedPanelPicture, the_outline_of_a_panel_is_inside_and_one_point_wide_at_every_scale) {
  panel_.setOutlineColor(Qt::white);
  panel_.setOutlineWidth(1);
  EXPECT_EQ(at(1).pixelColor(40, 0), QColor(Qt::white));
  EXPECT_EQ(at(1).pixelColor(40, 1), QColor(0x20, 0x40, 0x80));
  EXPECT_EQ(at(2).size(), QSize(160, 80));
  EXPECT_EQ(at(2).pixelColor(80, 0), QColor(Qt::white));
  EXPECT_EQ(at(2).pixelColor(80, 1), QColor(Qt::white));
  EXPECT_EQ(at(2).pixelColor(80, 2), QColor(0x20, 0x40, 0x80));
}

TEST_F(RoundedPanelPicture, a_translucent_outline_of_a_panel_is_blended_with_the_fill) {
  panel_.setOutlineColor(QColor(255, 255, 255, 51));
  EXPECT_NEAR(at(1).pixelColor(40, 0).red(), 0x20 + 0.2 * (255 - 0x20), 2);
}

TEST_F(RoundedPanelPicture, the_shadow_of_a_panel_is_outside_its_bounds) {
  panel_.setShadowColor(QColor(0, 0, 0, 128));
  panel_.setShadowRadius(4);
  panel_.setShadowOffset(3);
  const QImage image = at(1);
  const int margin = (image.width() - 80) / 2;
  ASSERT_GE(margin, 12);
  // Down the middle, below the panel: the shadow's edge is at 43 points.
  const int top = (image.height() - 40) / 2 - 3;
  for (const int below : {0, 2, 4, 8}) {
    const double distance = below + 0.5 - 3;
    EXPECT_NEAR(image.pixelColor(margin + 40, top + 40 + below).alpha(), 128 * beyond(distance, 4),
                5)
        << below;
  }
  EXPECT_EQ(image.pixelColor(0, 0).alpha(), 0);
}

TEST(SoftShadow, the_shadow_of_a_stretched_shape_equals_that_of_a_complete_one) {
  SoftShadow shadow;
  shadow.color = Qt::black;
  shadow.radius = 5;
  // Narrow enough to be drawn completely, and wide enough to be stretched.
  const auto column = [&](double width) {
    QImage image(300, 120, QImage::Format_ARGB32_Premultiplied);
    image.fill(Qt::transparent);
    QPainter painter(&image);
    shadow.paint(painter, QRectF(30, 30, width, 60), 8);
    painter.end();
    return image.copy(0, 0, 60, 120);
  };
  EXPECT_EQ(column(150), column(240));
}

TEST(SoftShadow, the_shadow_fades_like_a_gaussian) {
  SoftShadow shadow;
  shadow.color = QColor(0, 0, 0, 255);
  for (const double sigma : {2.0, 6.0, 18.0}) {
    shadow.radius = sigma;
    QImage image(400, 400, QImage::Format_ARGB32_Premultiplied);
    image.fill(Qt::transparent);
    QPainter painter(&image);
    shadow.paint(painter, QRectF(100, 100, 200, 200), 0);
    painter.end();
    for (int x = 40; x < 160; x += 5) {
      EXPECT_NEAR(image.pixelColor(x, 200).alphaF(), beyond(100 - (x + 0.5), sigma), 0.025)
          << sigma << " at " << x;
    }
    EXPECT_EQ(image.pixelColor(static_cast<int>(99 - shadow.extent()), 200).alpha(), 0);
  }
}

TEST(SoftShadow, the_shadow_keeps_the_opacity_of_its_colour) {
  SoftShadow shadow;
  shadow.color = QColor(0x00, 0x7A, 0xFF, 89);
  shadow.radius = 3;
  QImage image(100, 100, QImage::Format_ARGB32_Premultiplied);
  image.fill(Qt::transparent);
  QPainter painter(&image);
  shadow.paint(painter, QRectF(20, 20, 60, 60), 6);
  painter.end();
  EXPECT_EQ(image.pixelColor(50, 50).alpha(), 89);
  EXPECT_NEAR(image.pixelColor(50, 50).blue(), 0xFF, 2);
  EXPECT_NEAR(image.pixelColor(50, 50).green(), 0x7A, 2);
}

TEST(SoftShadow, a_shadow_in_a_transparent_colour_paints_nothing) {
  EXPECT_FALSE(SoftShadow().isVisible());
}

class CountingPanel : public RoundedPanel {
 public:
  using RoundedPanel::RoundedPanel;
  mutable int paintings = 0;

 protected:
  void paint(QPainter& painter) const override {
    ++paintings;
    RoundedPanel::paint(painter);
  }
};

class RoundedPanelOnScreen : public testing::Test {
 protected:
  RoundedPanelOnScreen() {
    panel_.setRadius(8);
    panel_.setColor(QColor(0x11, 0x52, 0x93));
  }
  // The number of paintings when the panel is shown after a change.
  int paintingsFor(const std::function<void()>& change) {
    const int before = panel_.paintings;
    change();
    scene_.view().grabWindow();
    return panel_.paintings - before;
  }

  ControlScene scene_{"Item { width: 200; height: 100 }"};
  CountingPanel panel_{scene_.view().contentItem()};
};

TEST_F(RoundedPanelOnScreen, a_panel_is_painted_once_for_each_size_that_it_returns_to) {
  EXPECT_EQ(paintingsFor([&] { panel_.setSize({60, 30}); }), 1);
  EXPECT_EQ(paintingsFor([&] { panel_.setSize({60, 50}); }), 1);
  EXPECT_EQ(paintingsFor([&] { panel_.setSize({60, 30}); }), 0);
  const QImage shown = scene_.view().grabWindow();
  EXPECT_EQ(shown.pixelColor(30, 29), QColor(0x11, 0x52, 0x93));
  EXPECT_NE(shown.pixelColor(30, 31), QColor(0x11, 0x52, 0x93));
}

TEST_F(RoundedPanelOnScreen, a_panel_is_painted_again_for_another_style) {
  EXPECT_EQ(paintingsFor([&] { panel_.setSize({61, 31}); }), 1);
  EXPECT_EQ(paintingsFor([&] { panel_.setSize({61.5, 30.5}); }), 1);
  EXPECT_EQ(paintingsFor([&] { panel_.setRadius(7); }), 1);
  EXPECT_EQ(paintingsFor([&] { panel_.setColor(QColor(0x12, 0x52, 0x93)); }), 1);
  EXPECT_EQ(paintingsFor([&] { panel_.setEndColor(Qt::red); }), 1);
  EXPECT_EQ(paintingsFor([&] { panel_.setDiagonal(true); }), 1);
  EXPECT_EQ(paintingsFor([&] { panel_.setOutlineColor(Qt::white); }), 1);
  EXPECT_EQ(paintingsFor([&] { panel_.setOutlineWidth(2); }), 1);
  EXPECT_EQ(paintingsFor([&] { panel_.setShadowColor(Qt::black); }), 1);
  EXPECT_EQ(paintingsFor([&] { panel_.setShadowRadius(3); }), 1);
  EXPECT_EQ(paintingsFor([&] { panel_.setShadowOffset(2); }), 1);
}

TEST(RoundedPanel, a_panel_in_the_window_looks_as_painted) {
  ControlScene scene(
      "RoundedPanel { width: 60; height: 30; radius: 8; color: Theme.bg3\n"
      "shadowColor: \"white\"; shadowRadius: 4 }");
  EXPECT_EQ(scene.pixel(30, 15), QColor(0x23, 0x25, 0x30));
  EXPECT_GT(scene.pixel(30, -1).red(), 90);
  EXPECT_EQ(scene.pixel(30, -25), QColor(0x12, 0x13, 0x18));
  scene.control()->setProperty("color", QColor(Qt::red));
  EXPECT_EQ(scene.pixel(30, 15), QColor(Qt::red));
  scene.control()->setWidth(100);
  EXPECT_EQ(scene.pixel(90, 15), QColor(Qt::red));
}

}  // namespace
}  // namespace tessaly
