// Fonts, weights and opacities of tile labels, compared with pictures drawn here with the values of
// the design.
#include <cmath>
#include <gtest/gtest.h>
#include <optional>

#include <QFont>
#include <QFontMetricsF>
#include <QImage>
#include <QPainter>

#include "app/controls/Fonts.h"
#include "app/controls/SymbolPainter.h"
#include "app/map/LabelPainter.h"
#include "app/map/SampleTiles_test.h"
#include "app/map/TextShadow.h"

namespace tessaly {
namespace {

// A tile at (20, 20) with this name, of 5 MB.
TreemapRect named(const std::string& name, double width, double height) {
  TreemapRect rect = tileRect(fileNode("/" + name, 5 << 20), width, height);
  rect.x = rect.y = 20;
  return rect;
}

QImage labelled(const TreemapRect& rect, double scale) {
  PixelCanvas canvas(QRect(0, 0, static_cast<int>(400 * scale), static_cast<int>(200 * scale)),
                     scale);
  LabelPainter().paint(canvas, rect);
  return canvas.image();
}

QFont font(Fonts::Voice voice, int size, QFont::Weight weight) {
  QFont made(Fonts::family(voice));
  made.setPixelSize(size);
  made.setWeight(weight);
  return made;
}

QImage clear(QSize size) {
  QImage picture(size, QImage::Format_ARGB32_Premultiplied);
  picture.fill(0);
  return picture;
}

// The text in white, without a shadow.
QImage drawn(const QString& text, const QFont& in, double opacity, double scale) {
  const QFontMetricsF metrics(in);
  QImage picture = clear({static_cast<int>(std::ceil(metrics.horizontalAdvance(text) * scale)),
                          static_cast<int>(std::ceil(metrics.height() * scale))});
  QPainter painter(&picture);
  painter.scale(scale, scale);
  painter.setFont(in);
  painter.setPen(Qt::white);
  painter.setOpacity(opacity);
  painter.drawText(QPointF(0, metrics.ascent()), text);
  return picture;
}

QImage faded(const QImage& from, double opacity) {
  QImage picture = clear(from.size());
  QPainter painter(&picture);
  painter.setOpacity(opacity);
  painter.drawImage(QRect(QPoint(0, 0), from.size()), from);
  return picture;
}

// White as over a black background, independent of what is below.
int whiteAt(const QImage& picture, int x, int y) {
  return qRed(reinterpret_cast<const QRgb*>(picture.constScanLine(y))[x]);
}

int mostWhite(const QImage& picture, const QRect& in) {
  int most = 0;
  for (int y = in.top(); y <= in.bottom(); ++y) {
    for (int x = in.left(); x <= in.right(); ++x) most = std::max(most, whiteAt(picture, x, y));
  }
  return most;
}

bool showsAt(const QImage& picture, const QImage& part, QPoint at) {
  for (int y = 0; y < part.height(); ++y) {
    for (int x = 0; x < part.width(); ++x) {
      if (std::abs(whiteAt(picture, at.x() + x, at.y() + y) - whiteAt(part, x, y)) > 2)
        return false;
    }
  }
  return true;
}

// Where `picture` contains `part` with exactly the same pixels.
std::optional<QPoint> placeOf(const QImage& picture, const QImage& part) {
  for (int y = 0; y + part.height() <= picture.height(); ++y) {
    for (int x = 0; x + part.width() <= picture.width(); ++x) {
      if (showsAt(picture, part, {x, y})) return QPoint(x, y);
    }
  }
  return std::nullopt;
}

int pixels(double points, double scale) {
  return static_cast<int>(std::lround(points * scale));
}

class LabelLook : public ::testing::TestWithParam<double> {
 protected:
  void expectName(const TreemapRect& rect, int size, double top) {
    const double scale = GetParam();
    const QString name = QStringLiteral("notes.txt");
    const auto place =
        placeOf(labelled(rect, scale),
                drawn(name, font(Fonts::Voice::ui, size, QFont::DemiBold), 1, scale));
    ASSERT_TRUE(place.has_value());
    EXPECT_EQ(place->y(), pixels(rect.y + top, scale));
    EXPECT_GT(place->x(), pixels(rect.x + 6 + 9, scale));
  }
};

TEST_P(LabelLook, the_name_is_semibold_11) {
  expectName(named("notes.txt", 150, 60), 11, 5);
  expectName(named("notes.txt", 180, 100), 11, 5);
  expectName(named("notes.txt", 190, 80), 11, 5);
}

TEST_P(LabelLook, the_name_on_a_large_tile_is_semibold_12) {
  expectName(named("notes.txt", 181, 81), 12, 5);
}

TEST_P(LabelLook, the_name_in_a_header_band_is_semibold_11_and_a_point_higher) {
  TreemapRect rect = named("notes.txt", 300, 150);
  rect.nested = true;
  expectName(rect, 11, 4);
}

TEST_P(LabelLook, the_size_is_bold_monospaced_10_at_the_right_end) {
  const double scale = GetParam();
  const TreemapRect rect = named("a", 150, 60);
  const QFont bold = font(Fonts::Voice::mono, 10, QFont::Bold);
  const auto place =
      placeOf(labelled(rect, scale), drawn(QStringLiteral("5.0 MB"), bold, 0.9, scale));
  ASSERT_TRUE(place.has_value());
  const double width = QFontMetricsF(bold).horizontalAdvance(QStringLiteral("5.0 MB"));
  EXPECT_EQ(place->x(), pixels(rect.x + rect.width - 6 - width, scale));
}

TEST_P(LabelLook, the_icon_is_9_at_the_left_end) {
  const double scale = GetParam();
  const TreemapRect rect = named("a", 150, 60);
  const QImage symbol = SymbolPainter::image(QStringLiteral("doc"), 9, Qt::white, scale);
  // The shadow of the name covers its right half.
  const QImage left = faded(symbol, 0.85).copy(0, 0, symbol.width() / 2, symbol.height());
  const auto place = placeOf(labelled(rect, scale), left);
  ASSERT_TRUE(place.has_value());
  EXPECT_EQ(place->x(), pixels(rect.x + 6, scale));
}

INSTANTIATE_TEST_SUITE_P(Scales, LabelLook, testing::Values(1.0, 2.0));

// Strokes of several pixels cover some pixels completely.
TEST(LabelLookInDetail, opacities_are_85_percent_for_icon_90_for_size_and_100_for_name) {
  constexpr int scale = 4;
  TreemapRect rect = tileRect(folderNode("/notes", 5 << 20), 160, 60);
  rect.x = rect.y = 20;
  const QImage label = labelled(rect, scale);
  const auto columns = [&](double from, double to) {
    return QRect(QPoint(static_cast<int>(from) * scale, 20 * scale),
                 QPoint(static_cast<int>(to) * scale - 1, 60 * scale));
  };
  EXPECT_NEAR(mostWhite(label, columns(26, 31)), 0.85 * 255, 1);
  EXPECT_NEAR(mostWhite(label, columns(138, 174)), 0.9 * 255, 1);
  EXPECT_EQ(mostWhite(label, columns(44, 80)), 255);
}

// The strength of a shadow with a deviation of 2 in the middle of a pixel at this distance from a
// straight edge.
double shadeBeyond(double pixels) {
  return 0.5 * std::erfc((pixels + 0.5) / 2 / std::sqrt(2.0));
}

TEST(LabelLookInDetail, the_shadow_is_70_percent_black_with_radius_2_one_point_lower) {
  QImage picture = clear({80, 80});
  for (int y = 20; y < 60; ++y) {
    for (int x = 20; x < 60; ++x) picture.setPixel(x, y, 0xFFFFFFFF);
  }
  TextShadow::layUnder(picture, 1);
  for (int beyond = 0; beyond < 4; ++beyond) {
    const auto shadeAt = [&](int x, int y) {
      EXPECT_EQ(whiteAt(picture, x, y), 0);
      return qAlpha(picture.pixel(x, y)) / 255.0;
    };
    EXPECT_NEAR(shadeAt(60 + beyond, 40), 0.7 * shadeBeyond(beyond), 0.015) << beyond;
    EXPECT_NEAR(shadeAt(19 - beyond, 40), 0.7 * shadeBeyond(beyond), 0.015) << beyond;
    EXPECT_NEAR(shadeAt(40, 60 + beyond), 0.7 * shadeBeyond(beyond - 1), 0.015) << beyond;
    EXPECT_NEAR(shadeAt(40, 19 - beyond), 0.7 * shadeBeyond(beyond + 1), 0.015) << beyond;
  }
}

}  // namespace
}  // namespace tessaly
