// A desktop that records its requests.
#pragma once

#include <string>
#include <vector>

#include "platform/Workspace.h"

namespace tessaly {

class FakeWorkspace final : public Workspace {
 public:
  void reveal(const std::vector<std::string>& paths) override { revealed.push_back(paths); }
  void open(const std::string& path) override { opened.push_back(path); }
  bool openSettings(const std::string& url) override {
    settingsAsked.push_back(url);
    return url == settingsPage;
  }

  std::vector<std::vector<std::string>> revealed;  // one entry per request
  std::vector<std::string> opened;
  std::vector<std::string> settingsAsked;
  std::string settingsPage;  // the only page of settings of this desktop
};

}  // namespace tessaly
