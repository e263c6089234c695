#include "app/quicklook/PreviewPlacement.h"

#include <gtest/gtest.h>

namespace tessaly {
namespace {

using Kind = PreviewScreen::Kind;

constexpr QSize large(4000, 3000);

PreviewSheet sheetOf(Kind kind, const std::vector<QSize>& pictures = {}) {
  PreviewSheet sheet;
  sheet.body = kind;
  for (const QSize& size : pictures) sheet.pictures.emplace_back(size, QImage::Format_Mono);
  return sheet;
}

TEST(PreviewPlacement, the_window_fits_an_image_at_its_own_size) {
  EXPECT_EQ(PreviewPlacement::sizeFor(sheetOf(Kind::Image, {QSize(800, 600)}), 1, large),
            QSize(800 + 40, 600 + 40 + 53 + 32));
}

TEST(PreviewPlacement, the_size_counts_pixels_of_the_screen) {
  EXPECT_EQ(PreviewPlacement::sizeFor(sheetOf(Kind::Image, {QSize(1600, 1200)}), 2, large),
            QSize(800 + 40, 600 + 40 + 53 + 32));
}

TEST(PreviewPlacement, an_image_that_is_too_large_keeps_its_aspect_ratio) {
  EXPECT_EQ(PreviewPlacement::sizeFor(sheetOf(Kind::Image, {QSize(4000, 1000)}), 1, {1040, 1000}),
            QSize(1040, 250 + 40 + 53 + 32));
  EXPECT_EQ(PreviewPlacement::sizeFor(sheetOf(Kind::Image, {QSize(1000, 4000)}), 1, {1040, 925}),
            QSize(420, 925));
}

TEST(PreviewPlacement, the_rows_around_a_tiny_image_have_space) {
  EXPECT_EQ(PreviewPlacement::sizeFor(sheetOf(Kind::Image, {QSize(1, 1)}), 1, large),
            PreviewPlacement::smallest);
  EXPECT_EQ(PreviewPlacement::sizeFor(sheetOf(Kind::Image), 1, large), PreviewPlacement::smallest);
}

TEST(PreviewPlacement, the_window_is_as_wide_as_a_page_and_as_high_as_possible) {
  EXPECT_EQ(PreviewPlacement::sizeFor(sheetOf(Kind::Pages, {QSize(600, 4000), QSize(900, 1)}), 1,
                                      {1600, 900}),
            QSize(640, 900));
  EXPECT_LT(PreviewPlacement::sizeFor(sheetOf(Kind::Pages, {QSize(1600, 2262)}), 1, large).width(),
            1600);
}

TEST(PreviewPlacement, the_window_is_lower_for_a_short_text_and_counts_wrapped_lines) {
  const auto heightFor = [](const QString& text) {
    PreviewSheet sheet = sheetOf(Kind::Text);
    sheet.lines = TextLines(text);
    return PreviewPlacement::sizeFor(sheet, 1, large).height();
  };
  EXPECT_EQ(heightFor("a"), PreviewPlacement::smallest.height());
  EXPECT_GT(heightFor(QString("a\n").repeated(20)), PreviewPlacement::smallest.height());
  EXPECT_EQ(heightFor(QString("a\n").repeated(20)),
            heightFor(QString(100, u'x') + QString("\n").repeated(19)));
  EXPECT_EQ(heightFor(QString("a\n").repeated(100)), heightFor(QString("a\n").repeated(100000)));
}

TEST(PreviewPlacement, the_window_is_higher_for_more_rows_up_to_a_limit) {
  for (const Kind kind : {Kind::Folder, Kind::Facts, Kind::Media, Kind::Failure}) {
    const auto heightFor = [kind](std::size_t rows) {
      PreviewSheet sheet = sheetOf(kind);
      sheet.rows.resize(rows);
      return PreviewPlacement::sizeFor(sheet, 1, large).height();
    };
    EXPECT_LT(heightFor(10), heightFor(12));
    EXPECT_EQ(heightFor(100), heightFor(1000));
  }
}

TEST(PreviewPlacement, the_window_never_exceeds_the_limit) {
  for (const Kind kind : {Kind::Nothing, Kind::Loading, Kind::Facts, Kind::Text, Kind::Media,
                          Kind::Folder, Kind::Failure, Kind::Image, Kind::Pages})
    EXPECT_EQ(PreviewPlacement::sizeFor(sheetOf(kind), 1, {300, 200}), QSize(300, 200));
}

TEST(PreviewPlacement, the_window_leaves_a_border_on_the_screen) {
  EXPECT_EQ(PreviewPlacement::mostOf({0, 0, 1000, 800}), QSize(850, 680));
}

TEST(PreviewPlacement, the_window_is_in_the_middle_of_its_owner) {
  EXPECT_EQ(PreviewPlacement::place({200, 100}, {100, 100, 600, 500}, {0, 0, 1000, 800}),
            QRect(300, 300, 200, 100));
}

TEST(PreviewPlacement, the_window_stays_on_the_screen) {
  const QRect screen(1000, 50, 1000, 800);
  EXPECT_EQ(PreviewPlacement::place({400, 300}, {1900, 700, 600, 500}, screen),
            QRect(1600, 550, 400, 300));
  EXPECT_EQ(PreviewPlacement::place({400, 300}, {700, -200, 600, 300}, screen),
            QRect(1000, 50, 400, 300));
}

}  // namespace
}  // namespace tessaly
