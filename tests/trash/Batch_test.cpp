// Batches that a session moves to a real Trash, and back.
#include <filesystem>
#include <gmock/gmock.h>
#include <gtest/gtest.h>
#include <memory>
#include <optional>
#include <string>
#include <utility>
#include <vector>

#include "support/ForkedChild.h"
#include "support/PlainFiles.h"
#include "support/SystemCallTrace.h"
#include "trash/SessionOnDisk.h"

namespace tessaly {
namespace {

namespace fs = std::filesystem;
using testing::ElementsAre;
using testing::IsEmpty;
using testing::UnorderedElementsAre;
using Kind = SystemError::Kind;
using Queue = Dispatch::Queue;

// Also used in a child of another user, without a test around it.
class BatchOnDisk {
 public:
  std::vector<TrashBatch::Item> listed(const std::vector<std::string>& below) const {
    std::vector<std::string> paths;
    for (const std::string& each : below) paths.push_back(disk.at(each));
    return tessaly::listed(paths);
  }
  void start(std::vector<TrashBatch::Item> items) {
    session.moveBatch(std::move(items), [this](const TrashBatch::Moved& moved) { ended = moved; });
  }
  void move(std::vector<TrashBatch::Item> items) {
    start(std::move(items));
    machine.dispatch.drainAll();
  }
  // Relative to the folder of the items.
  std::string below(const std::string& path) const {
    return fs::path(path).lexically_relative(disk.at("")).string();
  }
  std::vector<std::string> moved() const {
    std::vector<std::string> paths;
    for (const TrashedItem& item : ended->items) paths.push_back(below(item.original));
    return paths;
  }
  std::vector<std::string> failed() const {
    std::vector<std::string> paths;
    for (const Trash::Failure& failure : ended->errors) paths.push_back(below(failure.path));
    return paths;
  }
  std::vector<std::string> untried() const {
    std::vector<std::string> paths;
    for (const std::string& path : ended->untried) paths.push_back(below(path));
    return paths;
  }

  TrashOnDisk disk;
  WatchedMover mover{disk.mover()};
  FakeMachine machine;
  // What the tool does that empties the Trash; without it, there are no tools.
  std::function<void()> empty;
  ScanSession session{
      servicesWith(machine, mover, machine.dispatch,
                   [this](const std::string& path, const std::vector<std::string>& args, double) {
                     if (!empty || path != "/usr/bin/osascript") return noTools(path, args);
                     const bool isCount = args.back().find("count") != std::string::npos;
                     if (!isCount) empty();
                     return isCount ? std::to_string(disk.files().size()) : std::string();
                   })};
  std::optional<TrashBatch::Moved> ended;
};

class RealBatch : public testing::Test {
 protected:
  TrashOnDisk& disk() { return batch_->disk; }
  ScanSession& session() { return batch_->session; }

  std::unique_ptr<BatchOnDisk> batch_ = std::make_unique<BatchOnDisk>();
};

TEST_F(RealBatch, each_item_has_a_record_and_all_are_put_back) {
  disk().tree.plant("here", "film 4K\nfolder/\n  song 4K\nlink -> nowhere\n");
  batch_->move(batch_->listed({"film", "folder", "link"}));
  EXPECT_THAT(batch_->failed(), IsEmpty());
  ASSERT_EQ(session().removal().lastTrashed().size(), 3U);
  for (const TrashedItem& item : session().removal().lastTrashed()) {
    EXPECT_FALSE(isThere(item.original)) << item.original;
    EXPECT_EQ(recordedPath(item.trashPath), item.original);
  }
  session().undoTrash();
  EXPECT_THAT(entriesOf(disk().at("")), UnorderedElementsAre("film", "folder", "link"));
  EXPECT_TRUE(isThere(disk().at("folder/song")));
  EXPECT_THAT(disk().infos(), IsEmpty());
}

TEST_F(RealBatch, a_folder_and_an_item_in_it_have_a_record_each_and_are_both_put_back) {
  disk().tree.plant("here",
                    ".gradle/\n"
                    "  caches/\n"
                    "    modules/\n"
                    "      jar 4K\n"
                    "  daemon/\n"
                    "    log 4K\n");
  batch_->move(batch_->listed({".gradle", ".gradle/caches"}));
  EXPECT_THAT(batch_->moved(), ElementsAre(".gradle/caches", ".gradle"));
  EXPECT_THAT(disk().files(), UnorderedElementsAre(".gradle", "caches"));
  EXPECT_EQ(recordedPath(disk().homeTrash() + "/files/caches"), disk().at(".gradle/caches"));
  EXPECT_EQ(recordedPath(disk().homeTrash() + "/files/.gradle"), disk().at(".gradle"));
  EXPECT_FALSE(isThere(disk().homeTrash() + "/files/.gradle/caches"));
  session().undoTrash();
  EXPECT_TRUE(isThere(disk().at(".gradle/caches/modules/jar")));
  EXPECT_TRUE(isThere(disk().at(".gradle/daemon/log")));
  EXPECT_THAT(disk().files(), IsEmpty());
  EXPECT_THAT(disk().infos(), IsEmpty());
  EXPECT_THAT(session().messages().failures(), IsEmpty());
}

TEST_F(RealBatch, an_item_in_a_folder_that_may_not_be_changed_stays_and_the_others_move) {
  EXPECT_EQ(asOtherUser([]() -> std::string {
              BatchOnDisk batch;
              batch.disk.tree.plant("here",
                                    "locked/ mode=0555\n"
                                    "  film 4K\n"
                                    "  folder/\n"
                                    "    song 4K\n"
                                    "open/\n"
                                    "  film 4K\n"
                                    "note 4K\n");
              batch.move(batch.listed({"locked/film", "locked/folder", "open/film", "note"}));
              if (batch.moved() != std::vector<std::string>{"open/film", "note"}) return "moved";
              if (batch.failed() != std::vector<std::string>{"locked/film", "locked/folder"})
                return "failed";
              for (const Trash::Failure& failure : batch.ended->errors) {
                if (failure.cause.kind != Kind::notPermitted) return failure.cause.description();
              }
              for (const char* below : {"locked/film", "locked/folder/song"}) {
                if (!isThere(batch.disk.at(below))) return std::string(below) + " is gone";
              }
              if (batch.disk.infos().size() != 2) return "a record without an item";
              batch.session.undoTrash();
              for (const char* below : {"open/film", "note"}) {
                if (!isThere(batch.disk.at(below))) return std::string(below) + " is not back";
              }
              return "";
            }),
            "");
}

TEST_F(RealBatch, an_item_that_another_program_has_replaced_since_it_was_listed_stays) {
  disk().put(disk().at("film"), "first");
  disk().put(disk().at("cache/blob"), "first");
  disk().put(disk().at("note"), "x");
  const auto items = batch_->listed({"film", "cache", "note"});
  for (const char* name : {"film", "cache"}) fs::rename(disk().at(name), disk().tree.at(name));
  disk().put(disk().at("film"), "the second");
  disk().put(disk().at("cache/thesis"), "the second");
  batch_->move(items);
  EXPECT_THAT(batch_->moved(), ElementsAre("note"));
  EXPECT_THAT(batch_->failed(), ElementsAre("film", "cache"));
  for (const Trash::Failure& failure : batch_->ended->errors)
    EXPECT_EQ(failure.cause.kind, Kind::stale) << failure.path;
  EXPECT_EQ(contentOf(disk().at("film")), "the second");
  EXPECT_EQ(contentOf(disk().at("cache/thesis")), "the second");
  EXPECT_THAT(disk().infos(), ElementsAre("note.trashinfo"));
}

// The moment between the comparison and the move cannot be excluded. An item that was replaced then
// is moved with a record, so it can be put back.
TEST_F(RealBatch, an_item_that_is_replaced_at_any_moment_is_not_lost) {
  if (const std::string obstacle = SystemCallTrace::obstacle(); !obstacle.empty())
    GTEST_SKIP() << obstacle;
  std::size_t stayed = 0;
  std::size_t moved = 0;
  for (std::size_t stop = 1;; ++stop) {
    TrashOnDisk disk;
    disk.put(disk.at("film"), "first");
    disk.put(disk.at("elsewhere/film"), "the second");
    const auto items = tessaly::listed({disk.at("film")});
    const auto replace = [&] {
      if (isThere(disk.at("film"))) fs::rename(disk.at("film"), disk.at("kept"));
      fs::rename(disk.at("elsewhere/film"), disk.at("film"));
    };
    const TracedRun run = SystemCallTrace::interruptedAt(stop, replace, [&]() -> std::string {
      const TrashBatch::Moved batch = TrashBatch::move(
          items, disk.mover(), [] { return false; }, [](std::size_t) {});
      return batch.items.empty() ? "" : batch.items[0].trashPath;
    });
    ASSERT_EQ(run.end, TracedRun::End::finished) << run.told;
    if (!run.wasInterrupted) break;
    std::vector<std::string> contents;
    for (const std::string& place : {disk.at("film"), disk.at("kept"), run.told}) {
      if (!place.empty() && isThere(place)) contents.push_back(contentOf(place));
    }
    EXPECT_THAT(contents, UnorderedElementsAre("first", "the second")) << stop;
    if (run.told.empty()) {
      ++stayed;
      EXPECT_THAT(disk.files(), IsEmpty()) << stop;
    } else {
      ++moved;
      EXPECT_EQ(recordedPath(run.told), disk.at("film")) << stop;
    }
  }
  EXPECT_GT(stayed, 0U);
  EXPECT_GT(moved, 5U);
}

TEST_F(RealBatch, an_item_that_has_vanished_fails_as_missing_and_the_others_move) {
  disk().tree.plant("here", "film 4K\ncache/\n  blob 4K\nnote 4K\n");
  const auto items = batch_->listed({"film", "cache/blob", "note"});
  fs::remove(disk().at("film"));
  fs::remove_all(disk().at("cache"));
  batch_->move(items);
  EXPECT_THAT(batch_->moved(), ElementsAre("note"));
  EXPECT_THAT(batch_->failed(), ElementsAre("cache/blob", "film"));
  for (const Trash::Failure& failure : batch_->ended->errors)
    EXPECT_EQ(failure.cause.kind, Kind::notFound) << failure.path;
  EXPECT_THAT(disk().infos(), ElementsAre("note.trashinfo"));
}

TEST_F(RealBatch, a_batch_that_is_stopped_in_the_middle_leaves_the_rest_in_place) {
  disk().tree.plant("here", "a 4K\nb 4K\nc 4K\nd 4K\n");
  batch_->mover.before = [this](const std::string& path) {
    if (path == disk().at("b")) session().removal().stopBatch();
  };
  batch_->move(batch_->listed({"a", "b", "c", "d"}));
  EXPECT_THAT(batch_->moved(), ElementsAre("a", "b"));
  EXPECT_THAT(batch_->untried(), ElementsAre("c", "d"));
  EXPECT_THAT(entriesOf(disk().at("")), UnorderedElementsAre("c", "d"));
  EXPECT_THAT(disk().files(), UnorderedElementsAre("a", "b"));
  EXPECT_THAT(disk().infos(), UnorderedElementsAre("a.trashinfo", "b.trashinfo"));
  session().undoTrash();
  EXPECT_THAT(entriesOf(disk().at("")), UnorderedElementsAre("a", "b", "c", "d"));
}

// The emptying lists what it deletes only when the tool runs; other workers are free until then.
TEST_F(RealBatch, a_batch_that_is_started_after_a_request_to_empty_the_trash_is_not_emptied) {
  disk().tree.plant("here", "old 4K\nfilm 4K\n");
  batch_->move(batch_->listed({"old"}));
  batch_->empty = [this] {
    batch_->machine.dispatch.drain(Queue::userInitiated);
    EXPECT_TRUE(disk().can().empty().isComplete());
  };
  session().emptyTrash({});
  batch_->start(batch_->listed({"film"}));
  batch_->machine.dispatch.drainAll();
  EXPECT_THAT(disk().files(), ElementsAre("film"));
  EXPECT_THAT(disk().infos(), ElementsAre("film.trashinfo"));
  EXPECT_THAT(batch_->moved(), ElementsAre("film"));
  session().undoTrash();
  EXPECT_THAT(entriesOf(disk().at("")), ElementsAre("film"));
}

}  // namespace
}  // namespace tessaly
