// Every screen of the window beside the picture of it that was looked at and kept. With
// TESSALY_KEEP_PICTURES in the environment the pictures are written instead, to be looked at again.
#include <algorithm>
#include <cstdlib>
#include <gtest/gtest.h>
#include <map>
#include <string>

#include <QApplication>
#include <QDir>
#include <QImage>

#include "picture/FixtureWindow.h"

namespace tessaly {
namespace {

// Letters are drawn a little differently by other versions of the font engine, so single pixels are
// not compared but the mean of each small square.
constexpr int square = 16;
constexpr int mostDifference = 14;  // of 255, in any channel

struct Mean {
  int red = 0;
  int green = 0;
  int blue = 0;
};

Mean meanOf(const QImage& image, const QRect& part) {
  long red = 0;
  long green = 0;
  long blue = 0;
  for (int y = part.top(); y <= part.bottom(); ++y) {
    for (int x = part.left(); x <= part.right(); ++x) {
      const QRgb pixel = image.pixel(x, y);
      red += qRed(pixel);
      green += qGreen(pixel);
      blue += qBlue(pixel);
    }
  }
  const long count = static_cast<long>(part.width()) * part.height();
  return {static_cast<int>(red / count), static_cast<int>(green / count),
          static_cast<int>(blue / count)};
}

// The squares in which the two differ, as text; empty when there are none.
std::string differencesOf(const QImage& expected, const QImage& actual) {
  if (expected.size() != actual.size()) return "another size";
  std::string found;
  int count = 0;
  for (int y = 0; y < expected.height(); y += square) {
    for (int x = 0; x < expected.width(); x += square) {
      const QRect part = QRect(x, y, square, square) & expected.rect();
      const Mean was = meanOf(expected, part);
      const Mean is = meanOf(actual, part);
      const int difference = std::max({std::abs(was.red - is.red), std::abs(was.green - is.green),
                                       std::abs(was.blue - is.blue)});
      if (difference <= mostDifference) continue;
      if (++count <= 10) {
        found += std::to_string(x) + "," + std::to_string(y) + " by " + std::to_string(difference) +
                 "; ";
      }
    }
  }
  return count > 10 ? found + "and " + std::to_string(count - 10) + " more" : found;
}

class Pictures : public testing::TestWithParam<QString> {};

TEST_P(Pictures, is_as_it_was_kept) {
  const QString name = GetParam();
  FixtureWindow window(*FixtureWindow::screenNamed(name), QSize(1280, 820));
  const QImage actual = window.picture().convertToFormat(QImage::Format_RGB32);
  const QString kept = QStringLiteral(TESSALY_PICTURES) + u'/' + name + QStringLiteral(".png");
  if (qEnvironmentVariableIsSet("TESSALY_KEEP_PICTURES")) {
    ASSERT_TRUE(actual.save(kept));
    return;
  }
  const QImage expected = QImage(kept).convertToFormat(QImage::Format_RGB32);
  ASSERT_FALSE(expected.isNull()) << kept.toStdString() << " cannot be read";
  const std::string differences = differencesOf(expected, actual);
  EXPECT_EQ(differences, "");
  if (!differences.empty()) {
    const QString seen =
        QDir::tempPath() + QStringLiteral("/tessaly-") + name + QStringLiteral("-seen.png");
    actual.save(seen);
    ADD_FAILURE() << "what was seen is in " << seen.toStdString();
  }
}

std::vector<QString> allNames() {
  const QStringList names = FixtureWindow::names();
  return {names.begin(), names.end()};
}

INSTANTIATE_TEST_SUITE_P(Screens, Pictures, testing::ValuesIn(allNames()), [](const auto& screen) {
  return QString(screen.param).replace(u'-', u'_').toStdString();
});

// What a screen is kept for; a picture of something else would be kept just as faithfully.
TEST(PictureScreens, show_what_they_are_named_for) {
  const std::map<QString, QString> subjects = {{"idle", "idleScreen"},
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
                                               {"list", "modeFrame"},
                                               {"band", "rubberBand"},
                                               {"tile-menu", "tileReveal"}};
  for (const QString& name : FixtureWindow::names()) {
    FixtureWindow window(*FixtureWindow::screenNamed(name), QSize(1280, 820));
    window.picture();
    const auto subject = subjects.find(name);
    ASSERT_NE(subject, subjects.end()) << name.toStdString() << " has no subject";
    EXPECT_TRUE(window.visibleNames().contains(subject->second)) << name.toStdString();
  }
}

TEST(PictureDifferences, are_seen_where_a_word_is_missing) {
  FixtureWindow window(FixtureWindow::Screen::idle, QSize(1280, 820));
  const QImage whole = window.picture().convertToFormat(QImage::Format_RGB32);
  QImage without = whole;
  // The label of the search field.
  for (int y = 14; y < 34; ++y) {
    for (int x = 440; x < 520; ++x) without.setPixel(x, y, whole.pixel(430, y));
  }
  EXPECT_EQ(differencesOf(whole, whole), "");
  EXPECT_NE(differencesOf(whole, without), "");
}

}  // namespace
}  // namespace tessaly

int main(int argc, char** argv) {
  qputenv("QT_QPA_PLATFORM", "offscreen");
  qputenv("QT_QUICK_BACKEND", "software");
  testing::InitGoogleTest(&argc, argv);
  const QApplication application(argc, argv);
  tessaly::Application::setUpLook();
  return RUN_ALL_TESTS();
}
