#include "app/desktop/Display.h"

#include <gtest/gtest.h>
#include <string>

#include <QByteArray>
#include <QtGlobal>

namespace tessaly {
namespace {

TEST(Display, is_none_where_no_server_answers) {
  EXPECT_EQ(platformFor({}), "");
}

TEST(Display, is_x_where_an_x_server_answers) {
  EXPECT_EQ(platformFor({.xAnswers = true}), "xcb");
}

TEST(Display, is_x_in_a_wayland_session_that_qt_cannot_speak_to) {
  EXPECT_EQ(platformFor({.waylandSession = true, .xAnswers = true}), "xcb");
}

TEST(Display, is_wayland_in_a_wayland_session) {
  EXPECT_EQ(platformFor({.waylandSession = true, .waylandAnswers = true, .xAnswers = true}),
            "wayland");
}

TEST(Display, is_wayland_where_nothing_else_answers) {
  EXPECT_EQ(platformFor({.waylandAnswers = true}), "wayland");
}

// Where Qt has these platforms.
DisplayFacts requesting(const std::string& platforms) {
  return {.requested = platforms,
          .installed = {"offscreen", "vnc", "wayland", "wayland-egl", "xcb"}};
}

TEST(Display, needs_no_server_for_a_platform_without_one) {
  EXPECT_EQ(platformFor(requesting("offscreen")), "offscreen");
  EXPECT_EQ(platformFor(requesting("vnc:size=800x600")), "vnc:size=800x600");
}

TEST(Display, is_the_first_requested_one_that_answers) {
  DisplayFacts facts = requesting("wayland;xcb");
  facts.xAnswers = true;
  EXPECT_EQ(platformFor(facts), "xcb");
  facts = requesting("wayland-egl;xcb");
  facts.waylandAnswers = facts.xAnswers = true;
  EXPECT_EQ(platformFor(facts), "wayland-egl");
}

TEST(Display, is_none_where_only_servers_answer_that_were_not_requested) {
  DisplayFacts facts = requesting("xcb");
  facts.waylandAnswers = true;
  EXPECT_EQ(platformFor(facts), "");
  EXPECT_EQ(complaintFor(facts), "there is no display to open a window on");
}

TEST(Display, is_none_that_qt_does_not_have) {
  for (const char* platforms :
       {"nonsense", "nonsense:a=b", ";", " ", "nonsense;more", "offscreen "}) {
    EXPECT_EQ(platformFor(requesting(platforms)), "") << platforms;
    EXPECT_EQ(complaintFor(requesting(platforms)), "QT_QPA_PLATFORM names no platform of Qt's")
        << platforms;
  }
  EXPECT_EQ(platformFor({.requested = "xcb", .xAnswers = true}), "");
}

TEST(Display, passes_over_what_qt_does_not_have) {
  EXPECT_EQ(platformFor(requesting("nonsense;offscreen;vnc")), "offscreen");
  EXPECT_EQ(complaintFor(requesting("nonsense;xcb")), "there is no display to open a window on");
}

TEST(Display, is_known_by_its_name_in_any_case) {
  DisplayFacts facts = requesting("XCB:a=b");
  EXPECT_EQ(platformFor(facts), "");
  facts.xAnswers = true;
  EXPECT_EQ(platformFor(facts), "XCB:a=b");
}

TEST(Display, can_be_requested_of_what_qt_has_on_this_machine) {
  const QByteArray before = qgetenv("QT_QPA_PLATFORM");
  qputenv("QT_QPA_PLATFORM", "offscreen");
  EXPECT_EQ(platformFor(DisplayFacts::ofThisMachine()), "offscreen");
  qputenv("QT_QPA_PLATFORM", "nonsense");
  EXPECT_EQ(platformFor(DisplayFacts::ofThisMachine()), "");
  qputenv("QT_QPA_PLATFORM", before);
}

}  // namespace
}  // namespace tessaly
