// A save panel with a prepared answer.
#pragma once

#include <optional>
#include <string>
#include <vector>

#include "platform/SavePanel.h"

namespace tessaly {

class FakeSavePanel final : public SavePanel {
 public:
  std::optional<std::string> chooseFile(const Request& request) override {
    requests.push_back(request);
    return answer;
  }

  std::optional<std::string> answer;  // absent: the user cancels
  std::vector<Request> requests;
};

}  // namespace tessaly
