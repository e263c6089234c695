// The report on the node on screen, with a panel that runs the event loop, so that scans end and
// the user clicks while it is open.

#include <array>
#include <cstdint>
#include <functional>
#include <gmock/gmock.h>
#include <gtest/gtest.h>
#include <memory>
#include <optional>
#include <string>
#include <sys/inotify.h>
#include <unistd.h>
#include <vector>

#include "scan/ExportReport.h"
#include "session/SessionFixture_test.h"
#include "support/PlainFiles.h"

namespace tessaly {
namespace {

using testing::ElementsAre;
using testing::IsEmpty;
using testing::SizeIs;

class SlowPanel final : public SavePanel {
 public:
  std::optional<std::string> chooseFile(const Request& request) override {
    requests.push_back(request);
    meanwhile();
    return answer;
  }

  std::function<void()> meanwhile = [] {};
  std::optional<std::string> answer;
  std::vector<Request> requests;
};

// The changes to private files in some folders, in order, as the system reports them.
class PrivateFilesWatch {
 public:
  PrivateFilesWatch() : queue_(inotify_init1(IN_CLOEXEC | IN_NONBLOCK)) {}
  ~PrivateFilesWatch() { close(queue_); }
  PrivateFilesWatch(const PrivateFilesWatch&) = delete;
  PrivateFilesWatch& operator=(const PrivateFilesWatch&) = delete;

  bool add(const std::string& folder) {
    const std::uint32_t wanted = IN_CREATE | IN_DELETE | IN_MOVED_TO;
    return inotify_add_watch(queue_, folder.c_str(), wanted) >= 0;
  }

  // "+" for a created file or "-" for a deleted one, and its name without the random part.
  std::vector<std::string> seen() {
    std::vector<std::string> all;
    alignas(inotify_event) std::array<char, 4096> bytes{};
    ssize_t length = 0;
    while ((length = read(queue_, bytes.data(), bytes.size())) > 0) {
      for (ssize_t at = 0; at < length;) {
        const auto* event = reinterpret_cast<const inotify_event*>(bytes.data() + at);
        at += static_cast<ssize_t>(sizeof *event) + event->len;
        const std::string name = event->name;
        const std::string sign = (event->mask & IN_DELETE) != 0 ? "-" : "+";
        all.push_back(sign + name.substr(0, name.find_last_of('-')));
      }
    }
    return all;
  }

 private:
  int queue_;
};

class Report : public ::testing::Test {
 protected:
  Report() { panel_.answer = place_.at("report.json"); }

  std::unique_ptr<ScanSession> makeSession() {
    const ScanSession::Services machine = machine_.services("/home/user");
    return std::make_unique<ScanSession>(
        ScanSession::Services{.dispatch = machine.dispatch,
                              .folderPanel = machine.folderPanel,
                              .savePanel = panel_,
                              .workspace = machine.workspace,
                              .pasteboard = machine.pasteboard,
                              .icon = machine.icon,
                              .notifications = machine.notifications,
                              .trash = machine.trash,
                              .prefs = machine.prefs,
                              .homeDirectory = machine.homeDirectory,
                              .supportDirectory = machine.supportDirectory,
                              .walk = [this](const std::string&, const DiskScanner::Callbacks&,
                                             const DiskScanner::Options&) { return found_; },
                              .run = noTools});
  }

  void scan(const DiskNode& tree) {
    found_ = tree;
    session_->scan(tree.path());
    machine_.dispatch.drainAll();
    ASSERT_EQ(session_->navigation().current(), tree);
  }

  std::string written() const { return contentOf(place_.at("report.json")); }

  TempTree place_;
  FakeMachine machine_;
  SlowPanel panel_;
  DiskNode found_;
  const DiskNode big_ = folder("/data/big", 5, {file("/data/big/below", 5)});
  const DiskNode tree_ = folder("/data", 9, {big_, file("/data/film", 4)});
  const DiskNode other_ = folder("/other", 7, {file("/other/song", 7)});
  std::unique_ptr<ScanSession> session_ = makeSession();
};

TEST_F(Report, a_report_is_on_the_node_on_screen_and_saved_where_the_user_chose) {
  scan(tree_);
  session_->open(big_);
  session_->exportJSON();
  ASSERT_THAT(panel_.requests, SizeIs(1));
  EXPECT_EQ(panel_.requests.front(), (SavePanel::Request{"marrow-big.json", "json", true}));
  EXPECT_EQ(written(), ExportReport::json(big_));
}

TEST_F(Report, a_report_has_a_note_of_its_folder_while_it_is_written) {
  scan(tree_);
  PrivateFilesWatch watch;
  ASSERT_TRUE(watch.add(place_.path()));
  ASSERT_TRUE(watch.add(machine_.support.path()));
  session_->exportJSON();
  const std::string own = ".tessaly-" + std::to_string(getpid());
  EXPECT_THAT(watch.seen(), ElementsAre("+" + own, "+.tessaly-place", "+" + own, "+report.json",
                                        "-.tessaly-place"));
}

TEST_F(Report, a_report_that_cannot_be_written_shows_no_message) {
  scan(tree_);
  const auto toast = session_->messages().toast();
  panel_.answer = place_.at("nowhere/report.json");
  session_->exportJSON();
  panel_.answer.reset();
  session_->exportJSON();
  EXPECT_EQ(session_->messages().toast(), toast);
}

TEST_F(Report, a_report_is_on_the_tree_of_a_scan_that_ended_while_the_panel_was_open) {
  scan(tree_);
  panel_.meanwhile = [this] { scan(other_); };
  session_->exportJSON();
  EXPECT_EQ(panel_.requests.front().fileName, "marrow-data.json");
  EXPECT_EQ(written(), ExportReport::json(other_));
}

TEST_F(Report, a_report_is_on_the_folder_entered_or_left_while_the_panel_was_open) {
  scan(tree_);
  panel_.meanwhile = [this] { session_->open(big_); };
  session_->exportJSON();
  EXPECT_EQ(written(), ExportReport::json(big_));
  panel_.meanwhile = [this] { session_->navigation().back(); };
  session_->exportJSON();
  EXPECT_EQ(panel_.requests.back().fileName, "marrow-big.json");
  EXPECT_EQ(written(), ExportReport::json(tree_));
}

TEST_F(Report, a_report_needs_a_tree_to_ask_for_a_file) {
  session_->exportJSON();
  EXPECT_THAT(panel_.requests, IsEmpty());
}

TEST_F(Report, a_report_is_not_written_if_the_panel_is_cancelled) {
  scan(tree_);
  panel_.answer.reset();
  session_->exportJSON();
  EXPECT_THAT(panel_.requests, SizeIs(1));
  EXPECT_THAT(entriesOf(place_.path()), IsEmpty());
}

TEST_F(Report, a_report_is_not_written_if_the_session_ends_during_the_panel) {
  scan(tree_);
  panel_.meanwhile = [this] { session_.reset(); };
  session_->exportJSON();
  EXPECT_EQ(session_, nullptr);
  EXPECT_THAT(entriesOf(place_.path()), IsEmpty());
}

}  // namespace
}  // namespace tessaly
