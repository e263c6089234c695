#include "app/desktop/Display.h"

#include <gtest/gtest.h>

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

TEST(Display, needs_no_server_for_a_platform_without_one) {
  EXPECT_EQ(platformFor({.requested = "offscreen"}), "offscreen");
  EXPECT_EQ(platformFor({.requested = "vnc:size=800x600"}), "vnc:size=800x600");
}

TEST(Display, is_the_first_requested_one_that_answers) {
  EXPECT_EQ(platformFor({.requested = "wayland;xcb", .xAnswers = true}), "xcb");
  EXPECT_EQ(platformFor({.requested = "wayland-egl;xcb", .waylandAnswers = true, .xAnswers = true}),
            "wayland-egl");
}

TEST(Display, is_none_where_only_servers_answer_that_were_not_requested) {
  EXPECT_EQ(platformFor({.requested = "xcb", .waylandAnswers = true}), "");
}

}  // namespace
}  // namespace tessaly
