#include "app/map/MiddleElision.h"

#include <gtest/gtest.h>

#include <QFont>
#include <QSignalSpy>

#include "app/controls/Fonts.h"

namespace tessaly {
namespace {

QFont fontOf(Fonts::Voice voice) {
  QFont font(Fonts::family(voice));
  font.setPixelSize(10);
  return font;
}

class MiddleElisionTest : public testing::Test {
 protected:
  std::string shortened(const QString& text) {
    elision_.setText(text);
    return elision_.shortened().toStdString();
  }
  void use(Fonts::Voice voice, double room) {
    elision_.setFont(fontOf(voice));
    elision_.setRoom(room);
  }

  MiddleElision elision_;
};

TEST_F(MiddleElisionTest, a_text_that_fits_is_complete) {
  use(Fonts::Voice::mono, 600);
  for (const QString& text : {QString(), QStringLiteral("/home/user/a b.txt"),
                              QStringLiteral("/home/\u00e4\u00f6/\u6f22\u5b57")}) {
    EXPECT_EQ(shortened(text), text.toStdString());
  }
}

TEST_F(MiddleElisionTest, a_text_of_any_length_is_elided_as_the_font_measures_it) {
  for (const auto voice : {Fonts::Voice::mono, Fonts::Voice::ui}) {
    use(voice, 300);
    const QFontMetricsF metrics(fontOf(voice));
    bool anyCut = false;
    for (const char16_t c : {u'W', u'i', u'/', u'\u00e9', u'\u6f22'}) {
      for (int length = 0; length <= 200; ++length) {
        const QString text(length, QChar(c));
        const QString measured = metrics.elidedText(text, Qt::ElideMiddle, 300);
        EXPECT_EQ(shortened(text), measured.toStdString()) << length;
        anyCut = anyCut || measured != text;
      }
    }
    EXPECT_TRUE(anyCut);
  }
}

TEST_F(MiddleElisionTest, a_long_text_keeps_its_beginning_and_its_end) {
  use(Fonts::Voice::mono, 120);
  elision_.setText(QStringLiteral("/beginning/") + QString(100, u'x') + QStringLiteral("/end"));
  EXPECT_TRUE(elision_.shortened().startsWith(u"/beg"));
  EXPECT_TRUE(elision_.shortened().endsWith(u"/end"));
  EXPECT_TRUE(elision_.shortened().contains(QChar(0x2026)));
}

TEST_F(MiddleElisionTest, a_change_of_space_or_font_elides_the_text_again) {
  use(Fonts::Voice::mono, 60);
  elision_.setText(QString(20, u'x'));
  const QSignalSpy changes(&elision_, &MiddleElision::shortenedChanged);
  const QString narrow = elision_.shortened();
  elision_.setRoom(90);
  EXPECT_GT(elision_.shortened().size(), narrow.size());
  QFont large = fontOf(Fonts::Voice::mono);
  large.setPixelSize(20);
  elision_.setFont(large);
  EXPECT_LT(elision_.shortened().size(), narrow.size());
  elision_.setText(QString());
  EXPECT_EQ(changes.count(), 3);
}

}  // namespace
}  // namespace tessaly
