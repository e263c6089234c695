// Tests for every SettingsStore. To run them on an implementation, define a harness:
//
//   struct Harness {
//     SettingsStore& store();  // empty at first
//   };
//   INSTANTIATE_TYPED_TEST_SUITE_P(MySettings, SettingsContract, Harness);
#pragma once

#include <gtest/gtest.h>
#include <optional>
#include <string>
#include <vector>

#include "platform/SettingsStore.h"

namespace tessaly {

template <class Harness>
class SettingsContract : public ::testing::Test {
 protected:
  SettingsStore& store() { return harness_.store(); }

  // A text with all byte values.
  static std::string allBytes() {
    std::string bytes;
    for (int byte = 0; byte < 256; ++byte) bytes += static_cast<char>(byte);
    return bytes;
  }

  // The types that are found under `key`: t, b, a, d for text, boolean, array, binary.
  std::string typesOf(const std::string& key) {
    std::string types;
    if (store().text(key)) types += 't';
    if (store().boolean(key)) types += 'b';
    if (store().texts(key)) types += 'a';
    if (store().binary(key)) types += 'd';
    return types;
  }

  Harness harness_;
};

using Texts = std::vector<std::string>;

TYPED_TEST_SUITE_P(SettingsContract);

TYPED_TEST_P(SettingsContract, settings_are_empty_at_first) {
  EXPECT_EQ(this->typesOf("marrow.pins"), "");
  EXPECT_EQ(this->typesOf(""), "");
}

TYPED_TEST_P(SettingsContract, values_are_returned_as_set) {
  SettingsStore& store = this->store();
  store.setText("text", "value");
  store.setBoolean("yes", true);
  store.setBoolean("no", false);
  store.setTexts("texts", {"b", "a", "b"});
  store.setBinary("binary", "[]");
  EXPECT_EQ(store.text("text"), "value");
  EXPECT_EQ(store.boolean("yes"), true);
  EXPECT_EQ(store.boolean("no"), false);
  EXPECT_EQ(store.texts("texts"), (Texts{"b", "a", "b"}));
  EXPECT_EQ(store.binary("binary"), "[]");
}

TYPED_TEST_P(SettingsContract, an_empty_value_is_a_value) {
  SettingsStore& store = this->store();
  store.setText("text", "");
  store.setTexts("texts", {});
  store.setTexts("one", {""});
  store.setBinary("binary", "");
  EXPECT_EQ(store.text("text"), "");
  EXPECT_EQ(store.texts("texts"), Texts{});
  EXPECT_EQ(store.texts("one"), Texts{""});
  EXPECT_EQ(store.binary("binary"), "");
}

TYPED_TEST_P(SettingsContract, a_value_of_one_type_is_absent_for_the_others) {
  SettingsStore& store = this->store();
  store.setText("text", "true");
  store.setBoolean("boolean", true);
  store.setTexts("texts", {"true"});
  store.setBinary("binary", "true");
  EXPECT_EQ(this->typesOf("text"), "t");
  EXPECT_EQ(this->typesOf("boolean"), "b");
  EXPECT_EQ(this->typesOf("texts"), "a");
  EXPECT_EQ(this->typesOf("binary"), "d");
}

TYPED_TEST_P(SettingsContract, a_new_value_replaces_one_of_any_type) {
  SettingsStore& store = this->store();
  store.setText("key", "1");
  store.setText("key", "2");
  EXPECT_EQ(store.text("key"), "2");
  store.setBoolean("key", true);
  EXPECT_EQ(this->typesOf("key"), "b");
  store.setTexts("key", {"x"});
  EXPECT_EQ(this->typesOf("key"), "a");
  store.setBinary("key", "x");
  EXPECT_EQ(this->typesOf("key"), "d");
  store.setText("key", "x");
  EXPECT_EQ(this->typesOf("key"), "t");
}

TYPED_TEST_P(SettingsContract, removing_removes_one_value) {
  SettingsStore& store = this->store();
  store.setText("a", "1");
  store.setText("b", "2");
  store.remove("a");
  store.remove("never.there");
  EXPECT_EQ(this->typesOf("a"), "");
  EXPECT_EQ(store.text("b"), "2");
  store.setBoolean("a", false);
  EXPECT_EQ(store.boolean("a"), false);
}

TYPED_TEST_P(SettingsContract, keys_differ_by_any_byte) {
  SettingsStore& store = this->store();
  store.setText("marrow.a", "1");
  store.setText("marrow.A", "2");
  store.setText("marrow", "3");
  store.setText("", "4");
  store.setText("\xff", "5");
  EXPECT_EQ(store.text("marrow.a"), "1");
  EXPECT_EQ(store.text("marrow.A"), "2");
  EXPECT_EQ(store.text("marrow"), "3");
  EXPECT_EQ(store.text(""), "4");
  EXPECT_EQ(store.text("\xff"), "5");
}

TYPED_TEST_P(SettingsContract, texts_and_binary_keep_any_bytes) {
  SettingsStore& store = this->store();
  const std::string bytes = this->allBytes();
  store.setText("text", bytes);
  store.setTexts("texts", {bytes, "/home/\xe9t\xe9", "\U0010FFFF"});
  store.setBinary("binary", bytes);
  EXPECT_EQ(store.text("text"), bytes);
  EXPECT_EQ(store.texts("texts"), (Texts{bytes, "/home/\xe9t\xe9", "\U0010FFFF"}));
  EXPECT_EQ(store.binary("binary"), bytes);
}

TYPED_TEST_P(SettingsContract, binary_of_any_length_is_returned) {
  const std::string bytes = this->allBytes();
  for (std::size_t length = 0; length <= bytes.size(); ++length) {
    this->store().setBinary("binary", bytes.substr(0, length));
    ASSERT_EQ(this->store().binary("binary"), bytes.substr(0, length));
  }
}

REGISTER_TYPED_TEST_SUITE_P(SettingsContract, settings_are_empty_at_first,
                            values_are_returned_as_set, an_empty_value_is_a_value,
                            a_value_of_one_type_is_absent_for_the_others,
                            a_new_value_replaces_one_of_any_type, removing_removes_one_value,
                            keys_differ_by_any_byte, texts_and_binary_keep_any_bytes,
                            binary_of_any_length_is_returned);

}  // namespace tessaly
