#include "platform/Leftovers.h"

#include <algorithm>
#include <cstddef>
#include <fcntl.h>
#include <filesystem>
#include <gmock/gmock.h>
#include <gtest/gtest.h>
#include <optional>
#include <string>
#include <sys/mount.h>
#include <sys/stat.h>
#include <unistd.h>
#include <utility>
#include <vector>

#include "platform/AtomicFile.h"
#include "platform/StagedFile.h"
#include "platform/WriteNote.h"
#include "platform/linux/FileDescriptor.h"
#include "support/HandSteppedDispatch.h"
#include "support/Needs.h"
#include "support/PlainFiles.h"
#include "support/PrivateMounts.h"
#include "support/SystemCallTrace.h"
#include "support/TempTree.h"

namespace tessaly {
namespace {

namespace fs = std::filesystem;
using Leftovers::Found;
using testing::AnyOf;
using testing::Contains;
using testing::ElementsAre;
using testing::IsEmpty;
using testing::SizeIs;
using testing::StartsWith;

constexpr const char* folderName = ".tessaly-0123456789abcdef";

std::string told(const Outcome& outcome) {
  return outcome ? "" : outcome.error().description();
}

std::string replaceIt(const std::string& path) {
  return told(
      AtomicFile::replace(path, "new", AtomicFile::Durability::synced, AtomicFile::Access::usual));
}

// Archives over the existing file.
std::string archiveTo(const std::string& path) {
  const Result<FileIdentity> old = FileIdentity::of(path);
  Result<StagedFile> staged = StagedFile::beside(path);
  if (!staged) return staged.error().description();
  putFile(staged.value().path(), "new");
  const Result<StagedFile::Placed> placed = staged.value().place(old.value());
  if (!placed) return placed.error().description();
  return placed.value().path == path ? "" : placed.value().path;
}

std::vector<std::string> privateEntriesOf(const std::string& folder) {
  std::vector<std::string> names = entriesOf(folder);
  std::erase_if(names, [](const std::string& name) { return !name.starts_with(".tessaly-"); });
  return names;
}

class LeftoversOf : public testing::TestWithParam<std::string (*)(const std::string&)> {
 protected:
  void SetUp() override {
    if (const std::string obstacle = SystemCallTrace::obstacle(); !obstacle.empty())
      GTEST_SKIP() << obstacle;
  }

  TempTree tree_;
  std::string path_ = tree_.at("out.zip");
};

TEST_P(LeftoversOf, leftovers_of_a_writer_killed_at_any_call_are_removed) {
  std::size_t timesLeft = 0;
  for (std::size_t stop = 1;; ++stop) {
    putFile(path_, "old");
    const TracedRun run = SystemCallTrace::killedAt(stop, [&] { return GetParam()(path_); });
    const std::vector<std::string> left = privateEntriesOf(tree_.path());
    timesLeft += left.size();
    ASSERT_EQ(Leftovers::removeFrom(tree_.path()), Found::nothingInUse);
    const std::vector<std::string> stay = privateEntriesOf(tree_.path());
    if (!stay.empty()) {
      // During the exchange of two files, the one in the private folder may be one that must not be
      // deleted.
      ASSERT_THAT(stay, SizeIs(1));
      ASSERT_THAT(entriesOf(tree_.at(stay[0])), AnyOf(IsEmpty(), ElementsAre("exchanged.zip")));
      fs::remove_all(tree_.at(stay[0]));
    }
    ASSERT_THAT(contentOf(path_), AnyOf("old", "new")) << "stop " << stop;
    if (run.end != TracedRun::End::killed) {
      EXPECT_EQ(run.told, "");
      break;
    }
  }
  EXPECT_GT(timesLeft, 5U);
}

TEST_P(LeftoversOf, removing_leftovers_does_not_disturb_a_writer_at_work) {
  for (std::size_t stop = 1;; ++stop) {
    putFile(path_, "old");
    const TracedRun run = SystemCallTrace::interruptedAt(
        stop, [&] { Leftovers::removeFrom(tree_.path()); }, [&] { return GetParam()(path_); });
    ASSERT_EQ(run.end, TracedRun::End::finished) << run.told;
    ASSERT_EQ(run.told, "") << "stop " << stop;
    ASSERT_EQ(contentOf(path_), "new");
    ASSERT_THAT(entriesOf(tree_.path()), ElementsAre("out.zip")) << "stop " << stop;
    if (!run.wasInterrupted) break;
  }
}

INSTANTIATE_TEST_SUITE_P(Writers, LeftoversOf, testing::Values(replaceIt, archiveTo),
                         [](const auto& one) {
                           return one.param == replaceIt ? "file" : "archive";
                         });

// A file that appears at the target after it was examined is exchanged with the archive for a
// moment, and belongs to another program.
TEST(Leftovers, a_file_that_a_killed_writer_had_exchanged_is_kept) {
  if (const std::string obstacle = SystemCallTrace::obstacle(); !obstacle.empty())
    GTEST_SKIP() << obstacle;
  for (std::size_t stop = 1;; ++stop) {
    const TempTree tree;
    const std::string path = tree.at("out.zip");
    putFile(path, "seen");
    const FileIdentity seen = FileIdentity::of(path).value();
    fs::remove(path);
    putFile(path, "of another");
    const TracedRun run = SystemCallTrace::killedAt(stop, [&]() -> std::string {
      Result<StagedFile> staged = StagedFile::beside(path);
      if (!staged) return staged.error().description();
      putFile(staged.value().path(), "new");
      const Result<StagedFile::Placed> placed = staged.value().place(seen);
      return placed ? "" : placed.error().description();
    });
    Leftovers::removeFrom(tree.path());
    std::vector<std::string> contents;
    for (const auto& entry : fs::recursive_directory_iterator(tree.path()))
      if (entry.is_regular_file()) contents.push_back(contentOf(entry.path()));
    ASSERT_THAT(contents, Contains("of another")) << "stop " << stop;
    if (run.end != TracedRun::End::killed) {
      EXPECT_EQ(run.told, "");
      break;
    }
  }
}

TEST(Leftovers, only_regular_files_with_a_private_name_are_removed) {
  const TempTree tree(R"(
    kept 4K
    .tessaly-1-2 -> kept
    .tessaly-1-3 -> nowhere
    .tessaly-1-4 fifo
    .tessaly-1-5 socket
    .tessaly-1-6/
      file 4K
    .tessaly-1-7.json 4K
    .tessaly-notes 4K
    .tessaly-place-0123456789abcdef 4K
    .tessaly-0123456789abcdee 4K
    .tessaly-0123456789abcdef -> .tessaly-1-6
    sub/
      .tessaly-1-8 4K
    .tessaly-1-9 4K
  )");
  ASSERT_EQ(chmod(tree.at(".tessaly-1-6").c_str(), 0700), 0);
  const std::vector<std::string> before = entriesOf(tree.path());
  EXPECT_EQ(Leftovers::removeFrom(tree.path()), Found::nothingInUse);
  std::vector<std::string> after = entriesOf(tree.path());
  EXPECT_FALSE(fs::exists(tree.at(".tessaly-1-9")));
  after.emplace_back(".tessaly-1-9");
  std::ranges::sort(after);
  EXPECT_EQ(after, before);
  EXPECT_TRUE(fs::exists(tree.at(".tessaly-1-6/file")));
  EXPECT_TRUE(fs::exists(tree.at("sub/.tessaly-1-8")));
}

TEST(Leftovers, private_folders_with_other_contents_are_kept) {
  for (const char* inside : {"", "file.zip 4K\n", "file 4K\nzia1B2c3 4K\n"}) {
    TempTree tree(std::string(folderName) + "/ mode=0700\n");
    tree.plant(folderName, inside);
    EXPECT_EQ(Leftovers::removeFrom(tree.path()), Found::nothingInUse);
    EXPECT_THAT(entriesOf(tree.path()), IsEmpty()) << inside;
  }
  for (const char* inside : {"file.zip 4K\nnotes.txt 4K\n", "file.zip/\n", "file.zip -> /none\n",
                             "file.zip fifo\n", "exchanged.zip 4K\n"}) {
    TempTree tree(std::string(folderName) + "/ mode=0700\n");
    tree.plant(folderName, inside);
    const std::vector<std::string> before = entriesOf(tree.at(folderName));
    EXPECT_EQ(Leftovers::removeFrom(tree.path()), Found::nothingInUse);
    EXPECT_EQ(entriesOf(tree.at(folderName)), before) << inside;
  }
}

TEST(Leftovers, private_folders_that_others_may_enter_are_kept) {
  const TempTree tree(std::string(folderName) + "/ mode=0710\n  file.zip 4K\n");
  Leftovers::removeFrom(tree.path());
  EXPECT_TRUE(fs::exists(tree.at(std::string(folderName) + "/file.zip")));
}

TEST(Leftovers, files_and_folders_of_other_users_are_kept) {
  if (geteuid() != 0)
    GTEST_SKIP() << needs(Need::root, "only root can make what belongs to others");
  const TempTree tree(std::string(".tessaly-1-2 4K\n") + folderName +
                      "/ mode=0700\n  file.zip 4K\n");
  constexpr uid_t other = 12345;
  ASSERT_EQ(chown(tree.at(".tessaly-1-2").c_str(), other, other), 0);
  ASSERT_EQ(chown(tree.at(folderName).c_str(), other, other), 0);
  Leftovers::removeFrom(tree.path());
  EXPECT_THAT(entriesOf(tree.path()), ElementsAre(folderName, ".tessaly-1-2"));
}

TEST(Leftovers, a_private_folder_with_a_file_system_mounted_on_it_is_kept) {
  const TempTree tree(std::string(folderName) + "/ mode=0700\n");
  const std::string result = inPrivateMounts([&]() -> std::string {
    const std::string folder = tree.at(folderName);
    if (mount("none", folder.c_str(), "tmpfs", 0, "mode=0700") != 0) return refusal();
    putFile(folder + "/file.zip", "x");
    Leftovers::removeFrom(tree.path());
    return contentOf(folder + "/file.zip") == "x" ? "" : "gone";
  });
  if (result.starts_with("refused")) GTEST_SKIP() << result;
  EXPECT_EQ(result, "");
}

TEST(Leftovers, a_private_folder_is_kept_while_a_tool_still_writes_to_it) {
  const TempTree tree(std::string(folderName) + "/ mode=0700\n  zia1B2c3 4K\n");
  const std::string file = tree.at(std::string(folderName) + "/zia1B2c3");
  {
    const FileDescriptor writer(open(file.c_str(), O_WRONLY | O_CLOEXEC));
    ASSERT_TRUE(writer);
    EXPECT_EQ(Leftovers::removeFrom(tree.path()), Found::inUse);
    EXPECT_TRUE(fs::exists(file));
  }
  EXPECT_EQ(Leftovers::removeFrom(tree.path()), Found::nothingInUse);
  EXPECT_THAT(entriesOf(tree.path()), IsEmpty());
}

TEST(Leftovers, leftovers_behind_a_link_are_not_removed) {
  const TempTree tree("there/\n  .tessaly-1-2 4K\nway -> there\nfile 4K\n");
  for (const char* path : {"way", "way/.", "file", "none"})
    EXPECT_EQ(Leftovers::removeFrom(tree.at(path)), Found::nothingInUse);
  EXPECT_TRUE(fs::exists(tree.at("there/.tessaly-1-2")));
}

class FoldersWrittenTo : public testing::Test {
 protected:
  // Creates the note and the leftover of a run that was killed while writing to `target`.
  std::string leaveNoteOf(const std::string& target) {
    const std::vector<std::string> before = entriesOf(notes());
    std::string note;
    std::string text;
    {
      const WriteNote place = WriteNote::of(target, notes());
      for (const std::string& name : entriesOf(notes())) {
        if (std::ranges::find(before, name) != before.end()) continue;
        note = name;
        text = contentOf(notes() + "/" + name);
      }
    }
    putFile(notes() + "/" + note, text);
    return note;
  }
  std::string notes() const { return tree_.at("support"); }

  TempTree tree_{"support/\nkept/\n  .tessaly-1-2 4K\n"};
};

TEST_F(FoldersWrittenTo, a_folder_is_noted_while_a_file_is_written_to_it) {
  {
    const WriteNote place = WriteNote::of(tree_.at("kept/out.json"), notes());
    const std::vector<std::string> names = entriesOf(notes());
    ASSERT_THAT(names, ElementsAre(StartsWith(".tessaly-place-")));
    EXPECT_EQ(contentOf(notes() + "/" + names[0]), tree_.at("kept"));
    EXPECT_EQ(permissionsOf(notes() + "/" + names[0]), 0600U);
    EXPECT_EQ(Leftovers::notesIn(notes()), names);
    Leftovers::settle(notes(), names[0]);
    EXPECT_EQ(Leftovers::removeFrom(notes()), Found::nothingInUse);
    EXPECT_THAT(entriesOf(notes()), ElementsAre(names[0])) << "the note of a run that goes on";
    EXPECT_TRUE(fs::exists(tree_.at("kept/.tessaly-1-2")));
  }
  EXPECT_THAT(entriesOf(notes()), IsEmpty());
}

TEST_F(FoldersWrittenTo, the_noted_folder_is_the_one_to_which_links_lead) {
  fs::create_symlink("../kept/real.json", tree_.at("support/link.json"));
  fs::create_directory_symlink("kept", tree_.at("way"));
  putFile(tree_.at("kept/real.json"), "old");
  const TempTree other;
  for (const char* target : {"support/link.json", "way/out.json"}) {
    const WriteNote place = WriteNote::of(tree_.at(target), other.path());
    ASSERT_THAT(entriesOf(other.path()), SizeIs(1));
    EXPECT_EQ(contentOf(other.at(entriesOf(other.path())[0])), tree_.at("kept")) << target;
  }
}

TEST_F(FoldersWrittenTo, no_folder_is_created_for_a_note_that_cannot_be_written) {
  const WriteNote nowhere = WriteNote::of(tree_.at("kept/out.json"), tree_.at("none"));
  const WriteNote nothing = WriteNote::of("", notes());
  EXPECT_FALSE(fs::exists(tree_.at("none")));
}

TEST_F(FoldersWrittenTo, leftovers_of_a_killed_run_and_its_note_are_removed) {
  const std::string note = leaveNoteOf(tree_.at("kept/out.json"));
  Leftovers::settle(notes(), note);
  EXPECT_THAT(entriesOf(tree_.at("kept")), IsEmpty());
  EXPECT_THAT(entriesOf(notes()), IsEmpty());
}

TEST_F(FoldersWrittenTo, the_note_of_a_removed_folder_is_removed) {
  const std::string note = leaveNoteOf(tree_.at("kept/out.json"));
  fs::remove_all(tree_.at("kept"));
  Leftovers::settle(notes(), note);
  EXPECT_THAT(entriesOf(notes()), IsEmpty());
}

TEST_F(FoldersWrittenTo, a_folder_replaced_by_a_link_is_not_cleared_and_its_note_is_removed) {
  const std::string note = leaveNoteOf(tree_.at("kept/out.json"));
  fs::rename(tree_.at("kept"), tree_.at("elsewhere"));
  fs::create_directory_symlink("elsewhere", tree_.at("kept"));
  Leftovers::settle(notes(), note);
  EXPECT_TRUE(fs::exists(tree_.at("elsewhere/.tessaly-1-2")));
  EXPECT_THAT(entriesOf(notes()), IsEmpty());
}

TEST_F(FoldersWrittenTo, a_note_stays_while_a_private_folder_there_is_in_use) {
  const std::string note = leaveNoteOf(tree_.at("kept/out.zip"));
  {
    const Result<StagedFile> other = StagedFile::beside(tree_.at("kept/other.zip"));
    ASSERT_TRUE(other);
    Leftovers::settle(notes(), note);
    EXPECT_TRUE(fs::exists(fs::path(other.value().path()).parent_path()));
    EXPECT_THAT(entriesOf(notes()), ElementsAre(note));
    EXPECT_FALSE(fs::exists(tree_.at("kept/.tessaly-1-2")));
  }
  Leftovers::settle(notes(), note);
  EXPECT_THAT(entriesOf(notes()), IsEmpty());
}

TEST_F(FoldersWrittenTo, a_damaged_note_is_removed_and_clears_no_folder) {
  const std::string name = ".tessaly-place-0123456789abcdef";
  for (const std::string& text : {std::string(), std::string("kept"), tree_.at("kept") + '\0',
                                  "/" + std::string(10000, 'x')}) {
    putFile(notes() + "/" + name, text);
    Leftovers::settle(notes(), name);
    EXPECT_THAT(entriesOf(notes()), IsEmpty());
  }
  EXPECT_TRUE(fs::exists(tree_.at("kept/.tessaly-1-2")));
}

TEST_F(FoldersWrittenTo, the_folders_of_the_program_and_each_noted_one_are_cleared_separately) {
  tree_.plant("support", ".tessaly-3-4 4K\n");
  tree_.plant("settings/\n  .tessaly-3-5 4K\nlinked -> settings\n");
  const std::string first = leaveNoteOf(tree_.at("kept/out.json"));
  const std::string second = leaveNoteOf(tree_.at("settings/out.json"));
  HandSteppedDispatch dispatch;
  Leftovers::removeAll(dispatch, notes(), {tree_.at("linked")});
  EXPECT_TRUE(fs::exists(tree_.at("support/.tessaly-3-4"))) << "on the caller's thread";
  ASSERT_EQ(dispatch.waiting(Dispatch::Queue::utility), 1U);
  dispatch.step(Dispatch::Queue::utility);
  EXPECT_FALSE(fs::exists(tree_.at("support/.tessaly-3-4")));
  EXPECT_FALSE(fs::exists(tree_.at("settings/.tessaly-3-5")));
  EXPECT_THAT(entriesOf(notes()), SizeIs(2));
  // A note whose volume does not respond does not delay the others.
  ASSERT_EQ(dispatch.waiting(Dispatch::Queue::utility), 2U);
  const Dispatch::Work hung = dispatch.take(Dispatch::Queue::utility);
  dispatch.drainAll();
  EXPECT_THAT(entriesOf(notes()), SizeIs(1));
  hung();
  EXPECT_THAT(entriesOf(notes()), IsEmpty());
  EXPECT_THAT(entriesOf(tree_.at("kept")), IsEmpty());
}

}  // namespace
}  // namespace tessaly
