#include "app/controls/SymbolPainter.h"

#include <gtest/gtest.h>

#include <QFile>
#include <QRegularExpression>

#include "app/controls/PropertyTable.h"
#include "app/controls/Symbol.h"

namespace tessaly {
namespace {

// The share of ink in the picture, from 0 to 1.
double coverage(const QImage& image) {
  double sum = 0;
  for (int y = 0; y < image.height(); ++y) {
    for (int x = 0; x < image.width(); ++x) sum += qAlpha(image.pixel(x, y)) / 255.0;
  }
  return sum / (image.width() * image.height());
}

QString svgOf(const QString& name) {
  QFile file(":/tessaly/symbols/" + name + ".svg");
  return file.open(QIODevice::ReadOnly) ? QString::fromUtf8(file.readAll()) : QString();
}

TEST(SymbolPainter, every_symbol_has_some_ink_and_is_not_a_block) {
  ASSERT_FALSE(SymbolPainter::names().isEmpty());
  for (const QString& name : SymbolPainter::names()) {
    for (const double size : {9.0, 11.0, 40.0}) {
      const double ink = coverage(SymbolPainter::image(name, size, Qt::white, 2));
      EXPECT_GT(ink, 0.02) << name.toStdString() << " at " << size;
      EXPECT_LT(ink, 0.65) << name.toStdString() << " at " << size;
    }
  }
}

TEST(SymbolPainter, a_bold_symbol_has_more_ink_whatever_was_drawn_before) {
  for (const double size : {10.0, 40.0}) {
    const double plain = coverage(SymbolPainter::image("xmark", size, Qt::white, 2));
    const double bold = coverage(SymbolPainter::image("xmark", size, Qt::white, 2, true));
    EXPECT_GT(bold, plain * 1.2) << size;
    EXPECT_LT(bold, plain * 1.6) << size;
  }
}

TEST(SymbolPainter, every_symbol_keeps_off_the_edge_of_its_square) {
  for (const QString& name : SymbolPainter::names()) {
    const QImage image = SymbolPainter::image(name, 38.4, Qt::white, 1);
    ASSERT_EQ(image.width(), 48);
    for (int i = 0; i < 48; ++i) {
      EXPECT_EQ(qAlpha(image.pixel(i, 0)) + qAlpha(image.pixel(i, 47)) + qAlpha(image.pixel(0, i)) +
                    qAlpha(image.pixel(47, i)),
                0)
          << name.toStdString();
    }
  }
}

TEST(SymbolPainter, all_symbols_have_one_style) {
  for (const QString& name : SymbolPainter::names()) {
    const QString svg = svgOf(name);
    EXPECT_TRUE(svg.contains("viewBox=\"0 0 24 24\"")) << name.toStdString();
    EXPECT_TRUE(svg.contains("stroke-linecap=\"round\"")) << name.toStdString();
    EXPECT_EQ(svg.count("stroke-width="), 1) << name.toStdString();
    EXPECT_TRUE(svg.contains("stroke-width=\"1.5\"")) << name.toStdString();
    // Black is ink and white erases; there is no third colour.
    EXPECT_FALSE(svg.contains(QRegularExpression("\"#(?!000\"|fff\")"))) << name.toStdString();
  }
}

TEST(SymbolPainter, the_square_is_a_quarter_larger_than_the_font) {
  EXPECT_EQ(SymbolPainter::side(8), 10);
  EXPECT_EQ(SymbolPainter::side(11), 14);
  EXPECT_EQ(SymbolPainter::side(40), 50);
  EXPECT_EQ(SymbolPainter::side(0), 1);
}

TEST(SymbolPainter, each_pixel_ratio_is_drawn_separately) {
  const QPixmap once = SymbolPainter::pixmap("folder", 12, Qt::white, 1);
  const QPixmap twice = SymbolPainter::pixmap("folder", 12, Qt::white, 2);
  EXPECT_EQ(once.size(), QSize(15, 15));
  EXPECT_EQ(twice.size(), QSize(30, 30));
  EXPECT_EQ(twice.devicePixelRatio(), 2);
  EXPECT_EQ(twice.deviceIndependentSize(), QSizeF(15, 15));
  EXPECT_NE(twice.toImage(), once.toImage().scaled(30, 30, {}, Qt::SmoothTransformation));
}

TEST(SymbolPainter, a_symbol_has_only_the_requested_colour) {
  const QImage image = SymbolPainter::image("bolt.fill", 20, QColor(0x00, 0x7A, 0xFF), 1);
  EXPECT_EQ(image.pixelColor(12, 12), QColor(0x00, 0x7A, 0xFF));
  const QImage faint = SymbolPainter::image("bolt.fill", 20, QColor(0x00, 0x7A, 0xFF, 51), 1);
  EXPECT_EQ(faint.pixelColor(12, 12).alpha(), 51);
}

TEST(SymbolPainter, the_background_is_visible_where_a_symbol_is_cut_out) {
  // The mark in the middle of the triangle.
  const QImage image =
      SymbolPainter::image("exclamationmark.triangle.fill", 38.4, QColor(0xFF, 0x3B, 0x30), 2);
  EXPECT_EQ(image.pixelColor(48, 44).alpha(), 0);
  EXPECT_EQ(image.pixelColor(40, 60).alpha(), 255);
}

TEST(SymbolPainter, small_symbols_have_thicker_lines) {
  // A line of 15 units across the square: its ink is its thickness.
  const auto thickness = [](double size) {
    return coverage(SymbolPainter::image("minus", size, Qt::white, 2)) * SymbolPainter::side(size) /
           (16.0 / 24);
  };
  EXPECT_NEAR(thickness(40), 1.5 * 50 / 24, 0.3);
  EXPECT_GT(thickness(8), 0.95);
}

TEST(SymbolPainter, a_name_without_a_symbol_is_shown_and_reported) {
  EXPECT_FALSE(SymbolPainter::exists("no.such.symbol"));
  static QStringList messages;
  messages.clear();
  const auto before = qInstallMessageHandler(
      [](QtMsgType, const QMessageLogContext&, const QString& text) { messages.append(text); });
  const QImage image = SymbolPainter::image("no.such.symbol", 20, Qt::red, 1);
  qInstallMessageHandler(before);
  EXPECT_EQ(messages.join("|"), "no symbol is named \"no.such.symbol\"");
  EXPECT_GT(coverage(image), 0);
}

TEST(Symbol, a_symbol_item_has_the_size_of_its_picture) {
  const ControlScene scene("Symbol { name: \"folder\"; size: 11; color: \"white\" }");
  expectProperties(scene, {{"", "width", 14}, {"", "height", 14}});
}

TEST(Symbol, a_symbol_item_shows_the_pixels_of_the_painter) {
  ControlScene scene("Symbol { name: \"house.fill\"; size: 16; color: Theme.accent }");
  const QImage seen = scene.picture().copy(40, 40, 20, 20);
  const QImage symbol = SymbolPainter::image("house.fill", 16, QColor(0x00, 0x7A, 0xFF), 1);
  int solid = 0;
  for (int y = 0; y < 20; ++y) {
    for (int x = 0; x < 20; ++x) {
      if (qAlpha(symbol.pixel(x, y)) == 255) {
        EXPECT_EQ(seen.pixelColor(x, y), QColor(0x00, 0x7A, 0xFF)) << x << "," << y;
        ++solid;
      } else if (qAlpha(symbol.pixel(x, y)) == 0) {
        EXPECT_EQ(seen.pixelColor(x, y), QColor(0x12, 0x13, 0x18)) << x << "," << y;
      }
    }
  }
  EXPECT_GT(solid, 80);
}

TEST(Symbol, a_symbol_item_changes_with_its_properties) {
  ControlScene scene("Symbol { name: \"plus\"; size: 16; color: \"white\" }");
  EXPECT_EQ(scene.pixel(10, 10), QColor(Qt::white));
  scene.control()->setProperty("color", QColor(Qt::red));
  EXPECT_EQ(scene.pixel(10, 10), QColor(Qt::red));
  scene.control()->setProperty("name", "square.grid.2x2");
  EXPECT_EQ(scene.pixel(10, 10), QColor(0x12, 0x13, 0x18));
  scene.control()->setProperty("size", 32);
  expectProperties(scene, {{"", "width", 40}});
}

TEST(Symbol, a_symbol_is_centred_in_a_larger_item) {
  Symbol symbol;
  symbol.setName("plus");
  symbol.setFontSize(16);
  symbol.setSize(QSizeF(41, 61));
  const QImage image = symbol.toImage(1);
  EXPECT_EQ(image.pixelColor(20, 30).alpha(), 255);
  EXPECT_EQ(image.pixelColor(5, 5).alpha(), 0);
}

}  // namespace
}  // namespace tessaly
