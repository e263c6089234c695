// The program's item in the status bar of the desktop: a label that is always visible, and a menu.
// Main thread only.
#pragma once

#include <functional>
#include <string>
#include <vector>

namespace tessaly {

class StatusBarExtra {
 public:
  struct Label {
    std::string symbol;  // name of the symbol
    std::string text;    // UTF-8, and short: "87%"

    friend bool operator==(const Label&, const Label&) = default;
  };

  struct Entry {
    enum class Kind { button, text, divider };

    // Above 0 and unique in the menu. An entry with the same action has the same id in every menu,
    // so that a click on a menu that has just been replaced has the intended effect.
    int id = 0;
    Kind kind = Kind::text;
    std::string title = {};             // UTF-8
    std::function<void()> action = {};  // for a button
  };

  // Whether the item is visible.
  enum class Presence {
    unknown,  // the desktop has not answered yet
    shown,
    absent,  // there is no status bar at present
  };

  virtual ~StatusBarExtra() = default;

  virtual void setLabel(const Label& label) = 0;

  // On a desktop that has a gesture for the item itself, such as a double click, the gesture runs
  // the first button of the menu.
  virtual void setMenu(std::vector<Entry> menu) = 0;

  virtual Presence presence() const = 0;

  // Called after each change of presence(). A status bar may appear late, and disappear at any
  // time.
  virtual void setPresenceChanged(std::function<void()> changed) = 0;
};

}  // namespace tessaly
