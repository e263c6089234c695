#include "system/VolumeEngine.h"

#include <algorithm>
#include <gmock/gmock.h>
#include <gtest/gtest.h>
#include <limits>
#include <stdexcept>
#include <string>
#include <vector>

#include "support/Needs.h"
#include "system/Testdata_test.h"

namespace tessaly {
namespace {

using ::testing::ElementsAre;
using ::testing::IsEmpty;
using Volumes = std::vector<VolumeMount>;

Volumes onMacos(std::string_view text) {
  return VolumeEngine::parse(text, Places::forMacos());
}

Volumes onLinux(std::string_view text) {
  return VolumeEngine::parse(text, Places::forLinux());
}

// A row of df for one mount point.
std::string row(const std::string& path) {
  return "/dev/disk3 100 60 40 60% " + path + "\n";
}

// The mount points that are listed if df prints a row for each of `mounts`.
std::vector<std::string> listed(const std::vector<std::string>& mounts, const Places& places) {
  std::string text;
  for (const std::string& path : mounts) text += row(path);
  std::vector<std::string> paths;
  for (const VolumeMount& volume : VolumeEngine::parse(text, places)) paths.push_back(volume.path);
  return paths;
}

TEST(VolumeEngine, the_mounts_that_the_places_exclude_are_skipped) {
  EXPECT_EQ(VolumeEngine::skipMounts(Places::forMacos()).size(), 9U);
  EXPECT_TRUE(VolumeEngine::skipMounts(Places::forMacos()).contains("/dev"));
}

TEST(VolumeEngineParse, a_row_becomes_a_volume) {
  EXPECT_THAT(onMacos("/dev/disk5 100 60 40 60% 9 9 0% /Volumes/Backup"),
              ElementsAre(VolumeMount{"Backup", "/Volumes/Backup", 102400, 60.0}));
}

TEST(VolumeEngineParse, macos_lists_the_root_its_data_and_all_mounts_below_volumes) {
  EXPECT_THAT(onMacos(row("/") + row("/System/Volumes/Data") + row("/Volumes/a/b")),
              ElementsAre(VolumeMount{"Macintosh HD", "/", 102400, 60.0},
                          VolumeMount{"Macintosh HD — Data", "/System/Volumes/Data", 102400, 60.0},
                          VolumeMount{"b", "/Volumes/a/b", 102400, 60.0}));
}

TEST(VolumeEngineParse, macos_drops_the_mounts_of_the_system) {
  for (const std::string& path : Places::forMacos().volumes.skipMounts) {
    EXPECT_THAT(onMacos(row(path)), IsEmpty()) << path;
  }
  EXPECT_THAT(
      listed({"/System/Volumes/Data/home", "/System/Volumes/Database", "/System/Volumes/New",
              "/System/Volumes/", "/private/tmp/mount", "/private/var/vm", "/Volumes",
              "/VolumesX/a", "/home", "/media/usb", "/Users", "//"},
             Places::forMacos()),
      IsEmpty());
}

TEST(VolumeEngineParse, linux_lists_the_root_the_home_and_removable_or_manual_mounts) {
  EXPECT_THAT(onLinux(row("/") + row("/home") + row("/media/anna/USB") + row("/media/cdrom") +
                      row("/run/media/anna/Kamera") + row("/mnt/nas")),
              ElementsAre(VolumeMount{"System Disk", "/", 102400, 60.0},
                          VolumeMount{"home", "/home", 102400, 60.0},
                          VolumeMount{"USB", "/media/anna/USB", 102400, 60.0},
                          VolumeMount{"cdrom", "/media/cdrom", 102400, 60.0},
                          VolumeMount{"Kamera", "/run/media/anna/Kamera", 102400, 60.0},
                          VolumeMount{"nas", "/mnt/nas", 102400, 60.0}));
}

TEST(VolumeEngineParse, linux_drops_the_mounts_of_the_system) {
  EXPECT_THAT(listed({"/dev", "/dev/shm", "/run", "/run/user/1000", "/run/mediax/a", "/boot/efi",
                      "/sys/fs/cgroup", "/proc", "/srv", "/var", "/home/anna", "/homes", "/mnt",
                      "/media", "/mediax/a", "/snap/core/1", "/Volumes/a"},
                     Places::forLinux()),
              IsEmpty());
}

TEST(VolumeEngineParse, a_skipped_mount_is_dropped_even_if_another_rule_keeps_it) {
  Places places;
  places.volumes = {.skipMounts = {"/v/secret", "/root"},
                    .skipPrefixes = {"/v/system/"},
                    .keptMounts = {{"/root", "Root"}, {"/v/system/data", "Data"}},
                    .keptPrefixes = {"/v/", "/w/"}};
  EXPECT_THAT(listed({"/v/secret", "/v/secret/a", "/root", "/v/system/other", "/v/system/data",
                      "/v/system/data/a", "/v/systems", "/w/a", "/u/a"},
                     places),
              ElementsAre("/v/secret/a", "/v/system/data", "/v/systems", "/w/a"));
}

TEST(VolumeEngineParse, a_mount_point_is_absolute_even_if_a_rule_keeps_it) {
  Places places;
  places.volumes.keptPrefixes = {""};
  EXPECT_THAT(listed({"a", "a/b", "/a", "-"}, places), ElementsAre("/a"));
}

TEST(VolumeEngineParse, the_name_is_the_last_component) {
  EXPECT_EQ(onMacos(row("/Volumes/a.b/c.d")).at(0).name, "c.d");
  EXPECT_EQ(onMacos(row("/Volumes/a/")).at(0).name, "a");
  EXPECT_EQ(onMacos(row("/Volumes/")).at(0).name, "Volumes");
  EXPECT_EQ(onMacos(row("/Volumes/Größe")).at(0).name, "Größe");
  EXPECT_EQ(onMacos(row("/Volumes/caf\xe9")).at(0).name, "caf\xe9");
}

TEST(VolumeEngineParse, a_row_needs_six_words) {
  EXPECT_THAT(onMacos("d 100 60 40 60% /\n"), ::testing::SizeIs(1));
  EXPECT_THAT(onMacos("d 100 60 40 /\n"), IsEmpty());
  EXPECT_THAT(onMacos("d 100 60 40 60% 9 9 9% x y z /\n"), ::testing::SizeIs(1));
}

TEST(VolumeEngineParse, the_mount_point_is_the_last_word) {
  EXPECT_THAT(onMacos(row("/Volumes/My Passport")), IsEmpty());
  EXPECT_THAT(onMacos(row("/Volumes/a\u00A0b")), IsEmpty());
  EXPECT_THAT(listed({"/Volumes/My /Volumes/Disk"}, Places::forMacos()),
              ElementsAre("/Volumes/Disk"));
  EXPECT_THAT(onMacos("d 100 60 40 60% /Volumes/a x\n"), IsEmpty());
}

TEST(VolumeEngineParse, a_header_is_not_a_row_whatever_it_contains) {
  EXPECT_THAT(onMacos("FileSystem 100 60 40 60% /\n"), IsEmpty());
  EXPECT_THAT(onMacos("filesystems 100 60 40 60% /\n"), IsEmpty());
  EXPECT_THAT(onMacos(" Filesystem 100 60 40 60% /\n"), ::testing::SizeIs(1));
}

TEST(VolumeEngineParse, a_size_that_is_no_number_or_does_not_fit_drops_its_row_alone) {
  for (const char* size :
       {"x", "-", "1.5", "1K", "9007199254740992", "-9007199254740993", "9223372036854775808"}) {
    EXPECT_THAT(onMacos("d " + std::string(size) + " 60 40 60% 0 /Volumes/a\n" + row("/")),
                ::testing::SizeIs(1))
        << size;
  }
  EXPECT_EQ(onMacos("d 9007199254740991 60 40 60% /").at(0).total, 9223372036854774784);
  EXPECT_EQ(onMacos("d -1 60 40 60% /").at(0).total, -1024);
}

TEST(VolumeEngineParse, other_columns_do_not_matter) {
  EXPECT_THAT(onMacos("d 100 used - 60% /\n"),
              ElementsAre(VolumeMount{"Macintosh HD", "/", 102400, 60.0}));
}

TEST(VolumeEngineParse, a_percentage_that_cannot_be_read_is_zero) {
  for (const char* text : {"-", "%", "full", "nan%", "inf%", "1e999"}) {
    EXPECT_THAT(onMacos("d 100 60 40 " + std::string(text) + " /\n"),
                ElementsAre(VolumeMount{"Macintosh HD", "/", 102400, 0.0}))
        << text;
  }
}

TEST(VolumeEngineParse, the_first_of_two_rows_with_one_mount_point_counts) {
  EXPECT_THAT(onMacos("a 1 0 0 1% /\nb 2 0 0 2% /Volumes/b\nc 3 0 0 3% /\n"),
              ElementsAre(VolumeMount{"Macintosh HD", "/", 1024, 1.0},
                          VolumeMount{"b", "/Volumes/b", 2048, 2.0}));
}

TEST(VolumeEngineParse, an_unreadable_row_leaves_its_mount_point_to_a_later_one) {
  EXPECT_THAT(onMacos("a - 0 0 1% /\nb 2 0 0 2% /\n"),
              ElementsAre(VolumeMount{"Macintosh HD", "/", 2048, 2.0}));
}

TEST(VolumeEngineParse, volumes_are_in_the_order_of_the_rows) {
  EXPECT_THAT(listed({"/Volumes/z", "/", "/Volumes/a"}, Places::forMacos()),
              ElementsAre("/Volumes/z", "/", "/Volumes/a"));
}

TEST(VolumeEngineParse, the_output_of_df_on_macos_is_listed) {
  EXPECT_THAT(onMacos(testdata("df/macos.txt")),
              ElementsAre(VolumeMount{"Macintosh HD", "/", 482797652LL * 1024, 6.0},
                          VolumeMount{"Macintosh HD — Data", "/System/Volumes/Data",
                                      482797652LL * 1024, 60.0},
                          VolumeMount{"Backup", "/Volumes/Backup", 1953309696LL * 1024, 62.0},
                          VolumeMount{"Größe", "/Volumes/Größe", 61420LL * 1024, 99.0},
                          VolumeMount{"projects", "/Volumes/projects", 3902177280LL * 1024, 54.0}));
}

const Volumes recordedOnLinux = {
    {"System Disk", "/", 264212084LL * 1024, 36.0},
    {"Kamera", "/run/media/anna/Kamera", 31744LL * 1024, 0.0},
    {"BACKUP", "/media/anna/BACKUP", 1048576LL * 1024, 0.0},
    {"Größe", "/media/anna/Größe", 524288LL * 1024, 19.0},
    {"nas", "/mnt/nas", 307200LL * 1024, 64.0},
    {"home", "/home", 4194304LL * 1024, 1.0},
};

TEST(VolumeEngineParse, the_output_of_df_on_linux_is_listed) {
  EXPECT_EQ(onLinux(testdata("df/linux.txt")), recordedOnLinux);
}

TEST(VolumeEngineParse, headers_in_other_languages_are_rows_without_a_size) {
  EXPECT_EQ(onLinux(testdata("df/linux-german.txt")), recordedOnLinux);
  EXPECT_EQ(onLinux(testdata("df/linux-japanese.txt")), recordedOnLinux);
}

TEST(VolumeEngineParse, a_mount_that_another_one_hides_has_no_size_and_is_not_listed) {
  EXPECT_NE(testdata("df/linux-all.txt").find(" /mnt/old\n"), std::string::npos);
  EXPECT_EQ(onLinux(testdata("df/linux-all.txt")), recordedOnLinux);
}

TEST(VolumeEngineParse, rows_broken_after_their_device_are_not_listed) {
  EXPECT_THAT(onLinux(testdata("df/wrapped.txt")),
              ElementsAre(VolumeMount{"USB", "/media/anna/USB", 524288LL * 1024, 19.0}));
}

TEST(VolumeEngineParse, a_text_cut_at_any_byte_lists_the_rows_before_the_cut) {
  const std::string text = testdata("df/macos.txt");
  const Volumes whole = onMacos(text);
  for (std::size_t length = 0; length <= text.size(); ++length) {
    const std::string_view cut = std::string_view(text).substr(0, length);
    const std::size_t lastNewline = cut.rfind('\n');
    const Volumes complete =
        onMacos(lastNewline == std::string_view::npos ? "" : cut.substr(0, lastNewline));
    const Volumes volumes = onMacos(cut);
    ASSERT_GE(volumes.size(), complete.size()) << length;
    ASSERT_LE(volumes.size(), complete.size() + 1) << length;
    ASSERT_TRUE(std::equal(complete.begin(), complete.end(), volumes.begin())) << length;
    ASSERT_LE(volumes.size(), whole.size()) << length;
  }
}

TEST(VolumeEngineParse, empty_text_and_garbage_list_no_volumes) {
  EXPECT_THAT(onMacos(""), IsEmpty());
  EXPECT_THAT(onMacos("\n\n"), IsEmpty());
  EXPECT_THAT(onMacos(testdata("df/garbage.bin")), IsEmpty());
  EXPECT_THAT(onLinux(testdata("df/garbage.bin")), IsEmpty());
}

TEST(VolumeEngineList, df_is_asked_for_all_volumes) {
  std::string calledPath;
  std::vector<std::string> calledArgs;
  double calledTimeout = 0;
  const Volumes volumes = VolumeEngine::list(
      [&](const std::string& path, const std::vector<std::string>& args, double timeout) {
        calledPath = path;
        calledArgs = args;
        calledTimeout = timeout;
        return row("/") + row("/nowhere");
      });
  EXPECT_THAT(volumes, ElementsAre(VolumeMount{"System Disk", "/", 102400, 60.0}));
  EXPECT_EQ(calledPath, "/bin/df");
  EXPECT_THAT(calledArgs, ElementsAre("-k"));
  EXPECT_EQ(calledTimeout, 6);
}

TEST(VolumeEngineList, no_volumes_are_listed_if_the_tool_fails) {
  EXPECT_THAT(
      VolumeEngine::list([](const std::string&, const std::vector<std::string>&,
                            double) -> std::string { throw std::runtime_error("no such tool"); }),
      IsEmpty());
}

TEST(VolumeEngineList, the_real_df_is_started_if_no_run_is_given) {
  // In a changed root, "/" need not be a mount point.
  if (Shell::run("/bin/df", {"-k"}, 6).find(" /\n") == std::string::npos) {
    GTEST_SKIP() << needs(Need::listedRoot, "df does not list /");
  }
  const Volumes volumes = VolumeEngine::list();
  const auto root = std::find_if(volumes.begin(), volumes.end(),
                                 [](const VolumeMount& volume) { return volume.path == "/"; });
  ASSERT_NE(root, volumes.end());
  EXPECT_EQ(root->name, "System Disk");
  EXPECT_GT(root->total, 0);
}

TEST(VolumeMount, equal_volumes_have_equal_hashes) {
  const std::hash<VolumeMount> hash;
  const VolumeMount volume = {"a", "/a", 5, 0.0};
  EXPECT_EQ(hash(volume), hash(VolumeMount{"a", "/a", 5, -0.0}));
  EXPECT_EQ(volume, (VolumeMount{"a", "/a", 5, -0.0}));
}

TEST(VolumeMount, volumes_with_any_difference_are_different) {
  const std::hash<VolumeMount> hash;
  const VolumeMount volume = {"a", "/a", 5, 6.0};
  for (const VolumeMount& other :
       {VolumeMount{"b", "/a", 5, 6.0}, VolumeMount{"a", "/b", 5, 6.0},
        VolumeMount{"a", "/a", 7, 6.0}, VolumeMount{"a", "/a", 5, 7.0}}) {
    EXPECT_NE(volume, other);
    EXPECT_NE(hash(volume), hash(other));
  }
}

// The paths listed for `mounts`, each a disk of its own or a part of one.

std::vector<std::string> listedAmong(const std::vector<MountedVolume>& mounts) {
  std::vector<std::string> paths;
  for (const auto& volume : VolumeEngine::listed(mounts, Places::forLinux()))
    paths.push_back(volume.mount.path);
  return paths;
}

TEST(VolumeEngineListed, known_volumes_are_listed_in_the_order_of_the_mounts) {
  EXPECT_THAT(listedAmong({{1, "/mnt/b", "8:1", "/"},
                           {2, "/", "8:2", "/"},
                           {3, "/boot", "8:3", "/"},
                           {4, "/media/me/stick", "8:4", "/"},
                           {5, "/home", "8:5", "/"}}),
              ElementsAre("/mnt/b", "/", "/media/me/stick", "/home"));
}

TEST(VolumeEngineListed, a_mount_that_shows_part_of_an_earlier_volume_is_not_listed) {
  EXPECT_THAT(listedAmong({{1, "/", "8:1", "/"},
                           {2, "/home", "8:1", "/data/home"},
                           {3, "/mnt/a", "8:2", "/"},
                           {4, "/mnt/again", "8:2", "/"}}),
              ElementsAre("/", "/mnt/a"));
}

TEST(VolumeEngineListed, a_mount_of_part_of_an_unlisted_volume_is_listed) {
  EXPECT_THAT(listedAmong({{1, "/data", "8:1", "/"}, {2, "/mnt/a", "8:1", "/a"}}),
              ElementsAre("/mnt/a"));
}

TEST(VolumeEngineListed, parts_of_a_btrfs_and_then_the_whole_are_listed) {
  EXPECT_THAT(
      listedAmong(
          {{1, "/", "0:30", "/@"}, {2, "/home", "0:30", "/@home"}, {3, "/mnt/top", "0:30", "/"}}),
      ElementsAre("/", "/home", "/mnt/top"));
}

TEST(VolumeEngineListed, percentages_are_rounded_up_to_whole_ones_as_df_does) {
  const VolumeEngine::Listed volume{"a", {1, "/mnt/a", "8:1", "/"}};
  const auto percent = [&](std::int64_t used, std::int64_t free) {
    return VolumeEngine::withFigures(volume, {.total = 1, .used = used, .free = free})->usedPercent;
  };
  EXPECT_EQ(percent(60, 40), 60);
  EXPECT_EQ(percent(601, 399), 61);
  EXPECT_EQ(percent(0, 5), 0);
  EXPECT_EQ(percent(5, 0), 100);
  EXPECT_EQ(percent(0, 0), 0);
  constexpr std::int64_t most = std::numeric_limits<std::int64_t>::max();
  EXPECT_EQ(percent(most, most), 50);
  EXPECT_EQ(percent(most, 0), 100);
  EXPECT_EQ(VolumeEngine::withFigures(volume, {}), std::nullopt);
  EXPECT_EQ(VolumeEngine::withoutFigures(volume), (VolumeMount{"a", "/mnt/a", 0, 0}));
  EXPECT_EQ(VolumeEngine::usageOf({.total = 100, .used = 50, .free = 40}),
            (DiskUsage{.total = 100, .used = 50, .free = 40, .usedPercent = 56}));
  EXPECT_EQ(VolumeEngine::usageOf({}), DiskUsage());
}

}  // namespace
}  // namespace tessaly
