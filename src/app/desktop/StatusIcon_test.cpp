#include "app/desktop/StatusIcon.h"

#include <cstdlib>
#include <gtest/gtest.h>

namespace tessaly {
namespace {

StatusBarExtra::Label saying(const std::string& text) {
  return {"externaldrive.fill", text};
}

// The number of pixels that differ between two pictures.
int differences(const QImage& a, const QImage& b) {
  int count = 0;
  for (int y = 0; y < a.height(); ++y)
    for (int x = 0; x < a.width(); ++x)
      if (a.pixel(x, y) != b.pixel(x, y)) ++count;
  return count;
}

TEST(StatusIcon, pictures_have_the_sizes_of_panels) {
  std::vector<QSize> sizes;
  for (const QImage& picture : StatusIcon::paint(saying("87%"))) sizes.push_back(picture.size());
  EXPECT_EQ(sizes, (std::vector<QSize>{{22, 22}, {32, 32}, {48, 48}}));
}

TEST(StatusIcon, the_text_is_painted_into_the_picture) {
  for (const int side : {22, 32, 48}) {
    const QImage silent = StatusIcon::paint(saying(""), side);
    const QImage some = StatusIcon::paint(saying("8%"), side);
    const QImage other = StatusIcon::paint(saying("87%"), side);
    EXPECT_GT(differences(silent, some), side);
    EXPECT_GT(differences(some, other), side);
    EXPECT_EQ(differences(other, StatusIcon::paint(saying("87%"), side)), 0);
  }
}

TEST(StatusIcon, the_symbol_is_above_the_text) {
  const QImage picture = StatusIcon::paint(saying("87%"), 48);
  const QColor drive = picture.pixelColor(24, 12);
  EXPECT_EQ(drive.alpha(), 255);
  EXPECT_GT(drive.blue(), drive.red() + 40);
}

// White with a dark outline: one of them contrasts with any background.
TEST(StatusIcon, the_picture_is_readable_on_light_and_dark) {
  for (const int side : {22, 32, 48}) {
    const QImage picture = StatusIcon::paint(saying("100%"), side);
    int light = 0;
    int dark = 0;
    for (int y = side / 2; y < side; ++y) {
      for (int x = 0; x < side; ++x) {
        const QColor pixel = picture.pixelColor(x, y);
        if (pixel.alpha() < 200) continue;
        if (pixel.lightness() > 200) ++light;
        if (pixel.lightness() < 60) ++dark;
      }
    }
    EXPECT_GT(light, side / 2) << side;
    EXPECT_GT(dark, side / 2) << side;
  }
}

TEST(StatusIcon, a_long_text_stays_inside_the_picture) {
  const QImage picture = StatusIcon::paint(saying("100%"), 48);
  for (int y = 24; y < 48; ++y) {
    EXPECT_LT(picture.pixelColor(0, y).lightness(), 100) << y;
    EXPECT_LT(picture.pixelColor(47, y).lightness(), 100) << y;
  }
}

}  // namespace
}  // namespace tessaly
