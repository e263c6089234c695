// A folder panel with a prepared answer.
#pragma once

#include <optional>
#include <string>
#include <vector>

#include "platform/FolderPanel.h"

namespace tessaly {

class FakeFolderPanel final : public FolderPanel {
 public:
  std::optional<std::string> chooseFolder(const Request& request) override {
    requests.push_back(request);
    return answer;
  }

  std::optional<std::string> answer;  // absent: the user cancels
  std::vector<Request> requests;
};

}  // namespace tessaly
