#include "platform/tools/Tmutil.h"

#include <filesystem>
#include <fstream>
#include <gmock/gmock.h>
#include <gtest/gtest.h>
#include <sstream>

#include "platform/TrashCan.h"
#include "platform/UnicodeText.h"
#include "platform/tools/SnapshotList.h"
#include "support/ForkedChild.h"
#include "support/TempTree.h"

namespace tessaly::tools {
namespace {

using testing::HasSubstr;
using testing::IsEmpty;
using testing::Not;

class NoTrash : public TrashCan {
 public:
  Result<std::int64_t> count() override { return std::int64_t{0}; }
  EmptiedTrash empty() override { return {}; }
};

// A machine whose root folder is a tree.
class TmutilTest : public testing::Test {
 protected:
  TempTree tree_ = TempTree(".snapshots/\ntimeshift/\n  snapshots/\nbin/\n");
  NoTrash trash_;
  std::ostringstream out_;
  std::ostringstream err_;

  void write(const std::string& below, const std::string& text) const {
    std::ofstream(tree_.at(below), std::ios::binary) << text;
  }

  void plantSnapper(const std::string& name, const std::string& description = "",
                    const std::string& folder = ".snapshots") {
    tree_.plant(folder, name + "/\n  snapshot/\n");
    write(folder + "/" + name + "/info.xml",
          "<?xml version=\"1.0\"?>\n<snapshot>\n  <type>single</type>\n  <num>" + name +
              "</num>\n  <date>2024-02-01 13:30:00</date>\n  <description>" + description +
              "</description>\n  <cleanup>timeline</cleanup>\n</snapshot>\n");
  }

  void plantTimeshift(const std::string& name, const std::string& folder = "timeshift/snapshots") {
    tree_.plant(folder, name + "/\n");
    write(folder + "/" + name + "/info.json",
          R"({"created" : "1706794200", "tags" : "daily", "comments" : ""})");
  }

  void plantPrograms(const std::vector<std::string>& names) {
    for (const std::string& name : names) tree_.plant("bin", name + " mode=0755");
  }

  int run(std::vector<std::string> args) {
    out_.str("");
    err_.str("");
    args.insert(args.begin(), {"--machine", tree_.path()});
    Programs programs = Programs::real();
    programs.variable = [this](const std::string&) { return tree_.at("bin"); };
    return tmutil(args, {.out = out_, .err = err_},
                  Services{.trash = trash_, .programs = programs});
  }

  std::string listed() {
    EXPECT_EQ(run({"listlocalsnapshots", "/"}), done);
    EXPECT_EQ(err_.str(), "");
    return out_.str();
  }

  // As the program counts them.
  int counted() {
    std::istringstream lines(listed());
    int count = 0;
    for (std::string line; std::getline(lines, line);) {
      if (line.find("com.apple.TimeMachine") != std::string::npos) ++count;
    }
    return count;
  }

  std::string advice() {
    EXPECT_EQ(run({"thinlocalsnapshots", "/", "21474836480", "4"}), failed);
    EXPECT_EQ(err_.str(), "");
    std::string text = out_.str();
    EXPECT_EQ(text.find('\n'), text.size() - 1);
    EXPECT_LE(UnicodeText::graphemeCount(text), 180U) << text;
    return text;
  }
};

TEST_F(TmutilTest, a_machine_without_snapshots_has_only_a_heading) {
  EXPECT_EQ(listed(), "Snapshots for disk /:\n");
  EXPECT_EQ(counted(), 0);
}

TEST_F(TmutilTest, snapshots_of_snapper_are_listed_by_number) {
  plantSnapper("10", "before the update");
  plantSnapper("9");
  EXPECT_EQ(listed(),
            "Snapshots for disk /:\n"
            "snapper 9, 2024-02-01 13:30:00 UTC, timeline (in place of com.apple.TimeMachine)\n"
            "snapper 10, 2024-02-01 13:30:00 UTC, timeline, before the update"
            " (in place of com.apple.TimeMachine)\n");
  EXPECT_EQ(counted(), 2);
}

TEST_F(TmutilTest, snapshots_of_timeshift_are_listed_by_date) {
  plantTimeshift("2024-03-01_00-00-01");
  plantTimeshift("2024-02-01_13-30-00");
  plantSnapper("1");
  EXPECT_EQ(counted(), 3);
  EXPECT_THAT(listed(), HasSubstr("\ntimeshift 2024-02-01_13-30-00, 2024-02-01 13:30:00 UTC, daily "
                                  "(in place of com.apple.TimeMachine)\n"
                                  "timeshift 2024-03-01_00-00-01, "));
}

TEST_F(TmutilTest, snapshots_of_a_btrfs_are_found_where_its_top_is_mounted) {
  tree_.plant(R"(
    proc/
      self/
    run/
      timeshift/
        7\s1/
          timeshift-btrfs/
            snapshots/
    other/
      timeshift-btrfs/
        snapshots/
  )");
  plantTimeshift("2024-03-01_00-00-01", "run/timeshift/7 1/timeshift-btrfs/snapshots");
  plantTimeshift("2024-03-02_00-00-01", "other/timeshift-btrfs/snapshots");
  EXPECT_EQ(counted(), 0);
  write("proc/self/mountinfo",
        "21 1 0:25 /@ / rw - btrfs /dev/sda2 rw\n"
        "22 21 0:25 /@home /home rw - btrfs /dev/sda2 rw\n"
        "23 21 0:25 / /run/timeshift/7\\0401 rw - btrfs /dev/sda2 rw\n"
        "24 21 0:31 / /other rw - btrfs /dev/sdb1 rw\n");
  EXPECT_EQ(counted(), 1);
  EXPECT_THAT(listed(), HasSubstr("timeshift 2024-03-01_00-00-01"));
}

TEST_F(TmutilTest, only_a_mount_of_the_top_of_the_disk_has_the_folder_of_snapshots) {
  tree_.plant("proc/\n  self/\nhome/\n  timeshift-btrfs/\n    snapshots/\n");
  plantTimeshift("2024-03-01_00-00-01", "home/timeshift-btrfs/snapshots");
  write("proc/self/mountinfo",
        "21 1 0:25 /@ / rw - btrfs /dev/sda2 rw\n"
        "22 21 0:25 /@home /home rw - btrfs /dev/sda2 rw\n");
  EXPECT_EQ(counted(), 0);
}

TEST_F(TmutilTest, of_two_disks_mounted_as_the_root_the_visible_one_counts) {
  tree_.plant("proc/\n  self/\ntop/\n  timeshift-btrfs/\n    snapshots/\n");
  plantTimeshift("2024-03-01_00-00-01", "top/timeshift-btrfs/snapshots");
  const std::string hidden = "20 1 0:20 / / rw - btrfs /dev/sdb1 rw\n";
  const std::string visible = "21 20 0:25 /@ / rw - btrfs /dev/sda2 rw\n";
  write("proc/self/mountinfo", hidden + visible + "22 21 0:20 / /top rw - btrfs /dev/sdb1 rw\n");
  EXPECT_EQ(counted(), 0);
  write("proc/self/mountinfo", hidden + visible + "22 21 0:25 / /top rw - btrfs /dev/sda2 rw\n");
  EXPECT_EQ(counted(), 1);
}

TEST_F(TmutilTest, snapshots_are_found_on_the_device_that_timeshift_uses) {
  tree_.plant(R"(
    etc/
      timeshift/
    proc/
      self/
    dev/
      alias -> sdb1
      disk/
        by-uuid/
          12AB-cd -> ../../sdb1
    sys/
      class/
        block/
          sdb1/
    media/
      backup/
        timeshift/
          snapshots/
  )");
  plantTimeshift("2024-03-01_00-00-01", "media/backup/timeshift/snapshots");
  plantTimeshift("2024-03-01_00-00-01");  // the same one, seen twice
  write("sys/class/block/sdb1/dev", "8:17\n");
  write("proc/self/mountinfo",
        "21 1 8:1 / / rw - ext4 /dev/sda1 rw\n22 21 8:17 / /media/backup rw - ext4 /dev/sdb1 rw\n");
  plantTimeshift("2024-03-02_00-00-01", "media/backup/timeshift/snapshots");
  EXPECT_EQ(counted(), 1);
  write("etc/timeshift/timeshift.json", R"({"backup_device_uuid" : "12AB-cd"})");
  EXPECT_EQ(counted(), 2);
  for (const char* const settings :
       {R"({"backup_device_uuid" : "../../alias"})", R"({"backup_device_uuid" : ""})", "{", ""}) {
    write("etc/timeshift/timeshift.json", settings);
    EXPECT_EQ(counted(), 1) << settings;
  }
  // Older versions keep their settings elsewhere; the new ones count.
  write("etc/timeshift.json", R"({"backup_device_uuid" : "12AB-cd"})");
  EXPECT_EQ(counted(), 1);
  std::filesystem::remove(tree_.at("etc/timeshift/timeshift.json"));
  EXPECT_EQ(counted(), 2);
}

TEST_F(TmutilTest, what_is_no_record_of_a_snapshot_is_not_listed) {
  plantSnapper("7");
  for (const char* const name : {"x", "0", "-1", "08", "1.5", "99999999999999999999"}) {
    plantSnapper(name);
  }
  plantTimeshift("yesterday");
  tree_.plant(".snapshots", R"(
    2/
    3
    4/
      info.xml fifo
    5/
      info.xml/
    12/
      info.xml sparse=1000G
    13/
      info.xml -> info.xml
    14/
  )");
  write(".snapshots/14/info.xml", "<snapshot><num>15</num></snapshot>");
  tree_.plant("timeshift/snapshots", R"(
    2024-01-01_00-00-00/
      info.json fifo
    2024-01-02_00-00-00/
      info.json sparse=1000G
    2024-01-03_00-00-00/
      info.json -> info.json
    2024-01-04_00-00-00/
      info.json 4K
    2024-01-05_00-00-00 -> 2024-01-05_00-00-00
  )");
  EXPECT_EQ(counted(), 1);
}

TEST_F(TmutilTest, a_record_behind_a_link_is_not_read) {
  tree_.plant(R"(
    elsewhere/
      2/
      2024-01-01_00-00-00/
  )");
  write("elsewhere/2/info.xml", "<snapshot><num>2</num></snapshot>");
  write("elsewhere/2024-01-01_00-00-00/info.json", R"({"created" : "1706794200"})");
  tree_.plant(".snapshots", "2/\n  info.xml -> ../../elsewhere/2/info.xml\n");
  tree_.plant("timeshift/snapshots",
              "2024-01-01_00-00-00 -> ../../elsewhere/2024-01-01_00-00-00\n");
  EXPECT_EQ(counted(), 0);
}

TEST_F(TmutilTest, a_record_of_more_than_64_kib_is_not_read) {
  const std::string record = "<snapshot><num>2</num></snapshot>";
  tree_.plant(".snapshots", "2/\n");
  write(".snapshots/2/info.xml", record + std::string(65536 - record.size(), ' '));
  EXPECT_EQ(counted(), 1);
  write(".snapshots/2/info.xml", record + std::string(65537 - record.size(), ' '));
  EXPECT_EQ(counted(), 0);
}

TEST_F(TmutilTest, a_link_in_place_of_the_folder_of_snapshots_is_not_followed) {
  tree_.plant("machine/\n  .snapshots -> ../.snapshots\n  timeshift -> ../timeshift\n");
  plantSnapper("1");
  plantTimeshift("2024-01-01_00-00-00");
  EXPECT_EQ(counted(), 2);
  EXPECT_THAT(snapshotsOf(tree_.at("machine")), IsEmpty());
  EXPECT_THAT(snapshotsOf(tree_.at("missing")), IsEmpty());
}

TEST_F(TmutilTest, what_this_user_may_not_read_counts_as_none) {
  plantSnapper("1");
  std::filesystem::permissions(tree_.path(), std::filesystem::perms(0755));
  std::filesystem::permissions(tree_.at(".snapshots"), std::filesystem::perms(0));
  EXPECT_EQ(asOtherUser([this] { return std::to_string(counted()); }), "0");
  std::filesystem::permissions(tree_.at(".snapshots"), std::filesystem::perms(0755));
  EXPECT_EQ(asOtherUser([this] { return std::to_string(counted()); }), "1");
}

TEST_F(TmutilTest, a_description_changes_neither_the_lines_nor_their_number) {
  plantSnapper("1", "two\nlines of com.apple.TimeMachine\x1b[31m \xff");
  plantSnapper("2", std::string(50000, 'd'));
  EXPECT_EQ(counted(), 2);
  EXPECT_THAT(listed(), HasSubstr("timeline, two?lines of com.apple.TimeMachine?[31m ?"));
  EXPECT_LT(listed().size(), 500U);
}

TEST_F(TmutilTest, more_snapshots_than_fit_end_at_a_whole_line) {
  for (int i = 1; i <= 1000; ++i) plantSnapper(std::to_string(i));
  EXPECT_EQ(run({"listlocalsnapshots", "/"}), incomplete);
  EXPECT_LT(out_.str().size(), 60U * 1024);
  EXPECT_TRUE(out_.str().ends_with("com.apple.TimeMachine)\n"));
  EXPECT_EQ(err_.str(), "tmutil: there are more than fit into the answer\n");
}

TEST_F(TmutilTest, thinning_names_the_command_of_what_is_installed_and_deletes_nothing) {
  plantSnapper("1");
  plantTimeshift("2024-01-01_00-00-00");
  EXPECT_EQ(advice(), "No snapshot was deleted: neither snapper nor timeshift is installed.\n");
  plantPrograms({"timeshift"});
  EXPECT_THAT(advice(), HasSubstr(": sudo timeshift --delete\n"));
  EXPECT_THAT(advice(), Not(HasSubstr("snapper")));
  plantPrograms({"snapper"});
  EXPECT_THAT(advice(), HasSubstr("sudo snapper delete NUMBER"));
  EXPECT_THAT(advice(), HasSubstr("sudo timeshift --delete"));
  std::filesystem::remove(tree_.at("bin/timeshift"));
  EXPECT_THAT(advice(), HasSubstr(": sudo snapper list, then sudo snapper delete NUMBER\n"));
  EXPECT_EQ(counted(), 2);
}

TEST_F(TmutilTest, thinning_names_the_configuration_of_the_root) {
  plantPrograms({"snapper", "timeshift"});
  tree_.plant(
      "etc/\n  snapper/\n    configs/\n      pipe fifo\n      loop -> loop\n      folder/\n");
  write("etc/snapper/configs/home", "SUBVOLUME=\"/home\"\n");
  EXPECT_EQ(snapperConfigOf(tree_.path()), "root");
  write("etc/snapper/configs/the-system_of-2024.1", "# a comment\nSUBVOLUME=\"/\"\n");
  EXPECT_THAT(advice(), HasSubstr("sudo snapper -c the-system_of-2024.1 delete NUMBER"));
  std::filesystem::remove(tree_.at("bin/timeshift"));
  EXPECT_THAT(advice(), HasSubstr("sudo snapper -c the-system_of-2024.1 list"));
  write("etc/snapper/configs/other", "SUBVOLUME=\"/\"\n");
  EXPECT_EQ(snapperConfigOf(tree_.path()), "other");  // the first by name
  std::filesystem::remove(tree_.at("etc/snapper/configs/other"));
  std::filesystem::remove(tree_.at("etc/snapper/configs/the-system_of-2024.1"));
  // Too long for the line of advice.
  write("etc/snapper/configs/the-system_of-2024.12", "SUBVOLUME=\"/\"\n");
  write("etc/snapper/configs/a; rm -rf x", "SUBVOLUME=\"/\"\n");
  write("etc/snapper/configs/-x", "SUBVOLUME=\"/\"\n");
  EXPECT_EQ(snapperConfigOf(tree_.path()), "root");
}

TEST_F(TmutilTest, other_disks_and_arguments_are_refused) {
  EXPECT_EQ(run({"listlocalsnapshots", "/home"}), failed);
  EXPECT_THAT(err_.str(), HasSubstr("not those of /home\n"));
  EXPECT_EQ(run({"thinlocalsnapshots", "/ho\nme", "1", "4"}), failed);
  EXPECT_THAT(err_.str(), HasSubstr("not those of /ho?me\n"));
  for (const std::vector<std::string>& args :
       std::vector<std::vector<std::string>>{{},
                                             {"listlocalsnapshots"},
                                             {"listlocalsnapshots", "/", "x"},
                                             {"deletelocalsnapshots", "/"},
                                             {"thinlocalsnapshots", "/"},
                                             {"thinlocalsnapshots", "/", "1", ""},
                                             {"thinlocalsnapshots", "/", "-1", "4"},
                                             {"--machine", "/", "listlocalsnapshots", "/"}}) {
    EXPECT_EQ(run(args), misused);
    EXPECT_THAT(err_.str(), HasSubstr("usage: tmutil"));
    EXPECT_EQ(out_.str(), "");
  }
}

TEST_F(TmutilTest, the_option_help_prints_the_usage) {
  EXPECT_EQ(tmutil({"--help"}, {.out = out_, .err = err_}, Services{.trash = trash_}), done);
  EXPECT_THAT(out_.str(), HasSubstr("listlocalsnapshots"));
  EXPECT_EQ(err_.str(), "");
}

}  // namespace
}  // namespace tessaly::tools
