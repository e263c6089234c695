// Emptying the Trash of other file systems, and of those with further ones mounted in them.
#include <cerrno>
#include <cstdlib>
#include <fcntl.h>
#include <filesystem>
#include <fstream>
#include <gtest/gtest.h>
#include <sys/mount.h>
#include <sys/stat.h>
#include <unistd.h>

#include "support/Needs.h"
#include "support/PlainFiles.h"
#include "support/PrivateMounts.h"
#include "trash/TrashOnDisk.h"

namespace tessaly {
namespace {

namespace fs = std::filesystem;
using Body = std::function<std::string()>;

class EmptyingVolumes : public testing::Test {
 protected:
  EmptyingVolumes() { disk_.tree.plant("volume/\nagain/\n"); }

  static void expectInPrivateMounts(const Body& body) {
    const std::string told = inPrivateMounts(body);
    if (told.starts_with("refused")) GTEST_SKIP() << "no mounting here, " << told;
    EXPECT_EQ(told, "");
  }

  // Runs `body` with a tmpfs on the folder "volume".
  void expectOnTmpfs(const Body& body, const char* options = "mode=0755") {
    expectInPrivateMounts([&]() -> std::string {
      if (::mount("tmpfs", volume().c_str(), "tmpfs", 0, options) != 0) return refusal();
      return body();
    });
  }

  // The same with an ext4 on a disk image.
  void expectOnExt4(const Body& body, const char* options = "") {
    disk_.tree.plant("disk sparse=16M\n");
    expectInPrivateMounts([&]() -> std::string {
      const std::string image = "'" + disk_.tree.at("disk") + "'";
      const std::string make = "mkfs.ext4 -q " + std::string(options) + " " + image +
                               " && mount -o loop " + image + " '" + volume() + "'";
      if (std::system(("{ " + make + "; } >&2").c_str()) != 0)
        return "refused: " + needs(Need::image, make);
      return body();
    });
  }

  std::string volume() const { return disk_.tree.at("volume"); }
  std::string on(const std::string& below) const { return volume() + "/" + below; }
  static std::string user() { return std::to_string(geteuid()); }
  std::string ownTrash() const { return on(".Trash-" + user()); }

  // A folder with the items of `text`, each with a record.
  void plantTrash(const std::string& folder, const std::string& text) {
    for (const char* part : {"/files", "/info"}) fs::create_directories(folder + part);
    const std::string files = folder + "/files";
    disk_.tree.plant(files.substr(disk_.tree.path().size() + 1), text);
    for (const std::string& name : entriesOf(files)) putFile(recordOf(folder, name), name);
  }
  static std::string recordOf(const std::string& folder, const std::string& name) {
    return folder + "/info/" + name + ".trashinfo";
  }

  EmptiedTrash empty(const std::vector<std::string>& points) {
    return UserTrashCan(disk_.configWith(points)).empty();
  }
  EmptiedTrash empty() { return empty({volume()}); }

  // What is wrong unless exactly the item `name` and its record remain in the Trash `folder`.
  static std::string objection(const std::string& folder, const std::vector<std::string>& names) {
    std::vector<std::string> records;
    records.reserve(names.size());
    for (const std::string& name : names) records.push_back(name + ".trashinfo");
    if (entriesOf(folder + "/files") != names) return "other items are left";
    if (entriesOf(folder + "/info") != records) return "other records are left";
    return isThere(folder + "/expunged") ? "remains are left" : "";
  }
  // Never empty, so that a body can return it as its failure.
  static std::string countsOf(const EmptiedTrash& emptied) {
    return std::to_string(emptied.deleted) + " went, " + std::to_string(emptied.failures) +
           " failed; " + told(emptied);
  }
  // What is wrong unless `deleted` items were deleted and one failed with this error.
  static std::string objection(const EmptiedTrash& emptied, std::int64_t deleted,
                               const std::string& path, int code) {
    const bool isRight = emptied.deleted == deleted && emptied.failures == 1 &&
                         emptied.errors == std::vector{SystemError::fromErrno(code, path)};
    return isRight ? "" : countsOf(emptied);
  }

  // Writes until the disk is full.
  static void fill(const std::string& path) {
    for (const std::size_t size : {std::size_t{4096}, std::size_t{1}}) {
      const int file = open(path.c_str(), O_WRONLY | O_CREAT | O_APPEND | O_CLOEXEC, 0600);
      const std::string block(size, 'x');
      while (write(file, block.data(), block.size()) > 0) {
      }
      close(file);
    }
  }

  TrashOnDisk disk_;
};

TEST_F(EmptyingVolumes, all_trash_folders_of_the_user_are_emptied) {
  expectOnTmpfs([&]() -> std::string {
    plantTrash(disk_.homeTrash(), "film\n");
    plantTrash(ownTrash(), "film\nfolder/\n  film\n");
    plantTrash(on(".Trash/" + user()), "folder/\n  film\n");
    if (chmod(on(".Trash").c_str(), 01777) != 0) return "chmod";
    const EmptiedTrash emptied = empty();
    if (!emptied.isComplete() || emptied.deleted != 4) return countsOf(emptied);
    for (const std::string& folder : {disk_.homeTrash(), ownTrash(), on(".Trash/" + user())}) {
      if (std::string wrong = objection(folder, {}); !wrong.empty()) return wrong;
    }
    return "";
  });
}

TEST_F(EmptyingVolumes, a_folder_that_may_not_be_the_users_trash_is_not_emptied) {
  expectOnTmpfs([&]() -> std::string {
    plantTrash(on(".Trash/" + user()), "film\n");  // no sticky bit
    plantTrash(on("real"), "film\n");
    fs::create_directory_symlink("real", ownTrash());
    plantTrash(on(".Trash-4711"), "film\n");
    if (EmptiedTrash emptied = empty(); emptied.deleted != 0) return "something was deleted";
    fs::remove(ownTrash());
    plantTrash(ownTrash(), "film\n");
    if (geteuid() == 0) {
      if (chown(ownTrash().c_str(), 1, 1) != 0) return "chown";
      if (EmptiedTrash emptied = empty(); emptied.deleted != 0) return "another's was emptied";
    }
    for (const std::string& folder :
         {on(".Trash/" + user()), on("real"), on(".Trash-4711"), ownTrash()}) {
      if (std::string wrong = objection(folder, {"film"}); !wrong.empty()) return wrong;
    }
    return "";
  });
}

TEST_F(EmptyingVolumes, a_file_system_is_emptied_once_through_a_writable_mount) {
  expectOnTmpfs([&]() -> std::string {
    const std::string again = disk_.tree.at("again");
    if (::mount(volume().c_str(), again.c_str(), nullptr, MS_BIND, nullptr) != 0) return refusal();
    const unsigned long flags = MS_REMOUNT | MS_BIND | MS_RDONLY;
    if (::mount("none", volume().c_str(), nullptr, flags, nullptr) != 0) return refusal();
    for (const auto& points : {std::vector{volume(), again}, std::vector{again, volume()}}) {
      plantTrash(again + "/.Trash-" + user(), "film\nfolder/\n  film\n");
      const EmptiedTrash emptied = empty(points);
      if (!emptied.isComplete() || emptied.deleted != 2) return countsOf(emptied);
      if (std::string wrong = objection(ownTrash(), {}); !wrong.empty()) return wrong;
    }
    return "";
  });
}

TEST_F(EmptyingVolumes, items_and_records_stay_on_a_read_only_file_system) {
  expectOnTmpfs([&]() -> std::string {
    plantTrash(ownTrash(), "empty/\nfilm\nfolder/\n  film\nlink -> nowhere\n");
    plantTrash(disk_.homeTrash(), "film\n");
    const unsigned long flags = MS_REMOUNT | MS_RDONLY;
    if (::mount("tmpfs", volume().c_str(), "tmpfs", flags, nullptr) != 0) return refusal();
    const EmptiedTrash emptied = empty();
    if (emptied.deleted != 1 || emptied.failures != 4) return countsOf(emptied);
    for (const SystemError& error : emptied.errors) {
      if (error.code != EROFS) return countsOf(emptied);
    }
    std::string wrong = objection(ownTrash(), {"empty", "film", "folder", "link"});
    if (!wrong.empty()) return wrong;
    if (::mount("tmpfs", volume().c_str(), "tmpfs", MS_REMOUNT, nullptr) != 0) return refusal();
    const EmptiedTrash again = empty();
    return again.isComplete() && again.deleted == 4 ? objection(ownTrash(), {}) : countsOf(again);
  });
}

TEST_F(EmptyingVolumes, only_the_first_of_many_failures_are_reported) {
  expectOnTmpfs([&]() -> std::string {
    plantTrash(ownTrash(), "film## x50\n");
    const unsigned long flags = MS_REMOUNT | MS_RDONLY;
    if (::mount("tmpfs", volume().c_str(), "tmpfs", flags, nullptr) != 0) return refusal();
    const EmptiedTrash emptied = empty();
    const bool isRight =
        emptied.failures == 50 && emptied.errors.size() == EmptiedTrash::mostErrors;
    return isRight ? "" : countsOf(emptied);
  });
}

TEST_F(EmptyingVolumes, an_item_that_contains_a_mount_stays) {
  plantTrash(disk_.homeTrash(), "film\nfolder/\n  a/\n    1\n  b/\n    point/\n  z\n");
  expectInPrivateMounts([&]() -> std::string {
    const std::string point = disk_.homeTrash() + "/files/folder/b/point";
    fs::create_directory(disk_.at("kept"));
    disk_.put(disk_.at("kept/film"), "kept");
    if (::mount(disk_.at("kept").c_str(), point.c_str(), nullptr, MS_BIND, nullptr) != 0) {
      return refusal();
    }
    std::string wrong = objection(empty({}), 1, point, EBUSY);
    if (wrong.empty()) wrong = objection(disk_.homeTrash(), {"folder"});
    if (!wrong.empty()) return wrong;
    if (contentOf(disk_.at("kept/film")) != "kept") return "the other file system was emptied";
    if (!isThere(disk_.homeTrash() + "/files/folder/a/1")) return "the item is not whole";
    if (::umount(point.c_str()) != 0) return refusal();
    const EmptiedTrash again = empty({});
    return again.deleted == 1 ? objection(disk_.homeTrash(), {}) : countsOf(again);
  });
}

TEST_F(EmptyingVolumes, an_item_that_is_a_mount_point_stays) {
  plantTrash(disk_.homeTrash(), "file\nfilm\npoint/\n");
  expectInPrivateMounts([&]() -> std::string {
    disk_.put(disk_.at("kept/film"), "kept");
    for (const auto& [kept, name] : {std::pair("kept", "point"), std::pair("kept/film", "file")}) {
      const std::string item = disk_.homeTrash() + "/files/" + name;
      if (::mount(disk_.at(kept).c_str(), item.c_str(), nullptr, MS_BIND, nullptr) != 0) {
        return refusal();
      }
    }
    const EmptiedTrash emptied = empty({});
    if (emptied.deleted != 1 || emptied.failures != 2) return countsOf(emptied);
    for (const SystemError& error : emptied.errors) {
      if (error.code != EBUSY) return countsOf(emptied);
    }
    if (contentOf(disk_.at("kept/film")) != "kept") return "the other file system was emptied";
    return objection(disk_.homeTrash(), {"file", "point"});
  });
}

TEST_F(EmptyingVolumes, an_item_with_a_mount_on_one_of_its_files_stays_complete) {
  plantTrash(disk_.homeTrash(), "folder/\n  a/\n    1\n  b/\n    point\n  z\n");
  expectInPrivateMounts([&]() -> std::string {
    const std::string point = disk_.homeTrash() + "/files/folder/b/point";
    disk_.put(disk_.at("film"), "kept");
    if (::mount(disk_.at("film").c_str(), point.c_str(), nullptr, MS_BIND, nullptr) != 0) {
      return refusal();
    }
    std::string wrong = objection(empty({}), 0, point, EBUSY);
    if (wrong.empty()) wrong = objection(disk_.homeTrash(), {"folder"});
    if (!wrong.empty()) return wrong;
    const bool isWhole = isThere(disk_.homeTrash() + "/files/folder/a/1") &&
                         isThere(disk_.homeTrash() + "/files/folder/z");
    return isWhole && contentOf(disk_.at("film")) == "kept" ? "" : "the item is not whole";
  });
}

TEST_F(EmptyingVolumes, file_systems_mounted_on_the_folders_of_the_trash_are_not_touched) {
  for (const char* part : {"files", "info", "expunged"}) {
    plantTrash(disk_.homeTrash(), "film\n");
    expectInPrivateMounts([&]() -> std::string {
      const std::string kept = part == std::string("info") ? "kept.trashinfo" : "kept";
      disk_.put(disk_.at("elsewhere/" + kept), "kept");
      const std::string folder = disk_.homeTrash() + "/" + part;
      fs::create_directories(folder);
      const std::string from = disk_.at("elsewhere");
      if (::mount(from.c_str(), folder.c_str(), nullptr, MS_BIND, nullptr) != 0) return refusal();
      const EmptiedTrash emptied = empty({});
      if (emptied.failures != 1 ||
          emptied.errors.front() != SystemError::fromErrno(EBUSY, folder)) {
        return part + (": " + told(emptied));
      }
      return contentOf(disk_.at("elsewhere/" + kept)) == "kept" ? ""
                                                                : part + std::string(" is gone");
    });
    TrashOnDisk::remove(disk_.at("elsewhere"));
    TrashOnDisk::remove(disk_.homeTrash());
  }
}

// Remains that cannot be deleted must not block those that can.
TEST_F(EmptyingVolumes, remains_that_cannot_be_deleted_are_skipped) {
  plantTrash(disk_.homeTrash(), "folder/\n  film\nfolder2/\n  film\n");
  disk_.tree.plant("home/data/Trash", "expunged/\n  1/\n    point/\n    film\n  2/\n    film\n");
  expectInPrivateMounts([&]() -> std::string {
    disk_.put(disk_.at("kept/film"), "kept");
    const std::string point = disk_.homeTrash() + "/expunged/1/point";
    const std::string from = disk_.at("kept");
    if (::mount(from.c_str(), point.c_str(), nullptr, MS_BIND, nullptr) != 0) return refusal();
    std::string wrong = objection(empty({}), 2, point, EBUSY);
    if (!wrong.empty()) return wrong;
    if (contentOf(disk_.at("kept/film")) != "kept") return "the other file system was emptied";
    if (entriesOf(disk_.homeTrash() + "/expunged") != std::vector<std::string>{"1"}) {
      return "other remains are left";
    }
    if (::umount(point.c_str()) != 0) return refusal();
    wrong = told(empty({}));
    return wrong.empty() ? objection(disk_.homeTrash(), {}) : wrong;
  });
}

TEST_F(EmptyingVolumes, emptying_works_on_a_full_disk) {
  const char* items = "film 4K\nfolder/\n  deeper/\n    film 4K\n  film\nlast/\n  film\n";
  const auto emptyFull = [&]() -> std::string {
    fill(on("full"));
    const EmptiedTrash emptied = empty();
    if (!emptied.isComplete() || emptied.deleted != 3) return countsOf(emptied);
    return objection(ownTrash(), {});
  };
  expectOnExt4(
      [&]() -> std::string {
        plantTrash(ownTrash(), items);
        return emptyFull();
      },
      "-m 0");
  expectOnTmpfs(
      [&]() -> std::string {
        plantTrash(ownTrash(), items);
        return emptyFull();
      },
      "size=256k");
}

TEST_F(EmptyingVolumes, emptying_works_without_space_for_one_more_folder) {
  expectOnTmpfs(
      [&]() -> std::string {
        plantTrash(ownTrash(), "folder/\n  deeper/\n    film\n  film\nlast/\n  film\n");
        for (const char* name : {"folder", "last"}) fs::remove(recordOf(ownTrash(), name));
        for (int i = 0; std::ofstream(on("file" + std::to_string(i))).is_open(); ++i) {
        }
        if (::mkdir(on("more").c_str(), 0700) == 0) return "there is room";
        const EmptiedTrash emptied = empty();
        if (!emptied.isComplete() || emptied.deleted != 2) return countsOf(emptied);
        return objection(ownTrash(), {});
      },
      "nr_inodes=64");
}

TEST_F(EmptyingVolumes, items_with_immutable_files_stay_complete) {
  expectOnExt4([&]() -> std::string {
    plantTrash(ownTrash(), R"(
      file
      film 4K
      folder/
        a
        deeper/
          fixed 4K
        z
      grown/
        inside/
          a
      locked/
        a
    )");
    const std::string files = ownTrash() + "/files/";
    const std::string fixed =
        "'" + files + "file' '" + files + "folder/deeper/fixed' '" + files + "locked'";
    const std::string mark = "chattr +i " + fixed + " && chattr +a '" + files + "grown/inside'";
    if (std::system(("{ " + mark + "; } >&2").c_str()) != 0)
      return "refused: " + needs(Need::fixedAttributes, mark);
    const EmptiedTrash emptied = empty();
    if (emptied.deleted != 1 || emptied.failures != 4) return countsOf(emptied);
    for (const SystemError& error : emptied.errors) {
      if (error.code != EPERM) return countsOf(emptied);
    }
    std::string wrong = objection(ownTrash(), {"file", "folder", "grown", "locked"});
    if (!wrong.empty()) return wrong;
    if (entriesOf(files + "folder").size() != 3) return "an item is not whole";
    std::string unmark = "chattr -i " + fixed + " && chattr -a '" + files + "grown/inside'";
    if (std::system(("{ " + unmark + "; } >&2").c_str()) != 0) return unmark;
    const EmptiedTrash again = empty();
    return again.isComplete() && again.deleted == 4 ? objection(ownTrash(), {}) : countsOf(again);
  });
}

TEST_F(EmptyingVolumes, large_folders_and_any_names_are_deleted_on_a_disk) {
  expectOnExt4(
      [&]() -> std::string {
        plantTrash(
            ownTrash(),
            "many/\n  part##### x20000\nline\\nfeed/\n  \\xff\n\\xff\\xfe\ngone -> nowhere\n");
        const EmptiedTrash emptied = empty();
        if (!emptied.isComplete() || emptied.deleted != 4) return countsOf(emptied);
        return objection(ownTrash(), {});
      },
      "-N 30000");
}

}  // namespace
}  // namespace tessaly
