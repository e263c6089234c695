// The folder panel as Qt's own dialog, with the dark look of the window. Main thread only;
// chooseFolder() runs the event loop until the user has answered.
//
// The dialog shows only folders whose names are UTF-8, so the returned path is exact.
#pragma once

#include <string>

#include "platform/FolderPanel.h"

namespace tessaly {

class QtFolderPanel : public FolderPanel {
 public:
  // `startDirectory` is where the panel opens the first time; later it opens where it was left.
  explicit QtFolderPanel(std::string startDirectory);

  std::optional<std::string> chooseFolder(const Request& request) override;

 private:
  std::string directory_;
};

}  // namespace tessaly
