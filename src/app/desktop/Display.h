// Which display the program draws on. Asked before Qt starts, because Qt ends the program with a
// long message and a core dump where it finds none.
#pragma once

#include <string>
#include <vector>

namespace tessaly {

// What the machine says about its displays.
struct DisplayFacts {
  std::string requested = {};  // QT_QPA_PLATFORM: platforms of Qt's parted by ";", or empty
  // The platforms that Qt has here, in lower case. Not looked for where none is requested.
  std::vector<std::string> installed = {};
  bool waylandSession = false;  // the desktop is a Wayland one
  bool waylandAnswers = false;  // a Wayland server answers, and Qt can speak to it
  bool xAnswers = false;        // an X server answers, and lets us in

  // Asks the servers in the order of platformFor(), and none behind the first that answers: one
  // that takes connections and says nothing is waited for, for some seconds.
  static DisplayFacts ofThisMachine();
};

// The platform of Qt's to start with, as QApplication's -platform takes it: the first one requested
// that can be reached, else the one of the session. Empty where there is no display. A requested
// platform other than Wayland and X, such as "offscreen", needs no server and counts as reached
// where Qt has it.
std::string platformFor(const DisplayFacts& facts);

// What to tell the user, in one line without its end, where that is empty.
std::string complaintFor(const DisplayFacts& facts);

}  // namespace tessaly
