#include "app/controls/Fonts.h"

#include <gtest/gtest.h>

#include <QFont>
#include <QFontDatabase>
#include <QGuiApplication>

namespace tessaly {
namespace {

TEST(Fonts, chooses_the_first_that_is_installed) {
  EXPECT_EQ(Fonts::choose({"A", "B", "C"}, {"C", "B"}), "B");
}

TEST(Fonts, chooses_whatever_the_case_and_answers_with_the_installed_name) {
  EXPECT_EQ(Fonts::choose({"inter"}, {"Noto Sans", "Inter"}), "Inter");
}

TEST(Fonts, chooses_nothing_when_nothing_fits) {
  EXPECT_EQ(Fonts::choose({"A"}, {"B"}), "");
  EXPECT_EQ(Fonts::choose({"Inter"}, {"Inter Display"}), "");
  EXPECT_EQ(Fonts::choose({}, {"B"}), "");
}

TEST(Fonts, has_an_installed_family_for_each_voice) {
  for (const auto voice : {Fonts::Voice::ui, Fonts::Voice::mono, Fonts::Voice::rounded}) {
    EXPECT_FALSE(Fonts::family(voice).isEmpty());
  }
}

TEST(Fonts, takes_inter_and_jetbrains_mono_where_the_system_has_no_font_of_its_own) {
  const QStringList linux{"DejaVu Sans", "Inter", "JetBrains Mono", "Noto Sans"};
  EXPECT_EQ(Fonts::choose(Fonts::candidates(Fonts::Voice::ui), linux), "Inter");
  EXPECT_EQ(Fonts::choose(Fonts::candidates(Fonts::Voice::mono), linux), "JetBrains Mono");
  EXPECT_EQ(Fonts::choose(Fonts::candidates(Fonts::Voice::rounded), linux), "Inter");
}

TEST(Fonts, installs_the_ui_family_as_the_applications_font_with_fallbacks) {
  EXPECT_EQ(QGuiApplication::font().family(), Fonts::family(Fonts::Voice::ui));
  for (const auto voice : {Fonts::Voice::ui, Fonts::Voice::mono}) {
    EXPECT_EQ(QFont::substitutes(Fonts::family(voice)).join(",").toLower().toStdString(),
              "noto sans,noto sans arabic,noto sans cjk sc,noto color emoji");
  }
}

}  // namespace
}  // namespace tessaly
