// The modal panel for choosing where to write a file. Main thread only.
#pragma once

#include <optional>
#include <string>

namespace tessaly {

class SavePanel {
 public:
  struct Request {
    std::string fileName;   // suggested name, any bytes, with its extension
    std::string extension;  // the only one allowed, lower case and without dot, such as "json"
    bool canCreateDirectories = false;
    // Adds a number to the suggested name if a file with that name exists in the initial folder.
    bool isForNewFile = false;

    friend bool operator==(const Request&, const Request&) = default;
  };

  virtual ~SavePanel() = default;

  // Absolute path of the file to write, as bytes and with the extension; absent if the user
  // cancelled. If a file exists there, the user has agreed to replace it.
  virtual std::optional<std::string> chooseFile(const Request& request) = 0;
};

}  // namespace tessaly
