#include "session/SettingsFile.h"

#include <cstddef>
#include <utility>
#include <variant>
#include <vector>

#include <QByteArray>

#include "platform/ApplicationSupport.h"
#include "platform/AtomicFile.h"
#include "platform/SystemError.h"

namespace tessaly {

namespace {

// Far more than any settings need, and quick to read.
constexpr std::size_t largestFile = std::size_t{16} << 20U;
constexpr std::string_view binaryKey = "base64";

std::string base64Of(const BinaryValue& value) {
  return QByteArray::fromStdString(value.bytes).toBase64().toStdString();
}

// Absent for a text that base64Of() does not write; Qt alone accepts missing padding.
std::optional<BinaryValue> fromBase64(const std::string& text) {
  const auto bytes = QByteArray::fromBase64Encoding(QByteArray::fromStdString(text),
                                                    QByteArray::AbortOnBase64DecodingErrors);
  if (!bytes) return std::nullopt;
  BinaryValue value{(*bytes).toStdString()};
  if (base64Of(value) != text) return std::nullopt;
  return value;
}

JsonValue toJson(SettingsValue value) {
  if (auto* text = std::get_if<std::string>(&value)) return {std::move(*text)};
  if (const bool* boolean = std::get_if<bool>(&value)) return {*boolean};
  if (auto* texts = std::get_if<std::vector<std::string>>(&value)) {
    JsonValue::Array array;
    for (std::string& text : *texts) array.push_back({std::move(text)});
    return {std::move(array)};
  }
  JsonValue::Object object;
  object[std::string(binaryKey)] = {base64Of(std::get<BinaryValue>(value))};
  return {std::move(object)};
}

// Absent for any type that settings do not have.
std::optional<SettingsValue> fromJson(const JsonValue& json) {
  if (const auto* text = json.as<std::string>()) return *text;
  if (const auto* boolean = json.as<bool>()) return *boolean;
  if (const auto* array = json.as<JsonValue::Array>()) {
    std::vector<std::string> texts;
    for (const JsonValue& element : *array) {
      const auto* text = element.as<std::string>();
      if (text == nullptr) return std::nullopt;
      texts.push_back(*text);
    }
    return texts;
  }
  const auto* object = json.as<JsonValue::Object>();
  if (object == nullptr || object->size() != 1 || object->begin()->first != binaryKey) {
    return std::nullopt;
  }
  const auto* encoded = object->begin()->second.as<std::string>();
  if (encoded == nullptr) return std::nullopt;
  return fromBase64(*encoded);
}

}  // namespace

SettingsFile::SettingsFile(std::string path) : path_(std::move(path)) {
  load();
}

std::string SettingsFile::standardPath() {
  return settingsDirectory() + "/Marrow/settings.json";
}

void SettingsFile::remove(std::string_view key) {
  const auto found = values_.find(key);
  if (found != values_.end()) {
    values_.erase(found);
    isStored_ = false;
  }
  store();
}

std::optional<SettingsValue> SettingsFile::value(std::string_view key) const {
  const auto found = values_.find(key);
  return found == values_.end() ? std::nullopt : fromJson(found->second);
}

void SettingsFile::set(std::string_view key, SettingsValue value) {
  JsonValue json = toJson(std::move(value));
  const auto found = values_.find(key);
  if (found == values_.end() || found->second != json) {
    values_.insert_or_assign(std::string(key), std::move(json));
    isStored_ = false;
  }
  store();
}

void SettingsFile::load() {
  const Result<std::string> content = AtomicFile::read(path_, largestFile);
  if (!content) {
    mayWrite_ = content.error().kind == SystemError::Kind::notFound;
    return;
  }
  std::optional<JsonValue> json = JsonValue::parse(content.value());
  if (json && json->as<JsonValue::Object>() != nullptr) {
    values_ = std::get<JsonValue::Object>(std::move(json->held));
    mayWrite_ = true;
  } else {
    mayWrite_ = AtomicFile::setAside(path_, ".damaged").ok();
  }
}

void SettingsFile::store() {
  if (isStored_ || !mayWrite_) return;
  const std::size_t slash = path_.rfind('/');
  if (slash != std::string::npos && slash > 0 && !makeFolders(path_.substr(0, slash))) return;
  const std::string text = JsonValue{values_}.written(JsonWriter::Form::pretty) + '\n';
  isStored_ =
      AtomicFile::replace(path_, text, AtomicFile::Durability::synced, AtomicFile::Access::owner)
          .ok();
}

}  // namespace tessaly
