#include "app/desktop/X11HotKey.h"

#include <algorithm>
#include <cstdlib>
#include <utility>

#include <QGuiApplication>

namespace tessaly {

namespace {

constexpr xcb_keysym_t spaceSymbol = 0x0020;
constexpr xcb_keysym_t numLockSymbol = 0xff7f;
constexpr std::uint16_t commandShift = XCB_MOD_MASK_CONTROL | XCB_MOD_MASK_SHIFT;
constexpr std::uint16_t allModifiers = 0x00ff;

struct Free {
  void operator()(void* reply) const { std::free(reply); }
};
template <class Reply>
using Owned = std::unique_ptr<Reply, Free>;

// The server's mapping of keys.
class Keyboard {
 public:
  explicit Keyboard(xcb_connection_t* connection) {
    const xcb_setup_t* setup = xcb_get_setup(connection);
    first_ = setup->min_keycode;
    const auto count = static_cast<std::uint8_t>(setup->max_keycode - setup->min_keycode + 1);
    const auto asked = xcb_get_keyboard_mapping(connection, setup->min_keycode, count);
    const auto askedForModifiers = xcb_get_modifier_mapping(connection);
    symbols_.reset(xcb_get_keyboard_mapping_reply(connection, asked, nullptr));
    modifiers_.reset(xcb_get_modifier_mapping_reply(connection, askedForModifiers, nullptr));
  }

  // The keys that have `symbol` on their first level, or on any level unless `alone`.
  std::vector<xcb_keycode_t> keysWith(xcb_keysym_t symbol, bool alone) const {
    std::vector<xcb_keycode_t> keys;
    if (!symbols_ || symbols_->keysyms_per_keycode == 0) return keys;
    const int perKey = symbols_->keysyms_per_keycode;
    const xcb_keysym_t* all = xcb_get_keyboard_mapping_keysyms(symbols_.get());
    const int count = xcb_get_keyboard_mapping_keysyms_length(symbols_.get()) / perKey;
    for (int key = 0; key < count; ++key) {
      const xcb_keysym_t* ofKey = all + std::ptrdiff_t{key} * perKey;
      if (std::find(ofKey, ofKey + (alone ? 1 : perKey), symbol) != ofKey + (alone ? 1 : perKey))
        keys.push_back(static_cast<xcb_keycode_t>(first_ + key));
    }
    return keys;
  }

  // The modifiers that these keys set.
  std::uint16_t modifiersOf(const std::vector<xcb_keycode_t>& keys) const {
    std::uint16_t mask = 0;
    if (!modifiers_) return mask;
    const xcb_keycode_t* all = xcb_get_modifier_mapping_keycodes(modifiers_.get());
    const int perModifier = modifiers_->keycodes_per_modifier;
    for (int i = 0; i < xcb_get_modifier_mapping_keycodes_length(modifiers_.get()); ++i) {
      if (std::find(keys.begin(), keys.end(), all[i]) != keys.end())
        mask = static_cast<std::uint16_t>(mask | 1U << static_cast<unsigned>(i / perModifier));
    }
    return mask;
  }

 private:
  int first_ = 0;
  Owned<xcb_get_keyboard_mapping_reply_t> symbols_;
  Owned<xcb_get_modifier_mapping_reply_t> modifiers_;
};

xcb_connection_t* connectionOfQt() {
  auto* const x11 = qGuiApp->nativeInterface<QNativeInterface::QX11Application>();
  return x11 != nullptr ? x11->connection() : nullptr;
}

std::vector<xcb_window_t> rootsOf(xcb_connection_t* connection) {
  std::vector<xcb_window_t> roots;
  for (auto screens = xcb_setup_roots_iterator(xcb_get_setup(connection)); screens.rem > 0;
       xcb_screen_next(&screens))
    roots.push_back(screens.data->root);
  return roots;
}

}  // namespace

X11HotKey::X11HotKey(Dispatch& dispatch) : dispatch_(dispatch) {}

X11HotKey::~X11HotKey() {
  if (isInstalled()) giveBack();
}

// Grabs all Caps Lock and Num Lock variants or none.
void X11HotKey::install(std::function<void()> pressed) {
  connection_ = connectionOfQt();
  if (connection_ == nullptr) return;
  const Keyboard keyboard(connection_);
  const std::uint16_t numLock = keyboard.modifiersOf(keyboard.keysWith(numLockSymbol, false));
  std::vector<std::uint16_t> locks = {0, XCB_MOD_MASK_LOCK};
  if (numLock != 0) {
    locks.push_back(numLock);
    locks.push_back(static_cast<std::uint16_t>(numLock | XCB_MOD_MASK_LOCK));
  }

  std::vector<xcb_void_cookie_t> asked;
  for (const xcb_window_t root : rootsOf(connection_)) {
    for (const xcb_keycode_t key : keyboard.keysWith(spaceSymbol, true)) {
      for (const std::uint16_t lock : locks) {
        grabs_.push_back({root, key, static_cast<std::uint16_t>(commandShift | lock)});
        asked.push_back(xcb_grab_key_checked(connection_, 0, root, grabs_.back().modifiers, key,
                                             XCB_GRAB_MODE_ASYNC, XCB_GRAB_MODE_ASYNC));
      }
    }
  }
  bool isRefused = false;
  for (const xcb_void_cookie_t& cookie : asked) {
    const Owned<xcb_generic_error_t> error(xcb_request_check(connection_, cookie));
    isRefused = isRefused || error;
  }
  if (isRefused) {
    giveBack();
    return;
  }
  pressed_ = std::make_shared<const std::function<void()>>(std::move(pressed));
  qGuiApp->installNativeEventFilter(this);
}

// Ungrabbing refused combinations is harmless.
void X11HotKey::giveBack() {
  for (const Grab& grab : grabs_) xcb_ungrab_key(connection_, grab.key, grab.root, grab.modifiers);
  xcb_flush(connection_);
  grabs_.clear();
}

bool X11HotKey::nativeEventFilter(const QByteArray& eventType, void* message, qintptr*) {
  if (eventType != "xcb_generic_event_t") return false;
  const auto* const event = static_cast<const xcb_generic_event_t*>(message);
  constexpr unsigned sentByAClient = 0x80;
  const unsigned type = event->response_type & ~sentByAClient;
  if (type != XCB_KEY_PRESS && type != XCB_KEY_RELEASE) return false;
  const auto& key = *static_cast<const xcb_key_press_event_t*>(message);
  if (!isOurs(key)) return false;
  if (type == XCB_KEY_PRESS && !isDown_) tellOf();
  isDown_ = type == XCB_KEY_PRESS;
  return true;
}

// The root window gets only grabbed keys. The modifiers may be released before the key.
bool X11HotKey::isOurs(const xcb_key_press_event_t& event) const {
  return std::any_of(grabs_.begin(), grabs_.end(), [&event](const Grab& grab) {
    return grab.root == event.event && grab.key == event.detail &&
           ((event.response_type & 0x7fU) == XCB_KEY_RELEASE ||
            (event.state & allModifiers) == grab.modifiers);
  });
}

void X11HotKey::tellOf() {
  dispatch_.async(Dispatch::Queue::main, [weakPressed = std::weak_ptr(pressed_)] {
    if (const auto pressed = weakPressed.lock()) (*pressed)();
  });
}

}  // namespace tessaly
