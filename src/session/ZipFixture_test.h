// A session with items to archive and move to the Trash. Items are real files, since a session asks
// the disk whether they still exist; the fake Trash identifies them by their paths. Their folder is
// the user's home, so that no path is critical because of a folder above it.
#pragma once

#include <chrono>
#include <deque>
#include <filesystem>
#include <functional>
#include <gtest/gtest.h>
#include <memory>
#include <string>
#include <utility>
#include <vector>

#include "reclaim/ZipEngine.h"
#include "session/SessionFixture_test.h"
#include "support/PlainFiles.h"

namespace tessaly {

class ZipThenTrash : public testing::Test {
 protected:
  using Queue = Dispatch::Queue;
  using End = ZipEngine::Archived::End;

  ZipThenTrash() {
    for (const DiskNode& node : {film_, song_, note_}) plant(node);
    machine_.savePanel.answer = kept_.at("My things.zip");
    scan();
  }

  DiskNode item(const std::string& name, std::int64_t size) const {
    return file(disk_.at(name), size);
  }
  void plant(const DiskNode& node) {
    putFile(node.path(), std::string(node.name()));
    machine_.trash.put(node.path(), std::string(node.name()));
  }
  void vanish(const DiskNode& node) {
    std::filesystem::remove(node.path());
    machine_.trash.remove(node.path());
  }
  bool isOnDisk(const DiskNode& node) const { return machine_.trash.has(node.path()); }

  void scan() {
    session_->scan(disk_.path());
    machine_.dispatch.drainAll();
    ASSERT_EQ(session_->run().status(), ScanStatus::complete);
  }

  // Make the archive, and then take its result.
  void runArchive() { machine_.dispatch.step(Queue::userInitiated); }
  void bringHome() { machine_.dispatch.step(Queue::main); }
  void finish() {
    runArchive();
    bringHome();
  }

  ScanSession& session() { return *session_; }
  std::vector<std::string> queued() const {
    std::vector<std::string> paths;
    for (const DiskNode& node : session_->cleanupQueue().queue()) paths.push_back(node.path());
    return paths;
  }
  std::vector<std::string> lastTrashed() const {
    std::vector<std::string> paths;
    for (const TrashedItem& item : session_->removal().lastTrashed())
      paths.push_back(item.original);
    return paths;
  }
  void trashNote() {
    session_->selection().setFocused(note_);
    session_->trashFocused();
    machine_.dispatch.drainAll();
  }

  // A panel that runs a function before it returns.
  class SlowPanel : public SavePanel {
   public:
    std::optional<std::string> chooseFile(const Request& request) override {
      meanwhile();
      return answer.chooseFile(request);
    }
    std::function<void()> meanwhile = [] {};
    FakeSavePanel answer;
  };

  std::unique_ptr<ScanSession> makeSession(SavePanel& panel) {
    ScanSession::Services services = machine_.services(disk_.path());
    return std::make_unique<ScanSession>(ScanSession::Services{
        .dispatch = services.dispatch,
        .folderPanel = services.folderPanel,
        .savePanel = panel,
        .workspace = services.workspace,
        .pasteboard = services.pasteboard,
        .icon = services.icon,
        .notifications = services.notifications,
        .trash = services.trash,
        .prefs = services.prefs,
        .homeDirectory = services.homeDirectory,
        .supportDirectory = services.supportDirectory,
        .walk =
            [this](const std::string&, const DiskScanner::Callbacks&, const DiskScanner::Options&) {
              ++walks_;
              return tree_;
            },
        .archive =
            [this](const ZipEngine::Request& request) {
              archives_.push_back(request);
              if (duringArchive_) duringArchive_();
              return end_ == End::made ? made(request)
                                       : ZipEngine::Archived{.end = end_, .cause = cause_};
            },
        .run =
            [this](const std::string& path, const std::vector<std::string>& args, double) {
              if (path == "/usr/bin/osascript") return std::string("7\n");
              return noTools(path, args);
            },
        .volumeUsage = [] { return std::nullopt; },
        .date = [this] { return date_; }});
  }

  // The result of a complete archive of the items as they are now.
  static ZipEngine::Archived made(const ZipEngine::Request& request) {
    putFile(request.to, "archive");
    ZipEngine::Archived archived{
        .end = End::made, .path = request.to, .identity = FileIdentity::of(request.to).value()};
    for (const std::string& path : request.paths) {
      const Result<FileIdentity> identity = FileIdentity::of(path);
      archived.originals.push_back({path, identity ? identity.value() : FileIdentity()});
    }
    return archived;
  }

  TempTree disk_;
  TempTree kept_;
  FakeMachine machine_;
  DiskNode film_ = item("film", 4);
  DiskNode song_ = item("song", 3);
  DiskNode note_ = item("note", 2);
  DiskNode tree_ = folder(disk_.path(), 9, {film_, song_, note_});
  std::function<void()> duringArchive_;
  std::deque<ZipEngine::Request> archives_;
  End end_ = End::made;
  std::string cause_;
  int walks_ = 0;
  std::chrono::system_clock::time_point date_{std::chrono::seconds(1767225599)};
  std::unique_ptr<ScanSession> session_ = makeSession(machine_.savePanel);
};

}  // namespace tessaly
