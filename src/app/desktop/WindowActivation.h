// Brings the program's main windows forward, from wherever they are: hidden, minimised, behind
// others. Main thread only.
#pragma once

#include <vector>

#include <QPointer>
#include <QWindow>

namespace tessaly {

class WindowActivation {
 public:
  // One that can be a main window; not owned, and it may go at any time. The last one added gets
  // the keyboard.
  void add(QWindow& window);

  // To be called for what the user did just now: desktops do not let a program take the keyboard
  // for any other reason.
  void showMainWindow() const;

 private:
  std::vector<QPointer<QWindow>> windows_;
};

}  // namespace tessaly
