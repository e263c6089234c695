// The hot key where windows are X11's: Control Shift Space, Control being what Command is here,
// grabbed on the root window, whatever the state of the lock keys. Elsewhere, and where another
// program has the combination, there is none. Main thread only; goes before the QApplication does.
#pragma once

#include <cstdint>
#include <functional>
#include <memory>
#include <vector>
#include <xcb/xcb.h>

#include <QAbstractNativeEventFilter>

#include "platform/Dispatch.h"
#include "platform/GlobalHotKey.h"

namespace tessaly {

class X11HotKey final : public GlobalHotKey, public QAbstractNativeEventFilter {
 public:
  explicit X11HotKey(Dispatch& dispatch);
  ~X11HotKey() override;

  void install(std::function<void()> pressed) override;
  bool isInstalled() const { return !grabs_.empty(); }

  // Takes the presses and releases of the hot key out of the stream of events.
  bool nativeEventFilter(const QByteArray& eventType, void* message, qintptr* result) override;

 private:
  struct Grab {
    xcb_window_t root = 0;
    xcb_keycode_t key = 0;
    std::uint16_t modifiers = 0;
  };

  void giveBack();
  bool isOurs(const xcb_key_press_event_t& event) const;
  void tellOf();

  Dispatch& dispatch_;
  xcb_connection_t* connection_ = nullptr;  // of Qt's
  std::vector<Grab> grabs_;
  bool isDown_ = false;  // a key that is held down is pressed again and again
  // What waits on the main queue finds it, or finds that the hot key has gone.
  std::shared_ptr<const std::function<void()>> pressed_;
};

}  // namespace tessaly
