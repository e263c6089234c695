// An icon that records its badges.
#pragma once

#include <string>
#include <vector>

#include "platform/ApplicationIcon.h"

namespace tessaly {

class FakeApplicationIcon final : public ApplicationIcon {
 public:
  void setBadge(const std::string& text) override { badges.push_back(text); }
  void requestAttention() override { ++attentionRequests; }

  std::vector<std::string> badges;  // one entry per call
  int attentionRequests = 0;
};

}  // namespace tessaly
