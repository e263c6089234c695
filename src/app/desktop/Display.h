// Which display the program draws on. Asked before Qt starts, because Qt ends the program with a
// long message and a core dump where it finds none.
#pragma once

#include <string>

namespace tessaly {

// What the machine says about its displays.
struct DisplayFacts {
  std::string requested = {};   // QT_QPA_PLATFORM: platforms of Qt's parted by ";", or empty
  bool waylandSession = false;  // the desktop is a Wayland one
  bool waylandAnswers = false;  // a Wayland server accepts connections, and Qt can speak to it
  bool xAnswers = false;        // an X server accepts connections

  static DisplayFacts ofThisMachine();
};

// The platform of Qt's to start with, as QApplication's -platform takes it: the first one requested
// that can be reached, else the one of the session. Empty where there is no display. A requested
// platform other than Wayland and X, such as "offscreen", needs no server and counts as reached.
std::string platformFor(const DisplayFacts& facts);

}  // namespace tessaly
