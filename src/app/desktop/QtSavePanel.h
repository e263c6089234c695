// The save panel as Qt's own dialog, with the dark look of the window. Main thread only;
// chooseFile() runs the event loop until the user has answered.
//
// The dialog accepts only names in UTF-8. A suggested name that is not UTF-8, or that no file can
// have, is changed as little as needed.
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
