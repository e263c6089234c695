// Items on other file systems than that of the home Trash, mounted in a child process's namespace.
#include <cerrno>
#include <cstdlib>
#include <fcntl.h>
#include <filesystem>
#include <functional>
#include <gtest/gtest.h>
#include <sys/mount.h>
#include <sys/stat.h>
#include <unistd.h>

#include "support/ForkedChild.h"
#include "support/Needs.h"
#include "support/PlainFiles.h"
#include "support/PrivateMounts.h"
#include "trash/TrashOnDisk.h"

namespace tessaly {
namespace {

namespace fs = std::filesystem;
using Kind = SystemError::Kind;
using Body = std::function<std::string()>;

class VolumeTrash : public testing::Test {
 protected:
  VolumeTrash() { disk_.tree.plant("volume/\n"); }

  // Runs `body`, which returns "" for "as expected", in a mount namespace. A body that cannot mount
  // returns "refused" and why.
  static void expectInNamespace(const Body& body) {
    const std::string told = inPrivateMounts(body);
    if (told.starts_with("refused")) GTEST_SKIP() << "no mounting here, " << told;
    EXPECT_EQ(told, "");
  }

  // Runs `body` with a tmpfs on the folder "volume".
  void expectOnTmpfs(const Body& body, const char* options = "mode=0755") {
    expectInNamespace([&]() -> std::string {
      if (::mount("tmpfs", volume().c_str(), "tmpfs", 0, options) != 0) return refusal();
      return body();
    });
  }

  std::string volume() const { return disk_.tree.at("volume"); }
  std::string on(const std::string& below) const { return volume() + "/" + below; }
  static std::string user() { return std::to_string(geteuid()); }
  std::string ownTrash() const { return on(".Trash-" + user()); }

  // Moves `path` to the Trash and back; "" if it was in `trash`, recorded as `recorded`.
  std::string goAndReturn(const std::string& path, const std::string& trash,
                          const std::string& recorded) {
    const std::string content = contentOf(path);
    const Result<ItemInTrash> moved = disk_.mover().moveToTrash(path);
    if (!moved) return told(moved);
    const std::string& place = moved.value().path;
    if (!place.starts_with(trash + "/files/")) return "it went to " + place;
    if (isThere(path)) return "it is still there";
    if (contentOf(place) != content) return "it is not whole";
    if (recordedPath(place) != recorded) return "recorded is " + contentOf(infoPathOf(place));
    const std::string info = infoPathOf(place);
    const Outcome back = disk_.mover().putBack(moved.value(), path);
    if (!back) return told(back);
    if (contentOf(path) != content) return "it came back damaged";
    return isThere(info) || isThere(place) ? "something is left in the Trash" : "";
  }

  // "" if the item cannot be moved for this reason, is still in its place, and has left no record.
  std::string stays(const std::string& path, Kind kind) {
    const Result<ItemInTrash> moved = disk_.mover().moveToTrash(path);
    if (moved) return "it went to " + moved.value().path;
    if (moved.error().kind != kind) return told(moved);
    if (!isThere(path)) return "it is gone";
    const bool isLeft =
        !disk_.infos().empty() || !TrashOnDisk::namesIn(ownTrash() + "/info").empty();
    return isLeft ? "an info is left" : "";
  }

  TrashOnDisk disk_;
};

TEST_F(VolumeTrash, the_trash_of_a_volume_is_a_folder_at_the_top_with_relative_paths) {
  expectOnTmpfs([&]() -> std::string {
    disk_.put(on("deep/er/film"), "x");
    disk_.put(on("film"), "x");
    std::string told = goAndReturn(on("deep/er/film"), ownTrash(), "deep/er/film");
    if (told.empty()) told = goAndReturn(on("film"), ownTrash(), "film");
    if (!told.empty()) return told;
    if (isThere(disk_.homeTrash())) return "a Trash was made in the home";
    for (const char* below : {"", "/files", "/info"}) {
      if (permissionsOf(ownTrash() + below) != 0700) return "others have permissions";
    }
    return "";
  });
}

TEST_F(VolumeTrash, items_come_back_into_folders_that_were_deleted) {
  expectOnTmpfs([&]() -> std::string {
    disk_.put(on("deep/er/film"), "x");
    const Result<ItemInTrash> moved = disk_.mover().moveToTrash(on("deep/er/film"));
    if (!moved) return told(moved);
    fs::remove_all(on("deep"));
    const Outcome back = disk_.mover().putBack(moved.value(), on("deep/er/film"));
    return back && isThere(on("deep/er/film")) ? "" : "not back: " + told(back);
  });
}

TEST_F(VolumeTrash, the_trash_of_a_volume_is_in_a_shared_folder_that_is_sticky) {
  expectOnTmpfs([&]() -> std::string {
    disk_.put(on("film"), "x");
    fs::create_directory(on(".Trash"));
    if (chmod(on(".Trash").c_str(), 01777) != 0) return "chmod";
    std::string told = goAndReturn(on("film"), on(".Trash/" + user()), "film");
    if (!told.empty()) return told;
    if (permissionsOf(on(".Trash/" + user())) != 0700) return "others have permissions";
    return isThere(ownTrash()) ? "another Trash was made" : "";
  });
}

TEST_F(VolumeTrash,
       the_trash_of_a_volume_is_not_in_a_shared_folder_that_anyone_could_have_changed) {
  expectOnTmpfs([&]() -> std::string {
    disk_.put(on("film"), "x");
    fs::create_directory(on(".Trash"));
    if (chmod(on(".Trash").c_str(), 0777) != 0) return "chmod";
    std::string told = goAndReturn(on("film"), ownTrash(), "film");
    if (!told.empty()) return "not sticky: " + told;
    if (!fs::is_empty(on(".Trash"))) return "not sticky, but used";
    fs::remove(on(".Trash"));
    fs::create_directory(on("elsewhere"));
    if (chmod(on("elsewhere").c_str(), 01777) != 0) return "chmod";
    fs::create_directory_symlink("elsewhere", on(".Trash"));
    told = goAndReturn(on("film"), ownTrash(), "film");
    if (!told.empty()) return "a link: " + told;
    return fs::is_empty(on("elsewhere")) ? "" : "the link was followed";
  });
}

TEST_F(VolumeTrash, the_trash_of_a_volume_is_not_another_users_folder_in_the_shared_one) {
  expectOnTmpfs([&]() -> std::string {
    disk_.put(on("film"), "x");
    fs::create_directory(on(".Trash"));
    if (chmod(on(".Trash").c_str(), 01777) != 0) return "chmod";
    fs::create_directory(on("elsewhere"));
    fs::create_directory_symlink("../elsewhere", on(".Trash/" + user()));
    std::string told = goAndReturn(on("film"), ownTrash(), "film");
    if (!told.empty()) return "a link: " + told;
    if (!fs::is_empty(on("elsewhere"))) return "the link was followed";
    fs::remove(on(".Trash/" + user()));
    fs::create_directory(on(".Trash/" + user()));
    if (chown(on(".Trash/" + user()).c_str(), 1, 1) != 0)
      return "refused: " + needs(Need::root, "only root can");
    return goAndReturn(on("film"), ownTrash(), "film");
  });
}

TEST_F(VolumeTrash, the_trash_of_a_volume_is_never_a_link_or_a_file) {
  expectOnTmpfs([&]() -> std::string {
    disk_.put(on("film"), "x");
    fs::create_directories(on("elsewhere/files"));
    fs::create_directories(on("elsewhere/info"));
    fs::create_directory_symlink("elsewhere", ownTrash());
    std::string told = stays(on("film"), Kind::notADirectory);
    if (!told.empty()) return "a link: " + told;
    if (!fs::is_empty(on("elsewhere/files")) || !fs::is_empty(on("elsewhere/info"))) {
      return "the link was followed";
    }
    fs::remove(ownTrash());
    disk_.put(ownTrash(), "a file");
    told = stays(on("film"), Kind::notADirectory);
    return told.empty() && contentOf(ownTrash()) == "a file" ? "" : "a file: " + told;
  });
}

TEST_F(VolumeTrash, the_trash_of_a_volume_is_never_another_users_folder) {
  expectOnTmpfs([&]() -> std::string {
    disk_.put(on("film"), "x");
    fs::create_directory(ownTrash());
    if (chown(ownTrash().c_str(), 1, 1) != 0)
      return "refused: " + needs(Need::root, "only root can");
    std::string told = stays(on("film"), Kind::notPermitted);
    return told.empty() && !fs::is_empty(ownTrash()) ? "it was used" : told;
  });
}

TEST_F(VolumeTrash, the_trash_of_a_volume_and_its_contents_do_not_move) {
  expectOnTmpfs([&]() -> std::string {
    disk_.put(on("film"), "x");
    disk_.put(on(".Trash/0/files/film"), "x");
    const Result<ItemInTrash> moved = disk_.mover().moveToTrash(on("film"));
    if (!moved) return told(moved);
    for (const std::string& path :
         {moved.value().path, infoPathOf(moved.value().path), ownTrash(), ownTrash() + "/info",
          on(".Trash"), on(".Trash/0"), on(".Trash/0/files/film")}) {
      const Result<ItemInTrash> again = disk_.mover().moveToTrash(path);
      if (again) return path + " went to " + again.value().path;
      if (again.error().code != EINVAL || !isThere(path)) return told(again);
    }
    return "";
  });
}

TEST_F(VolumeTrash, mount_points_do_not_move) {
  expectOnTmpfs([&]() -> std::string {
    for (const std::string& path : {volume(), volume() + "/"}) {
      const Result<ItemInTrash> moved = disk_.mover().moveToTrash(path);
      if (moved) return "it went to " + moved.value().path;
      if (moved.error().code != EBUSY) return told(moved);
    }
    return isThere(disk_.homeTrash()) ? "a Trash was made for nothing" : "";
  });
}

TEST_F(VolumeTrash, folders_that_contain_a_mount_do_not_move) {
  expectInNamespace([&]() -> std::string {
    fs::create_directories(disk_.at("a b/deeper/volume"));
    fs::create_directories(disk_.at("a"));
    const std::string point = disk_.at("a b/deeper/volume");
    if (::mount("tmpfs", point.c_str(), "tmpfs", 0, nullptr) != 0) return refusal();
    for (const char* name : {"a b", "a b/deeper/"}) {
      const Result<ItemInTrash> moved = disk_.mover().moveToTrash(disk_.at(name));
      if (moved) return "it went to " + moved.value().path;
      if (moved.error().code != EBUSY) return told(moved);
    }
    if (!disk_.infos().empty()) return "an info is left";
    return told(disk_.mover().moveToTrash(disk_.at("a")));
  });
}

TEST_F(VolumeTrash, files_that_are_mount_points_do_not_move) {
  expectInNamespace([&]() -> std::string {
    disk_.put(disk_.at("film"), "x");
    disk_.put(disk_.at("over"), "y");
    const int flags = MS_BIND;
    if (::mount(disk_.at("over").c_str(), disk_.at("film").c_str(), nullptr, flags, nullptr) != 0) {
      return refusal();
    }
    const Result<ItemInTrash> moved = disk_.mover().moveToTrash(disk_.at("film"));
    if (moved || moved.error().code != EBUSY) return "it was moved, or: " + told(moved);
    return isThere(disk_.homeTrash()) ? "a Trash was made for nothing" : "";
  });
}

TEST_F(VolumeTrash, volumes_are_distinguished_by_mount_and_not_by_device) {
  expectInNamespace([&]() -> std::string {
    disk_.put(disk_.at("deep/film"), "x");
    if (::mount(disk_.at("").c_str(), volume().c_str(), nullptr, MS_BIND, nullptr) != 0) {
      return refusal();
    }
    std::string told = goAndReturn(on("deep/film"), ownTrash(), "deep/film");
    if (!told.empty()) return told;
    if (isThere(disk_.homeTrash())) return "a Trash was made in the home";
    return goAndReturn(disk_.at("deep/film"), disk_.homeTrash(), disk_.at("deep/film"));
  });
}

TEST_F(VolumeTrash, items_on_a_read_only_volume_do_not_move) {
  expectOnTmpfs([&]() -> std::string {
    disk_.put(on("film"), "x");
    const unsigned long flags = MS_REMOUNT | MS_RDONLY;
    if (::mount("tmpfs", volume().c_str(), "tmpfs", flags, nullptr) != 0) return refusal();
    std::string told = stays(on("film"), Kind::readOnly);
    if (!told.empty()) return "without a Trash: " + told;
    if (::mount("tmpfs", volume().c_str(), "tmpfs", MS_REMOUNT, nullptr) != 0) return refusal();
    told = goAndReturn(on("film"), ownTrash(), "film");
    if (!told.empty()) return told;
    if (::mount("tmpfs", volume().c_str(), "tmpfs", flags, nullptr) != 0) return refusal();
    return stays(on("film"), Kind::readOnly);
  });
}

TEST_F(VolumeTrash, items_that_cannot_come_back_stay_in_the_trash) {
  expectOnTmpfs([&]() -> std::string {
    disk_.put(on("film"), "x");
    const Result<ItemInTrash> moved = disk_.mover().moveToTrash(on("film"));
    if (!moved) return told(moved);
    const unsigned long flags = MS_REMOUNT | MS_RDONLY;
    if (::mount("tmpfs", volume().c_str(), "tmpfs", flags, nullptr) != 0) return refusal();
    Outcome back = disk_.mover().putBack(moved.value(), on("film"));
    if (back || back.error().kind != Kind::readOnly) return "read-only: " + told(back);
    if (::mount("tmpfs", volume().c_str(), "tmpfs", MS_REMOUNT, nullptr) != 0) return refusal();
    back = disk_.mover().putBack(moved.value(), disk_.at("film"));
    if (back || back.error().kind != Kind::crossesDevices) return "elsewhere: " + told(back);
    if (contentOf(moved.value().path) != "x" || recordedPath(moved.value().path) != "film")
      return "lost";
    return isThere(disk_.at("film")) ? "two copies" : "";
  });
}

// Writes until the disk is full.
void fill(const std::string& path) {
  const int file = open(path.c_str(), O_WRONLY | O_CREAT | O_APPEND | O_CLOEXEC, 0600);
  const std::string block(4096, 'x');
  while (write(file, block.data(), block.size()) > 0) {
  }
  close(file);
}

TEST_F(VolumeTrash, a_move_needs_space_for_a_record) {
  expectOnTmpfs(
      [&]() -> std::string {
        disk_.put(on("film"), "x");
        std::string told = goAndReturn(on("film"), ownTrash(), "film");
        if (!told.empty()) return told;
        fill(on("full"));
        told = stays(on("film"), Kind::noSpace);
        if (!told.empty()) return told;
        fs::remove(on("full"));
        return goAndReturn(on("film"), ownTrash(), "film");
      },
      "size=64k");
}

TEST_F(VolumeTrash, a_move_needs_space_for_the_folders_of_the_trash) {
  expectOnTmpfs(
      [&]() -> std::string {
        disk_.put(on("film"), "x");
        for (int i = 0; std::ofstream(on("file" + std::to_string(i))).is_open(); ++i) {
        }
        std::string told = stays(on("film"), Kind::noSpace);
        if (!told.empty()) return told;
        fs::remove(on("file0"));  // space for the outermost folder only
        return stays(on("film"), Kind::noSpace);
      },
      "nr_inodes=16");
}

TEST_F(VolumeTrash, items_do_not_move_if_others_own_the_top_of_the_volume) {
  if (getuid() != 0) GTEST_SKIP() << needs(Need::root, "only root has a top of others");
  expectOnTmpfs([&]() -> std::string {
    disk_.tree.plant("volume", "open/ mode=0777\n");
    if (chmod(disk_.tree.path().c_str(), 0755) != 0) return "chmod";
    return asOtherUser([&]() -> std::string {
      putFile(on("open/film"), "x");
      UserTrashMover mover(disk_.config());
      const Result<ItemInTrash> moved = mover.moveToTrash(on("open/film"));
      if (moved) return "it went to " + moved.value().path;
      if (moved.error().kind != Kind::notPermitted) return told(moved);
      return contentOf(on("open/film")) == "x" ? "" : "it is gone";
    });
  });
}

TEST_F(VolumeTrash, the_trash_of_a_volume_works_on_a_disk_as_on_tmpfs) {
  disk_.tree.plant("disk sparse=16M\n");
  expectInNamespace([&]() -> std::string {
    const std::string image = "'" + disk_.tree.at("disk") + "'";
    const std::string make =
        "mkfs.ext4 -q " + image + " && mount -o loop " + image + " '" + volume() + "'";
    if (std::system(("{ " + make + "; } >&2").c_str()) != 0)
      return "refused: " + needs(Need::image, make);
    for (const std::string& name : {std::string("film"), std::string(255, 'n'),
                                    std::string("line\nfeed"), std::string("\xff\xfe")}) {
      disk_.put(on("a/" + name), name);
      std::string told = goAndReturn(on("a/" + name), ownTrash(), "a/" + name);
      if (!told.empty()) return told;
    }
    fs::create_symlink("nowhere", on("broken"));
    const Result<ItemInTrash> moved = disk_.mover().moveToTrash(on("broken"));
    if (!moved || isThere(on("broken")) || fs::read_symlink(moved.value().path) != "nowhere") {
      return "broken link: " + told(moved);
    }
    disk_.put(on("broken"), "new");
    const Outcome back = disk_.mover().putBack(moved.value(), on("broken"));
    if (back || back.error().kind != Kind::alreadyExists) return "replaced: " + told(back);
    const Result<ItemInTrash> lost = disk_.mover().moveToTrash(on("lost+found"));
    if (!lost) return told(lost);
    return told(disk_.mover().putBack(lost.value(), on("lost+found")));
  });
}

// A directory of an overlayfs that cannot be renamed is on the same mount nevertheless.
TEST_F(VolumeTrash, nothing_is_copied_if_a_mount_refuses_to_rename) {
  disk_.tree.plant("lower/\n  folder/\n    film 4K\nupper/\nwork/\n");
  expectInNamespace([&]() -> std::string {
    const std::string options = "lowerdir=" + disk_.tree.at("lower") +
                                ",upperdir=" + disk_.tree.at("upper") +
                                ",workdir=" + disk_.tree.at("work") + ",redirect_dir=off";
    if (::mount("overlay", volume().c_str(), "overlay", 0, options.c_str()) != 0) {
      return refusal(Need::overlay);
    }
    std::string told = stays(on("folder"), Kind::crossesDevices);
    if (!told.empty()) return told;
    return isThere(on("folder/film")) ? "" : "the folder is not whole";
  });
}

TEST_F(VolumeTrash, the_trash_of_a_volume_is_at_the_top_of_the_mount_also_in_a_subvolume) {
  disk_.tree.plant("disk sparse=256M\n");
  expectInNamespace([&]() -> std::string {
    const std::string image = "'" + disk_.tree.at("disk") + "'";
    const std::string top = "'" + volume() + "'";
    const std::string make = "mkfs.btrfs -q " + image + " && mount -o loop " + image + " " + top +
                             " && btrfs subvolume create " + top + "/sub";
    if (std::system(("{ " + make + "; } >&2").c_str()) != 0)
      return "refused: " + needs(Need::btrfs, make);
    disk_.put(on("film"), "x");
    disk_.put(on("sub/film"), "x");
    // A subvolume has another device, and nothing can be renamed out of it, but it is not a mount.
    std::string told = stays(on("sub/film"), Kind::crossesDevices);
    if (told.empty()) told = goAndReturn(on("film"), ownTrash(), "film");
    if (!told.empty()) return told;
    if (isThere(on("sub/.Trash-" + user()))) return "a Trash in the wrong folder";
    const std::string alone = "umount " + top + " && mount -o loop,subvol=sub " + image + " " + top;
    if (std::system(("{ " + alone + "; } >&2").c_str()) != 0)
      return "refused: " + needs(Need::btrfs, alone);
    return goAndReturn(on("film"), ownTrash(), "film");
  });
}

}  // namespace
}  // namespace tessaly
