// The display that the program uses. Determined before Qt starts, because without a display Qt ends
// the program with a long message and a core dump.
#pragma once

#include <string>
#include <vector>

namespace tessaly {

// The machine's settings and servers for displays.
struct DisplayFacts {
  std::string requested = {};  // QT_QPA_PLATFORM: Qt platforms separated by ";", or empty
  // The platforms of the installed Qt, in lower case. Not determined if none is requested.
  std::vector<std::string> installed = {};
  bool waylandSession = false;  // the desktop session uses Wayland
  bool waylandAnswers = false;  // a Wayland server answers, and Qt has a plugin for it
  bool xAnswers = false;        // an X server answers and accepts us

  // Asks the servers in the order of platformFor(), up to the first one that answers. Waits some
  // seconds for a server that accepts a connection without answering.
  static DisplayFacts ofThisMachine();
};

// The Qt platform to start with, in the format of QApplication's -platform: the first requested one
// that can be reached, else that of the session. Empty without a display. A requested platform
// other than Wayland and X, such as "offscreen", needs no server and can be reached if Qt has it.
std::string platformFor(const DisplayFacts& facts);

// The message for the user if that is empty, in one line without its end.
std::string complaintFor(const DisplayFacts& facts);

}  // namespace tessaly
