// The tool that writes pictures, started like by ./run --picture and ./test --keep-pictures.
#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <QImage>

#include "picture/KeptPictures.h"
#include "picture/PictureWindow.h"
#include "picture/PicturesMain.h"
#include "platform/Process.h"
#include "support/PlainFiles.h"
#include "support/TempTree.h"

namespace tessaly {
namespace {

using testing::IsEmpty;

class PictureTool : public testing::Test {
 protected:
  static Process::Exit run(std::vector<std::string> args) {
    Result<Process> tool =
        Process::launch({.path = TESSALY_PICTURE_TOOL,
                         .args = std::move(args),
                         // None of these may affect the picture.
                         .environment = {{"QT_SCALE_FACTOR", "1.5"},
                                         {"QT_FONT_DPI", "130"},
                                         {"LC_ALL", "de_DE.UTF-8"},
                                         {"TZ", "Pacific/Auckland"},
                                         {"FONTCONFIG_FILE", "/etc/fonts/fonts.conf"},
                                         {"XDG_CURRENT_DESKTOP", "KDE"}},
                         .output = Process::Stream::discarded});
    if (!tool) return {.status = 127};
    tool.value().waitUntil(Deadline::never());
    return tool.value().exit().value();
  }

  TempTree folder_;
};

TEST_F(PictureTool, the_tool_draws_a_screen_like_the_tests_whatever_the_environment) {
  const std::string file = folder_.at("idle.png");
  ASSERT_TRUE(run({file, "--fixture", "idle"}).isSuccess());
  PictureWindow window(PictureWindow::Screen::idle);
  const QImage drawn = QImage(QString::fromStdString(file)).convertToFormat(QImage::Format_RGB32);
  const PictureDifference difference = PictureComparison::differenceOf(window.picture(), drawn);
  EXPECT_TRUE(PictureComparison::isSame(difference)) << PictureComparison::described(difference);
  EXPECT_EQ(scratchSession().timesBusWasOpened(), 0);
  EXPECT_THAT(scratchSession().files(), IsEmpty());
}

TEST_F(PictureTool, the_tool_replaces_changed_pictures_only) {
  const KeptPictures project = KeptPictures::ofTheProject();
  const KeptPictures kept(QString::fromStdString(folder_.path()), "");
  for (const QString& name : PictureWindow::names())
    ASSERT_TRUE(kept.keep(name, project.picture(name)));
  // One picture with a rounding difference, one that is wrong, and one without a screen.
  QImage rounded = project.picture("idle");
  rounded.setPixel(3, 3, rounded.pixel(3, 3) ^ 1U);
  ASSERT_TRUE(kept.keep("idle", rounded));
  QImage old = project.picture("gate");
  old.fill(Qt::red);
  ASSERT_TRUE(kept.keep("gate", old));
  ASSERT_TRUE(kept.keep("gone", old));
  const std::string untouched = contentOf(folder_.at("idle.png"));

  ASSERT_TRUE(run({"--keep", folder_.path()}).isSuccess());
  EXPECT_EQ(contentOf(folder_.at("idle.png")), untouched);
  PictureWindow window(PictureWindow::Screen::gate);
  EXPECT_TRUE(PictureComparison::isSame(
      PictureComparison::differenceOf(kept.picture("gate"), window.picture())));
  EXPECT_FALSE(kept.names().contains("gone"));
}

}  // namespace
}  // namespace tessaly
