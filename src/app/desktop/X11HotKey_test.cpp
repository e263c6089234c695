// Real key presses on a test's own X server.
#include "app/desktop/X11HotKey.h"

#include <gtest/gtest.h>
#include <memory>

#include "app/desktop/X11Fixture_test.h"
#include "support/HandSteppedDispatch.h"

namespace tessaly {
namespace {

constexpr const char* theHotKey = "ctrl+shift+space";
constexpr xcb_keycode_t spaceKey = 65;  // on the keyboard of Xvfb

class X11HotKeyTest : public X11Fixture {
 protected:
  void install() {
    hotKey_ = std::make_unique<X11HotKey>(dispatch_);
    hotKey_->install([this] { ++presses_; });
  }

  void TearDown() override {
    // The server handles connections in any order, and the next test may grab the key by another.
    hotKey_.reset();
    sync(ofQt());
    if (hasNumLock_) server_.pressKeys("Num_Lock");
    if (hasCapsLock_) server_.pressKeys("Caps_Lock");
    ASSERT_EQ(locks(), 0);
    xcb_ungrab_key(server_.connection(), XCB_GRAB_ANY, server_.root(), XCB_MOD_MASK_ANY);
    sync(server_.connection());
  }

  void lockNumbers() {
    server_.pressKeys("Num_Lock");
    hasNumLock_ = true;
  }
  void lockCapitals() {
    server_.pressKeys("Caps_Lock");
    hasCapsLock_ = true;
  }
  unsigned locks() {
    const std::unique_ptr<xcb_query_pointer_reply_t, void (*)(void*)> reply(
        xcb_query_pointer_reply(server_.connection(),
                                xcb_query_pointer(server_.connection(), server_.root()), nullptr),
        std::free);
    return reply->mask & (XCB_MOD_MASK_LOCK | XCB_MOD_MASK_2);
  }

  // The number of hot-key calls that this causes.
  int press(const char* keys) {
    const int before = presses_;
    server_.pressKeys(keys);
    settle();
    dispatch_.drain(Dispatch::Queue::main);
    return presses_ - before;
  }

  static void sync(xcb_connection_t* connection) {
    std::free(xcb_get_input_focus_reply(connection, xcb_get_input_focus(connection), nullptr));
  }

  // Grabs the key for another program, with exactly these modifiers; false if refused.
  bool grabBeside(std::uint16_t modifiers) {
    const std::unique_ptr<xcb_generic_error_t, void (*)(void*)> error(
        xcb_request_check(server_.connection(),
                          xcb_grab_key_checked(server_.connection(), 0, server_.root(), modifiers,
                                               spaceKey, XCB_GRAB_MODE_ASYNC, XCB_GRAB_MODE_ASYNC)),
        std::free);
    return error == nullptr;
  }

  // Passes an event to the filters like Qt.
  bool deliver(std::uint8_t type, std::uint16_t state, xcb_window_t window,
               xcb_keycode_t key = spaceKey) {
    xcb_key_press_event_t event{};
    event.response_type = type;
    event.detail = key;
    event.state = state;
    event.event = window;
    qintptr result = 0;
    const bool isTaken = hotKey_->nativeEventFilter("xcb_generic_event_t", &event, &result);
    dispatch_.drain(Dispatch::Queue::main);
    return isTaken;
  }

  static constexpr std::uint16_t commandShift = XCB_MOD_MASK_CONTROL | XCB_MOD_MASK_SHIFT;

  XServer& server_ = sharedXServer();
  HandSteppedDispatch dispatch_;
  int presses_ = 0;
  bool hasNumLock_ = false;
  bool hasCapsLock_ = false;
  std::unique_ptr<X11HotKey> hotKey_;
};

TEST_F(X11HotKeyTest, the_hot_key_works_in_any_window) {
  install();
  EXPECT_TRUE(hotKey_->isInstalled());
  EXPECT_EQ(press(theHotKey), 1);
  EXPECT_EQ(press(theHotKey), 1);
}

TEST_F(X11HotKeyTest, the_hot_key_runs_on_the_main_queue_and_not_in_the_event_filter) {
  install();
  server_.pressKeys(theHotKey);
  settle();
  EXPECT_EQ(presses_, 0);
  EXPECT_EQ(dispatch_.drain(Dispatch::Queue::main), 1u);
  EXPECT_EQ(presses_, 1);
}

TEST_F(X11HotKeyTest, the_hot_key_works_with_any_lock_keys) {
  install();
  lockNumbers();
  ASSERT_EQ(locks(), XCB_MOD_MASK_2);
  EXPECT_EQ(press(theHotKey), 1);
  lockCapitals();
  ASSERT_EQ(locks(), XCB_MOD_MASK_2 | XCB_MOD_MASK_LOCK);
  EXPECT_EQ(press(theHotKey), 1);
  server_.pressKeys("Num_Lock");
  hasNumLock_ = false;
  ASSERT_EQ(locks(), unsigned{XCB_MOD_MASK_LOCK});
  EXPECT_EQ(press(theHotKey), 1);
}

TEST_F(X11HotKeyTest, other_combinations_do_not_trigger_the_hot_key) {
  install();
  for (const char* keys : {"space", "ctrl+space", "shift+space", "ctrl+shift+alt+space",
                           "ctrl+shift+super+space", "ctrl+shift+a", "alt+space"})
    EXPECT_EQ(press(keys), 0) << keys;
}

TEST_F(X11HotKeyTest, other_combinations_stay_free_for_other_programs) {
  install();
  EXPECT_TRUE(grabBeside(XCB_MOD_MASK_CONTROL));
  EXPECT_TRUE(grabBeside(commandShift | XCB_MOD_MASK_1));
  EXPECT_FALSE(grabBeside(commandShift));
}

TEST_F(X11HotKeyTest, there_is_no_hot_key_if_another_program_has_the_combination) {
  ASSERT_TRUE(grabBeside(commandShift));
  install();
  EXPECT_FALSE(hotKey_->isInstalled());
  EXPECT_EQ(press(theHotKey), 0);
}

TEST_F(X11HotKeyTest, no_variant_stays_grabbed_if_another_program_has_one_of_them) {
  ASSERT_TRUE(grabBeside(commandShift | XCB_MOD_MASK_2));
  install();
  EXPECT_FALSE(hotKey_->isInstalled());
  sync(ofQt());
  EXPECT_TRUE(grabBeside(commandShift));
  EXPECT_TRUE(grabBeside(commandShift | XCB_MOD_MASK_LOCK));
}

TEST_F(X11HotKeyTest, the_destructor_releases_the_hot_key) {
  install();
  ASSERT_FALSE(grabBeside(commandShift));
  hotKey_.reset();
  sync(ofQt());
  EXPECT_TRUE(grabBeside(commandShift));
  EXPECT_TRUE(grabBeside(commandShift | XCB_MOD_MASK_2 | XCB_MOD_MASK_LOCK));
}

TEST_F(X11HotKeyTest, a_press_that_waits_at_the_destruction_does_nothing) {
  install();
  server_.pressKeys(theHotKey);
  settle();
  hotKey_.reset();
  dispatch_.drain(Dispatch::Queue::main);
  EXPECT_EQ(presses_, 0);
}

TEST_F(X11HotKeyTest, a_held_hot_key_triggers_once) {
  install();
  const xcb_window_t root = server_.root();
  EXPECT_TRUE(deliver(XCB_KEY_PRESS, commandShift, root));
  EXPECT_TRUE(deliver(XCB_KEY_PRESS, commandShift, root));
  EXPECT_EQ(presses_, 1);
  // The modifiers may be released first.
  EXPECT_TRUE(deliver(XCB_KEY_RELEASE, 0, root));
  EXPECT_TRUE(deliver(XCB_KEY_PRESS, commandShift, root));
  EXPECT_EQ(presses_, 2);
}

TEST_F(X11HotKeyTest, keys_of_windows_and_other_events_are_not_filtered) {
  install();
  EXPECT_FALSE(deliver(XCB_KEY_PRESS, commandShift, server_.root() + 1));
  EXPECT_FALSE(deliver(XCB_KEY_PRESS, commandShift, server_.root(), spaceKey + 1));
  EXPECT_FALSE(deliver(XCB_KEY_PRESS, XCB_MOD_MASK_CONTROL, server_.root()));
  EXPECT_FALSE(deliver(XCB_BUTTON_PRESS, commandShift, server_.root()));
  xcb_key_press_event_t event{};
  qintptr result = 0;
  EXPECT_FALSE(hotKey_->nativeEventFilter("wl_event", &event, &result));
  EXPECT_EQ(presses_, 0);
}

TEST_F(X11HotKeyTest, the_same_keys_typed_into_our_window_are_not_the_hot_key) {
  install();
  QWindow window;
  window.show();
  window.requestActivate();
  settle();
  EXPECT_EQ(press(theHotKey), 1);
  EXPECT_EQ(press("space"), 0);
}

}  // namespace
}  // namespace tessaly
