// Sees off the children that outlive those who waited for them, so that none stays a zombie.
//
// Has a thread of its own only while there is such a child; where the system refuses it, children
// wait for the next call. Safe from any thread.
#pragma once

#include <mutex>
#include <vector>

#include "platform/StartThread.h"
#include "platform/linux/FileDescriptor.h"
#include "platform/linux/process/Spawn.h"

namespace tessaly::process {

class Reaper {
 public:
  // The one of this process. It lives until the very end, so that its thread always finds it.
  static Reaper& instance();

  // Outlives its thread: what is made must stay.
  explicit Reaper(StartThread startThread = tessaly::startThread);

  // Takes over a child that nobody waits for any more. Does not block.
  void adopt(Child child);

  // Sees to the children that were left when the thread was refused. Does not block.
  void catchUp();

 private:
  void startServing();
  void serve();
  // False when no child is left, with which the thread's work has ended.
  bool takeNewcomers(std::vector<Child>& children);

  const StartThread startThread_;
  std::mutex mutex_;
  std::vector<Child> newcomers_;
  bool isServing_ = false;
  // An eventfd that tells the thread of newcomers. Not open when the process is out of descriptors:
  // then the thread looks for them from time to time.
  FileDescriptor bell_;
};

}  // namespace tessaly::process
