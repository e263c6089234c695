// Brings the program's main windows to the front: hidden, minimised and covered ones. Main thread
// only.
#pragma once

#include <vector>

#include <QPointer>
#include <QWindow>

namespace tessaly {

class WindowActivation {
 public:
  // Adds a main window; not owned, and it may be destroyed at any time. The last one added gets the
  // keyboard focus.
  void add(QWindow& window);

  // Call it only as a reaction to the user: desktops do not let a program take the keyboard focus
  // otherwise.
  void showMainWindow() const;

 private:
  std::vector<QPointer<QWindow>> windows_;
};

}  // namespace tessaly
