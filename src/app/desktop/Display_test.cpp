#include "app/desktop/Display.h"

#include <gtest/gtest.h>
#include <string>

#include <QByteArray>
#include <QtGlobal>

namespace tessaly {
namespace {

TEST(Display, there_is_no_platform_if_no_server_answers) {
  EXPECT_EQ(platformFor({}), "");
}

TEST(Display, the_platform_is_x_if_an_x_server_answers) {
  EXPECT_EQ(platformFor({.xAnswers = true}), "xcb");
}

TEST(Display, the_platform_is_x_in_a_wayland_session_without_a_qt_plugin) {
  EXPECT_EQ(platformFor({.waylandSession = true, .xAnswers = true}), "xcb");
}

TEST(Display, the_platform_is_wayland_in_a_wayland_session) {
  EXPECT_EQ(platformFor({.waylandSession = true, .waylandAnswers = true, .xAnswers = true}),
            "wayland");
}

TEST(Display, the_platform_is_wayland_if_nothing_else_answers) {
  EXPECT_EQ(platformFor({.waylandAnswers = true}), "wayland");
}

// With a Qt that has these platforms.
DisplayFacts requesting(const std::string& platforms) {
  return {.requested = platforms,
          .installed = {"offscreen", "vnc", "wayland", "wayland-egl", "xcb"}};
}

TEST(Display, a_platform_without_a_server_needs_none) {
  EXPECT_EQ(platformFor(requesting("offscreen")), "offscreen");
  EXPECT_EQ(platformFor(requesting("vnc:size=800x600")), "vnc:size=800x600");
}

TEST(Display, the_platform_is_the_first_requested_one_that_answers) {
  DisplayFacts facts = requesting("wayland;xcb");
  facts.xAnswers = true;
  EXPECT_EQ(platformFor(facts), "xcb");
  facts = requesting("wayland-egl;xcb");
  facts.waylandAnswers = facts.xAnswers = true;
  EXPECT_EQ(platformFor(facts), "wayland-egl");
}

TEST(Display, there_is_no_platform_if_only_other_servers_answer) {
  DisplayFacts facts = requesting("xcb");
  facts.waylandAnswers = true;
  EXPECT_EQ(platformFor(facts), "");
  EXPECT_EQ(complaintFor(facts), "there is no display to open a window on");
}

TEST(Display, a_platform_that_qt_lacks_is_not_reached) {
  for (const char* platforms :
       {"nonsense", "nonsense:a=b", ";", " ", "nonsense;more", "offscreen "}) {
    EXPECT_EQ(platformFor(requesting(platforms)), "") << platforms;
    EXPECT_EQ(complaintFor(requesting(platforms)), "QT_QPA_PLATFORM names no platform of Qt's")
        << platforms;
  }
  EXPECT_EQ(platformFor({.requested = "xcb", .xAnswers = true}), "");
}

TEST(Display, platforms_that_qt_lacks_are_skipped) {
  EXPECT_EQ(platformFor(requesting("nonsense;offscreen;vnc")), "offscreen");
  EXPECT_EQ(complaintFor(requesting("nonsense;xcb")), "there is no display to open a window on");
}

TEST(Display, names_of_platforms_match_in_any_case) {
  DisplayFacts facts = requesting("XCB:a=b");
  EXPECT_EQ(platformFor(facts), "");
  facts.xAnswers = true;
  EXPECT_EQ(platformFor(facts), "XCB:a=b");
}

TEST(Display, platforms_of_the_installed_qt_can_be_requested) {
  const QByteArray before = qgetenv("QT_QPA_PLATFORM");
  qputenv("QT_QPA_PLATFORM", "offscreen");
  EXPECT_EQ(platformFor(DisplayFacts::ofThisMachine()), "offscreen");
  qputenv("QT_QPA_PLATFORM", "nonsense");
  EXPECT_EQ(platformFor(DisplayFacts::ofThisMachine()), "");
  qputenv("QT_QPA_PLATFORM", before);
}

}  // namespace
}  // namespace tessaly
