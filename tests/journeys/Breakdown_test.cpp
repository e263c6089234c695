// The bar of kinds below the header, checked by its pixels.
#include <QImage>
#include <QQuickItem>

#include "app/panes/BreakdownSegments.h"
#include "journeys/Journey.h"
#include "support/WindowItems.h"

namespace tessaly {
namespace {

class BreakdownJourney : public Journey {
 protected:
  using Journey::Journey;

  // Neighbouring pixels of one colour, from `left` up to but without `right`.
  struct Run {
    int left = 0;
    int right = 0;
    int width() const { return right - left; }
  };

  // The segments along the middle of the bar.
  std::vector<Run> segments() {
    QQuickItem* const bar = item("segments");
    const QImage picture = window().grabWindow();
    const QPointF place = bar->mapToScene(QPointF(0, bar->height() / 2));
    const QRgb ground = QColor("#121318").rgb();
    std::vector<Run> runs;
    QRgb before = ground;
    // Beyond both ends of the bar.
    for (int x = static_cast<int>(place.x()) - 8; x < picture.width(); ++x) {
      const QRgb pixel = picture.pixel(x, static_cast<int>(place.y()));
      if (pixel != before && pixel != ground) runs.push_back({x, x});
      if (pixel != ground) runs.back().right = x + 1;
      before = pixel;
    }
    return runs;
  }

  // The right end of the figures above the bar.
  int endOfFigures() {
    QQuickItem* const stats = itemNamed(item("header"), "stats");
    return static_cast<int>(stats->mapToScene(QPointF(stats->width(), 0)).x());
  }

  void expectWholeBar(const std::vector<Run>& found, const std::vector<double>& megabytes) {
    ASSERT_EQ(found.size(), megabytes.size());
    EXPECT_EQ(found.front().left, 261 + 14);
    EXPECT_EQ(found.back().right, endOfFigures());
    double total = 0;
    for (const double size : megabytes) total += size;
    const double room = endOfFigures() - 275 - static_cast<double>(megabytes.size() - 1);
    double excess = 0;
    for (std::size_t i = 1; i < found.size(); ++i) {
      EXPECT_EQ(found[i].left - found[i - 1].right, 1) << i;
      const double share = megabytes[i] / total * room;
      if (share < 2) {
        EXPECT_EQ(found[i].width(), 2) << i;
        excess += 2 - share;
      } else {
        EXPECT_NEAR(found[i].width(), share, 1) << i;
      }
    }
    EXPECT_NEAR(found.front().width(), megabytes[0] / total * room - excess, 1);
  }
};

class SevenKinds : public BreakdownJourney {
 protected:
  SevenKinds()
      : BreakdownJourney(
            "a#.mp4 80M x5\n"
            "b.zip 7M\n"
            "c.pdf 6M\n"
            "d.jpg 5M\n"
            "e.cpp 4M\n"
            "f.iso 3M\n"
            "g.bin 400K\n") {
    session().scanHome();
    finishScan();
  }
};

TEST_F(SevenKinds, seven_kinds_share_the_bar_to_the_pixel_and_the_smallest_is_two_wide) {
  const std::vector<double> sizes = {400, 7, 6, 5, 4, 3, 400.0 / 1024};
  expectWholeBar(segments(), sizes);
  EXPECT_EQ(segments().back().width(), 2);
  for (const int width : {1100, 1101, 1237, 1440}) {
    window().resize(width, 900);
    settle(window());
    expectWholeBar(segments(), sizes);
  }
}

TEST_F(SevenKinds, seven_kinds_have_the_colours_of_their_labels) {
  const auto& shown = qobject_cast<BreakdownSegments*>(item("segments"))->segments();
  const auto dots = itemsNamed(item("breakdown"), "dot");
  ASSERT_EQ(dots.size(), 6U);
  ASSERT_EQ(shown.size(), 7U);
  for (std::size_t i = 0; i < 6; ++i)
    EXPECT_EQ(dots[i]->property("color").value<QColor>(), shown[i].color) << i;
}

TEST_F(SevenKinds, the_largest_six_of_seven_kinds_have_labels) {
  QQuickItem* legend = itemNamed(item("breakdown"), "legend");
  ASSERT_NE(legend, nullptr);
  QStringList words;
  for (QQuickItem* word : itemsNamed(legend, "word")) words << word->property("text").toString();
  EXPECT_EQ(words,
            (QStringList{"Video", "Archive", "Document", "Image", "Developer", "Disk image"}));
}

class NineKinds : public BreakdownJourney {
 protected:
  NineKinds()
      : BreakdownJourney(
            "a#.mp4 80M x5\n"
            "b.zip 300K\n"
            "c.pdf 300K\n"
            "d.jpg 300K\n"
            "e.cpp 300K\n"
            "f.iso 300K\n"
            "g.bin 300K\n"
            "Tool.app/\n"
            "  binary 300K\n"
            "small/\n"
            "  note 8K\n") {
    session().scanHome();
    finishScan();
  }
};

TEST_F(NineKinds, nine_kinds_are_all_visible_in_the_smallest_window) {
  window().resize(1100, 680);
  settle(window());
  const std::vector<Run> found = segments();
  ASSERT_EQ(found.size(), 9U);
  for (std::size_t i = 1; i < 9; ++i) {
    EXPECT_EQ(found[i].width(), 2) << i;
    EXPECT_EQ(found[i].left - found[i - 1].right, 1) << i;
  }
  EXPECT_EQ(found.back().right, endOfFigures());
}

class NoKinds : public Journey {
 protected:
  NoKinds() : Journey("empty/\n") {
    session().scanHome();
    finishScan();
  }
};

TEST_F(NoKinds, the_bar_without_kinds_takes_no_space) {
  EXPECT_TRUE(shows("header"));
  EXPECT_FALSE(shows("breakdown"));
}

}  // namespace
}  // namespace tessaly
