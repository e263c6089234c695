// Settings in memory.
#pragma once

#include <map>
#include <optional>
#include <string>
#include <string_view>
#include <utility>

#include "platform/SettingsStore.h"

namespace tessaly {

class MemorySettings final : public SettingsStore {
 public:
  void remove(std::string_view key) override { values_.erase(std::string(key)); }

 private:
  std::optional<SettingsValue> value(std::string_view key) const override {
    const auto found = values_.find(key);
    if (found == values_.end()) return std::nullopt;
    return found->second;
  }
  void set(std::string_view key, SettingsValue value) override {
    values_.insert_or_assign(std::string(key), std::move(value));
  }

  std::map<std::string, SettingsValue, std::less<>> values_;
};

}  // namespace tessaly
