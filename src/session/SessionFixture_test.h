// A session for tests: its Dispatch is stepped by hand, its walks follow scripts, and its clock is
// set by the test.
#pragma once

#include <chrono>
#include <cstddef>
#include <cstdint>
#include <deque>
#include <functional>
#include <gtest/gtest.h>
#include <memory>
#include <optional>
#include <string>
#include <utility>
#include <vector>

#include "session/ScanSession.h"
#include "support/FakeMachine.h"

namespace tessaly {

inline DiskNode file(const std::string& path, std::int64_t size) {
  DiskNode::Fields fields;
  fields.name = path.substr(path.rfind('/') + 1);
  fields.path = path;
  fields.size = size;
  return DiskNode(fields);
}

inline DiskNode folder(const std::string& path, std::int64_t size,
                       const std::vector<DiskNode>& children = {}) {
  DiskNode::Fields fields;
  fields.name = path.substr(path.rfind('/') + 1);
  fields.path = path;
  fields.size = size;
  fields.isDir = true;
  fields.kind = FileKind::folder;
  return DiskNode(fields, children);
}

class SessionFixture : public ::testing::Test {
 protected:
  using Queue = Dispatch::Queue;

  // A walk of the session. The test sets what it does before it runs, and reads afterwards what it
  // was asked for.
  struct WalkScript {
    std::function<void(const DiskScanner::Callbacks&)> during;
    DiskNode result = folder("/nothing", 0);

    bool hasRun = false;
    bool hadProgress = false;  // whether callbacks for progress and percent were passed
    std::string root;
    DiskScanner::Options options;
  };

  // The walks in the order in which they run. Elements are created on first use.
  class Walks {
   public:
    WalkScript& at(std::size_t index) {
      if (scripts_.size() <= index) scripts_.resize(index + 1);
      return scripts_[index];
    }
    std::size_t ran() const { return ran_; }

    DiskNode run(const std::string& root, const DiskScanner::Callbacks& callbacks,
                 const DiskScanner::Options& options) {
      WalkScript& script = at(ran_++);
      script.hasRun = true;
      script.hadProgress = callbacks.progress || callbacks.percent;
      script.root = root;
      script.options = options;
      if (script.during) script.during(callbacks);
      return script.result;
    }

   private:
    std::deque<WalkScript> scripts_;
    std::size_t ran_ = 0;
  };

  ScanSession& session() { return *session_; }
  bool hasSession() const { return session_ != nullptr; }
  void endSession() { session_.reset(); }
  HandSteppedDispatch& dispatch() { return dispatch_; }
  Walks& walks() { return walks_; }

  // Runs everything on the queue of walks, and nothing else.
  void runWalks() { dispatch_.drain(Queue::userInitiated); }
  void runMain() { dispatch_.drain(Queue::main); }

  // A whole scan of `tree`, from the call to the tree on screen.
  void scanTo(const DiskNode& tree) {
    walks_.at(walks_.ran()).result = tree;
    session_->scan(tree.path());
    dispatch_.drainAll();
    ASSERT_EQ(session_->run().status(), ScanStatus::complete);
  }

  std::vector<std::string> stackPaths() const {
    std::vector<std::string> paths;
    for (const DiskNode& node : session_->navigation().stack()) paths.push_back(node.path());
    return paths;
  }

  // A new run of the program on the same machine.
  void restart() {
    session_.reset();
    session_ = makeSession();
  }

  FakeMachine machine_;
  HandSteppedDispatch& dispatch_ = machine_.dispatch;
  FakeFolderPanel& folderPanel_ = machine_.folderPanel;
  FakeWorkspace& workspace_ = machine_.workspace;
  MemorySettings& settings_ = machine_.settings;
  TempTree& support_ = machine_.support;
  Walks walks_;
  std::string df_;       // the output of "df -k"; empty: there is no df
  std::string trash_;    // the output of the tool that counts the Trash; empty: there is none
  std::string emptied_;  // the count after emptying; empty: emptying fails
  bool emptyingTakesLong_ = false;   // whether emptying takes longer than the wait for it
  int emptyings_ = 0;                // how often emptying was asked for
  std::optional<DiskUsage> volume_;  // of the start-up volume
  SessionServices::Clock::time_point now_{};
  std::chrono::system_clock::time_point date_{};
  PostScanAnalysis::Engines analysis_;  // for the next session
  SessionServices::Snapshot snapshot_;  // for the next session
  std::unique_ptr<ScanSession> session_ = makeSession();

 private:
  std::unique_ptr<ScanSession> makeSession() {
    ScanSession::Services services = machine_.services("/home/user");
    services.analysis = analysis_;
    services.snapshot = snapshot_;
    services.walk = [this](const std::string& root, const DiskScanner::Callbacks& callbacks,
                           const DiskScanner::Options& options) {
      return walks_.run(root, callbacks, options);
    };
    services.run = [this](const std::string& path, const std::vector<std::string>& args, double) {
      return runTool(path, args);
    };
    services.volumeUsage = [this] { return volume_; };
    services.now = [this] { return now_; };
    services.date = [this] { return date_; };
    return std::make_unique<ScanSession>(std::move(services));
  }

  std::string runTool(const std::string& path, const std::vector<std::string>& args) {
    const std::vector<std::string> everyVolume = {"-k"};
    const std::vector<std::string> emptying = {"-e", "tell application \"Finder\" to empty trash"};
    if (path == "/usr/bin/osascript" && args == emptying) {
      ++emptyings_;
      if (emptyingTakesLong_) throw ToolError("Marrow", 1, "timed out: " + path);
      if (emptied_.empty()) return noTools(path, args);
      trash_ = emptied_;
      return {};
    }
    if (path == "/bin/df" && args == everyVolume && !df_.empty()) return df_;
    if (path == "/usr/bin/osascript" && !trash_.empty()) return trash_;
    return noTools(path, args);
  }
};

}  // namespace tessaly
