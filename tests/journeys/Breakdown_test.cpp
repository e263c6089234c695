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
