// Small values that the program remembers for its user between runs, each under a dotted key.
//
// A value is a text, a boolean, an array of texts, or binary. Texts are bytes, so that a path which
// is not UTF-8 can be stored. Nothing is converted: a value read as another type is absent.
//
// Changes take effect at once. A failure to store them for the next run is not reported, since
// callers could do nothing about it. Main thread only.
#pragma once

#include <optional>
#include <string>
#include <string_view>
#include <utility>
#include <variant>
#include <vector>

namespace tessaly {

struct BinaryValue {
  std::string bytes;

  friend bool operator==(const BinaryValue&, const BinaryValue&) = default;
};

using SettingsValue = std::variant<std::string, bool, std::vector<std::string>, BinaryValue>;

class SettingsStore {
 public:
  virtual ~SettingsStore() = default;

  // Absent if there is no value under `key`, or one of another type.
  std::optional<std::string> text(std::string_view key) const { return find<std::string>(key); }
  std::optional<bool> boolean(std::string_view key) const { return find<bool>(key); }
  std::optional<std::vector<std::string>> texts(std::string_view key) const {
    return find<std::vector<std::string>>(key);
  }
  std::optional<std::string> binary(std::string_view key) const {
    std::optional<BinaryValue> found = find<BinaryValue>(key);
    if (!found) return std::nullopt;
    return std::move(found->bytes);
  }

  // These replace any value under the key, whatever its type.
  void setText(std::string_view key, std::string value) { set(key, std::move(value)); }
  void setBoolean(std::string_view key, bool value) { set(key, value); }
  void setTexts(std::string_view key, std::vector<std::string> value) {
    set(key, std::move(value));
  }
  void setBinary(std::string_view key, std::string bytes) {
    set(key, BinaryValue{std::move(bytes)});
  }
  virtual void remove(std::string_view key) = 0;

 private:
  virtual std::optional<SettingsValue> value(std::string_view key) const = 0;
  virtual void set(std::string_view key, SettingsValue value) = 0;

  template <class Type>
  std::optional<Type> find(std::string_view key) const {
    std::optional<SettingsValue> found = value(key);
    if (!found || !std::holds_alternative<Type>(*found)) return std::nullopt;
    return std::get<Type>(std::move(*found));
  }
};

}  // namespace tessaly
