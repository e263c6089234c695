#include "treemap/KindColor.h"

#include <gtest/gtest.h>

namespace tessaly {
namespace {

TEST(KindColor, each_kind_has_its_colour) {
  EXPECT_EQ(KindColor::of(FileKind::folder), (Color{59, 130, 246}));
  EXPECT_EQ(KindColor::of(FileKind::app), (Color{0, 122, 255}));
  EXPECT_EQ(KindColor::of(FileKind::video), (Color{59, 130, 246}));
  EXPECT_EQ(KindColor::of(FileKind::image), (Color{245, 158, 11}));
  EXPECT_EQ(KindColor::of(FileKind::document), (Color{139, 92, 246}));
  EXPECT_EQ(KindColor::of(FileKind::code), (Color{34, 197, 94}));
  EXPECT_EQ(KindColor::of(FileKind::archive), (Color{239, 68, 68}));
  EXPECT_EQ(KindColor::of(FileKind::disk), (Color{168, 85, 247}));
  EXPECT_EQ(KindColor::of(FileKind::other), (Color{107, 114, 128}));
}

}  // namespace
}  // namespace tessaly
