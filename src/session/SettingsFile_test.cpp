#include "session/SettingsFile.h"

#include <algorithm>
#include <cstdlib>
#include <filesystem>
#include <gmock/gmock.h>
#include <gtest/gtest.h>
#include <sys/resource.h>
#include <sys/stat.h>
#include <sys/syscall.h>
#include <unistd.h>

#include "platform/SizeLimit.h"
#include "support/ForkedChild.h"
#include "support/PlainFiles.h"
#include "support/SettingsContract.h"
#include "support/SystemCallTrace.h"
#include "support/TempTree.h"

namespace tessaly {
namespace {

namespace fs = std::filesystem;
using namespace std::string_literals;
using testing::ElementsAre;

struct FileHarness {
  SettingsStore& store() { return store_; }

  TempTree tree_;
  SettingsFile store_{tree_.at("settings.json")};
};

INSTANTIATE_TYPED_TEST_SUITE_P(File, SettingsContract, FileHarness);

class SettingsFileTest : public ::testing::Test {
 protected:
  // The settings as the next run of the program reads them.
  SettingsFile nextRun() const { return SettingsFile(path); }

  TempTree tree;
  std::string path = tree.at("settings.json");
};

TEST_F(SettingsFileTest, values_are_read_in_the_next_run) {
  std::string bytes;
  for (int byte = 0; byte < 256; ++byte) bytes += static_cast<char>(byte);
  {
    SettingsFile settings(path);
    settings.setText("text\xff", bytes);
    settings.setBoolean("yes", true);
    settings.setBoolean("no", false);
    settings.setTexts("texts", {"/home/\xe9t\xe9", "", bytes});
    settings.setTexts("none", {});
    settings.setBinary("binary", bytes);
    settings.setText("gone", "x");
    settings.remove("gone");
  }
  const SettingsFile settings = nextRun();
  EXPECT_EQ(settings.text("text\xff"), bytes);
  EXPECT_EQ(settings.boolean("yes"), true);
  EXPECT_EQ(settings.boolean("no"), false);
  EXPECT_EQ(settings.texts("texts"), (Texts{"/home/\xe9t\xe9", "", bytes}));
  EXPECT_EQ(settings.texts("none"), Texts{});
  EXPECT_EQ(settings.binary("binary"), bytes);
  EXPECT_EQ(settings.text("gone"), std::nullopt);
}

TEST_F(SettingsFileTest, the_file_is_readable_by_people) {
  SettingsFile settings(path);
  settings.setTexts("marrow.pins", {"/b", "/a"});
  settings.setBinary("marrow.filters", "[]");
  settings.setText("marrow.lastScanRoot", "/home/é");
  settings.setBoolean("marrow.diskAlerts", true);
  EXPECT_EQ(contentOf(path), R"({
  "marrow.diskAlerts": true,
  "marrow.filters": {
    "base64": "W10="
  },
  "marrow.lastScanRoot": "/home/é",
  "marrow.pins": [
    "/b",
    "/a"
  ]
}
)");
}

TEST_F(SettingsFileTest, nothing_is_written_before_a_change) {
  SettingsFile settings(path);
  settings.remove("never.there");
  EXPECT_THAT(entriesOf(tree.path()), ElementsAre());
  settings.setText("a", "1");
  EXPECT_THAT(entriesOf(tree.path()), ElementsAre("settings.json"));
}

TEST_F(SettingsFileTest, setting_the_present_value_writes_nothing) {
  SettingsFile settings(path);
  settings.setText("a", "1");
  settings.setBinary("b", "1");
  settings.setTexts("c", {"1"});
  fs::remove(path);
  settings.setText("a", "1");
  settings.setBinary("b", "1");
  settings.setTexts("c", {"1"});
  settings.remove("d");
  EXPECT_FALSE(fs::exists(path));
  settings.setText("a", "2");
  EXPECT_TRUE(fs::exists(path));
}

TEST_F(SettingsFileTest, settings_above_the_limit_on_files_leave_the_old_file) {
  SettingsFile(path).setText("a", "old");
  const std::string before = contentOf(path);
  EXPECT_EQ(inForkedChild([&]() -> std::string {
              SizeLimit::failWritesBeyond();
              const rlimit limit{500, 500};
              if (setrlimit(RLIMIT_FSIZE, &limit) != 0) return "no limit";
              SettingsFile settings(path);
              settings.setText("b", std::string(2000, 'x'));
              if (contentOf(path) != before) return "the old file is gone";
              // The large value is kept for this run, and smaller settings are written again.
              if (settings.text("b") != std::string(2000, 'x')) return "the new value is lost";
              settings.setText("b", "new");
              return contentOf(path) == before ? "no way on" : "";
            }),
            "");
  EXPECT_EQ(nextRun().text("a"), "old");
  EXPECT_EQ(nextRun().text("b"), "new");
  EXPECT_THAT(entriesOf(tree.path()), ElementsAre("settings.json"));
}

TEST_F(SettingsFileTest, nothing_is_written_once_it_is_closed) {
  SettingsFile settings(path);
  settings.setText("a", "1");
  settings.close();
  // Written by the next instance.
  SettingsFile(path).setText("a", "2");
  settings.setText("a", "3");
  settings.setBoolean("b", true);
  settings.remove("a");
  EXPECT_EQ(nextRun().text("a"), "2");
  EXPECT_EQ(nextRun().boolean("b"), std::nullopt);
  EXPECT_EQ(settings.boolean("b"), true);
}

TEST_F(SettingsFileTest, only_the_user_may_read_it) {
  const mode_t before = umask(0);
  SettingsFile settings(tree.at("new/Marrow/settings.json"));
  settings.setText("marrow.ai.key", "secret");
  putFile(path, "{}");
  chmod(path.c_str(), 0666);
  SettingsFile(path).setText("a", "1");
  umask(before);
  EXPECT_EQ(permissionsOf(tree.at("new")), 0700U);
  EXPECT_EQ(permissionsOf(tree.at("new/Marrow")), 0700U);
  EXPECT_EQ(permissionsOf(tree.at("new/Marrow/settings.json")), 0600U);
  EXPECT_EQ(permissionsOf(path), 0600U);
}

TEST_F(SettingsFileTest, unknown_content_is_kept) {
  putFile(path, R"({"zoom":1.50,"huge":123456789012345678901234567890,"far":1e999,"nothing":null,)"
                R"("mixed":["a",1],"object":{"b":[{}],"a":-0.0},"binary":{"base64":"W10","x":1},)"
                R"("marrow.pins":["/a"],"text":"é/"})");
  SettingsFile settings(path);
  settings.setTexts("marrow.pins", {"/b"});
  EXPECT_EQ(contentOf(path), R"({
  "binary": {
    "base64": "W10",
    "x": 1
  },
  "far": 1e999,
  "huge": 123456789012345678901234567890,
  "marrow.pins": [
    "/b"
  ],
  "mixed": [
    "a",
    1
  ],
  "nothing": null,
  "object": {
    "a": -0.0,
    "b": [
      {}
    ]
  },
  "text": "é/",
  "zoom": 1.50
}
)");
}

TEST_F(SettingsFileTest, a_value_of_an_unknown_type_is_absent_and_can_be_set) {
  putFile(path,
          R"({"a":1,"b":null,"c":["x",1],"d":{},"e":{"base64":1},"f":{"base64":"A"},)"
          R"("g":{"base64":"W10=","h":1},"h":[[]],"i":{"base64":"W10=\n"},"j":{"other":"W10="}})");
  SettingsFile settings(path);
  for (const char* key : {"a", "b", "c", "d", "e", "f", "g", "h", "i", "j"}) {
    EXPECT_FALSE(settings.text(key) || settings.boolean(key) || settings.texts(key) ||
                 settings.binary(key))
        << key;
    settings.setText(key, "x");
    EXPECT_EQ(settings.text(key), "x");
  }
  EXPECT_EQ(nextRun().text("j"), "x");
}

// The pairs of RFC 4648, section 10, and the two characters that are neither letters nor digits.
TEST_F(SettingsFileTest, binary_of_any_length_is_base64_with_padding) {
  const std::vector<std::pair<std::string, std::string>> pairs = {{"", ""},
                                                                  {"f", "Zg=="},
                                                                  {"fo", "Zm8="},
                                                                  {"foo", "Zm9v"},
                                                                  {"foob", "Zm9vYg=="},
                                                                  {"\xfb\xff\xfe", "+//+"},
                                                                  {"\0\0\0\0"s, "AAAAAA=="}};
  for (const auto& [bytes, text] : pairs) {
    SettingsFile(path).setBinary("a", bytes);
    EXPECT_EQ(contentOf(path), "{\n  \"a\": {\n    \"base64\": \"" + text + "\"\n  }\n}\n");
    EXPECT_EQ(nextRun().binary("a"), bytes) << text;
  }
}

TEST_F(SettingsFileTest, base64_in_any_other_form_is_absent) {
  for (const char* text :
       {"=",     "==",       "====",  "A",    "AA",   "AAA",      "AA=",     "A===",
        "AA===", "AAA==",    "AAAA=", "AB==", "AAB=", "AAAA====", "A A=",    "AAAA ",
        "AA-_",  "AA==AA==", "AAAAA", "A=AA", "=AAA", "é==",      "AAAA\\n", "AAA\\u0000"}) {
    putFile(path, R"({"a":{"base64":")" + std::string(text) + R"("}})");
    EXPECT_EQ(nextRun().binary("a"), std::nullopt) << text;
  }
}

TEST_F(SettingsFileTest, the_last_of_several_values_of_one_key_counts) {
  putFile(path, R"({"a":"1","a":"2"})");
  EXPECT_EQ(nextRun().text("a"), "2");
}

const std::string good = R"({"a":"1","b":[true,{"c":1}]})";

std::vector<std::string> damagedFiles() {
  std::vector<std::string> files = {
      "",
      " ",
      "\0"s,
      "null",
      "[]",
      "\"a\"",
      "1",
      "{\"a\":1}x",
      good + good,
      good + "\0"s,
      "\xEF\xBB\xBF" + good,
      "\xFF\xFE{\0}\0"s,
      "{\"a\":\"\xff\"}",
      "{\"a\":\"\\ud800\"}",
      "{\"a\":\"\0\"}"s,
      "{a:1}",
      "{\"a\":01}",
      "{\"a\":1,}",
      "{\"a\":" + std::string(100000, '['),
      "{\"a\":" + std::string(100000, '[') + std::string(100000, ']') + "}",
      std::string(100000, '{'),
      std::string(4096, '\0')};
  for (std::size_t length = 0; length < good.size(); ++length) {
    files.push_back(good.substr(0, length));
  }
  return files;
}

TEST_F(SettingsFileTest, a_damaged_file_is_renamed_and_the_settings_start_empty) {
  for (const std::string& damaged : damagedFiles()) {
    const TempTree place;
    const std::string file = place.at("settings.json");
    putFile(file, damaged);
    {
      SettingsFile settings(file);
      EXPECT_EQ(settings.text("a"), std::nullopt);
      EXPECT_EQ(contentOf(file + ".damaged"), damaged);
      settings.setText("a", "2");
    }
    EXPECT_EQ(SettingsFile(file).text("a"), "2");
    EXPECT_EQ(contentOf(file + ".damaged"), damaged);
    EXPECT_THAT(entriesOf(place.path()), ElementsAre("settings.json", "settings.json.damaged"));
  }
}

TEST_F(SettingsFileTest, an_earlier_damaged_file_is_never_overwritten) {
  for (const char* damaged : {"first", "second", "third"}) {
    putFile(path, damaged);
    SettingsFile(path).setBoolean("a", true);
  }
  EXPECT_EQ(contentOf(path + ".damaged"), "first");
  EXPECT_EQ(contentOf(path + ".damaged-2"), "second");
  EXPECT_EQ(contentOf(path + ".damaged-3"), "third");
  EXPECT_EQ(nextRun().boolean("a"), true);
}

TEST_F(SettingsFileTest, a_link_to_the_file_stays_a_link) {
  tree.plant("kept/\nsettings.json -> kept/own.json\n");
  putFile(tree.at("kept/own.json"), R"({"a":"1"})");
  {
    SettingsFile settings(path);
    EXPECT_EQ(settings.text("a"), "1");
    settings.setText("a", "2");
  }
  EXPECT_TRUE(fs::is_symlink(path));
  EXPECT_EQ(contentOf(tree.at("kept/own.json")), "{\n  \"a\": \"2\"\n}\n");
  putFile(tree.at("kept/own.json"), "damaged");
  SettingsFile(path).setText("a", "3");
  EXPECT_TRUE(fs::is_symlink(path));
  EXPECT_EQ(contentOf(tree.at("kept/own.json")), "{\n  \"a\": \"3\"\n}\n");
  EXPECT_EQ(contentOf(tree.at("kept/own.json.damaged")), "damaged");
}

// Whether the settings work in memory, without the content of the file.
std::string tryInMemory(SettingsFile& settings) {
  if (settings.text("a")) return "something was read";
  settings.setText("a", "2");
  settings.setBoolean("b", true);
  settings.remove("b");
  if (settings.text("a") != "2" || settings.boolean("b")) return "does not work in memory";
  return "";
}

TEST_F(SettingsFileTest, an_item_that_is_not_a_file_is_left_unchanged) {
  tree.plant("folder/\n  x\npipe fifo\nnull -> /dev/null\nloop -> loop\nhuge sparse=1G\nfile\n");
  for (const char* name : {"folder", "pipe", "null", "loop", "huge", "file/below"}) {
    SettingsFile settings(tree.at(name));
    EXPECT_EQ(tryInMemory(settings), "") << name;
  }
  EXPECT_THAT(entriesOf(tree.path()),
              ElementsAre("file", "folder", "huge", "loop", "null", "pipe"));
  EXPECT_TRUE(fs::is_fifo(tree.at("pipe")));
  EXPECT_THAT(entriesOf(tree.at("folder")), ElementsAre("x"));
  EXPECT_EQ(fs::file_size(tree.at("huge")), 1U << 30U);
}

TEST_F(SettingsFileTest, an_unreadable_file_is_not_overwritten) {
  putFile(path, R"({"a":"1"})");
  chmod(path.c_str(), 0000);
  chmod(tree.path().c_str(), 0777);  // so that replacing the file would succeed
  EXPECT_EQ(asOtherUser([&] {
              SettingsFile settings(path);
              return tryInMemory(settings);
            }),
            "");
  chmod(path.c_str(), 0600);
  EXPECT_EQ(contentOf(path), R"({"a":"1"})");
  EXPECT_THAT(entriesOf(tree.path()), ElementsAre("settings.json"));
}

TEST_F(SettingsFileTest, a_damaged_file_that_cannot_be_renamed_is_not_overwritten) {
  // The name has the greatest possible length, so no suffix fits.
  const std::string longest(255, 'n');
  putFile(tree.at(longest), "damaged");
  SettingsFile settings(tree.at(longest));
  EXPECT_EQ(tryInMemory(settings), "");
  EXPECT_EQ(contentOf(tree.at(longest)), "damaged");
  EXPECT_THAT(entriesOf(tree.path()), ElementsAre(longest));
}

TEST_F(SettingsFileTest, a_change_that_cannot_be_written_is_kept_and_written_later) {
  chmod(tree.path().c_str(), 0777);
  EXPECT_EQ(asOtherUser([&]() -> std::string {
              const std::string folder = tree.at("own");
              const std::string file = folder + "/settings.json";
              mkdir(folder.c_str(), 0700);
              SettingsFile settings(file);
              settings.setText("a", "1");
              chmod(folder.c_str(), 0500);
              settings.setText("a", "2");
              settings.setText("b", "3");
              if (settings.text("a") != "2" || settings.text("b") != "3") return "forgotten";
              if (SettingsFile(file).text("a") != "1") return "the old file has changed";
              chmod(folder.c_str(), 0700);
              settings.setText("b", "3");
              const SettingsFile next(file);
              if (next.text("a") != "2" || next.text("b") != "3") return "not tried again";
              return "";
            }),
            "");
}

TEST_F(SettingsFileTest, a_change_is_synced_to_disk_before_the_call_returns) {
  const std::string obstacle = SystemCallTrace::obstacle();
  if (!obstacle.empty()) GTEST_SKIP() << obstacle;
  SettingsFile settings(path);
  const TracedRun run = SystemCallTrace::of([&] {
    settings.setText("a", "1");
    return ""s;
  });
  EXPECT_EQ(std::count(run.calls.begin(), run.calls.end(), SYS_fsync), 2);
}

TEST_F(SettingsFileTest, a_kill_at_any_step_of_a_change_leaves_the_old_or_the_new_settings) {
  const std::string obstacle = SystemCallTrace::obstacle();
  if (!obstacle.empty()) GTEST_SKIP() << obstacle;
  SettingsFile(path).setText("a", "1");
  const std::string before = contentOf(path);
  bool wasNew = false;
  for (std::size_t stop = 1;; ++stop) {
    putFile(path, before);
    const TracedRun run = SystemCallTrace::killedAt(stop, [&] {
      SettingsFile(path).setText("a", "2");
      return ""s;
    });
    const std::optional<std::string> found = nextRun().text("a");
    ASSERT_TRUE(found == "1" || found == "2") << "killed at stop " << stop;
    wasNew = wasNew || found == "2";
    if (run.end != TracedRun::End::killed) {
      EXPECT_EQ(run.end, TracedRun::End::finished) << run.told;
      EXPECT_EQ(found, "2");
      break;
    }
  }
  EXPECT_TRUE(wasNew);
  EXPECT_FALSE(fs::exists(path + ".damaged"));
}

TEST(SettingsFilePath, the_standard_path_is_in_the_users_settings_folder) {
  EXPECT_EQ(inForkedChild([] {
              ::setenv("XDG_CONFIG_HOME", "/of/settings", 1);
              return SettingsFile::standardPath();
            }),
            "/of/settings/Marrow/settings.json");
}

}  // namespace
}  // namespace tessaly
