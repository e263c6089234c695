// Which changes a comparison refuses, shown on a picture of the real window.
#include "picture/PictureComparison.h"

#include <algorithm>
#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include "picture/PictureWindow.h"

namespace tessaly {
namespace {

using testing::ElementsAre;
using testing::IsEmpty;

constexpr QRgb black = qRgb(0, 0, 0);

class PictureComparisonTest : public testing::Test {
 protected:
  static bool isRefused(const QImage& seen) {
    return !PictureComparison::isSame(PictureComparison::differenceOf(map(), seen));
  }

  static const QImage& map() {
    static const QImage picture = PictureWindow(PictureWindow::Screen::map).picture();
    return picture;
  }

  // The area of an item of that screen.
  static QRect place(const char* name) {
    PictureWindow window(PictureWindow::Screen::map);
    QQuickItem* const item = window.fixture().item(QString::fromLatin1(name));
    if (item == nullptr) return {};
    return item->mapRectToScene(QRectF(0, 0, item->width(), item->height())).toAlignedRect();
  }

  static QRgb meanOf(const QImage& image, const QRect& part) {
    int red = 0;
    int green = 0;
    int blue = 0;
    for (int y = part.top(); y <= part.bottom(); ++y) {
      for (int x = part.left(); x <= part.right(); ++x) {
        const QRgb pixel = image.pixel(x, y);
        red += qRed(pixel);
        green += qGreen(pixel);
        blue += qBlue(pixel);
      }
    }
    const int count = part.width() * part.height();
    return qRgb(red / count, green / count, blue / count);
  }

  static void fill(QImage& image, const QRect& part, QRgb color) {
    for (int y = part.top(); y <= part.bottom(); ++y) {
      for (int x = part.left(); x <= part.right(); ++x) image.setPixel(x, y, color);
    }
  }

  static void paste(QImage& image, QPoint corner, const QImage& part) {
    for (int y = 0; y < part.height(); ++y) {
      for (int x = 0; x < part.width(); ++x)
        image.setPixel(corner.x() + x, corner.y() + y, part.pixel(x, y));
    }
  }

  static QImage brightened(int by) {
    QImage image = map();
    const auto more = [by](int channel) { return std::min(channel + by, 255); };
    for (int y = 0; y < image.height(); ++y) {
      for (int x = 0; x < image.width(); ++x) {
        const QRgb pixel = image.pixel(x, y);
        image.setPixel(x, y, qRgb(more(qRed(pixel)), more(qGreen(pixel)), more(qBlue(pixel))));
      }
    }
    return image;
  }
};

TEST_F(PictureComparisonTest, the_comparison_accepts_the_same_screen_drawn_again) {
  const QImage again = PictureWindow(PictureWindow::Screen::map).picture();
  const PictureDifference difference = PictureComparison::differenceOf(map(), again);
  EXPECT_EQ(difference.largest, 0);
  EXPECT_THAT(difference.places, IsEmpty());
  EXPECT_FALSE(isRefused(again));
}

TEST_F(PictureComparisonTest, the_comparison_refuses_a_mosaic) {
  for (const int side : {2, 4, 16}) {
    QImage mosaic = map();
    for (int y = 0; y < mosaic.height(); y += side) {
      for (int x = 0; x < mosaic.width(); x += side) {
        const QRect part = QRect(x, y, side, side) & mosaic.rect();
        fill(mosaic, part, meanOf(map(), part));
      }
    }
    EXPECT_TRUE(isRefused(mosaic)) << side;
  }
}

TEST_F(PictureComparisonTest, the_comparison_refuses_a_picture_that_is_brighter_everywhere) {
  EXPECT_TRUE(isRefused(brightened(14)));
  EXPECT_TRUE(isRefused(brightened(PictureComparison::mostInAChannel + 1)));
}

TEST_F(PictureComparisonTest, the_comparison_refuses_a_blur) {
  for (const int reach : {1, 2}) {
    QImage blurred = map();
    for (int y = 0; y < blurred.height(); ++y) {
      for (int x = 0; x < blurred.width(); ++x) {
        const QRect around(x - reach, y - reach, 2 * reach + 1, 2 * reach + 1);
        blurred.setPixel(x, y, meanOf(map(), around & map().rect()));
      }
    }
    EXPECT_TRUE(isRefused(blurred)) << reach;
  }
}

TEST_F(PictureComparisonTest, the_comparison_refuses_a_square_that_is_upside_down) {
  const QRect label = place("searchField");
  for (const int side : {8, 16}) {
    QImage turned = map();
    const QRect square(label.left() + 32, label.center().y() - side / 2 + 1, side, side);
    paste(turned, square.topLeft(), map().copy(square).mirrored(false, true));
    EXPECT_TRUE(isRefused(turned)) << side;
  }
}

TEST_F(PictureComparisonTest, the_comparison_refuses_a_line_of_text_that_is_a_pixel_off) {
  const QRect line = place("stats");
  ASSERT_FALSE(line.isEmpty());
  for (const QPoint by : {QPoint(1, 0), QPoint(0, 1), QPoint(-1, 0)}) {
    QImage shifted = map();
    paste(shifted, line.topLeft() + by, map().copy(line));
    EXPECT_TRUE(isRefused(shifted)) << by.x() << "," << by.y();
  }
}

TEST_F(PictureComparisonTest, the_comparison_refuses_a_missing_icon) {
  const QRect button = place("openAssistant");
  ASSERT_FALSE(button.isEmpty());
  QImage without = map();
  const QRect icon = QRect(button.center() - QPoint(8, 8), QSize(17, 17));
  fill(without, icon, map().pixel(icon.topLeft()));
  EXPECT_TRUE(isRefused(without));
}

TEST_F(PictureComparisonTest, the_comparison_refuses_a_dot_of_another_color) {
  QImage changed = map();
  fill(changed, QRect(700, 400, 3, 3), black);
  EXPECT_TRUE(isRefused(changed));
}

TEST_F(PictureComparisonTest, the_comparison_refuses_another_size) {
  EXPECT_TRUE(isRefused(map().copy(0, 0, map().width(), map().height() - 1)));
  EXPECT_TRUE(isRefused(QImage()));
}

TEST_F(PictureComparisonTest, the_comparison_accepts_rounding_and_a_few_pixels) {
  QImage rounded = brightened(PictureComparison::mostInAChannel);
  EXPECT_FALSE(isRefused(rounded));
  for (int i = 0; i < PictureComparison::mostPixels; ++i) rounded.setPixel(40 * i, 300, black);
  EXPECT_FALSE(isRefused(rounded));
  rounded.setPixel(900, 300, black);
  EXPECT_TRUE(isRefused(rounded));
}

TEST_F(PictureComparisonTest, the_comparison_skips_areas_of_known_differences) {
  QImage seen = map();
  const QRect area(300, 300, 20, 20);
  fill(seen, area, black);
  EXPECT_TRUE(isRefused(seen));
  EXPECT_TRUE(PictureComparison::isSame(PictureComparison::differenceOf(map(), seen, {area})));
  EXPECT_FALSE(PictureComparison::isSame(
      PictureComparison::differenceOf(map(), seen, {area.adjusted(0, 0, -1, 0)})));
}

TEST_F(PictureComparisonTest, the_comparison_tells_where_the_pictures_differ) {
  QImage kept(200, 100, QImage::Format_RGB32);
  kept.fill(qRgb(10, 10, 10));
  QImage seen = kept;
  fill(seen, QRect(10, 10, 60, 5), qRgb(90, 10, 10));
  fill(seen, QRect(150, 80, 4, 4), qRgb(10, 10, 50));
  const PictureDifference difference = PictureComparison::differenceOf(kept, seen);
  EXPECT_EQ(difference.pixels, 316);
  EXPECT_EQ(difference.largest, 80);
  EXPECT_THAT(difference.places, ElementsAre(QRect(10, 10, 60, 5), QRect(150, 80, 4, 4)));
  EXPECT_EQ(PictureComparison::described(difference),
            "316 pixels differ by up to 80: 10,10 60x5; 150,80 4x4");
}

TEST_F(PictureComparisonTest,
       the_picture_of_the_difference_shows_the_changes_over_the_kept_picture) {
  QImage kept(20, 10, QImage::Format_RGB32);
  kept.fill(qRgb(90, 90, 90));
  QImage seen = kept;
  seen.setPixel(4, 5, black);
  const QImage picture = PictureComparison::pictureOfDifference(kept, seen);
  EXPECT_EQ(picture.pixel(4, 5), qRgb(255, 0, 200));
  EXPECT_EQ(picture.pixel(5, 5), qRgb(30, 30, 30));
}

}  // namespace
}  // namespace tessaly
