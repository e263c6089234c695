// A session whose analysis finds what the test says. The items are files and folders of a temporary
// tree, and of the fake Trash.
#pragma once

#include <cstdint>
#include <filesystem>
#include <functional>
#include <gtest/gtest.h>
#include <memory>
#include <set>
#include <string>
#include <utility>
#include <vector>

#include "session/ScanSession.h"
#include "support/FakeMachine.h"
#include "support/TempTree.h"

namespace tessaly {

class WinsFixture : public testing::Test {
 protected:
  static constexpr std::int64_t mega = 1048576;

  // Adds an empty folder or, without a slash at its end, a file, and returns its path.
  std::string plant(const std::string& name) {
    disk_.plant(name + "\n");
    std::string path = disk_.at(name.ends_with('/') ? name.substr(0, name.size() - 1) : name);
    machine_.trash.put(path);
    return path;
  }
  std::string addCache(const std::string& name, std::int64_t bytes, bool caution = false) {
    std::string path = plant(name + "/");
    finds_.probes.push_back({.id = name,
                             .label = name + " cache",
                             .note = "Made again",
                             .caution = caution,
                             .path = path,
                             .bytes = bytes});
    return path;
  }
  void addTrash(std::int64_t bytes) {
    finds_.probes.push_back({.id = "trash",
                             .label = "Trash",
                             .note = "Empty the Trash to reclaim this space",
                             .path = disk_.at("Trash"),
                             .bytes = bytes});
  }
  std::string addWin(const std::string& name, std::int64_t bytes, const std::string& category) {
    std::string path = plant(name + "/");
    finds_.treeWins.push_back({.path = path,
                               .name = name,
                               .bytes = bytes,
                               .category = category,
                               .note = "Restored by its tool"});
    return path;
  }
  std::string addFile(const std::string& name, std::int64_t bytes) {
    std::string path = plant(name);
    finds_.largeOld.push_back({.name = name, .path = path, .bytes = bytes});
    return path;
  }

  // Removes an item behind the program's back.
  void vanish(const std::string& path) {
    std::filesystem::remove_all(path);
    machine_.trash.remove(path);
  }
  // The fake Trash and the disk are two: what has moved must leave the disk too.
  void followTrash() {
    machine_.trash.beforeMoves([this](const std::string& path) {
      if (duringMove_) duringMove_(path);
      if (!refused_.contains(path)) std::filesystem::remove_all(path);
    });
  }
  void refuse(const std::string& path) {
    machine_.trash.refuse(path);
    refused_.insert(path);
  }
  // Ends the pass that runs, and everything else.
  void finish() { machine_.dispatch.drainAll(); }

  // A scan of the disk that finds these empty folders.
  void scanEmpty(const std::vector<std::string>& names) {
    std::vector<DiskNode> children;
    for (const std::string& name : names) {
      children.emplace_back(DiskNode::Fields{
          .name = name, .path = plant(name + "/"), .isDir = true, .kind = FileKind::folder});
    }
    tree_ = DiskNode({.name = "disk", .path = disk_.path(), .size = 5, .isDir = true}, children);
    session_->scan(disk_.path());
    finish();
  }

  ScanSession& session() { return *session_; }

  TempTree disk_;
  FakeMachine machine_;
  ReclaimAnalysis::Finds finds_;
  std::string answer_;  // of the tool that thins snapshots
  int thinnings_ = 0;
  std::function<void(const WinsPass::IsCancelled&)> duringPass_;
  std::function<void(const std::string& path)> duringMove_;
  std::set<std::string> refused_;
  int passes_ = 0;
  std::string treeOfPass_;  // the root that the last pass looked at; empty for none
  int emptyings_ = 0;
  DiskNode tree_{{.name = "none", .path = "/none"}};
  std::unique_ptr<ScanSession> session_ = makeSession();

 private:
  std::unique_ptr<ScanSession> makeSession() {
    ScanSession::Services services = machine_.services(disk_.at("home"));
    services.walk = [this](const std::string&, const DiskScanner::Callbacks&,
                           const DiskScanner::Options&) { return tree_; };
    services.run = [this](const std::string& path, const std::vector<std::string>& args, double) {
      if (path != "/usr/bin/osascript" || args.empty()) return noTools(path, args);
      if (args.back().find("empty") != std::string::npos) ++emptyings_;
      return std::string("3\n");
    };
    services.wins = {.analyse =
                         [this](const std::string&, const std::optional<DiskNode>& tree,
                                const WinsPass::IsCancelled& isCancelled) {
                           ++passes_;
                           treeOfPass_ = tree ? tree->path() : std::string();
                           if (duringPass_) duringPass_(isCancelled);
                           return finds_;
                         },
                     .thin =
                         [this](const WinsPass::IsCancelled&) {
                           ++thinnings_;
                           return answer_;
                         },
                     .isTrashAction = [](std::string_view id) { return id == "trash"; }};
    return std::make_unique<ScanSession>(std::move(services));
  }
};

}  // namespace tessaly
