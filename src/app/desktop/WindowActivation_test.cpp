#include "app/desktop/WindowActivation.h"

#include <gtest/gtest.h>
#include <memory>
#include <string>
#include <vector>

#include "app/desktop/X11Fixture_test.h"
#include "support/Eventually.h"

namespace tessaly {
namespace {

class WindowActivationTest : public X11Fixture {
 protected:
  // Makes this test receive the messages to the window manager.
  void listen() {
    const std::uint32_t mask = XCB_EVENT_MASK_SUBSTRUCTURE_NOTIFY;
    xcb_change_window_attributes(other_, server_.root(), XCB_CW_EVENT_MASK, &mask);
    sync(other_);
  }
  void TearDown() override {
    const std::uint32_t none = 0;
    xcb_change_window_attributes(other_, server_.root(), XCB_CW_EVENT_MASK, &none);
    sync(other_);
  }
  static void sync(xcb_connection_t* connection) {
    std::free(xcb_get_input_focus_reply(connection, xcb_get_input_focus(connection), nullptr));
  }

  // The windows that requested activation in the name of the user.
  std::vector<xcb_window_t> activated() {
    sync(ofQt());
    sync(other_);
    const std::string name = "_NET_ACTIVE_WINDOW";
    const std::unique_ptr<xcb_intern_atom_reply_t, void (*)(void*)> atom(
        xcb_intern_atom_reply(
            other_,
            xcb_intern_atom(other_, 0, static_cast<std::uint16_t>(name.size()), name.c_str()),
            nullptr),
        std::free);
    std::vector<xcb_window_t> windows;
    while (true) {
      const std::unique_ptr<xcb_generic_event_t, void (*)(void*)> event(xcb_poll_for_event(other_),
                                                                        std::free);
      if (!event) return windows;
      const auto* message = reinterpret_cast<const xcb_client_message_event_t*>(event.get());
      if ((event->response_type & 0x7fU) == XCB_CLIENT_MESSAGE && message->type == atom->atom &&
          message->data.data32[0] == 2)
        windows.push_back(message->window);
    }
  }

  static xcb_window_t idOf(const QWindow& window) {
    return static_cast<xcb_window_t>(window.winId());
  }

  XServer& server_ = sharedXServer();
  xcb_connection_t* other_ = server_.connection();
  WindowActivation activation_;
};

TEST_F(WindowActivationTest, a_hidden_window_is_shown_with_the_keyboard_focus) {
  QWindow window;
  activation_.add(window);
  activation_.showMainWindow();
  settle();
  EXPECT_TRUE(window.isVisible());
  eventually(
      [&] {
        QCoreApplication::processEvents();
        return window.isActive();
      },
      "the keyboard for the window");
}

TEST_F(WindowActivationTest, activation_is_requested_in_the_name_of_the_user) {
  QWindow window;
  activation_.add(window);
  listen();
  activation_.showMainWindow();
  EXPECT_EQ(activated(), std::vector{idOf(window)});
  activation_.showMainWindow();
  EXPECT_EQ(activated(), std::vector{idOf(window)});
}

TEST_F(WindowActivationTest, a_minimised_window_is_restored_with_its_size) {
  QWindow window;
  activation_.add(window);
  window.setWindowStates(Qt::WindowMinimized | Qt::WindowMaximized);
  activation_.showMainWindow();
  EXPECT_EQ(window.windowStates(), Qt::WindowStates(Qt::WindowMaximized));
  EXPECT_TRUE(window.isVisible());
}

TEST_F(WindowActivationTest, a_closed_window_is_shown_again) {
  QWindow window;
  activation_.add(window);
  activation_.showMainWindow();
  window.close();
  ASSERT_FALSE(window.isVisible());
  activation_.showMainWindow();
  EXPECT_TRUE(window.isVisible());
}

TEST_F(WindowActivationTest, all_main_windows_are_shown_and_no_others) {
  QWindow first;
  QWindow second;
  QWindow other;
  activation_.add(first);
  activation_.add(second);
  listen();
  activation_.showMainWindow();
  EXPECT_TRUE(first.isVisible());
  EXPECT_TRUE(second.isVisible());
  EXPECT_FALSE(other.isVisible());
  EXPECT_EQ(activated(), (std::vector{idOf(first), idOf(second)}));
}

TEST_F(WindowActivationTest, a_destroyed_window_is_forgotten) {
  QWindow staying;
  {
    QWindow going;
    activation_.add(going);
    activation_.add(staying);
  }
  activation_.showMainWindow();
  EXPECT_TRUE(staying.isVisible());
}

}  // namespace
}  // namespace tessaly
