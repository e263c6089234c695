// The engine of a walk: the batches still to be read, the threads that read them, and the
// consumer's position.
//
// All unread batches are in one list, in pre-order. A free thread takes the first that is not
// claimed; the batches of the directories that it finds replace the one it read. So reading stays
// just ahead of the consumer, which takes the batches in order, and few directories are open at any
// time: the ancestors of the reading position.
//
// When descriptors run out, helpers end permanently, and the consumer continues alone. It needs one
// descriptor: it then opens each directory by its whole path, and checks that the directory is
// where the walk has found it.
//
// One mutex guards the list, the descriptors and the counts of readers. The contents of a batch
// belong to its reader until `state` is done, and to the consumer afterwards.
#pragma once

#include <atomic>
#include <climits>
#include <condition_variable>
#include <cstddef>
#include <mutex>
#include <string>
#include <thread>
#include <vector>

#include "platform/DirectoryWalk.h"
#include "platform/StartThread.h"
#include "platform/linux/walk/Batch.h"
#include "platform/linux/walk/ClosedMounts.h"
#include "platform/linux/walk/FolderReader.h"
#include "platform/linux/walk/OpenFolders.h"

namespace tessaly::walk {

class WalkEngine {
 public:
  WalkEngine(const std::string& root, DirectoryWalk::Decide decide, int threads,
             const MountSnapshot& mounts, DirectoryWalk::Unreadable unreadable = {},
             DirectoryWalk::Reading reading = {},
             const StartThread& startThread = tessaly::startThread);
  ~WalkEngine();
  WalkEngine(const WalkEngine&) = delete;
  WalkEngine& operator=(const WalkEngine&) = delete;

  bool isOpen() const { return isOpen_; }
  const DirectoryWalk::Item* next();
  void stop();

 private:
  enum class Role { consumer, helper };
  enum class Outcome { read, outOfDescriptors };
  using Lock = std::unique_lock<std::mutex>;

  struct Frame {
    Batch* batch;
    std::uint32_t index;
  };

  // A folder reopened on the way to another.
  struct OpenedOnTheWay {
    Folder* folder;
    int descriptor;
  };

  // Reading.
  void helperLoop();
  void waitForWork(Lock& lock);
  Batch* firstPending();
  bool mayReadAhead() const;
  Outcome claimAndRead(Lock& lock, Batch& batch, FolderReader& reader, Role role);
  Outcome readFolder(Lock& lock, Batch& batch, FolderReader& reader, Role role);
  void readRun(Lock& lock, int descriptor, Batch& batch, FolderReader& reader);
  void publish(Batch& batch, const std::vector<Folder*>& children);
  void giveBack(Batch& batch);

  // Result of opening a directory that no longer exists, or must not be entered.
  static constexpr int nothingToRead = INT_MIN;

  // Descriptors. The lock is held on entry and on return.
  int openFolder(Lock& lock, Folder& folder, Role role);
  int openInParent(Lock& lock, Folder& folder, Role role);
  int openRelative(Lock& lock, int directory, Folder& seen, const char* name, Role role,
                   std::vector<OpenedOnTheWay>* held = nullptr);
  int openFolderByPath(Lock& lock, Folder& folder);
  int openByPath(Lock& lock, const Folder& folder, Folder& seen);
  int reopen(Lock& lock, Folder& folder, Role role);
  int reopenFromAncestor(Lock& lock, Folder& folder, Role role);
  int keepIfSame(int descriptor, const Folder& folder);
  void retireHelpers(Lock& lock);
  bool giveUpAll(Lock& lock);
  void closeAll(Lock& lock, std::vector<int>& descriptors);
  int takeOver(Folder& folder, int descriptor);
  void unpin(Folder& folder);
  void needNoMore(Folder& folder);
  void closeIfUnused(Folder& folder);
  void keepToBudget();

  // The consumer.
  void ensureRead(Batch& batch);
  void enter(Folder& folder);
  void leaveBatch();
  void leaveRoot(Folder& root);
  void fillItem(const Batch& batch, const Record& record);
  void freeUnconsumed();
  void tellOfFailure(const Batch& batch) const;
  void tell(const DirectoryWalk::Candidate& item, int code) const;

  const std::string root_;
  const DirectoryWalk::Decide decide_;
  const DirectoryWalk::Unreadable unreadable_;
  const DirectoryWalk::Reading reading_;
  ClosedMounts closed_;
  bool isOpen_ = false;
  std::atomic<bool> stop_ = false;

  std::mutex mutex_;
  std::condition_variable work_;   // helpers wait here for a batch to read
  std::condition_variable ready_;  // the consumer waits here for a batch that a helper reads
  Batch* front_ = nullptr;
  OpenFolders openFolders_;
  std::vector<int> toClose_;
  int idleHelpers_ = 0;
  int busyHelpers_ = 0;
  bool helpersRetire_ = false;
  int waitsLeft_ = 250;  // remaining waits for descriptors of others, in the whole walk
  bool consumerWaits_ = false;

  // Read but not consumed yet. Changed by both sides without the mutex.
  std::atomic<std::size_t> aheadBatches_ = 0;
  std::atomic<std::size_t> aheadItems_ = 0;
  std::atomic<int> helpersAtLimit_ = 0;

  FolderReader consumerReader_;
  std::vector<Frame> frames_;
  Folder* entering_ = nullptr;
  DirectoryWalk::Item item_;
  std::vector<std::thread> helpers_;
};

}  // namespace tessaly::walk
