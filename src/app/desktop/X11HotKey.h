// The hot key on X11: Control Shift Space (Control replaces Command on Linux), grabbed on the root
// window, in any state of the lock keys. Without X11, or if another program has grabbed the
// combination, there is none. Main thread only; must be destroyed before the QApplication.
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

  // Filters out the presses and releases of the hot key.
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
  xcb_connection_t* connection_ = nullptr;  // Qt's connection
  std::vector<Grab> grabs_;
  bool isDown_ = false;  // ignores repeated presses of a held key
  // Tells work on the main queue whether the hot key still exists.
  std::shared_ptr<const std::function<void()>> pressed_;
};

}  // namespace tessaly
