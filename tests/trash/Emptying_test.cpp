// Emptying the home Trash.
#include <cerrno>
#include <fcntl.h>
#include <filesystem>
#include <gmock/gmock.h>
#include <gtest/gtest.h>
#include <sys/resource.h>
#include <sys/stat.h>

#include "support/ForkedChild.h"
#include "support/Needs.h"
#include "support/PlainFiles.h"
#include "trash/TrashOnDisk.h"

namespace tessaly {
namespace {

namespace fs = std::filesystem;
using testing::ElementsAre;
using testing::IsEmpty;

class Emptying : public testing::Test {
 protected:
  // Items of "files", each with a record.
  void plantItems(const std::string& items) {
    disk_.tree.plant("home", "data/\n  Trash/ mode=0700\n    files/\n    info/\n");
    disk_.tree.plant("home/data/Trash/files", items);
    for (const std::string& name : disk_.files()) record(name);
  }
  void record(const std::string& name) {
    disk_.put(trash("info/" + name + ".trashinfo"), "[Trash Info]\nPath=/" + name + "\n");
  }
  std::string trash(const std::string& below) const { return disk_.homeTrash() + "/" + below; }

  // The number of deleted items; expects no failure.
  std::int64_t empty() {
    const EmptiedTrash emptied = disk_.can().empty();
    EXPECT_EQ(told(emptied), "");
    return emptied.deleted;
  }
  void expectEmpty() {
    EXPECT_THAT(disk_.files(), IsEmpty());
    EXPECT_THAT(disk_.infos(), IsEmpty());
    EXPECT_FALSE(isThere(trash("expunged")));
  }

  TrashOnDisk disk_;
};

TEST_F(Emptying, emptying_deletes_items_of_every_kind_with_their_records) {
  plantItems(R"(
    film 4K
    .hidden
    pipe fifo
    socket socket
    broken -> nowhere
    empty/
    folder/
      deeper/
        film 4K
        pipe fifo
      none/
    line\nfeed/
      \xff\xfe 4K
  )");
  EXPECT_EQ(empty(), 8);
  expectEmpty();
  EXPECT_EQ(disk_.can().count().value(), 0);
}

TEST_F(Emptying, emptying_deletes_items_without_records_and_records_without_items) {
  plantItems("film\nfolder/\n  film\n");
  fs::remove(trash("info/film.trashinfo"));
  fs::remove(trash("info/folder.trashinfo"));
  record("gone");
  EXPECT_EQ(empty(), 2);
  expectEmpty();
}

TEST_F(Emptying, emptying_deletes_records_if_the_folder_of_items_is_missing) {
  disk_.tree.plant("home", "data/\n  Trash/\n    info/\n");
  record("gone");
  EXPECT_EQ(empty(), 0);
  EXPECT_THAT(disk_.infos(), IsEmpty());
}

TEST_F(Emptying, emptying_deletes_the_remains_of_an_earlier_one) {
  plantItems("folder/\n  film\n");
  disk_.tree.plant("home/data/Trash", "expunged/\n  1/\n    deeper/\n      film\n  film\n");
  EXPECT_EQ(empty(), 1);
  expectEmpty();
}

TEST_F(Emptying, emptying_deletes_the_cache_of_sizes_and_nothing_else_beside_the_items) {
  plantItems("folder/\n  film\n");
  disk_.put(trash("directorysizes"), "4096 1600000000 folder\n");
  disk_.put(trash("metadata"), "of another program");
  disk_.put(trash("info/notes"), "no record");
  EXPECT_EQ(empty(), 1);
  EXPECT_THAT(entriesOf(disk_.homeTrash()), ElementsAre("files", "info", "metadata"));
  EXPECT_THAT(disk_.infos(), ElementsAre("notes"));
}

TEST_F(Emptying, emptying_deletes_links_and_never_their_targets) {
  disk_.tree.plant("here", "kept/\n  film 4K\n  deeper/\n    film 4K\nfile 4K\n");
  plantItems(R"(
    toFolder -> ../../../../here/kept
    toFile -> ../../../../here/file
    folder/
      toFolder -> ../../../../../here/kept
      toSelf -> .
      toAbove -> ..
  )");
  fs::create_directory_symlink(disk_.at("kept"), trash("expunged"));
  fs::create_symlink(disk_.at("file"), trash("directorysizes"));
  EXPECT_EQ(empty(), 3);
  expectEmpty();
  EXPECT_THAT(entriesOf(disk_.at("kept")), ElementsAre("deeper", "film"));
  EXPECT_TRUE(isThere(disk_.at("kept/deeper/film")));
  EXPECT_TRUE(isThere(disk_.at("file")));
}

TEST_F(Emptying, emptying_deletes_nothing_through_links_that_replace_its_folders) {
  disk_.tree.plant("here", "files/\n  film\ninfo/\n  film.trashinfo\n");
  fs::create_directories(disk_.homeTrash());
  for (const char* part : {"files", "info"}) {
    fs::create_directory_symlink(disk_.at(part), trash(part));
  }
  EXPECT_EQ(empty(), 0);
  EXPECT_TRUE(isThere(disk_.at("files/film")));
  EXPECT_TRUE(isThere(disk_.at("info/film.trashinfo")));
}

TEST_F(Emptying, emptying_leaves_other_hard_links_of_a_file) {
  plantItems("folder/\n  film 4K\n");
  fs::create_hard_link(trash("files/folder/film"), disk_.at("twin"));
  ASSERT_EQ(chmod(disk_.at("twin").c_str(), 0400), 0);
  EXPECT_EQ(empty(), 1);
  EXPECT_EQ(disk_.tree.length("here/twin"), 4096);
  EXPECT_EQ(permissionsOf(disk_.at("twin")), 0400U);
}

TEST_F(Emptying, emptying_follows_a_link_to_a_home_trash_that_the_user_has_moved) {
  disk_.tree.plant("elsewhere/\n  files/\n    film\n  info/\n    film.trashinfo\n");
  disk_.tree.plant("home", "data/\n");
  fs::create_directory_symlink("../../elsewhere", disk_.homeTrash());
  EXPECT_EQ(empty(), 1);
  expectEmpty();
}

TEST_F(Emptying, emptying_opens_closed_folders_of_the_user) {
  ASSERT_EQ(chmod(disk_.tree.path().c_str(), 0777), 0);
  EXPECT_EQ(asOtherUser([&]() -> std::string {
              TrashOnDisk own;
              own.tree.plant("home", R"(
                data/
                  Trash/
                    files/ mode=0500
                      readable/ mode=0500
                        inside/ mode=0500
                          film
                      closed/ mode=0
                        film
                        inside/ mode=0
                          film
                      blind/ mode=0300
                        film
                      names/ mode=0400
                        film
                      empty/ mode=0
                    info/ mode=0
                      readable.trashinfo
                    expunged/ mode=0100
                      1/ mode=0
                        film
              )");
              if (access((own.homeTrash() + "/info").c_str(), R_OK) == 0)
                return "nothing is closed";
              const EmptiedTrash emptied = own.can().empty();
              if (!emptied.isComplete()) return told(emptied);
              if (emptied.deleted != 5) return std::to_string(emptied.deleted) + " were deleted";
              const bool isEmpty = own.files().empty() && own.infos().empty();
              return isEmpty && !isThere(own.homeTrash() + "/expunged") ? "" : "something is left";
            }),
            "");
}

// A folder of another user inside the user's own.
TEST_F(Emptying, an_item_with_contents_that_only_others_can_delete_stays_complete) {
  if (getuid() != 0) GTEST_SKIP() << needs(Need::root, "only root has items of others");
  ASSERT_EQ(chmod(disk_.tree.path().c_str(), 0777), 0);
  ASSERT_EQ(chmod(disk_.tree.at("home").c_str(), 0777), 0);
  plantItems(
      "film\nproject/\n  a/\n    1\n    2\n  cache/\n    film 4K\n  empty/\n  z\nother/\n  1\n");
  constexpr uid_t nobody = 65534;
  for (const auto& entry : fs::recursive_directory_iterator(disk_.tree.at("home"))) {
    const std::string path = entry.path().string();
    if (path.find("/project/cache") != std::string::npos) continue;
    if (path.find("/project/empty") != std::string::npos) continue;
    ASSERT_EQ(lchown(path.c_str(), nobody, nobody), 0);
  }
  const auto asUser = [&](const std::function<std::string(UserTrashCan&)>& body) {
    return asOtherUser([&] {
      TrashConfig config = disk_.configWith({});
      UserTrashCan can(config);
      return body(can);
    });
  };
  ASSERT_EQ(chmod(disk_.tree.at("mountinfo0").c_str(), 0666), 0);
  EXPECT_EQ(asUser([&](UserTrashCan& can) {
              const EmptiedTrash emptied = can.empty();
              const std::string held = trash("files/project/cache/film");
              const bool isRight =
                  emptied.deleted == 2 && emptied.failures == 1 &&
                  emptied.errors == std::vector{SystemError::fromErrno(EACCES, held)};
              return isRight ? "" : "failed are: " + told(emptied);
            }),
            "");
  EXPECT_THAT(disk_.files(), ElementsAre("project"));
  EXPECT_THAT(disk_.infos(), ElementsAre("project.trashinfo"));
  EXPECT_THAT(entriesOf(trash("files/project")), ElementsAre("a", "cache", "empty", "z"));
  EXPECT_THAT(entriesOf(trash("files/project/a")), ElementsAre("1", "2"));
  // Without the file in it, the other user's folder can be deleted.
  fs::remove(trash("files/project/cache/film"));
  EXPECT_EQ(asUser([](UserTrashCan& can) { return told(can.empty()); }), "");
  expectEmpty();
}

TEST_F(Emptying, deep_folders_need_few_descriptors_and_little_stack) {
  plantItems("deep/\nother\n");
  disk_.tree.chain("home/data/Trash/files/deep", std::string(100, 'd'), 5000, [](int folder, int) {
    const int file = openat(folder, "film", O_WRONLY | O_CREAT | O_CLOEXEC, 0600);
    close(file);
  });
  EXPECT_EQ(inForkedChild([&] {
              const rlimit few{32, 32};
              setrlimit(RLIMIT_NOFILE, &few);
              const rlimit little{rlim_t{256} * 1024, rlim_t{256} * 1024};
              setrlimit(RLIMIT_STACK, &little);
              return told(disk_.can().empty());
            }),
            "");
  expectEmpty();
}

TEST_F(Emptying, emptying_deletes_large_folders_and_many_items) {
  plantItems("many/\n  part##### x50000\n  folder###/ x1000\nitem### x1000\n");
  EXPECT_EQ(empty(), 1001);
  expectEmpty();
}

TEST_F(Emptying, a_folder_that_is_not_a_trash_is_left_alone) {
  disk_.put(disk_.homeTrash(), "a file");
  EXPECT_EQ(empty(), 0);
  EXPECT_EQ(contentOf(disk_.homeTrash()), "a file");
}

TEST_F(Emptying, unreadable_folders_are_reported_and_the_rest_is_emptied) {
  plantItems("film\n");
  TrashConfig config = disk_.config();
  config.mountinfo = disk_.tree.at("missing");
  const EmptiedTrash emptied = UserTrashCan(config).empty();
  EXPECT_EQ(emptied.deleted, 1);
  EXPECT_EQ(emptied.errors, std::vector{SystemError::fromErrno(ENOENT, config.mountinfo)});
  expectEmpty();
}

}  // namespace
}  // namespace tessaly
