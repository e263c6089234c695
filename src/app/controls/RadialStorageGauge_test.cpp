#include <cmath>
#include <gtest/gtest.h>
#include <numbers>

#include "app/controls/GaugeDial.h"
#include "app/controls/PropertyTable.h"

namespace tessaly {
namespace {

QString gaugeAt(const char* percent) {
  return QStringLiteral(
             "RadialStorageGauge { usedPercent: %1; usedBytes: giga * 3; totalBytes: giga * 4\n"
             "freeBytes: giga }")
      .arg(QLatin1String(percent));
}

// The colour in the middle of the ring at this fraction of the circle, clockwise from the bottom.
QColor ringAt(const GaugeDial& dial, double fraction) {
  const double angle = fraction * 2 * std::numbers::pi;
  const QPointF point(52 - 47 * std::sin(angle), 52 + 47 * std::cos(angle));
  return dial.toImage(1).pixelColor(static_cast<int>(point.x()), static_cast<int>(point.y()));
}

void expectNear(const QColor& actual, const QColor& expected, int slack) {
  EXPECT_NEAR(actual.red(), expected.red(), slack);
  EXPECT_NEAR(actual.green(), expected.green(), slack);
  EXPECT_NEAR(actual.blue(), expected.blue(), slack);
  EXPECT_NEAR(actual.alpha(), expected.alpha(), 2);
}

TEST(RadialStorageGauge, the_gauge_is_a_column_of_dial_and_sizes) {
  const ControlScene scene(gaugeAt("62.5"));
  expectProperties(scene, {{"column", "spacing", 8},
                           {"column", "topPadding", 8},
                           {"column", "bottomPadding", 8},
                           {"dial", "width", 104},
                           {"dial", "height", 86},
                           {"dial", "strokeWidth", 10},
                           {"dial", "trackColor", "#ffffff at 0.08"},
                           {"dial", "usedPercent", 62.5},
                           {"percent", "text", "62%"},
                           {"percent", "color", "#ffffff at 1.00"},
                           {"percent", "font.pixelSize", 20},
                           {"percent", "font.weight", QFont::Bold},
                           {"full", "text", "FULL"},
                           {"full", "color", "#34c759 at 1.00"},
                           {"full", "font.pixelSize", 8},
                           {"full", "font.weight", QFont::Bold},
                           {"full", "font.letterSpacing", 1},
                           {"used", "text", "3.0 GB / 4.0 GB"},
                           {"used", "font.pixelSize", 11},
                           {"free", "text", "1.0 GB free"},
                           {"free", "color", "#9ca3af at 1.00"},
                           {"free", "font.pixelSize", 10}});
}

TEST(RadialStorageGauge, the_gauge_changes_colour_at_75_and_90) {
  const struct {
    const char* percent;
    const char* color;
    const char* text;
  } rows[] = {{"0", "#34c759 at 1.00", "0%"},    {"74.9", "#34c759 at 1.00", "74%"},
              {"75", "#ff9500 at 1.00", "75%"},  {"89.9", "#ff9500 at 1.00", "89%"},
              {"90", "#ff3b30 at 1.00", "90%"},  {"100", "#ff3b30 at 1.00", "100%"},
              {"150", "#ff3b30 at 1.00", "100%"}};
  for (const auto& row : rows) {
    const ControlScene scene(gaugeAt(row.percent));
    expectProperties(scene, {{"full", "color", row.color}, {"percent", "text", row.text}});
  }
}

TEST(RadialStorageGauge, the_gauge_follows_its_figures) {
  const ControlScene scene(gaugeAt("10"));
  scene.control()->setProperty("usedPercent", 95.5);
  scene.control()->setProperty("freeBytes", qint64{2} * 1024 * 1024);
  expectProperties(scene, {{"percent", "text", "95%"},
                           {"full", "color", "#ff3b30 at 1.00"},
                           {"dial", "arcEnd", 0.15 + 0.955 * 0.7},
                           {"free", "text", "2.0 MB free"}});
}

TEST(GaugeDial, the_dial_is_open_at_the_bottom_and_only_track_if_nothing_is_used) {
  GaugeDial dial;
  dial.setSize(QSizeF(104, 86));
  const QColor track(255, 255, 255, 20);
  for (const double fraction : {0.16, 0.3, 0.5, 0.7, 0.84}) {
    EXPECT_EQ(ringAt(dial, fraction).alpha(), track.alpha()) << fraction;
  }
  EXPECT_EQ(dial.toImage(1).pixelColor(52, 84).alpha(), 0);
  EXPECT_EQ(dial.toImage(1).pixelColor(52, 52).alpha(), 0);
}

TEST(GaugeDial, the_dial_draws_no_arc_at_zero_and_below) {
  GaugeDial dial;
  dial.setSize(QSizeF(104, 86));
  const QImage empty = dial.toImage(2);
  dial.setUsedPercent(-40);
  EXPECT_EQ(dial.toImage(2), empty);
  dial.setUsedPercent(1);
  EXPECT_NE(dial.toImage(2), empty);
}

TEST(GaugeDial, the_dial_has_a_gradient_from_the_accent_to_the_level_colour) {
  GaugeDial dial;
  dial.setSize(QSizeF(104, 86));
  dial.setUsedPercent(50);
  expectNear(ringAt(dial, 0.155), QColor(0x00, 0x7A, 0xFF), 12);
  expectNear(ringAt(dial, 0.495), QColor(0x34, 0xC7, 0x59), 12);
  EXPECT_EQ(ringAt(dial, 0.6).alpha(), 20);
}

TEST(GaugeDial, the_dial_above_100_is_a_full_ring_in_error_colour) {
  GaugeDial dial;
  dial.setSize(QSizeF(104, 86));
  dial.setUsedPercent(150);
  expectNear(ringAt(dial, 0.845), QColor(0xFF, 0x3B, 0x30), 12);
  for (const double fraction : {0.16, 0.3, 0.5, 0.7}) {
    EXPECT_EQ(ringAt(dial, fraction).alpha(), 255) << fraction;
  }
}

TEST(GaugeDial, the_dial_keeps_its_round_caps_inside_its_height) {
  GaugeDial dial;
  dial.setSize(QSizeF(104, 86));
  dial.setUsedPercent(100);
  const QImage image = dial.toImage(1);
  ASSERT_EQ(image.size(), QSize(104, 86));
  for (int x = 0; x < image.width(); ++x) EXPECT_EQ(image.pixelColor(x, 85).alpha(), 0) << x;
}

}  // namespace
}  // namespace tessaly
