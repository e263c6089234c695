#include "app/controls/Fonts.h"

#include <gtest/gtest.h>

#include <QFont>
#include <QFontDatabase>
#include <QGuiApplication>

namespace tessaly {
namespace {

TEST(Fonts, choose_returns_the_first_installed_family) {
  EXPECT_EQ(Fonts::choose({"A", "B", "C"}, {"C", "B"}), "B");
}

TEST(Fonts, choose_ignores_case_and_returns_the_installed_name) {
  EXPECT_EQ(Fonts::choose({"inter"}, {"Noto Sans", "Inter"}), "Inter");
}

TEST(Fonts, choose_returns_nothing_if_no_family_is_installed) {
  EXPECT_EQ(Fonts::choose({"A"}, {"B"}), "");
  EXPECT_EQ(Fonts::choose({"Inter"}, {"Inter Display"}), "");
  EXPECT_EQ(Fonts::choose({}, {"B"}), "");
}

TEST(Fonts, every_voice_has_an_installed_family) {
  for (const auto voice : {Fonts::Voice::ui, Fonts::Voice::mono, Fonts::Voice::rounded}) {
    EXPECT_FALSE(Fonts::family(voice).isEmpty());
  }
}

TEST(Fonts, inter_and_jetbrains_mono_replace_missing_system_fonts) {
  const QStringList linux{"DejaVu Sans", "Inter", "JetBrains Mono", "Noto Sans"};
  EXPECT_EQ(Fonts::choose(Fonts::candidates(Fonts::Voice::ui), linux), "Inter");
  EXPECT_EQ(Fonts::choose(Fonts::candidates(Fonts::Voice::mono), linux), "JetBrains Mono");
  EXPECT_EQ(Fonts::choose(Fonts::candidates(Fonts::Voice::rounded), linux), "Inter");
}

TEST(Fonts, install_sets_the_application_font_with_fallbacks) {
  EXPECT_EQ(QGuiApplication::font().family(), Fonts::family(Fonts::Voice::ui));
  for (const auto voice : {Fonts::Voice::ui, Fonts::Voice::mono}) {
    EXPECT_EQ(QFont::substitutes(Fonts::family(voice)).join(",").toLower().toStdString(),
              "noto sans,noto sans arabic,noto sans cjk sc,noto color emoji");
  }
}

}  // namespace
}  // namespace tessaly
