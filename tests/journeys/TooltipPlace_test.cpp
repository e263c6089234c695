// The tooltip stays on the map, however long its text is.
#include <QQuickItem>
#include <QTest>

#include "journeys/Journey.h"
#include "support/WindowItems.h"
#include "treemap/TreemapLayout.h"

namespace tessaly {
namespace {

class TooltipPlace : public Journey {
 protected:
  TooltipPlace()
      : Journey(
            "A-folder-with-a-name-that-is-as-long-as-they-hardly-ever-are/\n"
            "  Another-folder-inside-of-it,-whose-name-is-no-shorter-than-that/\n"
            "    And-one-more,-so-that-the-path-is-far-longer-than-three-lines-of-it/\n"
            "      An-item-with-a-name-that-takes-more-than-one-line-of-the-panel.mp4 6M\n"
            "      song.mp3 3M\n"
            "b.zip 5M\n"
            "c.pdf 4M\n") {
    window().resize(1100, 680);
    session().scanHome();
    finishScan();
  }

  static QRectF rectOf(QQuickItem* item) {
    return item->mapRectToScene(QRectF(0, 0, item->width(), item->height()));
  }

  // Moves the pointer all over the map, and returns how often a tooltip was shown.
  int lookEverywhere() {
    int seen = 0;
    const QRectF canvas = rectOf(item("canvas"));
    for (double y = 3; y < canvas.height(); y += 21) {
      for (double x = 3; x < canvas.width(); x += 67) {
        QTest::mouseMove(&window(), (canvas.topLeft() + QPointF(x, y)).toPoint());
        settle(window());
        QQuickItem* const panel = itemNamed(window(), "mapTooltip");
        if (panel == nullptr) continue;
        ++seen;
        EXPECT_TRUE(canvas.adjusted(8, 8, -8, -8).contains(rectOf(panel))) << x << ", " << y;
        EXPECT_LE(itemNamed(panel, "tooltipPath")->property("lineCount").toInt(), 3);
      }
    }
    return seen;
  }
};

TEST_F(TooltipPlace, the_tooltip_is_on_the_map_wherever_the_pointer_is) {
  EXPECT_GT(lookEverywhere(), 100);
  session().shown().setHeatmap(true);
  EXPECT_GT(lookEverywhere(), 100);
}

TEST_F(TooltipPlace, the_tooltip_elides_the_middle_of_a_path_of_more_than_three_lines) {
  hoverAt(
      tilePoint("A-folder-with-a-name-that-is-as-long-as-they-hardly-ever-are/"
                "Another-folder-inside-of-it,-whose-name-is-no-shorter-than-that/"
                "And-one-more,-so-that-the-path-is-far-longer-than-three-lines-of-it/song.mp3"));
  QQuickItem* const path = itemNamed(item("mapTooltip"), "tooltipPath");
  ASSERT_NE(path, nullptr);
  EXPECT_EQ(path->property("lineCount").toInt(), 3);
  EXPECT_FALSE(path->property("truncated").toBool());
  const QString shown = path->property("text").toString();
  EXPECT_TRUE(shown.startsWith(QString::fromStdString(tree_.path()).left(20)));
  EXPECT_TRUE(shown.contains(QStringLiteral("…")));
  EXPECT_TRUE(shown.endsWith(QStringLiteral("/song.mp3")));
}

TEST_F(TooltipPlace, the_tooltip_shows_a_short_path_completely) {
  hoverAt(tilePoint("b.zip"));
  EXPECT_EQ(itemNamed(item("mapTooltip"), "tooltipPath")->property("text").toString(),
            QString::fromStdString(tree_.at("b.zip")));
}

}  // namespace
}  // namespace tessaly
