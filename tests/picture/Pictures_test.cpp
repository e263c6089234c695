// Compares every screen of the window with its approved picture.
#include <gmock/gmock.h>
#include <gtest/gtest.h>
#include <map>
#include <string>
#include <vector>

#include <QDir>
#include <QFontDatabase>
#include <QImage>
#include <QRegularExpression>

#include "picture/DrawnScreen.h"
#include "picture/KeptPictures.h"
#include "picture/PictureWindow.h"
#include "picture/PicturesMain.h"

namespace tessaly {
namespace {

using testing::IsEmpty;
using testing::UnorderedElementsAreArray;

// Writes the new picture and the difference for inspection, and returns a text with their paths.
std::string leaveForALook(const QString& name, const QImage& kept, const QImage& seen) {
  const QString folder = QStringLiteral(TESSALY_REFUSED_PICTURES);
  const QString seenFile = folder + u'/' + name + QStringLiteral("-seen.png");
  const QString differenceFile = folder + u'/' + name + QStringLiteral("-difference.png");
  if (!QDir().mkpath(folder) || !seen.save(seenFile) ||
      !PictureComparison::pictureOfDifference(kept, seen).save(differenceFile))
    return "nothing can be written to " + folder.toStdString();
  return "seen:       " + seenFile.toStdString() + "\ndifference: " + differenceFile.toStdString() +
         "\nWhere the change is wanted, ./test --keep-pictures keeps the new picture.";
}

class Pictures : public testing::TestWithParam<QString> {};

TEST_P(Pictures, a_screen_looks_like_its_kept_picture) {
  const QString name = GetParam();
  const KeptPictures kept = KeptPictures::ofTheProject();
  const std::string renderer = KeptPictures::rendererOfThisMachine();
  const QImage seen = drawnScreen(name, TESSALY_PICTURE_TOOL);
  const PictureDifference difference = kept.differenceOf(name, seen, renderer);
  EXPECT_TRUE(PictureComparison::isSame(difference))
      << name.toStdString() << ", drawn by " << renderer << ": "
      << PictureComparison::described(difference) << "\n"
      << leaveForALook(name, kept.picture(name), seen);
  EXPECT_EQ(scratchSession().timesBusWasOpened(), 0);
  EXPECT_THAT(scratchSession().files(), IsEmpty());
}

// The subject of each screen; a picture without it could be kept by mistake.
TEST_P(Pictures, a_screen_shows_the_subject_of_its_name) {
  static const std::map<QString, QString> subjects = {{"idle", "idleScreen"},
                                                      {"scanning", "scanningScreen"},
                                                      {"failed", "failedScreen"},
                                                      {"map", "canvas"},
                                                      {"drilled", "chip"},
                                                      {"rescanning", "banner"},
                                                      {"selected", "putBack"},
                                                      {"toast", "toastPanel"},
                                                      {"failure", "failureLine"},
                                                      {"menu", "nodeMenu"},
                                                      {"alert", "protectedLocation"},
                                                      {"gate", "gate"},
                                                      {"sidebar", "pinned"},
                                                      {"sidebar-end", "legendCard"},
                                                      {"commands", "menuSettings"},
                                                      {"queue", "queueList"},
                                                      {"queue-minimised", "cleanupQueue"},
                                                      {"largest", "largestRow"},
                                                      {"largest-wide", "largestRow"},
                                                      {"largest-one", "largestRow"},
                                                      {"largest-empty", "emptyMessage"},
                                                      {"grew", "grewRow"},
                                                      {"grew-wide", "grewRow"},
                                                      {"grew-one", "grewRow"},
                                                      {"grew-empty", "listTitle"},
                                                      {"safe", "safeRow"},
                                                      {"safe-wide", "safeRow"},
                                                      {"safe-one", "safeRow"},
                                                      {"safe-empty", "emptyMessage"},
                                                      {"compare", "compareRow"},
                                                      {"compare-wide", "compareRow"},
                                                      {"compare-one", "compareRow"},
                                                      {"compare-empty", "chooseCompared"},
                                                      {"history", "historyBubble"},
                                                      {"history-wide", "historyChart"},
                                                      {"history-one", "historyChart"},
                                                      {"history-empty", "emptyMessage"},
                                                      {"wins", "winRow"},
                                                      {"wins-wide", "winRow"},
                                                      {"wins-one", "winRow"},
                                                      {"wins-empty", "noCaches"},
                                                      {"wins-banners", "errorBanner"},
                                                      {"wins-moving", "winsStop"},
                                                      {"duplicates", "duplicateRow"},
                                                      {"duplicates-wide", "duplicateRow"},
                                                      {"duplicates-one", "duplicateRow"},
                                                      {"duplicates-one-wide", "duplicateRow"},
                                                      {"duplicates-empty", "emptyMessage"},
                                                      {"duplicates-empty-wide", "emptyMessage"},
                                                      {"duplicates-none-kept", "noneKept"},
                                                      {"duplicates-comparing", "comparing"},
                                                      {"duplicates-awaited", "emptyMessage"},
                                                      {"clones", "cloneRow"},
                                                      {"clones-wide", "cloneRow"},
                                                      {"clones-one", "cloneRow"},
                                                      {"clones-one-wide", "cloneRow"},
                                                      {"clones-empty", "emptyMessage"},
                                                      {"clones-empty-wide", "emptyMessage"},
                                                      {"aliases", "aliasRow"},
                                                      {"aliases-wide", "aliasRow"},
                                                      {"aliases-one", "aliasRow"},
                                                      {"aliases-one-wide", "aliasRow"},
                                                      {"aliases-empty", "emptyMessage"},
                                                      {"aliases-empty-wide", "emptyMessage"},
                                                      {"cloud", "cloudRow"},
                                                      {"cloud-wide", "cloudRow"},
                                                      {"cloud-one", "cloudRow"},
                                                      {"cloud-one-wide", "cloudRow"},
                                                      {"cloud-empty", "emptyMessage"},
                                                      {"cloud-empty-wide", "emptyMessage"},
                                                      {"largest-one-wide", "largestRow"},
                                                      {"largest-empty-wide", "emptyMessage"},
                                                      {"grew-one-wide", "grewRow"},
                                                      {"grew-empty-wide", "listTitle"},
                                                      {"safe-one-wide", "safeRow"},
                                                      {"safe-empty-wide", "emptyMessage"},
                                                      {"compare-one-wide", "compareRow"},
                                                      {"compare-empty-wide", "chooseCompared"},
                                                      {"history-one-wide", "historyChart"},
                                                      {"history-empty-wide", "emptyMessage"},
                                                      {"wins-one-wide", "winRow"},
                                                      {"wins-empty-wide", "noCaches"},
                                                      {"band", "rubberBand"},
                                                      {"tile-menu", "tileReveal"},
                                                      {"hover", "tooltipName"},
                                                      {"heat-map", "canvas"},
                                                      {"watching", "canvas"},
                                                      {"smallest", "canvas"},
                                                      {"two-pixels", "chip"}};
  const auto subject = subjects.find(GetParam());
  ASSERT_NE(subject, subjects.end()) << "it has no subject";
  PictureWindow window(*PictureWindow::screenNamed(GetParam()));
  window.picture();
  EXPECT_TRUE(window.visibleNames().contains(subject->second)) << subject->second.toStdString();
}

std::vector<QString> allNames() {
  const QStringList names = PictureWindow::names();
  return {names.begin(), names.end()};
}

INSTANTIATE_TEST_SUITE_P(Screens, Pictures, testing::ValuesIn(allNames()), [](const auto& screen) {
  return QString(screen.param).replace(u'-', u'_').toStdString();
});

TEST(PictureScreens, each_screen_has_a_kept_picture_and_there_are_no_others) {
  EXPECT_THAT(KeptPictures::ofTheProject().names(), UnorderedElementsAreArray(allNames()));
}

TEST(PictureScreens, known_differences_name_existing_screens) {
  const KeptPictures kept = KeptPictures::ofTheProject();
  EXPECT_THAT(kept.senselessLines(), IsEmpty());
  for (const auto& known : kept.known())
    EXPECT_TRUE(PictureWindow::screenNamed(known.screen)) << known.screen.toStdString();
}

TEST(PictureScreens, screens_have_the_state_and_size_of_their_names) {
  EXPECT_TRUE(PictureWindow(PictureWindow::Screen::heatMap).fixture().session().shown().heatmap());
  EXPECT_TRUE(
      PictureWindow(PictureWindow::Screen::watching).fixture().session().watch().watching());
  EXPECT_EQ(drawnScreen("smallest", TESSALY_PICTURE_TOOL).size(), QSize(1100, 680));
  EXPECT_EQ(drawnScreen("two-pixels", TESSALY_PICTURE_TOOL).size(), QSize(2200, 1360));
}

TEST(PinnedLook, the_pinned_look_offers_only_the_fonts_of_two_packages) {
  QStringList families = QFontDatabase::families();
  // Other names of the same fonts.
  for (const char* general : {"Sans Serif", "Serif", "Monospace"}) families.removeAll(general);
  EXPECT_EQ(families.filter(QRegularExpression("^(Inter|JetBrains Mono)")), families);
  EXPECT_TRUE(families.contains("Inter"));
  EXPECT_TRUE(families.contains("JetBrains Mono"));
}

}  // namespace
}  // namespace tessaly
