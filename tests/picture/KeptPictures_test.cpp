#include "picture/KeptPictures.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include "support/TempTree.h"

namespace tessaly {
namespace {

using testing::ElementsAre;
using testing::IsEmpty;
using testing::SizeIs;

QImage plain() {
  QImage image(100, 60, QImage::Format_RGB32);
  image.fill(qRgb(20, 30, 40));
  return image;
}

QImage withASpot() {
  QImage image = plain();
  for (int i = 0; i < 20; ++i) image.setPixel(30 + i, 12, qRgb(255, 255, 255));
  return image;
}

class Folder : public testing::Test {
 protected:
  KeptPictures kept(const std::string& known = {}) const {
    return {QString::fromStdString(folder_.path()), known};
  }
  bool takes(const std::string& known, const std::string& renderer, const QString& screen = "map") {
    EXPECT_TRUE(kept().keep(screen, plain()));
    return PictureComparison::isSame(kept(known).differenceOf(screen, withASpot(), renderer));
  }

  TempTree folder_;
};

TEST_F(Folder, a_kept_picture_is_given_back) {
  EXPECT_TRUE(kept().picture("map").isNull());
  ASSERT_TRUE(kept().keep("map", withASpot()));
  EXPECT_EQ(kept().picture("map"), withASpot());
  EXPECT_THAT(kept().names(), ElementsAre(QString("map")));
  kept().remove("map");
  EXPECT_THAT(kept().names(), IsEmpty());
}

TEST_F(Folder, a_screen_without_a_kept_picture_is_refused) {
  EXPECT_FALSE(PictureComparison::isSame(kept().differenceOf("map", plain(), "software/x86_64")));
}

TEST_F(Folder, a_difference_is_accepted_that_is_known_of_this_renderer_on_this_screen) {
  const std::string known = "# a remark\nsoftware/arm64 map 30,12 20x1 edges are rounded up\n";
  EXPECT_TRUE(takes(known, "software/arm64"));
  EXPECT_FALSE(takes(known, "software/x86_64"));
  EXPECT_FALSE(takes(known, "software/arm64", "list"));
  EXPECT_FALSE(takes("", "software/arm64"));
}

TEST_F(Folder, a_known_difference_needs_an_area_and_a_reason) {
  for (const char* line : {"software/arm64 map 30,12 20x1", "software/arm64 map 30,12 edges",
                           "map 30,12 20x1 edges are rounded up", "software/arm64"}) {
    EXPECT_THAT(kept(line).known(), IsEmpty()) << line;
    EXPECT_THAT(kept(line).senselessLines(), SizeIs(1)) << line;
    EXPECT_FALSE(takes(line, "software/arm64")) << line;
  }
}

}  // namespace
}  // namespace tessaly
