// The save panel as a dialog of Qt's own, in the dark look of the window. Main thread only;
// chooseFile() runs the event loop until the user has answered.
//
// The dialog knows only names that are UTF-8. A suggested name that is not, or that no file can
// bear, is changed as little as needed before it stands in the name field.
#pragma once

#include <string>

#include "platform/SavePanel.h"

namespace tessaly {

class QtSavePanel : public SavePanel {
 public:
  // `startDirectory` is where the panel opens the first time; later it opens where it was left.
  explicit QtSavePanel(std::string startDirectory);

  std::optional<std::string> chooseFile(const Request& request) override;

 private:
  std::string directory_;
};

}  // namespace tessaly
