// Sees off the children that outlive those who waited for them, so that none stays a zombie.
//
// Has a thread of its own only while there is such a child. Safe from any thread.
#pragma once

#include <mutex>
#include <vector>

#include "platform/linux/FileDescriptor.h"
#include "platform/linux/process/Spawn.h"

namespace tessaly::process {

class Reaper {
 public:
  // The one of this process. It lives until the very end, so that its thread always finds it.
  static Reaper& instance();

  // Takes over a child that nobody waits for any more. Does not block.
  void adopt(Child child);

 private:
  void serve();
  // False when no child is left, with which the thread's work has ended.
  bool takeNewcomers(std::vector<Child>& children);

  std::mutex mutex_;
  std::vector<Child> newcomers_;
  bool isServing_ = false;
  // An eventfd that tells the thread of newcomers. Not open when the process is out of descriptors:
  // then the thread looks for them from time to time.
  FileDescriptor bell_;
};

}  // namespace tessaly::process
