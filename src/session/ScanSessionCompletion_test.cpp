// The data that a finished scan stores, and what the next run of the program restores.

#include <fstream>
#include <gmock/gmock.h>
#include <gtest/gtest.h>
#include <iterator>
#include <string>
#include <vector>

#include <QObject>
#include <QSignalSpy>

#include "session/SessionFixture_test.h"

namespace tessaly {
namespace {

using testing::ElementsAre;
using testing::IsEmpty;
using testing::SizeIs;

constexpr std::int64_t MiB = 1048576;

// A root of 60 MiB with a folder of 40 MiB, a file in it, and an empty folder.
DiskNode sampleTree(const std::string& path = "/data", std::int64_t inner = 40 * MiB) {
  const std::string below = path + "/inner";
  return folder(path, inner + 20 * MiB,
                {folder(below, inner, {file(below + "/film.mp4", inner)}),
                 file(path + "/disk.iso", 20 * MiB), folder(path + "/empty", 0)});
}

std::vector<std::string> paths(const std::vector<DiskNode>& nodes) {
  std::vector<std::string> all;
  all.reserve(nodes.size());
  for (const DiskNode& node : nodes) all.push_back(node.path());
  return all;
}

class ScanSessionCompletion : public SessionFixture {
 protected:
  std::string supportFile(const std::string& name) const {
    std::ifstream file(support_.at(name));
    return {std::istreambuf_iterator<char>(file), {}};
  }
};

const std::string twoVolumes =
    "Filesystem 1K-blocks Used Available Use% Mounted on\n"
    "/dev/sda1 100 60 40 60% /\n"
    "/dev/sdb1 200 50 150 25% /media/stick\n";

TEST_F(ScanSessionCompletion, a_scan_writes_the_files_of_its_root) {
  date_ = std::chrono::system_clock::time_point(std::chrono::milliseconds(1700000000500));
  scanTo(sampleTree());
  EXPECT_EQ(supportFile("sizes_data.json"),
            "{\"/data\":62914560,\"/data/disk.iso\":20971520,\"/data/empty\":0,"
            "\"/data/inner\":41943040,\"/data/inner/film.mp4\":41943040}");
  EXPECT_EQ(supportFile("history_data.json"),
            "[{\"at\":1700000000.5,\"bytes\":62914560,\"files\":2}]");
  EXPECT_EQ(ScanStore::loadTree(support_.path()), sampleTree());
  EXPECT_EQ(settings_.text("marrow.lastScanRoot"), "/data");
  EXPECT_EQ(settings_.texts("marrow.recents"), std::vector<std::string>{"/data"});
}

TEST_F(ScanSessionCompletion, sizes_of_three_levels_are_kept) {
  const DiskNode deep =
      folder("/a", 4, {folder("/a/b", 4, {folder("/a/b/c", 4, {folder("/a/b/c/d", 4)})})});
  scanTo(deep);
  EXPECT_EQ(supportFile("sizes_a.json"), "{\"/a\":4,\"/a/b\":4,\"/a/b/c\":4}");
}

TEST_F(ScanSessionCompletion, the_first_scan_of_a_root_lists_its_top_levels_as_growth) {
  scanTo(sampleTree());
  std::vector<std::string> grown;
  for (const ScanDelta& delta : session().result().deltas()) grown.push_back(delta.path);
  EXPECT_THAT(grown, ElementsAre("/data", "/data/inner", "/data/inner/film.mp4", "/data/disk.iso"));
  EXPECT_THAT(session().result().grewPaths(),
              ElementsAre("/data", "/data/disk.iso", "/data/inner", "/data/inner/film.mp4"));
}

TEST_F(ScanSessionCompletion, a_later_scan_lists_growth_of_a_mebibyte) {
  scanTo(sampleTree());
  scanTo(sampleTree("/data", 41 * MiB));
  ASSERT_THAT(session().result().deltas(), SizeIs(3));
  EXPECT_EQ(session().result().deltas().front(), (ScanDelta{"data", "/data", 60 * MiB, 61 * MiB}));
  scanTo(sampleTree("/data", 42 * MiB - 1));
  EXPECT_THAT(session().result().deltas(), IsEmpty());
  EXPECT_THAT(session().result().grewPaths(), IsEmpty());
}

TEST_F(ScanSessionCompletion, each_root_is_compared_with_its_own_previous_scan) {
  scanTo(sampleTree("/data"));
  scanTo(sampleTree("/other"));
  EXPECT_THAT(session().result().deltas(), SizeIs(4));
  scanTo(sampleTree("/data"));
  EXPECT_THAT(session().result().deltas(), IsEmpty());
}

TEST_F(ScanSessionCompletion, the_result_has_the_largest_files_and_the_empty_folders) {
  scanTo(sampleTree());
  EXPECT_THAT(paths(session().result().largest()),
              ElementsAre("/data/inner/film.mp4", "/data/disk.iso"));
  EXPECT_THAT(paths(session().result().emptyFolders()), ElementsAre("/data/empty"));
}

TEST_F(ScanSessionCompletion, the_lists_have_at_most_80_files_and_200_folders) {
  std::vector<DiskNode> children;
  for (int i = 0; i < 300; ++i) {
    children.push_back(file("/data/f" + std::to_string(i), 1));
    children.push_back(folder("/data/d" + std::to_string(i), 0));
  }
  scanTo(folder("/data", 300, children));
  EXPECT_THAT(session().result().largest(), SizeIs(80));
  EXPECT_THAT(session().result().emptyFolders(), SizeIs(200));
}

TEST_F(ScanSessionCompletion, five_recent_roots_are_kept_newest_first) {
  for (const char* root : {"/a", "/b", "/c", "/d", "/e", "/f", "/d"}) scanTo(sampleTree(root));
  EXPECT_THAT(session().choices().recents(), ElementsAre("/d", "/f", "/e", "/c", "/b"));
}

TEST_F(ScanSessionCompletion, history_keeps_the_newest_sixty_scans) {
  for (int i = 0; i < 61; ++i) {
    date_ = std::chrono::system_clock::time_point(std::chrono::seconds(i));
    scanTo(sampleTree());
  }
  ASSERT_THAT(session().result().history(), SizeIs(60));
  EXPECT_EQ(session().result().history().front(), (HistoryPoint{1, 60 * MiB, 2}));
  EXPECT_EQ(session().result().history().back(), (HistoryPoint{60, 60 * MiB, 2}));
  EXPECT_EQ(ScanStore::loadHistory("/data", support_.path()), session().result().history());
}

TEST_F(ScanSessionCompletion, the_toast_tells_how_much_was_scanned) {
  scanTo(sampleTree());
  EXPECT_EQ(session().messages().toast(), "Scan complete — 60.0 MB");
}

TEST_F(ScanSessionCompletion, a_scan_updates_the_volumes) {
  EXPECT_THAT(session().machine().volumes(), IsEmpty());
  df_ = twoVolumes;
  scanTo(sampleTree());
  ASSERT_THAT(session().machine().volumes(), SizeIs(2));
  EXPECT_EQ(session().machine().volumes()[1], (VolumeMount{"stick", "/media/stick", 204800, 25}));
  df_.clear();
  scanTo(sampleTree());
  EXPECT_THAT(session().machine().volumes(), IsEmpty());
}

TEST_F(ScanSessionCompletion, a_scan_updates_the_usage_of_disk_and_trash) {
  volume_ = DiskUsage{.total = 100, .used = 87, .free = 13, .usedPercent = 87};
  trash_ = "12\n";
  const QSignalSpy disk(&session_->machine(), &MachineState::diskChanged);
  const QSignalSpy trash(&session_->machine(), &MachineState::trashCountChanged);
  scanTo(sampleTree());
  EXPECT_EQ(session().machine().disk(), *volume_);
  EXPECT_EQ(session().machine().trashCount(), 12);
  EXPECT_EQ(disk.count(), 1);
  EXPECT_EQ(trash.count(), 1);
  trash_ = "3\n";
  session().machine().refreshDisk();
  EXPECT_EQ(session().machine().trashCount(), 3);
}

TEST_F(ScanSessionCompletion, a_receiver_of_the_tree_finds_all_its_data) {
  bool wasTold = false;
  QObject::connect(&session_->navigation(), &Navigation::stackChanged, session_.get(), [&] {
    wasTold = true;
    EXPECT_EQ(session().run().status(), ScanStatus::complete);
    EXPECT_THAT(session().choices().recents(), ElementsAre("/data"));
    EXPECT_THAT(session().result().deltas(), SizeIs(4));
    EXPECT_THAT(session().result().history(), SizeIs(1));
    EXPECT_TRUE(session().result().scanStats().has_value());
  });
  scanTo(sampleTree());
  EXPECT_TRUE(wasTold);
}

TEST_F(ScanSessionCompletion, a_scan_completes_if_nothing_can_be_written) {
  std::ofstream(support_.at("file")) << "no folder";
  ScanSession::Services services = machine_.services("/home/user");
  services.supportDirectory = support_.at("file");
  services.walk = [](const auto&, const auto&, const auto&) { return sampleTree(); };
  ScanSession session(services);
  session.scan("/data");
  dispatch().drainAll();
  EXPECT_EQ(session.run().status(), ScanStatus::complete);
  EXPECT_THAT(session.result().deltas(), SizeIs(4));
  EXPECT_THAT(session.result().history(), IsEmpty());
}

TEST_F(ScanSessionCompletion, a_restart_restores_the_tree_without_a_walk) {
  now_ += std::chrono::seconds(5);
  scanTo(sampleTree());
  ASSERT_GE(session().result().scanStats()->duration, 0);
  const auto ran = walks().ran();
  df_ = twoVolumes;
  volume_ = DiskUsage{.total = 100, .used = 87, .free = 13, .usedPercent = 87};
  restart();
  EXPECT_EQ(walks().ran(), ran);
  EXPECT_EQ(session().run().status(), ScanStatus::complete);
  ASSERT_THAT(session().navigation().stack(), SizeIs(1));
  EXPECT_EQ(session().navigation().stack().front(), sampleTree());
  EXPECT_EQ(session().run().scanRoot(), "/data");
  EXPECT_EQ(session().result().scanStats(),
            (ScanStats{.nodes = 5, .files = 2, .folders = 3, .duration = 0, .bytes = 60 * MiB}));
  EXPECT_THAT(paths(session().result().largest()), SizeIs(2));
  EXPECT_THAT(paths(session().result().emptyFolders()), SizeIs(1));
  EXPECT_THAT(session().result().history(), SizeIs(1));
  EXPECT_THAT(session().choices().recents(), ElementsAre("/data"));
  EXPECT_THAT(session().machine().volumes(), SizeIs(2));
  EXPECT_EQ(session().machine().disk(), *volume_);
  // The stored sizes are those of the same scan, so nothing has grown.
  EXPECT_THAT(session().result().deltas(), IsEmpty());
  EXPECT_EQ(session().messages().toast(), std::nullopt);
}

TEST_F(ScanSessionCompletion, a_restored_tree_can_be_scanned_again) {
  scanTo(sampleTree());
  restart();
  session().rescan();
  dispatch().drainAll();
  EXPECT_EQ(walks().at(1).root, "/data");
}

TEST_F(ScanSessionCompletion, a_restored_tree_stays_where_a_rescan_is_cancelled_or_reads_nothing) {
  scanTo(sampleTree());
  restart();
  session().rescan();
  session().run().cancel();
  EXPECT_EQ(session().run().status(), ScanStatus::complete);
  walks().at(2).result = folder("/data", 0);
  session().rescan();
  dispatch().drainAll();
  EXPECT_EQ(session().run().status(), ScanStatus::complete);
  EXPECT_EQ(session().run().errorMessage(), "");
  EXPECT_EQ(session().navigation().current(), sampleTree());
}

// The root is the path that was requested; the path of the tree differs if the root is a link.
TEST_F(ScanSessionCompletion, a_restart_restores_the_requested_root_and_not_the_path_of_the_tree) {
  walks().at(0).result = sampleTree("/real");
  session().scan("/link");
  dispatch().drainAll();
  const auto history = session().result().history();
  ASSERT_THAT(history, SizeIs(1));
  restart();
  EXPECT_EQ(session().run().scanRoot(), "/link");
  EXPECT_EQ(session().navigation().current()->path(), "/real");
  EXPECT_EQ(session().result().history(), history);
  EXPECT_THAT(session().result().deltas(), IsEmpty());
  EXPECT_THAT(session().result().grewPaths(), IsEmpty());
  session().rescan();
  dispatch().drainAll();
  EXPECT_EQ(walks().at(1).root, "/link");
}

TEST_F(ScanSessionCompletion, a_restored_tree_with_an_invalid_root_is_its_own_root) {
  scanTo(sampleTree("/elsewhere"));
  settings_.setTexts("marrow.lastScanRoot", {"/other"});
  restart();
  EXPECT_EQ(session().run().scanRoot(), "/elsewhere");
  EXPECT_THAT(session().result().history(), SizeIs(1));
}

TEST_F(ScanSessionCompletion, a_restored_tree_without_a_stored_root_is_its_own_root) {
  ScanStore::saveTree(sampleTree("/elsewhere"), support_.path());
  restart();
  EXPECT_EQ(session().run().scanRoot(), "/elsewhere");
  EXPECT_EQ(session().run().status(), ScanStatus::complete);
}

TEST_F(ScanSessionCompletion, the_session_starts_idle_if_no_tree_can_be_read) {
  restart();
  EXPECT_EQ(session().run().status(), ScanStatus::idle);
  std::ofstream(support_.at("last-tree.json")) << "{\"name\":";
  restart();
  EXPECT_EQ(session().run().status(), ScanStatus::idle);
  EXPECT_THAT(session().navigation().stack(), IsEmpty());
  EXPECT_EQ(session().run().errorMessage(), "");
  EXPECT_EQ(session().run().scanRoot(), "");
}

TEST_F(ScanSessionCompletion, the_session_starts_with_the_stored_settings) {
  settings_.setTexts("marrow.recents", {"/a", "/b"});
  settings_.setTexts("marrow.pins", {"/p"});
  settings_.setTexts("marrow.excludes", {"/x\xff"});
  std::vector<BloatFilter> filters = BloatFilter::catalog();
  filters[2].enabled = true;
  filters[3].skipScan = true;
  ScanStore::saveFilters(filters, settings_);
  restart();
  EXPECT_THAT(session().choices().recents(), ElementsAre("/a", "/b"));
  EXPECT_THAT(session().choices().pins(), ElementsAre("/p"));
  EXPECT_THAT(session().choices().excludes(), ElementsAre("/x\xff"));
  EXPECT_EQ(session().choices().filters(), filters);
}

TEST_F(ScanSessionCompletion, the_session_reads_no_more_pins_and_recent_roots_than_their_limits) {
  std::vector<std::string> many;
  for (int i = 0; i < 100000; ++i) many.push_back("/srv/" + std::to_string(i));
  settings_.setTexts("marrow.pins", many);
  settings_.setTexts("marrow.recents", many);
  restart();
  EXPECT_EQ(session().choices().pins(), std::vector<std::string>(many.begin(), many.begin() + 8));
  EXPECT_EQ(session().choices().recents(),
            std::vector<std::string>(many.begin(), many.begin() + 5));
}

TEST_F(ScanSessionCompletion, a_long_list_of_excludes_is_kept_complete) {
  std::vector<std::string> many;
  for (int i = 0; i < 10000; ++i) many.push_back("/data/" + std::to_string(i));
  settings_.setTexts("marrow.excludes", many);
  restart();
  EXPECT_EQ(session().choices().excludes(), many);
  scanTo(sampleTree());
  EXPECT_EQ(walks().at(0).options.extraPrefixes, many);
  session().choices().removeExclude("/data/5000");
  many.erase(many.begin() + 5000);
  folderPanel_.answer = "/data/new";
  session().choices().addExclude();
  many.emplace_back("/data/new");
  EXPECT_EQ(settings_.texts("marrow.excludes"), many);
}

TEST_F(ScanSessionCompletion, settings_of_another_type_count_as_missing) {
  settings_.setText("marrow.recents", "/a");
  settings_.setBoolean("marrow.pins", true);
  settings_.setBinary("marrow.excludes", "/x");
  restart();
  EXPECT_THAT(session().choices().recents(), IsEmpty());
  EXPECT_THAT(session().choices().pins(), IsEmpty());
  EXPECT_THAT(session().choices().excludes(), IsEmpty());
}

TEST_F(ScanSessionCompletion, excluded_folders_are_left_out_of_the_first_scan_after_a_restart) {
  settings_.setTexts("marrow.excludes", {"/data/inner"});
  restart();
  session().scan("/data");
  dispatch().drainAll();
  EXPECT_THAT(walks().at(0).options.extraPrefixes, ElementsAre("/data/inner"));
}

TEST_F(ScanSessionCompletion, the_current_volume_is_that_of_the_node_on_screen) {
  EXPECT_EQ(session().machine().currentVolumeName(session().navigation().current()), "System Disk");
  df_ = twoVolumes;
  scanTo(sampleTree("/media/stick/music"));
  EXPECT_EQ(session().machine().currentVolumeName(session().navigation().current()), "stick");
  scanTo(sampleTree("/data"));
  EXPECT_EQ(session().machine().currentVolumeName(session().navigation().current()), "System Disk");
}

TEST_F(ScanSessionCompletion, the_current_volume_is_not_that_of_the_root) {
  df_ = twoVolumes;
  scanTo(folder("/media", 2, {folder("/media/stick", 2, {file("/media/stick/film", 2)})}));
  EXPECT_EQ(session().machine().currentVolumeName(session().navigation().current()), "System Disk");
  session().open(session().navigation().current()->children().front());
  EXPECT_EQ(session().machine().currentVolumeName(session().navigation().current()), "stick");
  session().navigation().back();
  EXPECT_EQ(session().machine().currentVolumeName(session().navigation().current()), "System Disk");
}

TEST_F(ScanSessionCompletion, focus_selection_queue_and_menu_stay_even_if_the_tree_lacks_them) {
  scanTo(sampleTree());
  const DiskNode disk = file("/data/disk.iso", 20 * MiB);
  const DiskNode gone = file("/data/gone", 1);
  session().selection().selectNodes({gone, disk}, false);
  session().cleanupQueue().addToQueue(gone);
  session().cleanupQueue().addToQueue(disk);
  session().cleanupQueue().setQueueMinimized(true);
  session().shown().setMenuNode(gone);
  scanTo(sampleTree("/other"));
  EXPECT_EQ(session().selection().focused(), disk);
  EXPECT_EQ(session().shown().menuNode(), gone);
  EXPECT_THAT(session().selection().selectedNodes(), ElementsAre(gone, disk));
  EXPECT_THAT(session().selection().selected(), ElementsAre("/data/disk.iso", "/data/gone"));
  EXPECT_THAT(session().cleanupQueue().queue(), ElementsAre(gone, disk));
  EXPECT_TRUE(session().cleanupQueue().queueOpen());
  EXPECT_TRUE(session().cleanupQueue().queueMinimized());
}

}  // namespace
}  // namespace tessaly
