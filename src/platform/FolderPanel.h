// The modal panel with which the user picks one directory. Main thread only.
#pragma once

#include <optional>
#include <string>

namespace tessaly {

class FolderPanel {
 public:
  struct Request {
    std::string prompt;   // label of the confirming button, UTF-8
    std::string message;  // what the choice is for, UTF-8
  };

  virtual ~FolderPanel() = default;

  // Absolute path of the chosen directory, as bytes; absent when the user backed out.
  virtual std::optional<std::string> chooseFolder(const Request& request) = 0;
};

}  // namespace tessaly
