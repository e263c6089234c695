// The program's place in the status bar of the desktop: a label that is always in sight, and a
// menu. Main thread only.
#pragma once

#include <functional>
#include <string>
#include <vector>

namespace tessaly {

class StatusBarExtra {
 public:
  struct Label {
    std::string symbol;  // by its name
    std::string text;    // UTF-8, and short: "87%"

    friend bool operator==(const Label&, const Label&) = default;
  };

  struct Entry {
    enum class Kind { button, text, divider };

    // Above 0, and no other entry's of this menu. What does the same in a later menu has the same
    // one, so that a click on a menu that has just been replaced hits what was meant.
    int id = 0;
    Kind kind = Kind::text;
    std::string title = {};             // UTF-8
    std::function<void()> action = {};  // of a button
  };

  // Whether somebody can see it.
  enum class Presence {
    unknown,  // the desktop has not answered yet
    shown,
    absent,  // there is no status bar, or not now
  };

  virtual ~StatusBarExtra() = default;

  virtual void setLabel(const Label& label) = 0;

  // A desktop that has a gesture for the extra itself, such as a double click, does by it what the
  // first button of the menu does.
  virtual void setMenu(std::vector<Entry> menu) = 0;

  virtual Presence presence() const = 0;

  // Called after each change of presence(). A status bar may come late, and go at any time.
  virtual void setPresenceChanged(std::function<void()> changed) = 0;
};

}  // namespace tessaly
