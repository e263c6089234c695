#include "app/map/LabelPainter.h"

#include <gtest/gtest.h>

#include "app/map/SampleTiles_test.h"
#include "app/map/TextShadow.h"

namespace tessaly {
namespace {

PixelCanvas labelled(const TreemapRect& rect, double scale = 1) {
  PixelCanvas canvas(QRect(0, 0, static_cast<int>(400 * scale), static_cast<int>(200 * scale)),
                     scale);
  LabelPainter().paint(canvas, rect);
  return canvas;
}

TreemapRect named(const std::string& name, double width, double height) {
  TreemapRect rect = tileRect(fileNode("/" + name, 5 << 20), width, height);
  rect.x = rect.y = 20;
  return rect;
}

// The smallest rectangle around all pixels with an alpha above `least`.
QRect inkOf(const PixelCanvas& canvas, int least = 0) {
  QRect ink;
  const QImage& image = canvas.image();
  for (int y = 0; y < image.height(); ++y) {
    for (int x = 0; x < image.width(); ++x) {
      if (qAlpha(image.pixel(x, y)) > least) ink |= QRect(x, y, 1, 1);
    }
  }
  return ink;
}

TEST(LabelPainter, a_tile_too_small_for_a_label_has_none) {
  EXPECT_TRUE(inkOf(labelled(named("a.txt", 38, 100))).isEmpty());
  EXPECT_FALSE(inkOf(labelled(named("a.txt", 39, 21))).isEmpty());
}

TEST(LabelPainter, a_label_fills_the_width_between_paddings_with_the_size_at_the_right) {
  const QRect ink = inkOf(labelled(named("a.txt", 200, 100)), 200);
  EXPECT_GE(ink.left(), 26);
  EXPECT_LE(ink.left(), 29);
  EXPECT_GE(ink.right(), 209);
  EXPECT_LE(ink.right(), 214);
  EXPECT_GE(ink.top(), 25);
  EXPECT_LE(ink.bottom(), 42);
}

TEST(LabelPainter, a_label_never_exceeds_the_tile_however_wide_its_letters_are) {
  for (const char* name : {"文档和照片存档文档和照片存档", "﷽﷽﷽﷽", "WWWWWWWWWWWWWWWWWW",
                           "🧑‍💻🧑‍💻🧑‍💻🧑‍💻🧑‍💻"}) {
    for (const double width : {38.5, 60.0, 95.0, 140.0}) {
      const QRect ink = inkOf(labelled(named(name, width, 21)));
      EXPECT_GE(ink.left(), 20) << name << width;
      EXPECT_LE(ink.right(), static_cast<int>(20 + width)) << name << width;
      EXPECT_LE(ink.bottom(), 40) << name << width;
    }
  }
}

TEST(LabelPainter, a_name_with_wide_letters_is_cut_before_the_size) {
  const auto sizeOf = [](const char* name) {
    // The size takes 36 points before the padding of 6, and its shadow a little more.
    return labelled(named(name, 160, 40)).image().copy(138, 20, 42, 40);
  };
  EXPECT_EQ(sizeOf("WWWWWWWWWWW"), sizeOf("a"));
}

TEST(LabelPainter, no_symbol_is_shown_beside_an_ellipsis_alone) {
  // The left end of a tile whose name has only space for its ellipsis: letters, where a wider tile
  // has its symbol.
  const auto leftEnd = [](const char* name, double width) {
    return labelled(named(name, width, 40)).image().copy(20, 20, 16, 30);
  };
  const QImage symbol = leftEnd("a.raw", 80);
  EXPECT_EQ(leftEnd("文档和照片存档", 80), symbol);
  for (const char* name : {"a.raw", "WWWW", "文档和照片存档"}) {
    EXPECT_NE(leftEnd(name, 40), symbol) << name;
    // Nor is it the ellipsis.
    EXPECT_NE(leftEnd(name, 40), leftEnd("……………", 40)) << name;
  }
}

TEST(LabelPainter, names_in_other_scripts_are_not_drawn_as_boxes) {
  // All characters that no font has are drawn alike.
  const auto picture = [](const char* name) { return labelled(named(name, 90, 40)).image(); };
  const QImage missing = picture("\U000FFFFD");
  for (const char* name : {"文", "م", "🎉", "é"}) EXPECT_NE(picture(name), missing) << name;
  EXPECT_NE(picture("文"), picture("档"));
  EXPECT_NE(picture("م"), picture("ت"));
  EXPECT_NE(picture("🎉"), picture("🧑"));
}

TEST(LabelPainter, bytes_that_are_not_utf8_are_replacement_characters) {
  EXPECT_EQ(labelled(named("a\xE9", 90, 40)).image(), labelled(named("a\uFFFD", 90, 40)).image());
}

TEST(LabelPainter, labels_are_sharp_at_two_pixels_per_point) {
  const QRect once = inkOf(labelled(named("a.txt", 200, 100)), 200);
  const QRect twice = inkOf(labelled(named("a.txt", 200, 100), 2), 200);
  EXPECT_NEAR(twice.width(), once.width() * 2, 4);
  EXPECT_NEAR(twice.height(), once.height() * 2, 4);
}

TEST(LabelPainter, a_cached_picture_looks_the_same) {
  LabelPainter labels;
  const TreemapRect rect = named("文档和照片存档文档和照片存档", 200, 100);
  PixelCanvas first(QRect(0, 0, 400, 200), 1);
  PixelCanvas second(QRect(0, 0, 400, 200), 1);
  labels.paint(first, rect);
  labels.endPass();
  labels.paint(second, rect);
  EXPECT_EQ(first.image(), second.image());
}

TEST(TextShadow, the_shadow_is_under_the_text_and_a_point_lower) {
  QImage picture(41, 41, QImage::Format_ARGB32_Premultiplied);
  picture.fill(0);
  for (int y = 17; y < 24; ++y) {
    for (int x = 17; x < 24; ++x) picture.setPixel(x, y, 0xFFFFFFFF);
  }
  TextShadow::layUnder(picture, 1);
  EXPECT_EQ(picture.pixel(20, 20), 0xFFFFFFFFu);
  const auto alpha = [&](int x, int y) { return qAlpha(picture.pixel(x, y)); };
  EXPECT_GT(alpha(20, 25), 40);
  EXPECT_LT(alpha(20, 25), 0.7 * 255);
  EXPECT_EQ(qRed(picture.pixel(20, 25)), 0);
  // The middle of the text is row 20, that of its shadow row 21.
  EXPECT_EQ(alpha(20, 26), alpha(20, 16));
  EXPECT_GT(alpha(20, 26), alpha(20, 27));
  EXPECT_EQ(alpha(15, 21), alpha(25, 21));
}

}  // namespace
}  // namespace tessaly
