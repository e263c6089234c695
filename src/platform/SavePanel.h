// The modal panel with which the user says where a file is to be written. Main thread only.
#pragma once

#include <optional>
#include <string>

namespace tessaly {

class SavePanel {
 public:
  struct Request {
    std::string fileName;   // the name suggested, bytes of any kind, with its extension
    std::string extension;  // the only one allowed, lower case and without dot, such as "json"
    bool canCreateDirectories = false;
    // Where a file of the suggested name stands in the folder in which the panel opens, a number is
    // added to the name.
    bool isForNewFile = false;

    friend bool operator==(const Request&, const Request&) = default;
  };

  virtual ~SavePanel() = default;

  // Absolute path of the file to write, as bytes and with the extension; absent when the user
  // backed out. A file that stands there already is one that the user agreed to replace.
  virtual std::optional<std::string> chooseFile(const Request& request) = 0;
};

}  // namespace tessaly
