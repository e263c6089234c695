#include "app/map/LabelFit.h"

#include <gtest/gtest.h>

#include <QFont>

#include "app/controls/Fonts.h"

namespace tessaly {
namespace {

const QString ellipsis = QStringLiteral("…");

class LabelFitTest : public testing::Test {
 protected:
  LabelFitTest() {
    font_.setPixelSize(11);
    font_.setWeight(QFont::DemiBold);
  }
  LabelFit fit(const QString& name, double room) const {
    return LabelFit::of(name, QFontMetricsF(font_), room, 15);
  }
  double widthOf(const QString& text) const { return QFontMetricsF(font_).horizontalAdvance(text); }

  QFont font_{Fonts::family(Fonts::Voice::ui)};
};

TEST_F(LabelFitTest, a_name_that_fits_is_complete_beside_its_symbol) {
  EXPECT_EQ(fit("abc", widthOf("abc") + 1), (LabelFit{true, "abc"}));
  EXPECT_EQ(fit("", 0), (LabelFit{true, ""}));
}

TEST_F(LabelFitTest, a_name_that_does_not_fit_is_cut) {
  const LabelFit cut = fit("abcdefgh", widthOf("abc…") + 1);
  EXPECT_TRUE(cut.showsSymbol);
  EXPECT_EQ(cut.name, "abc…");
}

TEST_F(LabelFitTest, the_symbol_is_left_out_before_a_name_becomes_an_ellipsis) {
  const LabelFit cut = fit("a.raw", widthOf(ellipsis) + 1);
  EXPECT_FALSE(cut.showsSymbol);
  EXPECT_GT(cut.name.size(), 1);
  EXPECT_TRUE(cut.name.startsWith('a'));
}

TEST_F(LabelFitTest, a_name_of_which_nothing_fits_is_left_out) {
  EXPECT_EQ(fit("a.raw", -20), (LabelFit{true, ""}));
  EXPECT_EQ(fit("﷽﷽﷽", 5), (LabelFit{true, ""}));
}

TEST_F(LabelFitTest, a_label_is_never_an_ellipsis_alone) {
  for (const QString name : {"a.raw", "WWWW…", "文档和照片…", "i…", "🧑‍💻🧑‍💻…"}) {
    for (double room = -20; room < 120; room += 0.25) {
      const LabelFit cut = fit(name, room);
      EXPECT_NE(cut.name, ellipsis) << name.toStdString() << " in " << room;
      EXPECT_TRUE(cut.showsSymbol || !cut.name.isEmpty()) << name.toStdString() << " in " << room;
    }
  }
}

TEST_F(LabelFitTest, a_name_that_is_an_ellipsis_counts_as_a_name) {
  EXPECT_EQ(fit(ellipsis, 40), (LabelFit{true, ellipsis}));
}

}  // namespace
}  // namespace tessaly
