// How other programs of the desktop handle our Trash, and we theirs.
#include <array>
#include <cstdio>
#include <cstdlib>
#include <filesystem>
#include <gtest/gtest.h>
#include <sys/wait.h>
#include <utility>

#include "support/Needs.h"
#include "support/PlainFiles.h"
#include "trash/TrashOnDisk.h"

namespace tessaly {
namespace {

namespace fs = std::filesystem;

struct Answer {
  int status = -1;
  std::string output;  // including standard error
};

class OtherPrograms : public testing::Test {
 protected:
  // Runs a command with the home of this disk.
  Answer run(const std::string& command) const {
    const std::string home = disk_.tree.at("home");
    const std::string line =
        "HOME='" + home + "' XDG_DATA_HOME='" + home + "/data' " + command + " 2>&1";
    Answer answer;
    FILE* output = ::popen(line.c_str(), "r");
    if (output == nullptr) return answer;
    std::array<char, 4096> buffer{};
    while (const std::size_t count = std::fread(buffer.data(), 1, buffer.size(), output)) {
      answer.output.append(buffer.data(), count);
    }
    const int status = ::pclose(output);
    answer.status = WIFEXITED(status) ? WEXITSTATUS(status) : -1;
    return answer;
  }

  static bool isInstalled(const std::string& tool) {
    return std::system(("command -v " + tool + " >/dev/null 2>&1").c_str()) == 0;
  }

  static std::string pathLineOf(const std::string& info) {
    const std::string text = contentOf(info);
    const std::size_t start = text.find("Path=");
    return start == std::string::npos ? "" : text.substr(start, text.find('\n', start) - start);
  }

  TrashOnDisk disk_;
};

constexpr std::array names = {"film.mkv", "a b%c.txt", "line\nfeed",
                              "\xff\xfe", "\xC3\xA9",  "!@#$&()+,;=[]{}~^`|<>?*:\"\\"};

TEST_F(OtherPrograms, gio_records_the_same_path_for_any_name) {
  if (!isInstalled("gio")) GTEST_SKIP() << needs(Need::gio, "not installed");
  for (const std::string name : names) {
    disk_.put(disk_.at(name), "x");
    const Answer answer = run("gio trash '" + disk_.at(name) + "'");
    ASSERT_EQ(answer.status, 0) << answer.output;
    const std::string theirs = pathLineOf(disk_.homeTrash() + "/info/" + name + ".trashinfo");
    ASSERT_NE(theirs, "");
    TrashOnDisk::remove(disk_.homeTrash());
    disk_.put(disk_.at(name), "x");
    const Result<ItemInTrash> moved = disk_.mover().moveToTrash(disk_.at(name));
    ASSERT_TRUE(moved) << told(moved);
    EXPECT_EQ(pathLineOf(infoPathOf(moved.value().path)), theirs);
    TrashOnDisk::remove(disk_.homeTrash());
  }
}

TEST_F(OtherPrograms, items_moved_by_gio_come_back) {
  if (!isInstalled("gio")) GTEST_SKIP() << needs(Need::gio, "not installed");
  for (const std::string name : names) {
    disk_.put(disk_.at(name), name);
    ASSERT_EQ(run("gio trash '" + disk_.at(name) + "'").status, 0);
    EXPECT_FALSE(isThere(disk_.at(name)));
    const std::string place = disk_.homeTrash() + "/files/" + name;
    EXPECT_EQ(told(disk_.mover().putBack(knownInTrash(place), recordedPath(place))), "");
    EXPECT_EQ(contentOf(disk_.at(name)), name);
    EXPECT_TRUE(disk_.infos().empty());
  }
}

TEST_F(OtherPrograms, gio_and_we_skip_names_that_the_other_has_taken) {
  if (!isInstalled("gio")) GTEST_SKIP() << needs(Need::gio, "not installed");
  for (int round = 0; round < 3; ++round) {
    disk_.put(disk_.at("film.mkv"), "x");
    ASSERT_EQ(run("gio trash '" + disk_.at("film.mkv") + "'").status, 0);
    disk_.put(disk_.at("film.mkv"), "x");
    ASSERT_TRUE(disk_.mover().moveToTrash(disk_.at("film.mkv")));
  }
  EXPECT_EQ(disk_.files().size(), 6U);
  EXPECT_EQ(disk_.infos().size(), 6U);
}

// gio uses a service on the session bus to read the Trash.
class GioTrash : public OtherPrograms {
 protected:
  void SetUp() override {
    for (const char* tool : {"gio", "dbus-run-session"}) {
      if (!isInstalled(tool))
        GTEST_SKIP() << needs(Need::gioTrash, std::string(tool) + " is not installed");
    }
    disk_.tree.plant("home", "run/ mode=0700");
    const Answer empty = gio("trash --list");
    if (empty.status != 0 || empty.output.find("not supported") != std::string::npos) {
      GTEST_SKIP() << needs(Need::gioTrash, empty.output);
    }
  }

  Answer gio(const std::string& arguments) const {
    return run("XDG_RUNTIME_DIR='" + disk_.tree.at("home/run") + "' dbus-run-session -- gio " +
               arguments);
  }
};

TEST_F(GioTrash, gio_lists_our_items) {
  for (const char* name : {"film.mkv", "a b%c.txt", "\xC3\xA9"}) {
    disk_.put(disk_.at(name), "x");
    ASSERT_TRUE(disk_.mover().moveToTrash(disk_.at(name)));
  }
  const Answer listed = gio("trash --list");
  // It escapes the characters of a path that are not ASCII.
  for (const auto& [uri, name] :
       {std::pair("film.mkv", "film.mkv"), std::pair("a%20b%25c.txt", "a b%c.txt"),
        std::pair("%C3%A9", "\\xc3\\xa9")}) {
    const std::string line = std::string("trash:///") + uri + "\t" + disk_.at(name) + "\n";
    EXPECT_NE(listed.output.find(line), std::string::npos) << line << " in " << listed.output;
  }
}

// Like a record from the reserve until the move is done.
TEST_F(GioTrash, gio_reads_a_record_followed_by_line_feeds) {
  disk_.put(disk_.at("film.mkv"), "the content");
  const Result<ItemInTrash> moved = disk_.mover().moveToTrash(disk_.at("film.mkv"));
  ASSERT_TRUE(moved) << told(moved);
  const std::string info = infoPathOf(moved.value().path);
  putFile(info, contentOf(info) + std::string(16384, '\n'));
  const Answer listed = gio("trash --list");
  EXPECT_NE(listed.output.find("trash:///film.mkv\t" + disk_.at("film.mkv") + "\n"),
            std::string::npos)
      << listed.output;
  EXPECT_EQ(gio("trash --restore 'trash:///film.mkv'").status, 0);
  EXPECT_EQ(disk_.contentOf(disk_.at("film.mkv")), "the content");
}

TEST_F(GioTrash, gio_restores_our_items) {
  disk_.put(disk_.at("a b%c.txt"), "the content");
  ASSERT_TRUE(disk_.mover().moveToTrash(disk_.at("a b%c.txt")));
  EXPECT_EQ(gio("trash --restore 'trash:///a%20b%25c.txt'").status, 0);
  EXPECT_EQ(disk_.contentOf(disk_.at("a b%c.txt")), "the content");
  EXPECT_TRUE(disk_.files().empty());
  EXPECT_TRUE(disk_.infos().empty());
}

TEST_F(OtherPrograms, trash_list_lists_our_items) {
  if (!isInstalled("trash-list")) GTEST_SKIP() << needs(Need::trashCli, "not installed");
  disk_.put(disk_.at("a b%c.txt"), "x");
  ASSERT_TRUE(disk_.mover().moveToTrash(disk_.at("a b%c.txt")));
  const Answer listed = run("trash-list");
  EXPECT_NE(listed.output.find(disk_.at("a b%c.txt")), std::string::npos) << listed.output;
}

TEST_F(OtherPrograms, trash_list_reads_a_record_followed_by_line_feeds) {
  if (!isInstalled("trash-list")) GTEST_SKIP() << needs(Need::trashCli, "not installed");
  disk_.put(disk_.at("film.mkv"), "x");
  const Result<ItemInTrash> moved = disk_.mover().moveToTrash(disk_.at("film.mkv"));
  ASSERT_TRUE(moved) << told(moved);
  const std::string info = infoPathOf(moved.value().path);
  putFile(info, contentOf(info) + std::string(16384, '\n'));
  const Answer listed = run("trash-list");
  EXPECT_NE(listed.output.find(" " + disk_.at("film.mkv") + "\n"), std::string::npos)
      << listed.output;
}

TEST_F(OtherPrograms, trash_list_lists_nothing_after_emptying) {
  if (!isInstalled("trash-list")) GTEST_SKIP() << needs(Need::trashCli, "not installed");
  disk_.put(disk_.at("folder/film"), "x");
  disk_.put(disk_.at("film"), "x");
  for (const char* name : {"folder", "film"}) {
    ASSERT_TRUE(disk_.mover().moveToTrash(disk_.at(name)));
  }
  const auto listsOurs = [&] {
    return run("trash-list").output.find(disk_.at("")) != std::string::npos;
  };
  EXPECT_TRUE(listsOurs());
  EXPECT_EQ(told(disk_.can().empty()), "");
  EXPECT_FALSE(listsOurs());
}

TEST_F(OtherPrograms, items_moved_by_gio_are_deleted_with_their_records) {
  if (!isInstalled("gio")) GTEST_SKIP() << needs(Need::gio, "not installed");
  disk_.put(disk_.at("folder/film"), "x");
  ASSERT_EQ(run("gio trash '" + disk_.at("folder") + "'").status, 0);
  for (const std::string name : names) {
    disk_.put(disk_.at(name), name);
    ASSERT_EQ(run("gio trash '" + disk_.at(name) + "'").status, 0);
  }
  const EmptiedTrash emptied = disk_.can().empty();
  EXPECT_EQ(told(emptied), "");
  EXPECT_EQ(emptied.deleted, static_cast<std::int64_t>(names.size()) + 1);
  EXPECT_TRUE(disk_.files().empty());
  EXPECT_TRUE(disk_.infos().empty());
}

}  // namespace
}  // namespace tessaly
