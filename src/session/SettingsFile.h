// Settings in a file: one JSON object, in lines and with its keys in order, for its user to read
// and to edit while the program does not run.
//
// Texts, booleans and arrays of texts are what JSON calls so; binary is {"base64": "..."}. Whatever
// else stands in the file, under whatever key, is kept as it is, digit for digit: a newer version
// of the program may know what it means.
//
// Every change is written at once, before the call returns: the whole file is replaced, synced to
// disk, for the user's eyes alone. A value that is there already is not written again. What cannot
// be written holds for this run, and is tried again with the next change.
//
// A file that is no JSON object to the letter is moved aside, to its name with ".damaged" behind it
// (".damaged-2" and so on where there is one already), and all begins anew. A file that cannot be
// read, or that can be neither read nor moved aside, is left as it is for somebody to look into,
// and the settings are kept in memory for this run only.
//
// Main thread only. One program at a time: what another one writes meanwhile is overwritten.
#pragma once

#include <optional>
#include <string>
#include <string_view>

#include "platform/SettingsStore.h"
#include "scan/JsonValue.h"

namespace tessaly {

class SettingsFile final : public SettingsStore {
 public:
  // Reads the file at once. It need not be there, and neither need its folder.
  explicit SettingsFile(std::string path);

  // Where the settings of this program lie: "Marrow/settings.json" in the user's settings folder.
  static std::string standardPath();

  void remove(std::string_view key) override;

  // Writes nothing more: what is changed from now on holds for this run only. For a program that
  // makes room for another one, which reads the file.
  void close() { mayWrite_ = false; }

 private:
  std::optional<SettingsValue> value(std::string_view key) const override;
  void set(std::string_view key, SettingsValue value) override;

  void load();
  void store();

  std::string path_;
  JsonValue::Object values_;
  bool mayWrite_ = false;
  bool isStored_ = true;  // the file holds what values_ holds
};

}  // namespace tessaly
