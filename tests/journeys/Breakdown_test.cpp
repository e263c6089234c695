// The bar of kinds under the header.
#include "journeys/Journey.h"
#include "support/WindowItems.h"

namespace tessaly {
namespace {

class SevenKinds : public Journey {
 protected:
  SevenKinds()
      : Journey(
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

TEST_F(SevenKinds, have_a_segment_each_and_the_smallest_is_two_wide) {
  QQuickItem* segments = itemNamed(item("breakdown"), "segments");
  ASSERT_NE(segments, nullptr);
  std::vector<double> widths;
  for (QQuickItem* child : segments->childItems())
    if (child->width() > 0) widths.push_back(child->width());
  ASSERT_EQ(widths.size(), 7u);
  EXPECT_EQ(widths.back(), 2);
  EXPECT_NEAR(widths.front(), segments->width() * 400 / 425.390625, 0.01);
}

TEST_F(SevenKinds, have_words_for_the_largest_six) {
  QQuickItem* legend = itemNamed(item("breakdown"), "legend");
  ASSERT_NE(legend, nullptr);
  QStringList words;
  for (QQuickItem* word : itemsNamed(legend, "word")) words << word->property("text").toString();
  EXPECT_EQ(words,
            (QStringList{"Video", "Archive", "Document", "Image", "Developer", "Disk image"}));
}

class NineKinds : public Journey {
 protected:
  NineKinds()
      : Journey(
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

TEST_F(NineKinds, are_all_in_sight_in_the_smallest_window) {
  window().resize(1100, 680);
  settle(window());
  const auto segments = itemsNamed(item("breakdown"), "segment");
  ASSERT_EQ(segments.size(), 9U);
  for (std::size_t i = 1; i < 9; ++i) {
    EXPECT_EQ(segments[i]->width(), 2) << i;
    EXPECT_EQ(segments[i]->x(), segments[i - 1]->x() + segments[i - 1]->width() + 1) << i;
  }
  EXPECT_LE(segments.back()->mapToScene(QPointF(2, 0)).x(), 1100 - 4);
}

class NoKinds : public Journey {
 protected:
  NoKinds() : Journey("empty/\n") {
    session().scanHome();
    finishScan();
  }
};

TEST_F(NoKinds, take_up_no_space) {
  EXPECT_TRUE(shows("header"));
  EXPECT_FALSE(shows("breakdown"));
}

}  // namespace
}  // namespace tessaly
