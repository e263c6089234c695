// The modal panel for choosing one directory. Main thread only.
#pragma once

#include <optional>
#include <string>

namespace tessaly {

class FolderPanel {
 public:
  struct Request {
    std::string prompt;   // label of the confirm button, UTF-8
    std::string message;  // purpose of the choice, UTF-8
  };

  virtual ~FolderPanel() = default;

  // Absolute path of the chosen directory, as bytes; absent if the user cancelled.
  virtual std::optional<std::string> chooseFolder(const Request& request) = 0;
};

}  // namespace tessaly
