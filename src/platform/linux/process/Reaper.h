// Reaps the children that are no longer waited for, so that none stays a zombie.
//
// Has a thread of its own only while there is such a child; if the system refuses the thread,
// children wait for the next call. Safe from any thread.
#pragma once

#include <mutex>
#include <vector>

#include "platform/StartThread.h"
#include "platform/linux/FileDescriptor.h"
#include "platform/linux/process/Spawn.h"

namespace tessaly::process {

class Reaper {
 public:
  // The instance of this process. It is never destroyed, so that its thread can always use it.
  static Reaper& instance();

  // The object must outlive its thread.
  explicit Reaper(StartThread startThread = tessaly::startThread);

  // Takes over a child that is no longer waited for. Does not block.
  void adopt(Child child);

  // Starts the thread for children left over from a refusal. Does not block.
  void catchUp();

 private:
  void startServing();
  void serve();
  // False if no child is left, so that the thread ends.
  bool takeNewcomers(std::vector<Child>& children);

  const StartThread startThread_;
  std::mutex mutex_;
  std::vector<Child> newcomers_;
  bool isServing_ = false;
  // An eventfd that wakes the thread for new children. Closed if the process is out of descriptors:
  // then the thread polls.
  FileDescriptor bell_;
};

}  // namespace tessaly::process
