// Settings in a file: a JSON object on several lines with sorted keys, which the user may read and
// edit while the program is not running.
//
// Texts, booleans and arrays of texts are the JSON types; binary is {"base64": "..."}. Any other
// value is kept digit for digit, since a newer version of the program may use it.
//
// Every change is written before the call returns: the whole file is replaced, synced to disk, and
// readable by its user only. Setting the present value writes nothing. A change that cannot be
// written is kept for this run, and is written with the next change.
//
// A file that is not exactly a JSON object is renamed to its name plus ".damaged" (".damaged-2" and
// so on if that exists), and the settings start empty. A file that cannot be read, or can be
// neither read nor renamed, is left unchanged, and the settings are kept in memory for this run
// only.
//
// Main thread only. One program at a time: changes by another one are overwritten.
#pragma once

#include <optional>
#include <string>
#include <string_view>

#include "platform/SettingsStore.h"
#include "scan/JsonValue.h"

namespace tessaly {

class SettingsFile final : public SettingsStore {
 public:
  // Reads the file at once. The file and its folder may be missing.
  explicit SettingsFile(std::string path);

  // The path of this program's settings: "Marrow/settings.json" in the user's settings folder.
  static std::string standardPath();

  void remove(std::string_view key) override;

  // Stops writing: later changes are kept for this run only. Call it before another instance
  // starts, which reads the file.
  void close() { mayWrite_ = false; }

 private:
  std::optional<SettingsValue> value(std::string_view key) const override;
  void set(std::string_view key, SettingsValue value) override;

  void load();
  void store();

  std::string path_;
  JsonValue::Object values_;
  bool mayWrite_ = false;
  bool isStored_ = true;  // whether the file contains values_
};

}  // namespace tessaly
