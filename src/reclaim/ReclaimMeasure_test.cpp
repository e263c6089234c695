// Measures with the system's du.
#include "reclaim/ReclaimMeasure.h"

#include <cerrno>
#include <filesystem>
#include <gmock/gmock.h>
#include <set>

#include "platform/ReclaimPlaces.h"
#include "support/FakeFileAccess.h"
#include "support/FakeVolumes.h"
#include "support/ForkedChild.h"
#include "support/NoTools.h"
#include "support/TempTree.h"

namespace tessaly {
namespace {

constexpr std::int64_t kibibyte = 1024;
constexpr const char* trashInHome = ".local/share/Trash";

// What du says by itself.
std::int64_t duOf(const std::string& path) {
  return Shell::duBytes(path);
}

class ReclaimMeasureTest : public testing::Test {
 protected:
  ReclaimEngine::Measure measure(const Shell::Run& run = {}) {
    return ReclaimMeasure::onMachine(
        home_.path(), {.files = FileAccess::ofMachine(), .volumes = volumes_, .run = run},
        linuxReclaimPlaces());
  }

  std::int64_t measured(const std::string& relativePath) {
    return measure()(home_.at(relativePath));
  }

  static CountedTrash trash(std::uint64_t inode, std::vector<std::string> contents,
                            std::uint64_t device = 1) {
    return {.device = device, .inode = inode, .items = 1, .contents = std::move(contents)};
  }

  TempTree home_;
  FakeVolumes volumes_;
};

TEST_F(ReclaimMeasureTest, a_folder_takes_what_du_says) {
  home_.plant(
      ".cache/\n  pip/\n    http/\n      a 8K\n      b 300\n    wheel 1M\n    hole sparse=1G\n");
  EXPECT_GT(measured(".cache/pip"), 1032 * kibibyte);
  EXPECT_LT(measured(".cache/pip"), 1100 * kibibyte);
  EXPECT_EQ(measured(".cache/pip"), duOf(home_.at(".cache/pip")));
}

TEST_F(ReclaimMeasureTest, a_folder_without_entries_takes_nothing) {
  home_.plant(".cache/\n  pip/\n  uv/\n    empty/\n");
  EXPECT_EQ(measured(".cache/pip"), 0);
  EXPECT_EQ(measured(".cache/uv"), duOf(home_.at(".cache/uv")));
  EXPECT_EQ(measured(".cache/missing"), 0);
}

TEST_F(ReclaimMeasureTest, a_folder_that_cannot_be_listed_takes_nothing) {
  home_.plant(".cache/\n  pip/ mode=0\n    wheel 1M\n");
  const std::string path = home_.at(".cache/pip");
  const std::string told = asOtherUser(
      [&]() -> std::string { return measure()(path) == 0 ? "" : "something was measured"; });
  EXPECT_EQ(told, "");
}

TEST_F(ReclaimMeasureTest, a_folder_with_one_part_that_cannot_be_read_takes_the_rest) {
  home_.plant(".cache/\n  pip/\n    wheel 1M\n    locked/ mode=0\n      more 1M\n");
  const std::string path = home_.at(".cache/pip");
  const std::string told = asOtherUser([&]() -> std::string {
    const std::int64_t bytes = measure()(path);
    return bytes >= 1024 * kibibyte && bytes < 1100 * kibibyte ? "" : std::to_string(bytes);
  });
  EXPECT_EQ(told, "");
}

TEST_F(ReclaimMeasureTest, a_link_takes_nothing_and_a_location_behind_one_is_measured) {
  home_.plant("disk/\n  pip/\n    wheel 1M\n.cache -> disk\n.npm/\n  _cacache -> ../disk\n");
  EXPECT_EQ(measured(".npm/_cacache"), 0);
  EXPECT_EQ(measured(".cache/pip"), duOf(home_.at("disk/pip")));
  EXPECT_GT(measured(".cache/pip"), 1024 * kibibyte - 1);
}

TEST_F(ReclaimMeasureTest, names_that_are_no_utf_8_are_measured) {
  home_.plant(".cache/\n  pip/\n    \\xFF\\n 1M\n");
  EXPECT_GT(measured(".cache/pip"), 1024 * kibibyte - 1);
  EXPECT_EQ(measured(".cache/pip"), duOf(home_.at(".cache/pip")));
}

TEST_F(ReclaimMeasureTest, a_location_may_be_a_file) {
  home_.plant(".cache/\n  pip 4K\n");
  EXPECT_EQ(measured(".cache/pip"), 4 * kibibyte);
}

TEST_F(ReclaimMeasureTest, a_trash_without_items_takes_nothing) {
  home_.plant(".local/\n  share/\n    Trash/\n      files/\n      info/\n");
  EXPECT_EQ(measured(trashInHome), 0);
  volumes_.homeTrash = {{.device = 1, .inode = 1, .items = 0}};
  EXPECT_EQ(measured(trashInHome), 0);
  // The folder may have lost its last item since it was counted.
  volumes_.homeTrash = {trash(1, {home_.at(std::string(trashInHome) + "/files")})};
  EXPECT_EQ(measured(trashInHome), 0);
}

TEST_F(ReclaimMeasureTest, a_trash_elsewhere_than_in_the_home_takes_the_contents_of_all_trashes) {
  const TempTree disks("data/\n  Trash/\n    a 1M\nvolume/\n  b 2M\n");
  volumes_.homeTrash = {trash(1, {disks.at("volume")})};
  const auto measureBy = ReclaimMeasure::onMachine(
      home_.path(), {.files = FileAccess::ofMachine(), .volumes = volumes_},
      linuxReclaimPlaces(disks.at("data/Trash")));
  EXPECT_EQ(measureBy(disks.at("data/Trash")), duOf(disks.at("volume")));
}

TEST_F(ReclaimMeasureTest, the_trash_is_that_of_the_home_and_of_all_volumes_each_counted_once) {
  const TempTree disks(
      "home/\n  files/\n    a 1M\n  expunged/\n    rest 64K\none/\n  files/\n    b 2M\n"
      "two/\n  files/\n    c 4M\n");
  volumes_.homeTrash = {trash(1, {disks.at("home/files"), disks.at("home/expunged")})};
  volumes_.mount("/", std::nullopt, {trash(1, {disks.at("home/files")})});
  volumes_.mount("/media/one", std::nullopt, {trash(2, {disks.at("one/files")})});
  volumes_.mount("/media/again", std::nullopt, {trash(2, {disks.at("one/files")})});
  volumes_.mount("/media/two", std::nullopt, {trash(3, {disks.at("two/files")}), trash(4, {})});
  // df knows none of these mounts but the first.
  const Shell::Run run = [](const std::string& path, const std::vector<std::string>& args,
                            double timeout) {
    return path == "/bin/df" ? "" : Shell::run(path, args, timeout);
  };
  const std::int64_t expected = duOf(disks.at("home/files")) + duOf(disks.at("home/expunged")) +
                                duOf(disks.at("one/files")) + duOf(disks.at("two/files"));
  EXPECT_GT(expected, 7 * 1024 * kibibyte);
  EXPECT_EQ(measure(run)(home_.at(trashInHome)), expected);
}

TEST_F(ReclaimMeasureTest, trash_folders_of_two_disks_may_have_the_same_inode) {
  const TempTree disks("one/\n  b 2M\ntwo/\n  c 4M\n");
  volumes_.homeTrash = {trash(2, {disks.at("one")}, 1), trash(2, {disks.at("two")}, 8)};
  EXPECT_EQ(measured(trashInHome), duOf(disks.at("one")) + duOf(disks.at("two")));
}

TEST_F(ReclaimMeasureTest, a_volume_that_does_not_answer_is_not_asked_for_its_trash) {
  const TempTree disks("one/\n  b 2M\ntwo/\n  c 4M\n");
  volumes_.mount("/media/one", std::nullopt, {trash(2, {disks.at("one")})});
  volumes_.mount("/media/two", std::nullopt, {trash(3, {disks.at("two")})});
  std::vector<std::string> asked;
  const Shell::Run run = [&](const std::string& path, const std::vector<std::string>& args,
                             double timeout) -> std::string {
    if (path != "/bin/df") return Shell::run(path, args, timeout);
    EXPECT_EQ(timeout, 6);
    asked.push_back(args.at(1));
    if (args.at(1) == "/media/one") throw ToolError("Marrow", 1, "timed out: /bin/df");
    return "";
  };
  EXPECT_EQ(measure(run)(home_.at(trashInHome)), duOf(disks.at("two")));
  EXPECT_THAT(asked, testing::ElementsAre("/media/one", "/media/two"));
}

TEST_F(ReclaimMeasureTest, a_trash_or_a_list_of_mounts_that_cannot_be_read_does_not_hide_the_rest) {
  const TempTree disks("one/\n  b 2M\n");
  volumes_.homeTrash = std::nullopt;
  volumes_.mount("/", std::nullopt, {trash(2, {disks.at("one")})});
  EXPECT_EQ(measured(trashInHome), duOf(disks.at("one")));
  volumes_.hasList = false;
  EXPECT_EQ(measured(trashInHome), 0);
  volumes_.homeTrash = {trash(2, {disks.at("one")})};
  EXPECT_EQ(measured(trashInHome), duOf(disks.at("one")));
}

TEST_F(ReclaimMeasureTest, only_the_location_of_the_trash_is_the_trash) {
  const TempTree disks("one/\n  b 2M\n");
  home_.plant(".Trash/\n  a 8K\n");
  volumes_.homeTrash = {trash(2, {disks.at("one")})};
  EXPECT_EQ(measured(".Trash"), duOf(home_.at(".Trash")));
  const ReclaimEngine::Measure onMacos = ReclaimMeasure::onMachine(
      home_.path(), {.files = FileAccess::ofMachine(), .volumes = volumes_},
      Places::forMacos().reclaimPlaces);
  EXPECT_EQ(onMacos(home_.at(".Trash")), duOf(disks.at("one")));
  const ReclaimEngine::Measure withoutTrash = ReclaimMeasure::onMachine(
      home_.path(), {.files = FileAccess::ofMachine(), .volumes = volumes_},
      std::vector<ReclaimPlace>());
  EXPECT_EQ(withoutTrash(home_.at(".Trash")), duOf(home_.at(".Trash")));
}

TEST_F(ReclaimMeasureTest, without_du_nothing_is_measured) {
  home_.plant(".cache/\n  pip/\n    wheel 1M\n");
  volumes_.homeTrash = {trash(2, {home_.at(".cache/pip")})};
  EXPECT_EQ(measure(noTools)(home_.at(".cache/pip")), 0);
  EXPECT_EQ(measure(noTools)(home_.at(trashInHome)), 0);
}

TEST_F(ReclaimMeasureTest, an_item_that_vanishes_after_du_keeps_the_size_that_du_saw) {
  FakeFileAccess files;
  const auto duSays = [](const std::string&, const std::vector<std::string>&, double) {
    return std::string("12\t/x\n");
  };
  const ReclaimEngine::Measure measure =
      ReclaimMeasure::onMachine("/home/ada", {.files = files, .volumes = volumes_, .run = duSays});
  EXPECT_EQ(measure("/gone"), 12 * kibibyte);
  files.files["/empty"] = {.kind = FileAccess::Kind::directory};
  EXPECT_EQ(measure("/empty"), 0);
  files.files["/full"] = {.kind = FileAccess::Kind::directory, .hasEntries = true};
  EXPECT_EQ(measure("/full"), 12 * kibibyte);
  files.files["/locked"] = {
      .kind = FileAccess::Kind::directory, .isReadable = false, .hasEntries = true};
  EXPECT_EQ(measure("/locked"), 0);
}

}  // namespace
}  // namespace tessaly
